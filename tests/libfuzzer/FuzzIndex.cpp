// The player screen's indexing pass over a statistics file, and the save built on it: a game
// record and statistics records, then what the pass finds must be where it says, the pass over
// the file on disk must find the same and leave the file as it corrected it, and saving results
// read without a change must give back the file as the pass corrected it, and a changed result
// saved on disk must give the file built in memory.

#include "FuzzInput.h"
#include "entry/GameResults.h"
#include "storage/DataFiles.h"
#include "storage/StatIndex.h"
#include "support/FakePrompter.h"

using namespace scorvane;
using namespace scorvane::testing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput in(data, size);
    const GameRecord game = GameRecord::decode(in.piece(GameRecord::Length));
    const Bytes rest = in.rest();
    std::vector<Bytes> records;
    for (std::size_t at = 0; at + StatRecord::Length <= rest.size(); at += StatRecord::Length)
        records.emplace_back(rest.begin() + static_cast<std::ptrdiff_t>(at),
                             rest.begin() + static_cast<std::ptrdiff_t>(at + StatRecord::Length));

    std::vector<StatHeader> headers;
    for (const Bytes& r : records)
        headers.push_back(StatHeader::decode(r));
    std::vector<int> changed;
    const GameStatsIndex index = indexGameStats(headers, game, changed);
    const int count = static_cast<int>(records.size());
    FUZZ_CHECK(index.recordCount == count);
    FUZZ_CHECK(index.insertionPoint >= 1 && index.insertionPoint <= count + 1);
    for (int n = 1; n < index.insertionPoint; ++n)
        FUZZ_CHECK(headers[static_cast<std::size_t>(n - 1)].gameNumber <= game.gameNumber);
    for (int c = 0; c < kCategoryCount; ++c)
        for (int p = 1; p <= kMaxPlayers; ++p) {
            const int n = index.recordOf[static_cast<std::size_t>(c)][static_cast<std::size_t>(p)];
            if (n == 0)
                continue;
            FUZZ_CHECK(n >= 1 && n < index.insertionPoint);
            const StatHeader& h = headers[static_cast<std::size_t>(n - 1)];
            FUZZ_CHECK(h.isLive() && h.gameNumber == game.gameNumber && h.playerNumber == p &&
                       h.category == kCategoryLetters[static_cast<std::size_t>(c)]);
        }
    std::vector<Bytes> corrected = records;
    for (int n : changed) {
        FUZZ_CHECK(n >= 1 && n <= count);
        const StatHeader& h = headers[static_cast<std::size_t>(n - 1)];
        FUZZ_CHECK(h.statGameType == game.gameType && h.statSpecialSelect == game.specialSelect);
        h.encodeInto(corrected[static_cast<std::size_t>(n - 1)]);
    }

    // The same pass over the file on disk, as the player screen makes it. In a file in game order
    // it finds exactly what the pass from the start finds; in one out of order only where its
    // search does not look it may find the game's records elsewhere, but only the game's.
    bool inOrder = true;
    for (std::size_t i = 1; i < headers.size(); ++i)
        inOrder = inOrder && headers[i - 1].gameNumber <= headers[i].gameNumber;
    static const TempDir folder;
    const Bytes file(rest.begin(),
                     rest.begin() + static_cast<std::ptrdiff_t>(count * StatRecord::Length));
    folder.write("FBPS1.DAT", file);
    {
        FakePrompter prompter;
        DataFiles data(DataPaths{folder.dir(), folder.dir(), folder.dir()}, prompter);
        TeamFiles team = data.team(1);
        GameStatsIndex onDisk;
        GameStatRecords read;
        FUZZ_CHECK(team.indexGameStats(game, onDisk, &read).isOk());
        FUZZ_CHECK(onDisk.recordCount == index.recordCount);
        if (!inOrder) {
            for (int c = 0; c < kCategoryCount; ++c)
                for (int p = 1; p <= kMaxPlayers; ++p) {
                    const int n =
                        onDisk.recordOf[static_cast<std::size_t>(c)][static_cast<std::size_t>(p)];
                    FUZZ_CHECK(n == 0 ||
                               (read.count(n) == 1 &&
                                StatHeader::decode(read.at(n)).gameNumber == game.gameNumber &&
                                StatHeader::decode(read.at(n)).playerNumber == p));
                }
            FUZZ_CHECK(prompter.shown.empty());
            return 0;
        }
        FUZZ_CHECK(onDisk.recordOf == index.recordOf && onDisk.counters == index.counters &&
                   onDisk.insertionPoint == index.insertionPoint);
        for (const auto& [n, rec] : read)
            FUZZ_CHECK(n >= 1 && n <= static_cast<int>(corrected.size()) &&
                       rec == corrected[static_cast<std::size_t>(n - 1)]);
        for (int c = 0; c < kCategoryCount; ++c)
            for (int n : index.recordOf[static_cast<std::size_t>(c)])
                FUZZ_CHECK(n == 0 || read.count(n) == 1);
        FUZZ_CHECK(prompter.shown.empty());
    }
    Bytes expectedFile;
    for (const Bytes& r : corrected)
        expectedFile.insert(expectedFile.end(), r.begin(), r.end());
    FUZZ_CHECK(folder.read("FBPS1.DAT") == expectedFile);

    // Results read and written back unchanged change nothing but the corrections.
    GameStatRecords all;
    for (std::size_t i = 0; i < corrected.size(); ++i)
        all.emplace(static_cast<int>(i) + 1, corrected[i]);
    GameResults results;
    results.load(all, index);
    bool differs = true;
    FUZZ_CHECK(results.applyTo(records, game, differs) == corrected);
    FUZZ_CHECK(differs == (corrected != records));

    // A changed result saved on disk, in one pass over the file, gives what applyTo builds in
    // memory: the game's records rewritten where they lie, new ones at the insertion point.
    const int player = 1 + static_cast<int>(game.gameNumber & 0x3F);
    const int category = (game.gameNumber >> 6 & 0xFF) % kCategoryCount;
    CategoryResults& changedResult = results.at(player, category);
    changedResult.played = !changedResult.played || (game.gameNumber & 0x4000) != 0;
    changedResult.values[0] = static_cast<std::int16_t>(changedResult.values[0] + 1);
    Bytes built;
    for (const Bytes& r : results.applyTo(corrected, game))
        built.insert(built.end(), r.begin(), r.end());
    {
        FakePrompter prompter;
        DataFiles data(DataPaths{folder.dir(), folder.dir(), folder.dir()}, prompter);
        TeamFiles team = data.team(1);
        FUZZ_CHECK(saveGameResults(team, game, results).isOk());
    }
    FUZZ_CHECK(folder.read("FBPS1.DAT") == built);
    return 0;
}
