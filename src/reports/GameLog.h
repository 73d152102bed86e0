#pragma once

#include "Season.h"
#include "Selection.h"
#include "Statistics.h"
#include "TableReport.h"

#include "storage/ColumnTable.h"

#include <string>
#include <vector>

namespace scorvane {

// One player's figures in one category game by game, and his season line under them.
struct GameLogEntry {
    GameRecord game;
    PlayerFigures figures;
};

struct GameLog {
    char category = 'P';
    int playerNumber = 0;
    std::string playerName;          // 17 characters, Windows-1252
    std::vector<GameLogEntry> games; // the selected games in which he has a record, in game order
    PlayerFigures season;            // the report's line of the same games
    std::vector<OverflowNote> overflows;
    Status status; // not ok when the statistics could not be read: the log is then empty

    bool empty() const { return games.empty(); }
};

// Works out the game log of player `playerNumber` in `category` over the games the selection
// counts, with the report's own computation (each game on its own, then all of them together),
// so a game's line and the season line read exactly as a report of those games would.
GameLog computeGameLog(char category, const TeamSeason& team, const Selection& selection,
                       int playerNumber);

// The categories (letters, in the order P C R D K T) in which the player has a live record of any
// game. A statistics file that cannot be read gives its status.
[[nodiscard]] Status categoriesRecorded(const TeamSeason& team, int playerNumber,
                                        std::vector<char>& categories);

// The report: the game's date and opponent, then the columns in print order; the season line
// closes it.
TableReport gameLogReport(const GameLog& log, const std::vector<int>& columns,
                          const ColumnTable& table, const ReportHeading& heading);

} // namespace scorvane
