#pragma once

#include "storage/DataFiles.h"
#include "storage/StatLayout.h"
#include "storage/TeamList.h"
#include "support/FakePrompter.h"

#include <string>
#include <utility>
#include <vector>

namespace scorvane::testing {

// Seasons written into data directories of their own, as a coach keeps them: team 1 ("Hawks")
// with a roster, its games (one quarter's score each) and the players' statistics records.

struct Rec {
    int game;
    int player;
    char category;
    std::vector<std::pair<int, int>> values; // by column code
};

struct SeasonData {
    std::string label;
    std::vector<std::pair<int, std::string>> roster; // Windows-1252 names
    std::vector<std::pair<int, int>> scores;         // game by game: us, them
    std::vector<Rec> records;
};

inline Bytes encode(const Rec& r, int game, int player) {
    StatRecord s;
    s.header = StatHeader{static_cast<std::int16_t>(game), static_cast<std::int16_t>(player),
                          r.category, 'A'};
    for (const auto& [code, value] : r.values)
        s.values.at(static_cast<std::size_t>(statSlot(r.category, code))) =
            static_cast<std::int16_t>(value);
    return s.encode();
}

inline GameRecord game(int number, int us, int them) {
    GameRecord g;
    g.gameNumber = static_cast<std::int16_t>(number);
    g.gameDate = "09" + std::string(number < 10 ? "0" : "") + std::to_string(number) + "24";
    g.opponent = "Opponent " + std::to_string(number);
    g.teamScore[0] = static_cast<std::int16_t>(us);
    g.opponentScore[0] = static_cast<std::int16_t>(them);
    return g;
}

// Writes the season into `folder` (ending in a separator); false when a file could not be
// written.
[[nodiscard]] inline bool writeSeason(const std::string& folder, const SeasonData& d) {
    FakePrompter prompter;
    DataFiles data{DataPaths{folder, folder, folder}, prompter};
    TeamList names;
    if (!TeamList::createTeamList(data) || !names.storeNames(data, 1, "Hawks", "Hawks"))
        return false;
    TeamFiles files = data.team(1);
    std::vector<RosterRecord> roster;
    for (const auto& [number, name] : d.roster)
        roster.push_back(RosterRecord{static_cast<std::int16_t>(number), name});
    std::vector<GameRecord> games;
    for (std::size_t g = 0; g < d.scores.size(); ++g)
        games.push_back(game(static_cast<int>(g) + 1, d.scores[g].first, d.scores[g].second));
    std::vector<Bytes> stats;
    for (const Rec& r : d.records)
        stats.push_back(encode(r, r.game, r.player));
    return files.replaceAllWith(FileKind::Roster, roster) &&
           files.replaceAllWith(FileKind::Games, games) && files.replaceAll(FileKind::Stats, stats);
}

// Passing: Att 2, Cm 3, Yds 4, Int 5, TD 6, Lg 8. Rushing: Rsh 2, Yds 3, Lg 4, TD 5.
// Receiving: Rec 2, Yds 3, TD 4, YAC 7, FD 8.
inline Rec pass(int game, int player, int att, int cm, int yds, int ints, int td, int lg) {
    return {game, player, 'P', {{2, att}, {3, cm}, {4, yds}, {5, ints}, {6, td}, {8, lg}}};
}
inline Rec rush(int game, int player, int rsh, int yds, int lg, int td = 0) {
    return {game, player, 'R', {{2, rsh}, {3, yds}, {4, lg}, {5, td}}};
}
inline Rec catches(int game, int player, int rec, int yds, int td, int yac, int fd) {
    return {game, player, 'C', {{2, rec}, {3, yds}, {4, td}, {7, yac}, {8, fd}}};
}

} // namespace scorvane::testing
