#pragma once

#include "Category.h"
#include "Records.h"

#include <array>
#include <map>
#include <vector>

namespace scorvane {

// Where the statistics of one game lie in the statistics file.
struct GameStatsIndex {
    // recordOf[category][player]: the record number of the player's live record of that category
    // in the game, 0 when none. Player slots run 1..99; slot 0 is unused.
    std::array<std::array<int, kMaxPlayers + 1>, kCategoryCount> recordOf{};
    std::array<int, kCategoryCount> counters{};
    int recordCount = 0;
    // Where new statistics records of the game go so that the file stays in game order.
    int insertionPoint = 1;
};

// A game's statistics records by record number, as the indexing pass reads them.
using GameStatRecords = std::map<int, Bytes>;

// The indexing pass over statistics records (given as their headers, in file order, the first
// being record `firstNumber`) for one game. The scan stops at the first record of a later game, so
// a record of this game lying behind a later game's records is not found. Live records of the game
// whose copied game type or Special Select mark differ from the game's are updated in `headers`;
// their record numbers are appended to `changed` so that the caller writes them back.
GameStatsIndex indexGameStats(std::vector<StatHeader>& headers, const GameRecord& game,
                              std::vector<int>& changed, int firstNumber = 1);

} // namespace scorvane
