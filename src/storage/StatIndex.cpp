#include "StatIndex.h"

namespace scorvane {

GameStatsIndex indexGameStats(std::vector<StatHeader>& headers, const GameRecord& game,
                              std::vector<int>& changed, int firstNumber) {
    GameStatsIndex index;
    const int count = static_cast<int>(headers.size());
    const int end = firstNumber + count;
    index.recordCount = end - 1;
    index.insertionPoint = end;
    for (int n = firstNumber; n < end; ++n) {
        StatHeader& h = headers[static_cast<std::size_t>(n - firstNumber)];
        if (h.isLive() && h.gameNumber == game.gameNumber) {
            const int cat = categoryIndex(h.category);
            // A record with an unknown category or a player number outside 1..99 cannot be shown
            // in any table; it is left alone rather than indexed.
            if (cat >= 0 && isPlayerNumber(h.playerNumber)) {
                index.recordOf[static_cast<std::size_t>(cat)]
                              [static_cast<std::size_t>(h.playerNumber)] = n;
                ++index.counters[static_cast<std::size_t>(cat)];
            }
            if (h.statSpecialSelect != game.specialSelect || h.statGameType != game.gameType) {
                h.statSpecialSelect = game.specialSelect;
                h.statGameType = game.gameType;
                changed.push_back(n);
            }
        } else if (h.gameNumber > game.gameNumber) {
            index.insertionPoint = n;
            break;
        }
    }
    return index;
}

} // namespace scorvane
