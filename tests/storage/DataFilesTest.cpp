#include "storage/DataFiles.h"
#include "storage/ByteHelpers.h"
#include "storage/ConfigFile.h"
#include "storage/DiskError.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

#ifndef _WIN32
#include "support/ChildProcess.h"

#include <fcntl.h>
#endif

// Designated initializers name only the fields a test cares about.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

using namespace scorvane;
using namespace scorvane::testing;

namespace {

class DataFilesTest : public ::testing::Test {
protected:
    TempDir data, reports;
    FakePrompter prompter;
    DataFiles files{DataPaths{data.dir(), data.dir(), reports.dir()}, prompter};
    TeamFiles team = files.team(1);

    // Faults of the data are no disk errors: no test here may bring up a message.
    void TearDown() override { EXPECT_TRUE(prompter.shown.empty()); }
};

Bytes stats(StatHeader h) {
    return StatRecord{.header = h}.encode();
}

} // namespace

TEST_F(DataFilesTest, RecordRangeAndPerTeamFiles) {
    TeamRecord t{"Ravens", "RAV", ""};
    ASSERT_TRUE(files.teamRecord(Access::Write, 1, t));
    t.teamName = "Tigers";
    ASSERT_TRUE(files.teamRecord(Access::Write, 2, t));
    EXPECT_EQ(data.read("FBTEAMS.DAT"),
              join({TeamRecord{"Ravens", "RAV", ""}.encode(), t.encode()}));
    ASSERT_TRUE(files.teamRecord(Access::Read, 1, t));
    EXPECT_EQ(trimRight(t.teamName), "Ravens");
    // Outside the file a record is refused, not a crash; writing may add one at the end.
    for (auto [mode, n] : {std::pair{Access::Read, 0},
                           {Access::Read, -1},
                           {Access::Read, 3},
                           {Access::Read, 32767},
                           {Access::Write, 0},
                           {Access::Write, 4}})
        EXPECT_EQ(files.teamRecord(mode, n, t).kind(), ErrorKind::RecordRange) << n;
    EXPECT_EQ(data.read("FBTEAMS.DAT").size(), 80u);

    // Each team's files carry its own number; two handles on one team share its files.
    TeamFiles three = files.team(3);
    RosterRecord r{.playerNumber = 4};
    ASSERT_TRUE(three.rosterRecord(Access::Write, 1, r));
    EXPECT_EQ(data.read("FBPN3.DAT").size(), 201u);
    EXPECT_EQ(files.team(3).recordCount(FileKind::Roster), 1);
    TeamFiles four = files.team(4);
    EXPECT_EQ(four.recordCount(FileKind::Roster), 0);
    ASSERT_TRUE(four.killFile(FileKind::Roster));
    EXPECT_FALSE(data.exists("FBPN4.DAT"));
    EXPECT_TRUE(data.exists("FBPN3.DAT"));
    // A team file is no directory file, and the other way round.
    EXPECT_FALSE(files.openFile(FileKind::Roster));
    EXPECT_FALSE(four.openFile(FileKind::TeamList));
}

TEST_F(DataFilesTest, PointSumOverflowAndASecondHandleOnTheSameTeam) {
    GameRecord g{.gameNumber = 5, .teamScore = {30000, 2767, 0, 0, 0}};
    ASSERT_TRUE(team.gameRecord(Access::Write, 1, g));
    g.teamScore[4] = 1; // one point more and the team's sum leaves the 16-bit range
    ASSERT_TRUE(team.gameRecord(Access::Write, 2, g));
    EXPECT_TRUE(team.gameRecord(Access::Read, 1, g));
    const Status s = team.gameRecord(Access::Read, 2, g);
    EXPECT_EQ(s.kind(), ErrorKind::Overflow);
    EXPECT_EQ(s.message(), "Overflow");
    EXPECT_EQ(g.teamScore[4], 1); // the record is filled in all the same

    // Another handle on the same team, already reading, sees the replaced file.
    TeamFiles other = files.team(1);
    EXPECT_EQ(other.gameRecord(Access::Read, 2, g).kind(), ErrorKind::Overflow);
    const std::vector<GameRecord> games = {{.gameNumber = 8}, {.gameNumber = 9}};
    ASSERT_TRUE(team.replaceAllWith(FileKind::Games, games));
    ASSERT_TRUE(other.gameRecord(Access::Read, 2, g));
    EXPECT_EQ(g.gameNumber, 9);
    // A new directory: the same handle opens the files found there.
    TempDir elsewhere;
    files.setPaths(DataPaths{elsewhere.dir(), elsewhere.dir(), elsewhere.dir()});
    EXPECT_EQ(other.recordCount(FileKind::Games), 0);
    EXPECT_EQ(data.read("FBGS1.DAT").size(), 400u);
}

TEST_F(DataFilesTest, IndexPassFindsTheGameAndWritesBackCorrectedMarks) {
    const GameRecord game{.gameNumber = 5, .gameType = '3', .specialSelect = '2'};
    GameStatsIndex index;
    ASSERT_TRUE(team.indexGameStats(game, index));
    EXPECT_EQ(index.insertionPoint, 1); // an empty file

    files.closeAll();
    Bytes expected = join({
        stats({2, 4, 'P', 'A', '1', '1'}), stats({5, 4, 'P', 'A', '3', '2'}), // already right
        stats({5, 7, 'P', 'A', '3', '2'}),  // already right, a second of its category
        stats({5, 9, 'R', 'A', '1', '1'}),  // both copies stale
        stats({5, 11, 'K', 'D', '1', '1'}), // deleted: skipped
        stats({5, 12, 'T', 'A', '3', '1'}), // Special Select stale
        stats({6, 4, 'P', 'A', '1', '1'}),  // first later game: the scan stops here
        stats({5, 20, 'C', 'A', '1', '1'}), // behind a later game: not found
    });
    data.write("FBPS1.DAT", expected);
    ASSERT_TRUE(team.indexGameStats(game, index));
    EXPECT_EQ(index.insertionPoint, 7);
    EXPECT_EQ(index.recordCount, 8);
    const auto& at = index.recordOf;
    EXPECT_EQ((std::array{at[0][4], at[0][7], at[2][9], at[4][11], at[5][12], at[1][20]}),
              (std::array{2, 3, 4, 0, 6, 0}));
    EXPECT_EQ(index.counters, (std::array<int, 6>{2, 0, 1, 0, 0, 1}));
    expected = image(expected, {{3 * 110 + 6, "32"}, {5 * 110 + 6, "32"}});
    EXPECT_EQ(data.read("FBPS1.DAT"), expected);

    // No later game: new records go at the end, and a game without records changes nothing.
    ASSERT_TRUE(team.indexGameStats(GameRecord{.gameNumber = 7}, index));
    EXPECT_EQ(index.insertionPoint, 9);
    EXPECT_EQ(data.read("FBPS1.DAT"), expected);
}

// The game's records are found by a binary search in a file in game order; a file out of order
// (a game's records appended after later games by an older program, games swapped, a stray
// record) is read from the start instead, so that every game is found as a pass from the start
// finds it.
TEST_F(DataFilesTest, GamesAreFoundAsAPassFromTheStartFindsThemInOrderOrNot) {
    std::vector<int> large;
    for (int g = 1; g <= 60; ++g)
        for (int i = 0; i < (g * 7) % 13 + (g % 5 == 0 ? 0 : 1); ++i)
            large.push_back(g);
    const std::vector<std::vector<int>> orders{
        {},
        {1, 1, 2, 2, 2, 3, 5, 5},
        large,
        {1, 1, 3, 3, 2, 2},
        {2, 2, 1, 1, 3},
        {1, 2, 1, 2, 3, 3},
        {1, 2, 2, 9, 2, 3},
        {1, 1, 1, 1, 1, 1, 1, 4, 2},
    };
    for (const auto& order : orders) {
        std::vector<Bytes> records;
        std::vector<StatHeader> headers;
        for (std::size_t i = 0; i < order.size(); ++i) {
            const StatHeader h{static_cast<std::int16_t>(order[i]),
                               static_cast<std::int16_t>(i % 99 + 1),
                               "PCRDKT"[i % 6],
                               i % 7 == 3 ? 'D' : 'A',
                               '1',
                               '1'};
            headers.push_back(h);
            records.push_back(stats(h));
        }
        files.closeAll();
        data.write("FBPS1.DAT", join(records));
        for (int g = 0; g <= 62; ++g) {
            const GameRecord game{.gameNumber = static_cast<std::int16_t>(g)};
            std::vector<StatHeader> all = headers;
            std::vector<int> changed;
            GameStatsIndex expected = indexGameStats(all, game, changed);
            GameStatsIndex found;
            ASSERT_TRUE(team.indexGameStats(game, found));
            EXPECT_EQ(found.recordOf, expected.recordOf) << "game " << g << " of " << order.size();
            EXPECT_EQ(found.counters, expected.counters) << "game " << g;
            EXPECT_EQ(found.insertionPoint, expected.insertionPoint) << "game " << g;
        }
    }
}

// A file rewritten in one pass is read in pieces: each record is handed over with its own number,
// whatever piece it falls in, and what the rewrite adds at the end comes last.
TEST_F(DataFilesTest, RewritesNumberRecordsAcrossPiecesAndHeaderChangesWriteOnlyOnAChange) {
    constexpr int kRecords = 25000; // about 2.6 pieces
    Bytes file;
    for (int n = 1; n <= kRecords; ++n) {
        Bytes rec(StatRecord::Length, ' ');
        StatHeader{static_cast<std::int16_t>(n / 10 + 1), 7, 'P'}.encodeInto(rec);
        file.insert(file.end(), rec.begin(), rec.end());
    }
    data.write("FBPS1.DAT", file);
    ASSERT_TRUE(team.rewriteAll(FileKind::Stats, [](ByteView piece, std::size_t first, Bytes& out) {
        const std::size_t start = out.size();
        out.insert(out.end(), piece.begin(), piece.end());
        for (std::size_t i = 0; i * StatRecord::Length < piece.size(); ++i) {
            const auto n = static_cast<std::uint16_t>(first + i + 1);
            out[start + i * StatRecord::Length + 8] = static_cast<std::uint8_t>(n & 0xFF);
            out[start + i * StatRecord::Length + 9] = static_cast<std::uint8_t>(n >> 8);
        }
        if (piece.empty())
            out.insert(out.end(), StatRecord::Length, 'E');
    }));
    const Bytes rewritten = data.read("FBPS1.DAT");
    ASSERT_EQ(rewritten.size(), (kRecords + 1) * StatRecord::Length);
    for (int n = 1; n <= kRecords; ++n) {
        const auto at = static_cast<std::size_t>(n - 1) * StatRecord::Length;
        ASSERT_EQ(StatRecord::decode(ByteView(rewritten).subspan(at, StatRecord::Length)).values[0],
                  n);
    }
    EXPECT_EQ(rewritten.back(), 'E');
    EXPECT_EQ(team.recordCount(FileKind::Stats), kRecords + 1); // the handle sees the new file

    // A header change that changes nothing leaves the file untouched, not even rewritten.
    const auto modified = std::filesystem::last_write_time(data.path() / "FBPS1.DAT");
    ASSERT_TRUE(team.changeStatHeaders([](StatHeader& h) { return h.gameNumber > 30000; }));
    EXPECT_EQ(std::filesystem::last_write_time(data.path() / "FBPS1.DAT"), modified);
    EXPECT_FALSE(data.exists("FBPS1.DAT.tmp"));
    ASSERT_TRUE(team.changeStatHeaders([](StatHeader& h) {
        if (h.gameNumber != 2000)
            return false;
        h.statSpecialSelect = '2';
        return true;
    }));
    // Only the marks of game 2000's records differ.
    Bytes expected = rewritten;
    for (int n = 1; n <= kRecords; ++n)
        if (n / 10 + 1 == 2000)
            expected[static_cast<std::size_t>(n - 1) * StatRecord::Length + 7] = '2';
    EXPECT_EQ(data.read("FBPS1.DAT"), expected);
}

TEST_F(DataFilesTest, OlderRosterLayoutsAreConvertedAndUnknownOnesRefused) {
    auto roster = [](std::size_t length) {
        Bytes b = blank(3 * length);
        for (auto [i, number, name] : {std::tuple<std::size_t, int, const char*>{0, 4, "Adams"},
                                       {1, 10, "\xC9mile Baker-Smith"},
                                       {2, 99, "Young"}})
            b = image(b, {{i * length, {number, 0}}, {i * length + 2, name}});
        return b;
    };
    for (std::size_t length : {19u, 60u}) {
        data.write("FBPN1.DAT", roster(length));
        ASSERT_TRUE(team.openFile(FileKind::Roster)) << length;
        EXPECT_EQ(data.read("FBPN1.DAT"), roster(201)) << length;
        EXPECT_EQ(team.recordCount(FileKind::Roster), 3);
        team.closeAll();
    }
    const Bytes junk(50, 'x');
    data.write("FBPN1.DAT", junk);
    EXPECT_EQ(team.openFile(FileKind::Roster).kind(), ErrorKind::Unreadable);
    EXPECT_EQ(data.read("FBPN1.DAT"), junk);
}

TEST_F(DataFilesTest, ConfigurationOfTheOlderLengthIsUpgradedAnyOtherRefused) {
    ConfigRecord c;
    bool upgraded = true;
    for (int n : {-1, 0, 1, 668, 670, 1017, 1019, 2036}) { // -1, first: no file at all
        const Bytes contents = pattern(static_cast<std::size_t>(std::max(n, 0)));
        if (n >= 0)
            data.write("BXFB.INI", contents);
        upgraded = true;
        const Status s = loadConfiguration(prompter, data.file("BXFB.INI"), c, upgraded);
        EXPECT_EQ(s.kind(), ErrorKind::BadLength) << n;
        EXPECT_EQ(s.message(), "BXFB.INI File Corrupt or Not Found");
        EXPECT_FALSE(upgraded);
        EXPECT_EQ(data.exists("BXFB.INI"), n >= 0) << n;
        EXPECT_EQ(data.read("BXFB.INI"), contents) << n;
        EXPECT_FALSE(data.exists("BXFB.INI.tmp"));
    }

    const Bytes legacy = pattern(669);
    data.write("BXFB.INI", legacy);
    ASSERT_TRUE(loadConfiguration(prompter, data.file("BXFB.INI"), c, upgraded));
    EXPECT_TRUE(upgraded);
    const Bytes now = data.read("BXFB.INI");
    EXPECT_EQ(c.encode(), now);
    // The older record stays but for two text areas written blank; the kicking column list, the
    // sorts of the three newer categories and the last text take their defaults.
    const Bytes kicking = image(Bytes(62, 0), {{0, {1, 0, 2, 0, 4, 0, 9, 0, 10, 0, 11, 0, 17, 0}}});
    EXPECT_EQ(now, image(now, {{0, legacy},
                               {321, blank(8)},
                               {638, blank(31)},
                               {785, kicking},
                               {909, {2, 0, 'D', 1, 0, 'D', 1, 0, 'D'}},
                               {918, blank(100)}}));
}

// Disk errors, folders that cannot be written, and processes killed in the middle of a write.

TEST(DiskErrorHandler, MessagesAndWhatEachAnswerDoes) {
    const std::string io = "Input/output error", unrecoverable = "Unrecoverable Error - " + io;
    const std::tuple<int, std::string, std::string, Buttons> cases[] = {
        {70, "Disk write-protected", "Disk Error", Buttons::Ok},
        {57, unrecoverable, "Error", Buttons::Ok},
        {25, io, "Error", Buttons::RetryCancel},
        {71, io, "Error", Buttons::RetryCancel}};
    for (const auto& [code, text, title, buttons] : cases) {
        FakePrompter p;
        p.answers = {Answer::Retry}; // honoured only where it is offered
        const bool retry = buttons == Buttons::RetryCancel;
        EXPECT_EQ(DiskError(p, code, io) == DiskErrorAction::Retry, retry) << code;
        EXPECT_EQ(p.endCalls, retry ? 0 : 1);
        ASSERT_EQ(p.shown.size(), 1u);
        EXPECT_EQ(std::tie(p.shown[0].text, p.shown[0].title, p.shown[0].buttons),
                  std::tie(text, title, buttons));
    }

    // Under the handler, Retry runs the operation again and Cancel ends the program.
    FakePrompter p;
    p.answers = {Answer::Retry, Answer::Retry, Answer::Cancel};
    int calls = 0;
    auto flaky = [&] {
        return ++calls < 3 ? Status::error(ErrorKind::Disk, "Not ready", 71) : Status::ok();
    };
    EXPECT_TRUE(withDiskErrors(p, flaky));
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(p.endCalls, 0);
    calls = 0;
    const Status s = withDiskErrors(p, flaky);
    EXPECT_EQ(s.kind(), ErrorKind::ProgramEnded);
    EXPECT_EQ(s.code(), 71);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(p.endCalls, 1);
    EXPECT_EQ(p.shown.size(), 3u);
}

// Root ignores folder permissions, so as root the checks run under the effective identity of a
// user who owns the folder. Skipped where the folder can be written all the same.
TEST(ReadOnlyFolder, WritesAreRefusedAsWriteProtectedAndFilesStayUnchanged) {
#ifdef _WIN32
    GTEST_SKIP() << "folder permissions and changing identity are POSIX";
#else
    TempDir dir;
    const Bytes teams =
        join({TeamRecord{"Ravens", "", ""}.encode(), TeamRecord{"Tigers", "", ""}.encode()});
    dir.write("FBTEAMS.DAT", teams);
    const Bytes legacyConfig = pattern(669);
    dir.write("BXFB.INI", legacyConfig);
    std::filesystem::permissions(dir.path(), std::filesystem::perms(0555));
    struct Identity { // root again when the test ends
        const bool root = ::geteuid() == 0;
        ~Identity() {
            if (root && ::seteuid(0) == 0)
                (void)::setegid(0);
        }
    } identity;
    constexpr uid_t kNobody = 65534;
    for (const char* name : {"", "FBTEAMS.DAT", "BXFB.INI"})
        ASSERT_TRUE(!identity.root || ::chown(dir.file(name).c_str(), kNobody, kNobody) == 0);
    if (identity.root && (::setegid(kNobody) != 0 || ::seteuid(kNobody) != 0))
        GTEST_SKIP() << "running as root and cannot give up root";
    if (::faccessat(AT_FDCWD, dir.path().c_str(), W_OK, AT_EACCESS) == 0)
        GTEST_SKIP() << "the read-only folder can be written";

    FakePrompter prompter;
    DataFiles files(DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter);
    TeamRecord t;
    ASSERT_TRUE(files.teamRecord(Access::Read, 2, t)); // reading still works
    EXPECT_EQ(trimRight(t.teamName), "Tigers");
    EXPECT_EQ(files.teamRecord(Access::Write, 1, t).kind(), ErrorKind::ProgramEnded);
    EXPECT_EQ(files.replaceAll(FileKind::TeamList, {t.encode()}).kind(), ErrorKind::ProgramEnded);
    GameRecord g;
    EXPECT_EQ(files.team(1).gameRecord(Access::Write, 1, g).kind(), ErrorKind::ProgramEnded);
    ConfigRecord config;
    bool upgraded = false;
    EXPECT_EQ(loadConfiguration(prompter, dir.file("BXFB.INI"), config, upgraded).kind(),
              ErrorKind::ProgramEnded);
    EXPECT_EQ(prompter.shown.size(), 4u);
    for (const Message& m : prompter.shown)
        EXPECT_EQ(m.text + " / " + m.title, "Disk write-protected / Disk Error");
    EXPECT_EQ(prompter.endCalls, 4);
    EXPECT_EQ(dir.read("FBTEAMS.DAT"), teams);
    EXPECT_EQ(dir.read("BXFB.INI"), legacyConfig);
    EXPECT_FALSE(dir.exists("FBGS1.DAT"));
#endif
}

// A process killed while it replaces files leaves the old files or the new ones, never a
// mixture, a shortened file or no file: a single file replaced on its own, and the game and
// statistics files replaced together (the next opening finishes what the journal decided).
class CrashSafety : public ::testing::TestWithParam<bool> {};

TEST_P(CrashSafety, ReplacementSurvivesAKillAtAnyMoment) {
#ifdef _WIN32
    GTEST_SKIP() << "killing a child process halfway needs fork()";
#else
    const bool together = GetParam();
    TempDir dir;
    const DataPaths paths{dir.dir(), dir.dir(), dir.dir()};
    const std::vector<Bytes> small(300, pattern(110)), large(500, Bytes(110, 2));
    const std::vector<Bytes> fewGames(3, pattern(200)), manyGames(9, Bytes(200, 3));
    FakePrompter prompter;
    DataFiles data(paths, prompter);
    TeamFiles files = data.team(1);
    auto replace = [&](bool toLarge) {
        if (!together)
            return files.replaceAll(FileKind::Stats, toLarge ? large : small);
        return files.replaceTogether({{FileKind::Stats, toLarge ? large : small},
                                      {FileKind::Games, toLarge ? manyGames : fewGames}});
    };

    // Kills must land anywhere from before the first write to after the renames, so the delays
    // span the time two replacements take on this disk. The child goes on replacing until killed.
    const long long took = microsecondsFor([&] {
        ASSERT_TRUE(replace(true));
        ASSERT_TRUE(replace(false));
    });
    bool holdsLarge = false;
    int flips = 0;
    killAtRandomMoments(
        150, 20030305, std::clamp<long long>(took, 3000, 40000),
        [&](const std::function<void()>& started) {
            started();
            for (bool toLarge = !holdsLarge;; toLarge = !toLarge)
                (void)replace(toLarge);
            return 0;
        },
        [&] {
            DataFiles reopened(paths, prompter); // finishes an interrupted replacement
            const Bytes now =
                reopened.team(1).openFile(FileKind::Stats) ? dir.read("FBPS1.DAT") : Bytes{};
            const bool isLarge = now == join(large);
            if (!isLarge && now != join(small))
                return Held::Neither;
            if (together && dir.read("FBGS1.DAT") != join(isLarge ? manyGames : fewGames))
                return Held::Neither; // the two files disagree
            flips += isLarge != holdsLarge;
            holdsLarge = isLarge;
            return isLarge ? Held::New : Held::Old;
        });
    // Without finished replacements the kills would all have hit the first write.
    EXPECT_GT(flips, 0);
    EXPECT_TRUE(prompter.shown.empty());
#endif
}

INSTANTIATE_TEST_SUITE_P(SingleFileAndTogether, CrashSafety, ::testing::Bool());
