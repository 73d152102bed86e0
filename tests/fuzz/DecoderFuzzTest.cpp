#include "storage/ConfigFile.h"
#include "storage/DataFiles.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

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

// A quarter exactly the record length, the rest shorter or longer.
std::size_t randomLength(std::mt19937& rng, std::size_t exact) {
    return rng() % 4 ? rng() % (3 * exact) : exact;
}

Bytes resized(Bytes b, std::size_t n) {
    b.resize(n, 0);
    return b;
}

void setBlank(Bytes& b, std::size_t from, std::size_t to) {
    std::fill(b.begin() + static_cast<std::ptrdiff_t>(from), b.begin() + static_cast<std::ptrdiff_t>(to), ' ');
}

// Every byte of these records belongs to some field, so a decoded buffer writes back as the
// buffer itself, cut or zero-filled to the record length, and doing it twice changes nothing.
template <class R> void checkExact(const Bytes& x) {
    const Bytes once = R::decode(x).encode();
    ASSERT_EQ(once, resized(x, R::Length)) << x.size() << " bytes";
    ASSERT_EQ(R::decode(once).encode(), once);
}

} // namespace

TEST(DecoderFuzz, AnyBufferDecodesAndWritesBackStably) {
    std::mt19937 rng(1979);
    for (int i = 0; i < 4000; ++i) {
        const Bytes x = randomBytes(rng, randomLength(rng, 1018));
        const Bytes y = randomBytes(rng, randomLength(rng, 200));
        checkExact<TeamRecord>(y);
        checkExact<RosterRecord>(y);
        checkExact<GameRecord>(y);
        checkExact<StatRecord>(y);
        checkExact<StatListRecord>(y);
        checkExact<ReportFormatRecord>(y);
        checkExact<ConfigRecord>(x);

        Bytes info = resized(x, 500);  // the reserved areas are always written blank
        for (auto [from, to] : {std::pair{122, 142}, {147, 167}, {177, 197}, {267, 500}})
            setBlank(info, from, to);
        ASSERT_EQ(PlayerInfoRecord::decode(x).encode(), info);

        Bytes header(8, 0);
        StatHeader::decode(y).encodeInto(header);
        ASSERT_EQ(header, resized(y, 8));

        const Bytes upgraded = ConfigRecord::upgradeLegacy(x).encode();
        Bytes head = resized(x, 669);
        setBlank(head, 321, 329);
        setBlank(head, 638, 669);
        ASSERT_EQ(upgraded.size(), 1018u);
        ASSERT_EQ(Bytes(upgraded.begin(), upgraded.begin() + 669), head);
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
        Bytes roster = randomBytes(rng, rng() % 1500);
        if (rng() % 2) {
            const std::size_t length = 19 + rng() % 300;
            roster = randomBytes(rng, length * (1 + rng() % 20));
            for (std::size_t off = 0, number = 0; off < roster.size(); off += length) {
                number += 1 + rng() % 4;
                roster[off] = static_cast<std::uint8_t>(number);
                roster[off + 1] = 0;
            }
        }
        dir.write("FBPN1.DAT", roster);

        DataFiles files(DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter);
        const Status rosterStatus = files.openFile(FileKind::Roster);
        if (rosterStatus)
            EXPECT_EQ(dir.read("FBPN1.DAT").size() % 201, 0u);
        else
            EXPECT_TRUE(rosterStatus.kind() == ErrorKind::Unreadable && dir.read("FBPN1.DAT") == roster);

        for (FileKind kind : {FileKind::TeamList, FileKind::Games, FileKind::Stats,
                              FileKind::PlayerInfo, FileKind::ReportFormats}) {
            std::vector<Bytes> all;
            ASSERT_TRUE(files.readAll(kind, all));
            EXPECT_EQ(all.size(), std::filesystem::file_size(files.fileName(kind)) / recordLength(kind));
        }
        const int games = files.recordCount(FileKind::Games);
        for (int n = 1; n <= games + 1; ++n) {
            GameRecord g;
            const Status s = files.gameRecord('G', n, g);
            EXPECT_TRUE(n > games ? s.kind() == ErrorKind::RecordRange : s || s.kind() == ErrorKind::Overflow);
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

        // Only the two known configuration lengths are accepted; a refused file stays as it was.
        const std::size_t configLength = rng() % 3 ? 600 + rng() % 500 : (rng() % 2 ? 669 : 1018);
        const Bytes config = randomBytes(rng, configLength);
        dir.write("BXFB.INI", config);
        ConfigRecord record;
        bool upgraded = false;
        const Status s = loadConfiguration(prompter, dir.file("BXFB.INI"), record, upgraded);
        if (configLength == 669 || configLength == 1018) {
            EXPECT_TRUE(s && upgraded == (configLength == 669));
            EXPECT_EQ(dir.read("BXFB.INI").size(), 1018u);
        } else {
            EXPECT_EQ(s.kind(), ErrorKind::BadLength);
            EXPECT_EQ(dir.read("BXFB.INI"), config);
        }
        EXPECT_TRUE(prompter.shown.empty());
    }
}
