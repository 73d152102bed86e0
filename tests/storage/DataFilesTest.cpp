#include "storage/ByteHelpers.h"
#include "storage/DataFiles.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

class DataFilesTest : public ::testing::Test {
protected:
    TempDir data;
    TempDir reports;
    FakePrompter prompter;
    DataFiles files{DataPaths{data.dir(), data.dir(), reports.dir()}, prompter};

    static Bytes join(const std::vector<Bytes>& records) {
        Bytes all;
        for (const auto& r : records)
            all.insert(all.end(), r.begin(), r.end());
        return all;
    }
    static Bytes stat(int game, int player, char category, char status, char type, char special) {
        StatRecord r;
        r.header = {static_cast<std::int16_t>(game), static_cast<std::int16_t>(player), category,
                    status, type, special};
        r.values[0] = static_cast<std::int16_t>(100 * game + player);
        return r.encode();
    }
};

} // namespace

TEST_F(DataFilesTest, ModeLetterGReadsAnyOtherLetterWrites) {
    TeamRecord t{"Ravens", "RAV", ""};
    ASSERT_TRUE(files.teamRecord('P', 1, t));
    t.teamName = "Tigers";
    ASSERT_TRUE(files.teamRecord('a', 2, t));
    Bytes expected = blank(80);
    setText(expected, 0, "Ravens");
    setText(expected, 25, "RAV");
    setText(expected, 40, "Tigers");
    setText(expected, 65, "RAV");
    EXPECT_EQ(data.read("FBTEAMS.DAT"), expected);

    TeamRecord back;
    ASSERT_TRUE(files.teamRecord('G', 1, back));
    EXPECT_EQ(trimRight(back.teamName), "Ravens");

    // A record outside the file is an error, not a crash, and no disk error.
    for (int n : {0, -1, 3, 32767})
        EXPECT_EQ(files.teamRecord('G', n, back).kind(), ErrorKind::RecordRange) << n;
    for (int n : {0, 4})
        EXPECT_EQ(files.teamRecord('P', n, back).kind(), ErrorKind::RecordRange) << n;
    EXPECT_EQ(data.read("FBTEAMS.DAT").size(), 80u);
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(DataFilesTest, PerTeamFilesFollowTheTeamAndFormatsLiveWithReports) {
    files.setTeam(3);
    RosterRecord r;
    r.playerNumber = 4;
    ASSERT_TRUE(files.rosterRecord('P', 1, r));
    ReportFormatRecord f;
    ASSERT_TRUE(files.reportFormatRecord('P', 1, f));
    EXPECT_EQ(data.read("FBPN3.DAT").size(), 201u);
    EXPECT_TRUE(reports.exists("FBRPTFMT.DAT"));
    EXPECT_FALSE(data.exists("FBRPTFMT.DAT"));

    files.setTeam(4);
    EXPECT_EQ(files.fileName(FileKind::Roster), data.dir() + "FBPN4.DAT");
    EXPECT_EQ(files.recordCount(FileKind::Roster), 0);
    ASSERT_TRUE(files.killFile(FileKind::Roster));
    EXPECT_FALSE(data.exists("FBPN4.DAT"));
    EXPECT_TRUE(data.exists("FBPN3.DAT"));
}

TEST_F(DataFilesTest, DamagedFileCountsOnlyWholeRecords) {
    GameRecord g;
    g.gameNumber = 1;
    Bytes contents = g.encode();
    g.gameNumber = 2;
    const Bytes second = g.encode();
    contents.insert(contents.end(), second.begin(), second.end());
    contents.resize(contents.size() + 37, 'x');
    data.write("FBGS1.DAT", contents);

    EXPECT_EQ(files.recordCount(FileKind::Games), 2);
    std::vector<GameRecord> games;
    ASSERT_TRUE(files.readAllAs(FileKind::Games, games));
    ASSERT_EQ(games.size(), 2u);
    EXPECT_EQ(games[1].gameNumber, 2);
    EXPECT_EQ(files.gameRecord('G', 3, g).kind(), ErrorKind::RecordRange);
}

TEST_F(DataFilesTest, PointSumPastSixteenBitsReadsAsOverflow) {
    GameRecord g;
    g.gameNumber = 5;
    g.teamScore = {30000, 2767, 0, 0, 0};
    ASSERT_TRUE(files.gameRecord('P', 1, g));
    g.teamScore[4] = 1;
    ASSERT_TRUE(files.gameRecord('P', 2, g));

    GameRecord back;
    EXPECT_TRUE(files.gameRecord('G', 1, back));
    const Status s = files.gameRecord('G', 2, back);
    EXPECT_EQ(s.kind(), ErrorKind::Overflow);
    EXPECT_EQ(s.message(), "Overflow");
    EXPECT_EQ(back.teamScore[4], 1);  // the record is filled in all the same
    EXPECT_EQ(files.gameRecordAlt(2, back).kind(), ErrorKind::Overflow);
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(DataFilesTest, SecondGameHandleSeesTheReplacedFile) {
    GameRecord g;
    g.gameNumber = 1;
    ASSERT_TRUE(files.gameRecord('P', 1, g));
    GameRecord alt;
    ASSERT_TRUE(files.gameRecordAlt(1, alt));
    g.gameNumber = 9;
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, std::vector<GameRecord>{g, g}));
    ASSERT_TRUE(files.gameRecordAlt(2, alt));
    EXPECT_EQ(alt.gameNumber, 9);
}

TEST_F(DataFilesTest, IndexPassFindsTheGameAndWritesBackCorrectedCopies) {
    GameRecord game;
    game.gameNumber = 5;
    game.gameType = '3';
    game.specialSelect = '2';
    const std::vector<Bytes> before = {
        stat(2, 4, 'P', 'A', '1', '1'),
        stat(5, 4, 'P', 'A', '3', '2'),   // already right
        stat(5, 9, 'R', 'A', '1', '1'),   // both copies stale
        stat(5, 11, 'K', 'D', '1', '1'),  // deleted: skipped
        stat(5, 12, 'T', 'A', '3', '1'),  // Special Select stale
        stat(6, 4, 'P', 'A', '1', '1'),   // first later game: the scan stops here
        stat(5, 20, 'C', 'A', '1', '1'),  // behind a later game: not found
    };
    Bytes expected = join(before);
    data.write("FBPS1.DAT", expected);

    GameStatsIndex index;
    ASSERT_TRUE(files.indexGameStats(game, index));
    EXPECT_EQ(index.insertionPoint, 6);
    EXPECT_EQ(index.recordCount, 7);
    EXPECT_EQ(index.recordOf[0][4], 2);
    EXPECT_EQ(index.recordOf[2][9], 3);
    EXPECT_EQ(index.recordOf[4][11], 0);
    EXPECT_EQ(index.recordOf[5][12], 5);
    EXPECT_EQ(index.recordOf[1][20], 0);
    EXPECT_EQ(index.counters, (std::array<int, 6>{1, 0, 1, 0, 0, 1}));

    setText(expected, 2 * 110 + 6, "32");
    setText(expected, 4 * 110 + 6, "32");
    EXPECT_EQ(data.read("FBPS1.DAT"), expected);
}

TEST_F(DataFilesTest, IndexPassInsertionPointAtTheEnd) {
    GameRecord game;
    game.gameNumber = 5;
    GameStatsIndex index;
    ASSERT_TRUE(files.indexGameStats(game, index));
    EXPECT_EQ(index.insertionPoint, 1);
    EXPECT_EQ(index.recordCount, 0);

    files.closeAll();
    const Bytes earlier = join({stat(1, 4, 'P', 'A', '1', '1'), stat(3, 4, 'D', 'A', '1', '1')});
    data.write("FBPS1.DAT", earlier);
    ASSERT_TRUE(files.indexGameStats(game, index));
    EXPECT_EQ(index.insertionPoint, 3);
    EXPECT_EQ(data.read("FBPS1.DAT"), earlier);
}

TEST_F(DataFilesTest, OlderRosterLayoutsAreConverted) {
    for (std::size_t length : {19u, 60u}) {
        Bytes old(3 * length, ' ');
        setBytes(old, 0, {4, 0});
        setText(old, 2, "Adams");
        setBytes(old, length, {10, 0});
        setText(old, length + 2, "\xC9mile Baker-Smith");
        setBytes(old, 2 * length, {99, 0});
        setText(old, 2 * length + 2, "Young");
        data.write("FBPN1.DAT", old);

        ASSERT_TRUE(files.openFile(FileKind::Roster)) << length;
        Bytes expected = blank(603);
        setBytes(expected, 0, {4, 0});
        setText(expected, 2, "Adams");
        setBytes(expected, 201, {10, 0});
        setText(expected, 203, "\xC9mile Baker-Smith");
        setBytes(expected, 402, {99, 0});
        setText(expected, 404, "Young");
        EXPECT_EQ(data.read("FBPN1.DAT"), expected) << length;
        EXPECT_EQ(files.recordCount(FileKind::Roster), 3);
        files.closeAll();
    }
}

TEST_F(DataFilesTest, RosterOfNoKnownLayoutIsLeftUntouched) {
    const Bytes junk(50, 'x');
    data.write("FBPN1.DAT", junk);
    EXPECT_EQ(files.openFile(FileKind::Roster).kind(), ErrorKind::Unreadable);
    EXPECT_EQ(data.read("FBPN1.DAT"), junk);
}
