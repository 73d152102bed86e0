#include "NameYourOwn.h"

#include "storage/Records.h"

namespace scorvane {

OwnNames ownNamesOf(const ConfigRecord& config) {
    OwnNames names;
    for (std::size_t i = 0; i < 7; ++i)
        names.gameTypes[i] = trimRight(config.gameTypeNames[i]);
    for (std::size_t k = 0; k < 30; ++k)
        names.columns[k] = trimRight(config.userColumns[k / 5][k % 5]);
    return names;
}

void applyOwnNames(ConfigRecord& config, const OwnNames& names) {
    for (std::size_t i = 0; i < 7; ++i) {
        std::string name = trim(names.gameTypes[i]);
        if (name.empty())
            name = ConfigRecord::defaultGameTypeName(static_cast<int>(i + 1));
        config.gameTypeNames[i] = fit(name, width::gameTypeName);
    }
    for (std::size_t k = 0; k < 30; ++k) {
        std::string name = trim(names.columns[k]);
        if (name.empty())
            name = ConfigRecord::defaultUserColumn(static_cast<int>(k / 5),
                                                   static_cast<int>(k % 5 + 1));
        config.userColumns[k / 5][k % 5] = fit(name, width::columnName);
    }
}

} // namespace scorvane
