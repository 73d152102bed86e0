#pragma once

// What must hold for any input of the record decoders and the configuration check (included by
// a relative path, without the test include folder).

#include "../support/FakePrompter.h"
#include "../support/TempDir.h"
#include "storage/ConfigFile.h"
#include "storage/Records.h"

#include <algorithm>
#include <string>

namespace scorvane::testing {

inline Bytes resized(Bytes b, std::size_t n) {
    b.resize(n, 0);
    return b;
}

// Every byte of these records belongs to some field, so a decoded buffer writes back as the
// buffer itself, cut or zero-filled to the record length (and doing it twice changes nothing).
template <class R> bool writesBack(const Bytes& x) {
    return R::decode(x).encode() == resized(x, R::Length);
}

// The first decoder the buffer upsets, or "" when none.
inline std::string upsetDecoder(const Bytes& x) {
    Bytes info = resized(x, 500); // the reserved areas are always written blank
    for (auto [from, to] : {std::pair{122, 142}, {147, 167}, {177, 197}, {267, 500}})
        std::fill(info.begin() + from, info.begin() + to, ' ');
    Bytes header(8, ' ');
    StatHeader::decode(x).encodeInto(header);
    // An upgraded record keeps the older one but for the two text areas it writes blank.
    const Bytes upgraded = ConfigRecord::upgradeLegacy(x).encode();
    Bytes head = resized(x, 669);
    std::fill(head.begin() + 321, head.begin() + 329, ' ');
    std::fill(head.begin() + 638, head.end(), ' ');
    (void)GameRecord::decode(x).pointSums();
    const std::pair<const char*, bool> checks[] = {
        {"team", writesBack<TeamRecord>(x)},
        {"roster", writesBack<RosterRecord>(x)},
        {"game", writesBack<GameRecord>(x)},
        {"statistics", writesBack<StatRecord>(x)},
        {"statistics list", writesBack<StatListRecord>(x)},
        {"report format", writesBack<ReportFormatRecord>(x)},
        {"configuration", writesBack<ConfigRecord>(x)},
        {"player information", PlayerInfoRecord::decode(x).encode() == info},
        {"statistics header", header == resized(x, 8)},
        {"upgrade",
         upgraded.size() == 1018 && std::equal(head.begin(), head.end(), upgraded.begin())}};
    for (auto [name, holds] : checks)
        if (!holds)
            return name;
    return "";
}

// Written as BXFB.INI, only the two known lengths are accepted, the older one upgraded on disk to
// the record in use; a refused file stays byte for byte as it was. No length brings a message.
inline bool configurationCheckHolds(const TempDir& dir, const Bytes& contents) {
    dir.write("BXFB.INI", contents);
    FakePrompter prompter;
    ConfigRecord config;
    bool upgraded = false;
    const Status s = loadConfiguration(prompter, dir.file("BXFB.INI"), config, upgraded);
    const Bytes after = dir.read("BXFB.INI");
    if (contents.size() != ConfigRecord::Length && contents.size() != ConfigRecord::LegacyLength)
        return s.kind() == ErrorKind::BadLength && after == contents && prompter.shown.empty();
    return s && upgraded == (contents.size() == ConfigRecord::LegacyLength) &&
           config.encode() == after && prompter.shown.empty();
}

} // namespace scorvane::testing
