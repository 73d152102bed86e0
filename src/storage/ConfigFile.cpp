#include "ConfigFile.h"

#include "DiskError.h"
#include "RecordFile.h"

namespace scorvane {

Message corruptConfigurationMessage() {
    return {"BXFB.INI File Corrupt or Not Found", "Reinstall Scorvane for Football", Buttons::Ok,
            Icon::Critical, Answer::Ok};
}

Status loadConfiguration(Prompter& prompter, const std::string& path, ConfigRecord& config,
                         bool& upgraded) {
    upgraded = false;
    Bytes contents;
    bool exists = false;
    if (Status s = withDiskErrors(prompter, [&] { return readWholeFile(path, contents, exists); });
        !s)
        return s;
    if (contents.size() == ConfigRecord::LegacyLength) {
        config = ConfigRecord::upgradeLegacy(contents);
        if (Status s = saveConfiguration(prompter, path, config); !s)
            return s;
        upgraded = true;
        return Status::ok();
    }
    if (contents.size() != ConfigRecord::Length)
        return Status::error(ErrorKind::BadLength, corruptConfigurationMessage().text);
    config = ConfigRecord::decode(contents);
    return Status::ok();
}

Status saveConfiguration(Prompter& prompter, const std::string& path, const ConfigRecord& config) {
    const Bytes bytes = config.encode();
    return withDiskErrors(prompter, [&] { return writeFileAtomically(path, bytes); });
}

} // namespace scorvane
