#include "entry/ScreenFixture.h"
#include "faults/FaultInjector.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace scorvane;
using namespace scorvane::testing;

using SaveFixture = ScreenFixture;

TEST_F(SaveFixture, ResultsOfEveryCategoryAreWrittenInTheirRecordLayouts) {
    roster({{3, "Ann"}, {7, "Bo"}, {12, "Cy"}});
    games(2, '4', '2');
    const Bytes laterGame = categoryRecord(2, 3, 'P', {1, 1, 5});
    // Written before the game's type was changed to 4 and its mark to 2.
    stats({categoryRecord(1, 7, 'P', {2, 1, 10}), laterGame});
    open(1);
    type(0, 0, "0=20 1=12 2=150 3=2 4=1 5=45 6=3 7=8 8=2 9=1 10=1 11=1 22=7 26=9");
    type(0, 2, "0=5 1=30 2=4 3=1 4=12 5=2 9=2");
    type(1, 0, "2=12");
    type(1, 1, "0=4 1=6 2=60 3=20 4=1 5=25 6=1 7=3 8=1 10=1");
    type(1, 3, "0=3 1=2 2=1 4=1 5=1 6=1 7=1.5 23=4");
    type(2, 4, "22=2");
    ASSERT_EQ(kick(KickType::FieldGoal, "35", {KickMark::Good}), "");
    ASSERT_EQ(kick(KickType::ExtraPoint, "0", {KickMark::Good}), "");
    ASSERT_EQ(kick(KickType::Punt, "41", {KickMark::FairCatch, KickMark::Inside20}), "");
    type(2, 5, "26=1");
    ASSERT_EQ(ret(ReturnType::Punt, "12", {ReturnMark::FairCatch}), "");
    ASSERT_EQ(ret(ReturnType::Kick, "95", {ReturnMark::Touchdown}), "");
    ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList) << screen.saveStatus().message();
    ASSERT_TRUE(prompter.shown.empty()) << prompter.shown.front().text;

    // Values in column-table order, the user columns last; sacks in tenths.
    const std::vector<Bytes> expected = {
        categoryRecord(1, 7, 'P', {2, 1, 12}, 'A', '4', '2'),
        categoryRecord(1, 3, 'P', {20, 12, 150, 1, 2, 2, 45, 3, 1, 1, 0, 1, 8, 7, 0, 0, 0, 9}, 'A',
                       '4', '2'),
        categoryRecord(1, 3, 'R', {5, 30, 12, 1, 2, 4, 2, 0, 0, 0}, 'A', '4', '2'),
        categoryRecord(1, 7, 'C', {4, 60, 1, 25, 1, 20, 3, 6, 0, 1, 1, 0}, 'A', '4', '2'),
        categoryRecord(1, 7, 'D', {3, 2, 1, 0, 1, 1, 1, 15, 0, 0, 0, 4}, 'A', '4', '2'),
        listRecord(1, 12, 'K', {2}, {{'F', 35, 2}, {'X', 0, 2}, {'P', 41, 24}}, 'A', '4', '2'),
        listRecord(1, 12, 'T', {0, 0, 0, 0, 1}, {{'P', 12, 2}, {'K', 95, 8}}, 'A', '4', '2'),
        laterGame};
    EXPECT_EQ(records(), expected);
}

TEST_F(SaveFixture, NewResultsGoIntoTheirGameAndEverythingElseStaysByteForByte) {
    roster({{3, "Ann"}, {7, "Bo"}, {12, "Cy"}});
    games(5);
    const std::vector<Bytes> before = {
        categoryRecord(1, 3, 'P', {4, 2, 30}),
        categoryRecord(1, 7, 'C', {1, 9}),
        categoryRecord(2, 3, 'P', {6, 3, 41}),
        categoryRecord(2, 99, 'P', {8, 8, 88}),       // the last number, no longer on the roster
        categoryRecord(2, 3, 'Q', {1, 2, 3}),         // no such category
        categoryRecord(2, 0, 'P', {5}),               // no such player
        categoryRecord(2, 7, 'P', {9, 9}, 'X'),       // neither live nor deleted
        listRecord(2, 12, 'K', {}, {{'\0', -1, -1}}), // a play letter no kick has
        categoryRecord(3, 3, 'P', {7}),
        categoryRecord(4, 7, 'D', {2}),
        listRecord(5, 12, 'K', {1}, {{'F', 20, 2}})};
    stats(before);

    // Opening and cancelling leaves the file as it was.
    open(2);
    type(1, 0, "0=1");
    prompter.answers = {Answer::Yes};
    ASSERT_EQ(screen.cancel(), PlayerScreen::Leave::GameList);
    ASSERT_EQ(records(), before);

    open(2);
    EXPECT_EQ(screen.counterText(0) + screen.counterText(4), "21");
    ASSERT_TRUE(screen.clickCell(0, 0));
    screen.clickPlayed(); // player 3's passing removed
    type(1, 0, "0=3 1=1 2=7");
    type(2, 2, "0=2 1=5");
    ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);

    std::vector<Bytes> expected = before;
    expected[2] = categoryRecord(2, 3, 'P', {}, 'D'); // kept, marked deleted, emptied
    expected.insert(expected.begin() + 8,
                    {categoryRecord(2, 7, 'P', {3, 1, 7}), categoryRecord(2, 12, 'R', {2, 5})});
    EXPECT_EQ(records(), expected);

    // Opened again, the game's records are found where they were put.
    GameStatsIndex index;
    GameRecord game2;
    game2.gameNumber = 2;
    ASSERT_TRUE(files.indexGameStats(game2, index));
    EXPECT_EQ(index.recordOf[0][7], 9);
    EXPECT_EQ(index.recordOf[2][12], 10);
    EXPECT_EQ(index.recordOf[0][3], 0);
    EXPECT_EQ(index.recordOf[0][99], 4);
    EXPECT_EQ(index.insertionPoint, 11);
    EXPECT_EQ(records(), expected); // indexing found nothing to correct
}

// A new record of a game late in the file goes in place: only the records after it move.
TEST_F(SaveFixture, ANewRecordLateInTheFileMovesOnlyTheRecordsAfterIt) {
    roster({{3, "Ann"}, {7, "Bo"}});
    games(5);
    std::vector<Bytes> before;
    for (int g = 1; g <= 5; ++g)
        for (int p : {3, 7})
            before.push_back(categoryRecord(g, p, 'P', {g, p}));
    stats(before);
    open(4);
    type(1, 2, "0=2 1=5");
    ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
    before.insert(before.begin() + 8, categoryRecord(4, 7, 'R', {2, 5}));
    EXPECT_EQ(records(), before);
}

// Saved in place or by a rewrite, a game's results give the file rebuilt whole in memory, with
// the stale copies of the game's type and mark brought up to date: a value changed, number 99
// added and a player taken out, in the first, a middle and the last game.
TEST_F(SaveFixture, ASaveGivesTheFileRebuiltInMemoryWhereverTheGameLies) {
    roster({{3, "Ann"}, {7, "Bo"}});
    games(5, '4', '2');
    std::vector<Bytes> start;
    for (int g = 1; g <= 5; ++g)
        for (int p : {3, 7})
            start.push_back(categoryRecord(g, p, 'P', {g, p}));
    for (int game : {1, 3, 5})
        for (int change : {0, 1, 2}) {
            SCOPED_TRACE("game " + std::to_string(game) + ", change " + std::to_string(change));
            stats(start);
            GameRecord g;
            GameStatsIndex index;
            GameStatRecords found;
            ASSERT_TRUE(files.gameRecord(Access::Read, game, g));
            ASSERT_TRUE(files.indexGameStats(g, index, &found));
            GameResults results;
            results.load(found, index);
            CategoryResults& r = results.at(change == 1 ? 99 : 3, change == 1 ? 2 : 0);
            r.played = change != 2;
            r.values[0] = 40;
            ASSERT_TRUE(saveGameResults(files, g, results));
            EXPECT_EQ(records(), results.applyTo(start, g));
        }
}

// The statistics file is rewritten whole, so a save that would write back what is there writes
// nothing at all: going to the game screen without a change, or a value typed and typed back.
TEST_F(SaveFixture, ResultsThatChangeNothingAreNotWritten) {
    roster({{3, "Ann"}, {7, "Bo"}});
    games(2);
    stats({categoryRecord(1, 3, 'P', {4, 2, 30}), categoryRecord(2, 7, 'C', {1, 9})});
    const Bytes before = statsFile();
    const auto writesOfTheFile = [](const FaultInjector& calls) {
        return std::count_if(calls.calls().begin(), calls.calls().end(), [](const auto& c) {
            return c.call == platform::Call::Write && c.name.starts_with("FBPS1.DAT");
        });
    };
    {
        FaultInjector calls;
        open(1);
        ASSERT_EQ(screen.toGameScreen(), PlayerScreen::Leave::GameScreen);
        open(1);
        type(0, 0, "0=5");
        type(0, 0, "0=4");
        ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
        EXPECT_EQ(writesOfTheFile(calls), 0);
    }
    EXPECT_EQ(statsFile(), before);

    FaultInjector calls;
    open(1);
    type(0, 0, "0=5");
    ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
    EXPECT_GT(writesOfTheFile(calls), 0);
    EXPECT_EQ(records()[0], categoryRecord(1, 3, 'P', {5, 2, 30}));
}
