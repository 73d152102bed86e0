#include "entry/PlayerScreen.h"
#include "faults/FaultInjector.h"
#include "support/StatBuilders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <map>
#include <random>
#include <thread>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace scorvane;
using namespace scorvane::testing;

namespace {

struct SaveFixture : ::testing::Test, TeamData {
    PlayerScreen screen;

    void open(int game) { ASSERT_TRUE(screen.open(files, game, columns, prompter)); }
    void type(int row, int category, const std::map<int, std::string>& texts) {
        ASSERT_TRUE(screen.clickCell(row, category));
        for (const auto& [field, text] : texts)
            screen.editField(field, text);
    }
    std::vector<Bytes> records() const {
        const Bytes all = statsFile();
        std::vector<Bytes> out;
        for (std::size_t at = 0; at + 110 <= all.size(); at += 110)
            out.emplace_back(all.begin() + static_cast<long>(at),
                             all.begin() + static_cast<long>(at + 110));
        return out;
    }
};

} // namespace

TEST_F(SaveFixture, ResultsOfEveryCategoryAreWrittenInTheirRecordLayouts) {
    roster({{3, "Ann"}, {7, "Bo"}, {12, "Cy"}});
    games(2, '4', '2');
    const Bytes laterGame = categoryRecord(2, 3, 'P', {1, 1, 5});
    // Written before the game's type was changed to 4 and its mark to 2.
    stats({categoryRecord(1, 7, 'P', {2, 1, 10}), laterGame});
    open(1);
    type(0, 0,
         {{0, "20"},
          {1, "12"},
          {2, "150"},
          {3, "2"},
          {4, "1"},
          {5, "45"},
          {6, "3"},
          {7, "8"},
          {8, "2"},
          {9, "1"},
          {10, "1"},
          {11, "1"},
          {22, "7"},
          {26, "9"}});
    type(0, 2, {{0, "5"}, {1, "30"}, {2, "4"}, {3, "1"}, {4, "12"}, {5, "2"}, {9, "2"}});
    type(1, 0, {{2, "12"}});
    type(1, 1,
         {{0, "4"},
          {1, "6"},
          {2, "60"},
          {3, "20"},
          {4, "1"},
          {5, "25"},
          {6, "1"},
          {7, "3"},
          {8, "1"},
          {10, "1"}});
    type(1, 3, {{0, "3"}, {1, "2"}, {2, "1"}, {4, "1"}, {5, "1"}, {6, "1"}, {7, "1.5"}, {23, "4"}});
    type(2, 4, {{22, "2"}});
    screen.selectKickType(KickType::FieldGoal);
    screen.setKickYards("35");
    screen.setKickMark(KickMark::Good, true);
    ASSERT_TRUE(screen.addKick());
    screen.selectKickType(KickType::ExtraPoint);
    screen.setKickMark(KickMark::Good, true);
    ASSERT_TRUE(screen.addKick());
    screen.selectKickType(KickType::Punt);
    screen.setKickYards("41");
    screen.setKickMark(KickMark::FairCatch, true);
    screen.setKickMark(KickMark::Inside20, true);
    ASSERT_TRUE(screen.addKick());
    type(2, 5, {{26, "1"}});
    screen.selectReturnType(ReturnType::Punt);
    screen.setReturnYards("12");
    screen.setReturnMark(ReturnMark::FairCatch, true);
    ASSERT_TRUE(screen.addReturn());
    screen.selectReturnType(ReturnType::Kick);
    screen.setReturnYards("95");
    screen.setReturnMark(ReturnMark::Touchdown, true);
    ASSERT_TRUE(screen.addReturn());
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
        categoryRecord(2, 50, 'P', {8, 8, 88}),       // a number no longer on the roster
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
    type(1, 0, {{0, "1"}});
    prompter.answers = {Answer::Yes};
    ASSERT_EQ(screen.cancel(), PlayerScreen::Leave::GameList);
    ASSERT_EQ(records(), before);

    open(2);
    EXPECT_EQ(screen.counterText(0) + screen.counterText(4), "21");
    ASSERT_TRUE(screen.clickCell(0, 0));
    screen.clickPlayed(); // player 3's passing removed
    type(1, 0, {{0, "3"}, {1, "1"}, {2, "7"}});
    type(2, 2, {{0, "2"}, {1, "5"}});
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
    EXPECT_EQ(index.recordOf[0][50], 4);
    EXPECT_EQ(index.insertionPoint, 11);
    EXPECT_EQ(records(), expected); // indexing found nothing to correct
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
        type(0, 0, {{0, "5"}});
        type(0, 0, {{0, "4"}});
        ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
        EXPECT_EQ(writesOfTheFile(calls), 0);
    }
    EXPECT_EQ(statsFile(), before);

    FaultInjector calls;
    open(1);
    type(0, 0, {{0, "5"}});
    ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
    EXPECT_GT(writesOfTheFile(calls), 0);
    EXPECT_EQ(records()[0], categoryRecord(1, 3, 'P', {5, 2, 30}));
}

// A process killed at any moment while it saves leaves the statistics file exactly as before or
// exactly as after the save, never anything in between.
TEST(SaveCrash, AKilledSaveLeavesTheOldFileOrTheNewOne) {
#ifdef _WIN32
    GTEST_SKIP() << "killing a child process halfway needs fork()";
#else
    TeamData team;
    team.roster({{3, "Ann"}, {7, "Bo"}, {12, "Cy"}});
    team.games(5);
    std::vector<Bytes> stats;
    for (int g = 1; g <= 5; ++g)
        for (int p = 1; p <= 99; ++p)
            for (char c : {'P', 'C', 'R'})
                stats.push_back(categoryRecord(g, p, c, {p, g}));
    team.stats(stats);
    const Bytes before = team.statsFile();

    // The save: in game 2, player 7's passing changed and a kicking record added.
    auto edit = [&team](PlayerScreen& screen, TeamFiles& files) {
        if (!screen.open(files, 2, team.columns, team.prompter))
            return false;
        (void)screen.clickCell(1, 4);
        screen.editField(22, "5");
        (void)screen.clickCell(1, 0);
        screen.editField(0, "12");
        return true;
    };
    long long saveUs = 0;
    {
        DataFiles data(team.data.paths(), team.prompter);
        TeamFiles files = data.team(1);
        PlayerScreen screen;
        ASSERT_TRUE(edit(screen, files));
        const auto start = std::chrono::steady_clock::now();
        ASSERT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
        saveUs = (std::chrono::steady_clock::now() - start) / std::chrono::microseconds(1);
    }
    // Kills must land from before the first write to after the rename. On a loaded machine the
    // child's save can take far longer than this one did, so the window widens until kills land
    // after it too.
    long long maxDelayUs = std::clamp<long long>(2 * saveUs, 2000, 40000);
    const Bytes after = team.statsFile();
    ASSERT_EQ(after.size(), before.size() + 110);

    std::mt19937 rng(20030917);
    int sawBefore = 0, sawAfter = 0;
    for (int i = 0; i < 100; ++i) {
        if (i % 20 == 19 && sawAfter == 0)
            maxDelayUs = std::min<long long>(2 * maxDelayUs, 2'000'000);
        team.dir.write("FBPS1.DAT", before);
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            ::close(ready[0]);
            DataFiles data(team.data.paths(), team.prompter);
            TeamFiles files = data.team(1);
            PlayerScreen screen;
            if (!edit(screen, files))
                ::_exit(2);
            (void)!::write(ready[1], "s", 1); // about to save
            ::_exit(screen.ok() == PlayerScreen::Leave::GameList ? 0 : 3);
        }
        ::close(ready[1]);
        char c = 0;
        ASSERT_EQ(::read(ready[0], &c, 1), 1);
        ::close(ready[0]);
        std::this_thread::sleep_for(std::chrono::microseconds(rng() % (maxDelayUs + 1)));
        ::kill(pid, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        ASSERT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "kill " << i;

        { // opening the files again rolls an interrupted change back
            DataFiles reopened(team.data.paths(), team.prompter);
            ASSERT_TRUE(reopened.team(1).openFile(FileKind::Stats));
        }
        const Bytes now = team.statsFile();
        ASSERT_TRUE(now == before || now == after)
            << "kill " << i << " left a file of " << now.size() << " bytes that is neither";
        ++(now == before ? sawBefore : sawAfter);
    }
    // The kills must have landed on both sides of the moment the new file took over.
    EXPECT_GT(sawBefore, 0);
    EXPECT_GT(sawAfter, 0);
#endif
}
