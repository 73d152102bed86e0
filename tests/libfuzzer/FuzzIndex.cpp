// The player screen's indexing pass over a statistics file, and the save built on it: a game
// record and statistics records, then what the pass finds must be where it says, the pass over
// the file on disk must find the same and leave the file as it corrected it, and saving results
// read without a change must give back the file as the pass corrected it.

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

    // The same pass over the file on disk, as the player screen makes it.
    static const TempDir folder;
    const Bytes file(rest.begin(),
                     rest.begin() + static_cast<std::ptrdiff_t>(count * StatRecord::Length));
    folder.write("FBPS1.DAT", file);
    {
        FakePrompter prompter;
        DataFiles data(DataPaths{folder.dir(), folder.dir(), folder.dir()}, prompter);
        TeamFiles team = data.team(1);
        GameStatsIndex onDisk;
        std::vector<Bytes> read;
        FUZZ_CHECK(team.indexGameStats(game, onDisk, &read).isOk());
        FUZZ_CHECK(onDisk.recordOf == index.recordOf && onDisk.counters == index.counters &&
                   onDisk.insertionPoint == index.insertionPoint &&
                   onDisk.recordCount == index.recordCount);
        FUZZ_CHECK(read.size() == records.size());
        for (std::size_t i = 0; i < read.size(); ++i)
            FUZZ_CHECK(read[i].empty() || read[i] == corrected[i]);
        for (int c = 0; c < kCategoryCount; ++c)
            for (int n : index.recordOf[static_cast<std::size_t>(c)])
                FUZZ_CHECK(n == 0 || read[static_cast<std::size_t>(n - 1)] ==
                                         corrected[static_cast<std::size_t>(n - 1)]);
        FUZZ_CHECK(prompter.shown.empty());
    }
    Bytes expectedFile;
    for (const Bytes& r : corrected)
        expectedFile.insert(expectedFile.end(), r.begin(), r.end());
    FUZZ_CHECK(folder.read("FBPS1.DAT") == expectedFile);

    // Results read and written back unchanged change nothing but the corrections.
    GameResults results;
    results.load(corrected, index);
    bool differs = true;
    FUZZ_CHECK(results.applyTo(records, game, differs) == corrected);
    FUZZ_CHECK(differs == (corrected != records));
    return 0;
}
