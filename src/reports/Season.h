#pragma once

#include "storage/DataFiles.h"
#include "storage/FileNames.h"
#include "storage/Records.h"
#include "storage/Status.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// Everything a report reads of one team, held in memory: its names, its roster, its games and
// its player statistics records. Texts are the stored Windows-1252 bytes.
struct TeamSeason {
    int number = 0;
    std::string name;      // long name, right-trimmed
    std::string shortName; // short name, right-trimmed
    // The roster by player number: the 17-character name, or empty for a number not in use.
    std::array<std::string, kMaxPlayers + 1> players;
    std::vector<GameRecord> games;
    std::vector<Bytes> stats; // raw 110-byte records in file order

    // The name a line of the report shows for a player: the roster name, or spaces.
    std::string playerName(int number) const;
};

// Reads a team through the program's data files (the team list record, roster, games and
// statistics). Files the team does not have yet read as empty and are not created.
[[nodiscard]] Status loadTeamSeason(DataFiles& data, int team, TeamSeason& season);

// Reads a team for a report screen: without creating or changing anything when the files allow it
// (readTeamSeason), otherwise through the program's data files (loadTeamSeason), which finish an
// interrupted change, convert a roster of an older layout and report disk errors as the program
// always does.
[[nodiscard]] Status viewTeamSeason(DataFiles& data, int team, TeamSeason& season);

// Reads a team without creating or changing anything: missing files read as empty. Fails when the
// data directory holds no team list, the team is not named in it, the roster is not in the
// current layout or a file cannot be read.
[[nodiscard]] Status readTeamSeason(const DataPaths& paths, int team, TeamSeason& season);

// The whole contents of a file of fixed-length records, read without creating it; a trailing
// piece of a record is left out. A missing file gives no records.
[[nodiscard]] Status readRecordsReadOnly(const std::string& path, std::size_t recordLength,
                                         std::vector<Bytes>& records, bool& exists);

} // namespace scorvane
