#include "shell/TeamSelection.h"
#include "shell/DataDirectory.h"
#include "storage/ConfigFile.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace scorvane;
using scorvane::testing::textAt;

namespace {

struct TeamFixture : ::testing::Test, scorvane::testing::ScratchData {};

} // namespace

TEST(TeamNames, EmptyAndOverlongNamesFollowTheNamingRules) {
    const std::string thirty = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    for (const auto& [team, typedLong, typedShort, longName, shortName] :
         std::vector<std::tuple<int, std::string, std::string, std::string, std::string>>{
             {3, "  ", "", "Team 3", "Team 3"},
             {12, thirty, "", thirty.substr(0, 25), thirty.substr(0, 10)},
             {7, "", "  Cats ", "Team 7", "Cats"},
             {100, "", "", "Team 100", "Team 100"}}) {
        const auto names = teamNamesFor(team, typedLong, typedShort);
        EXPECT_EQ(names.longName + "|" + names.shortName,
                  fit(longName, 25) + "|" + fit(shortName, 10));
    }
}

TEST_F(TeamFixture, StoringNamesWritesOneRecordOfANewTeamList) {
    ASSERT_TRUE(TeamSelection::createTeamList(data));
    EXPECT_EQ(dir.read("FBTEAMS.DAT"), Bytes(4000, ' '));

    TeamSelection teams;
    ASSERT_TRUE(teams.load(data));
    // "Montréal" as the files keep it: é is one byte, 0xE9.
    ASSERT_TRUE(teams.storeNames(data, 3, "Montr\351al Rams", ""));
    const Bytes bytes = dir.read("FBTEAMS.DAT");
    ASSERT_EQ(bytes.size(), 4000u);
    EXPECT_EQ(textAt(bytes, 80, 40), fit("Montr\351al Rams", 25) + "Montr\351al R     ");
    EXPECT_EQ(textAt(bytes, 40, 40), std::string(40, ' '));
    EXPECT_EQ(textAt(bytes, 120, 3880), std::string(3880, ' '));

    TeamSelection again;
    ASSERT_TRUE(again.load(data));
    EXPECT_EQ(again.lines()[2], "Montr\351al Rams");
    EXPECT_EQ(again.lines()[0], "");
    EXPECT_EQ(again.lines().size(), 100u);
}

TEST_F(TeamFixture, AShortTeamListIsCompletedBeforeATeamPastItsEndIsNamed) {
    dir.write("FBTEAMS.DAT", TeamRecord{"One", "One", ""}.encode());
    TeamSelection teams;
    ASSERT_TRUE(teams.load(data));
    ASSERT_TRUE(teams.storeNames(data, 50, "Fifty", "50"));
    const Bytes bytes = dir.read("FBTEAMS.DAT");
    ASSERT_EQ(bytes.size(), 4000u);
    EXPECT_EQ(textAt(bytes, 0, 3), "One");
    EXPECT_EQ(textAt(bytes, 49 * 40, 5), "Fifty");
}

TEST(TeamSelectionMarks, ClicksCountMarksAndTheResetMarkClearsThem) {
    TeamSelection teams;
    EXPECT_EQ(teams.count(), 0);
    std::vector<bool> lines(100, false);
    lines[1] = lines[4] = true;
    teams.click(lines, 4);
    EXPECT_EQ(teams.count(), 2);
    EXPECT_EQ(teams.currentTeam(), 5);
    EXPECT_EQ(teams.markedTeams(), (std::vector<int>{2, 5}));

    // Clicking an unmarked line keeps a current team among the marked ones.
    lines[4] = false;
    teams.click(lines, 4);
    EXPECT_EQ(teams.currentTeam(), 2);

    // Reopening keeps the marks; after the reset mark nothing is selected.
    EXPECT_TRUE(teams.open()[1]);
    teams.setResetMark();
    const auto reopened = teams.open();
    EXPECT_EQ(std::count(reopened.begin(), reopened.end(), true), 0);
    EXPECT_EQ(teams.count(), 0);
    EXPECT_FALSE(teams.resetMark());
}

TEST_F(TeamFixture, ChoosingAFolderWithTeamsKeepsItsTeamList) {
    Session session;
    session.configPath = dir.file("BXFB.INI");
    session.config = ConfigRecord::defaults();
    dir.write("FBTEAMS.DAT", TeamRecord{"Kept", "Kept", ""}.encode());
    ASSERT_TRUE(useDataDirectory(session, data, prompter, dir.path().string()));
    EXPECT_EQ(dir.read("FBTEAMS.DAT").size(), 40u);
    EXPECT_EQ(session.paths.dataDirectory, dir.dir());
    const Bytes ini = dir.read("BXFB.INI");
    ASSERT_EQ(ini.size(), 1018u);
    EXPECT_EQ(textAt(ini, 329, 145), fit(dir.dir(), 145));

    // A name the configuration could not read back the same is refused before anything is made.
    EXPECT_FALSE(useDataDirectory(session, data, prompter, dir.dir() + "\u65e5\u672c"));
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].text,
              "The folder name has characters that cannot be kept.  Choose another folder.");
    EXPECT_FALSE(dir.exists("\u65e5\u672c"));
    EXPECT_EQ(dir.read("BXFB.INI"), ini);
}
