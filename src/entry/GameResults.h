#pragma once

#include "PlayLists.h"

#include "storage/Category.h"
#include "storage/DataFiles.h"
#include "storage/Records.h"
#include "storage/StatIndex.h"
#include "storage/StatLayout.h"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace scorvane {

// One player's results of one category in the game being entered.
struct CategoryResults {
    // The played mark: the player is recorded in the category exactly when it is set.
    bool played = false;
    // The entered values by screen field, as stored (defense sacks in tenths).
    std::array<std::int16_t, kEntryFieldCount> values{};
    // Kicking and returns: the kicks or returns.
    PlayList plays{};

    bool operator==(const CategoryResults&) const = default;
};

// Every player's results of one game, held in memory while the player screen is open. Slots run
// 1..99 by player number, whether or not the number is on the roster, so results recorded under a
// number that has left the roster are kept and written back as they were.
class GameResults {
public:
    // Takes the records the index found (in `records`, by record number).
    void load(const GameStatRecords& records, const GameStatsIndex& index);

    CategoryResults& at(int player, int category);
    const CategoryResults& at(int player, int category) const;

    // The statistics file after writing these results, built from its current records in one
    // pass. The game's records are found again as the indexing pass finds them. A player's
    // existing record of a category is rewritten from his results (with status "D" when he is no
    // longer recorded in it); everything the screen does not enter (other values, the record's
    // tail) stays as it was. New records (player 1..99, then passing, receiving, rushing,
    // defense, kicking, returns) go in one block at the game's insertion point, so the file stays
    // in game order. Every other record is kept byte for byte.
    std::vector<Bytes> applyTo(std::vector<Bytes> records, const GameRecord& game) const;
    // The same, telling whether the file comes out different from `records`.
    std::vector<Bytes> applyTo(std::vector<Bytes> records, const GameRecord& game,
                               bool& changed) const;

    // What writing these results changes, worked out from the game's records alone (`records`,
    // by record number, as the index found them): the game's records as rewritten, by number,
    // and the new records, which go in one block before record `insertionPoint`.
    struct Change {
        std::map<int, Bytes> rewritten;
        std::vector<Bytes> inserted;
        int insertionPoint = 1;
        bool changed = false; // whether any record comes out different, or any is new
    };
    Change changeFor(const GameStatRecords& records, const GameStatsIndex& index,
                     const GameRecord& game) const;

private:
    std::array<std::array<CategoryResults, kCategoryCount>, kMaxPlayers + 1> players_{};
};

// The statistics file's rewrite that makes a change (see RecordRewrite): every record as it was
// but the game's rewritten ones, with the new records in one block before the insertion point, or
// at the end when it lies past the last record. It refers to `change`, which must outlive it.
RecordRewrite resultsRewrite(const GameResults::Change& change);

// Writes the results of the game in place, crash-safe through the rollback journal: the game's
// records that changed, and its new records appended when it is the last game, or else the file
// rewritten from the game's first changed record on, a piece at a time (or replaced whole, when
// that part is more than half of it). Nothing is written when nothing differs.
[[nodiscard]] Status saveGameResults(TeamFiles& files, const GameRecord& game,
                                     const GameResults& results);

} // namespace scorvane
