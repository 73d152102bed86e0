#pragma once

#include "storage/Status.h"

#include <optional>
#include <string>
#include <vector>

namespace scorvane {

// The seasons a user keeps, and the players linked or told apart across them, in "seasons.txt"
// next to BXFB.INI in the configuration folder. The file is our own small text file (UTF-8, one
// entry a line, fields separated by tabs):
//
//     Scorvane seasons<TAB>1
//     season<TAB>2024<TAB>1<TAB>/home/coach/football/2024/
//     season<TAB>2025<TAB>1<TAB>/home/coach/football/2025/
//     link<TAB>2024<TAB>Jon Smyth<TAB>2025<TAB>John Smith
//     unlink<TAB>2024<TAB>Sam Lee<TAB>2025<TAB>Sam Lee
//
// The first line names the file and its version. A season line holds the label, the team number
// (1..100) and the data directory, last, so that it may hold any character but a tab; a link or
// unlink line two (season label, player name) pairs. Empty lines and lines starting with "#" are
// skipped. The seasons are kept in the user's order (oldest first): that is the order of every
// report over them.
//
// The file is read whole and written whole, only when the user changes it, through the crash-safe
// whole-file write. Reading never writes: a line it cannot use is left out and reported, and the
// file stays as it is until the user changes the list.

struct SeasonEntry {
    std::string label;         // "2025"; UTF-8
    std::string dataDirectory; // UTF-8, as the program keeps directories (ending in a separator)
    int team = 1;

    bool operator==(const SeasonEntry&) const = default;
};

// A player of one season, by the season's label and his name (Windows-1252, as the roster keeps
// it; compared as identity does, see Identity.h).
struct SeasonPlayer {
    std::string season;
    std::string name;

    bool operator==(const SeasonPlayer&) const = default;
};

// Two players the user joined as one person (a misspelt name), or told apart although their
// names match (two brothers of one name).
struct PlayerLink {
    SeasonPlayer first;
    SeasonPlayer second;
    bool unlink = false;

    bool operator==(const PlayerLink&) const = default;
};

struct SeasonsList {
    std::vector<SeasonEntry> seasons;
    std::vector<PlayerLink> links;

    bool operator==(const SeasonsList&) const = default;
    const SeasonEntry* find(const std::string& label) const;
};

inline constexpr const char* kSeasonsFileName = "seasons.txt";

// The seasons file of a configuration folder (which ends in a separator).
std::string seasonsFilePath(const std::string& configDirectory);

// The file's text, and the list read back from a text. `problems` gets one message for every line
// left out ("Line 4: ..."), and for a first line that is not the file's version line.
std::string seasonsText(const SeasonsList& list);
SeasonsList parseSeasons(const std::string& text, std::vector<std::string>& problems);

// Reads the file; a missing file is an empty list. Only a file that cannot be read at all fails.
[[nodiscard]] Status readSeasonsFile(const std::string& path, SeasonsList& list,
                                     std::vector<std::string>& problems);
// Replaces the whole file (temporary file, flush, rename).
[[nodiscard]] Status writeSeasonsFile(const std::string& path, const SeasonsList& list);

// Adds a season at the end of the list. Refused, with the message to show and the list unchanged,
// when the label is empty, already used or holds a tab or a line break, when the team is outside
// 1..100, or when another season already names the same folder (the same place on disk, however
// it is written) and team.
std::optional<std::string> addSeason(SeasonsList& list, SeasonEntry entry);

// Adds a link or an unlink of two players; refused when a season is not in the list, a name is
// empty, both are the same player of one season, or the same pair is already there.
std::optional<std::string> addLink(SeasonsList& list, PlayerLink link);

} // namespace scorvane
