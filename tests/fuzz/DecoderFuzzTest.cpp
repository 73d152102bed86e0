#include "fuzz/DecoderChecks.h"
#include "storage/DataFiles.h"

#include <gtest/gtest.h>

#include <random>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

Bytes randomBytes(std::mt19937& rng, std::size_t n) {
    Bytes b(n);
    for (auto& x : b)
        x = static_cast<std::uint8_t>(rng());
    return b;
}

// A quarter exactly the given length, the rest shorter or longer.
std::size_t randomLength(std::mt19937& rng, std::size_t exact) {
    return rng() % 4 ? rng() % (3 * exact) : exact;
}

} // namespace

TEST(DecoderFuzz, AnyBufferDecodesAndWritesBackStably) {
    std::mt19937 rng(1979);
    const std::size_t lengths[] = {40, 110, 167, 200, 201, 500, 669, 1018};
    for (int i = 0; i < 8000; ++i) {
        const Bytes x = randomBytes(rng, randomLength(rng, lengths[rng() % 8]));
        ASSERT_EQ(upsetDecoder(x), "") << x.size() << " bytes";
    }
}

TEST(DecoderFuzz, RandomFilesNeverUpsetTheReaders) {
    std::mt19937 rng(2003);
    for (int round = 0; round < 80; ++round) {
        TempDir dir;
        FakePrompter prompter;
        dir.write("FBTEAMS.DAT", randomBytes(rng, rng() % 400));
        dir.write("FBGS1.DAT", randomBytes(rng, randomLength(rng, 2000)));
        dir.write("FBPI1.DAT", randomBytes(rng, rng() % 2000));
        dir.write("FBRPTFMT.DAT", randomBytes(rng, rng() % 700));
        // Small game numbers and mostly live records, so that the index pass has work to do.
        Bytes stats = randomBytes(rng, randomLength(rng, 2200));
        for (std::size_t off = 0; off + 8 <= stats.size(); off += 110) {
            stats[off] = static_cast<std::uint8_t>(rng() % 4);
            stats[off + 1] = 0;
            stats[off + 4] = static_cast<std::uint8_t>("PCRDKTX"[rng() % 7]);
            stats[off + 5] = rng() % 5 ? 'A' : 'D';
        }
        dir.write("FBPS1.DAT", stats);
        // A random roster, or one in an older layout of a random record length.
        const std::size_t length = rng() % 2 ? 19 + rng() % 300 : 0;
        Bytes roster = randomBytes(rng, length ? length * (1 + rng() % 20) : rng() % 1500);
        for (std::size_t off = 0, number = 0; length && off < roster.size(); off += length) {
            number += 1 + rng() % 4;
            roster[off] = static_cast<std::uint8_t>(number);
            roster[off + 1] = 0;
        }
        dir.write("FBPN1.DAT", roster);

        DataFiles data(DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter);
        TeamFiles files = data.team(1);
        const Status rosterStatus = files.openFile(FileKind::Roster);
        EXPECT_TRUE(rosterStatus ? dir.read("FBPN1.DAT").size() % 201 == 0
                                 : rosterStatus.kind() == ErrorKind::Unreadable &&
                                       dir.read("FBPN1.DAT") == roster);
        // A damaged length counts whole records only; a game past them is out of range.
        auto countsWholeRecords = [](auto& holder, FileKind kind) {
            const auto whole =
                std::filesystem::file_size(holder.fileName(kind)) / recordLength(kind);
            std::vector<Bytes> all;
            ASSERT_TRUE(holder.readAll(kind, all));
            EXPECT_EQ(all.size(), whole);
            EXPECT_EQ(holder.recordCount(kind), static_cast<int>(whole));
        };
        for (FileKind kind : {FileKind::Games, FileKind::Stats, FileKind::PlayerInfo})
            countsWholeRecords(files, kind);
        for (FileKind kind : {FileKind::TeamList, FileKind::ReportFormats})
            countsWholeRecords(data, kind);
        const int games = files.recordCount(FileKind::Games);
        for (int n = 1; n <= games + 1; ++n) {
            GameRecord g;
            const Status s = files.gameRecord(Access::Read, n, g);
            EXPECT_TRUE(n > games ? s.kind() == ErrorKind::RecordRange
                                  : s || s.kind() == ErrorKind::Overflow);
        }

        GameRecord game = GameRecord::decode(randomBytes(rng, 200));
        game.gameNumber = static_cast<std::int16_t>(rng() % 4);
        GameStatsIndex index;
        ASSERT_TRUE(files.indexGameStats(game, index));
        EXPECT_TRUE(index.insertionPoint >= 1 && index.insertionPoint <= index.recordCount + 1);
        // Only the copied game type and Special Select of the game's live records may change.
        const Bytes after = dir.read("FBPS1.DAT");
        EXPECT_TRUE(after.size() == stats.size() || after.size() == stats.size() / 110 * 110);
        for (std::size_t i = 0; i < after.size(); ++i) {
            if (after[i] == stats[i])
                continue;
            const std::size_t start = i - i % 110;
            const StatHeader h = StatHeader::decode(Bytes(stats.begin() + start, stats.end()));
            ASSERT_TRUE(h.isLive() && h.gameNumber == game.gameNumber &&
                        after[start + 6] == static_cast<std::uint8_t>(game.gameType) &&
                        after[start + 7] == static_cast<std::uint8_t>(game.specialSelect))
                << "byte " << i;
        }

        // Mostly a wrong length, sometimes one of the two known ones.
        const std::size_t configLength = rng() % 3 ? 600 + rng() % 500 : (rng() % 2 ? 669 : 1018);
        EXPECT_TRUE(configurationCheckHolds(dir, randomBytes(rng, configLength))) << configLength;
        EXPECT_TRUE(prompter.shown.empty());
    }
}
