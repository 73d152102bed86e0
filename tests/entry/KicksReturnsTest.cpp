#include "entry/ScreenFixture.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;
using Focus = PlayerScreen::Focus;
using Strings = std::vector<std::string>;

namespace {

struct KickFixture : ScreenFixture {
    void SetUp() override {
        roster({{9, "Kay Kicker"}, {21, "Ray Returner"}});
        games(1);
        open();
    }
};

} // namespace

TEST_F(KickFixture, KickChecksInTheirOrder) {
    ASSERT_TRUE(screen.clickCell(0, 4));
    EXPECT_EQ(kick(KickType::None, "30"), "Must select FG, Xpt or Punt!|Invalid Kick Type");
    EXPECT_EQ(kick(KickType::FieldGoal, "0"), "FG yards must be > 0.|Invalid FG Yards");
    EXPECT_EQ(kick(KickType::FieldGoal, "101"), "FG yards can not be > 100.|Invalid FG Yards");
    EXPECT_EQ(screen.focus(), Focus{});
    EXPECT_EQ(kick(KickType::Punt, "101"), "Punt yards can not be > 100.|Invalid Punt Yards");
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::KickYards, -1}));
    EXPECT_EQ(kick(KickType::Punt, "-40000"), "Punt yards can not be < -32768.|Invalid Punt Yards");
    EXPECT_EQ(
        kick(KickType::Punt, "40", {KickMark::Touchback, KickMark::FairCatch, KickMark::Inside20}),
        "Can not have Fair Catch with Touchback.|Punt Conflicts");
    screen.setKickMark(KickMark::FairCatch, false);
    EXPECT_EQ(kick(KickType::Punt, "40"), "Can not have Inside 20 with Touchback.|Punt Conflicts");
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::KickYards, -1}));
    EXPECT_FALSE(screen.played()); // nothing was added yet

    // What each type allows; choosing one clears what it cannot have.
    screen.selectKickType(KickType::FieldGoal);
    EXPECT_FALSE(screen.kickEntry().mark(KickMark::Inside20) ||
                 screen.kickMarkEnabled(KickMark::Touchback));
    screen.setKickMark(KickMark::Good, true);
    screen.selectKickType(KickType::Punt);
    EXPECT_FALSE(screen.kickEntry().mark(KickMark::Good) || screen.kickMarkEnabled(KickMark::Good));
    EXPECT_TRUE(screen.kickMarkEnabled(KickMark::Blocked) && screen.kickYardsEnabled());
    screen.setKickYards("55");
    screen.selectKickType(KickType::ExtraPoint);
    EXPECT_EQ(screen.kickEntry().yards, "0");
    EXPECT_FALSE(screen.kickYardsEnabled());

    EXPECT_EQ(kick(KickType::FieldGoal, "100", {KickMark::Good}), "");
    EXPECT_EQ(kick(KickType::Punt, "-3", {KickMark::FairCatch, KickMark::Inside20}), "");
    EXPECT_EQ(kick(KickType::ExtraPoint, "0"), "");
    EXPECT_EQ(kick(KickType::FieldGoal, "1", {KickMark::Blocked}), "");
    EXPECT_EQ(kick(KickType::Punt, "52", {KickMark::Touchback}), "");
    EXPECT_EQ(kick(KickType::ExtraPoint, "0", {KickMark::Good}), "");
    EXPECT_EQ(screen.kickItems(), (Strings{"FG 100 Good ", "Punt -3 FC In20 ", "Xpt Missed ",
                                           "FG 1 Blk ", "Punt 52 TB ", "Xpt Good "}));
    EXPECT_EQ(screen.kickSelection(), 5);
    EXPECT_TRUE(screen.played() && screen.resultsChanged() && screen.ballMark(0, 4));
    EXPECT_EQ(screen.counterText(4), "1");
    // The entry is reset after each kick; the type stays.
    EXPECT_EQ(screen.kickEntry().yards, "0");
    EXPECT_FALSE(screen.kickEntry().mark(KickMark::Good));

    // Selected again, the list is built from the stored marks: "XPt".
    ASSERT_TRUE(screen.clickCell(1, 4));
    ASSERT_TRUE(screen.clickCell(0, 4));
    EXPECT_EQ(screen.kickItems(), (Strings{"FG 100 Good ", "Punt -3 FC In20 ", "XPt Missed ",
                                           "FG 1 Blk ", "Punt 52 TB ", "XPt Good "}));
    EXPECT_EQ(screen.kickSelection(), -1);
}

TEST_F(KickFixture, EighteenPlaysAtMostAndDeletingMovesTheSelection) {
    ASSERT_TRUE(screen.clickCell(1, 5));
    EXPECT_FALSE(screen.deleteReturn(-1));
    EXPECT_EQ(lastMessage(), "No return to delete!|Invalid Delete");
    EXPECT_EQ(ret(ReturnType::None, "5"), "Must select Punt or Kick Return!|Invalid Return Type");
    EXPECT_EQ(ret(ReturnType::Kick, "121"), "Return yards can not be > 120.|Invalid Return Yards");
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::ReturnYards, -1}));
    EXPECT_EQ(ret(ReturnType::Punt, "12", {ReturnMark::FairCatch}), "");
    EXPECT_EQ(ret(ReturnType::Kick, "120", {ReturnMark::Touchdown, ReturnMark::Fumble}), "");
    EXPECT_EQ(ret(ReturnType::Kick, "-4"), "");
    EXPECT_EQ(screen.returnItems(), (Strings{"PR 12 FC ", "KR 120 F TD ", "KR -4 "}));

    EXPECT_FALSE(screen.deleteReturn(-1));
    EXPECT_EQ(prompter.shown.back().text, "Must select return to delete!");
    ASSERT_TRUE(screen.deleteReturn(2)); // the last: the new last is selected
    EXPECT_EQ(screen.returnSelection(), 1);
    ASSERT_TRUE(screen.deleteReturn(0)); // the first: the one now first is selected
    EXPECT_EQ(screen.returnItems(), (Strings{"KR 120 F TD "}));
    EXPECT_EQ(screen.returnSelection(), 0);
    ASSERT_TRUE(screen.deleteReturn(0));
    EXPECT_EQ(screen.returnSelection(), -1);
    EXPECT_TRUE(screen.played()); // a delete is an edit: the player stays recorded

    for (int i = 0; i < 18; ++i)
        ASSERT_EQ(ret(ReturnType::Punt, std::to_string(i)), "");
    EXPECT_EQ(ret(ReturnType::Punt, "5"), "Can not add more than 18 returns!|18 Returns Max");
    ASSERT_TRUE(screen.deleteReturn(4));
    EXPECT_EQ(ret(ReturnType::Punt, "77"), "");
    EXPECT_EQ(screen.returnItems().back(), "PR 77 ");

    ASSERT_TRUE(screen.clickCell(1, 4));
    for (int i = 0; i < 18; ++i)
        ASSERT_EQ(kick(KickType::ExtraPoint, "0"), "");
    EXPECT_EQ(kick(KickType::FieldGoal, "20"), "Can not add more than 18 kicks!|18 Kicks Max");
    EXPECT_FALSE(screen.deleteKick(18));
    EXPECT_EQ(prompter.shown.back().text, "Must select kick to delete!");
    ASSERT_TRUE(screen.deleteKick(17));
    EXPECT_EQ(screen.kickSelection(), 16);

    // Unticking Played empties the list.
    screen.clickPlayed();
    EXPECT_TRUE(screen.kickItems().empty());
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::Field, 22}));
}

// A play set up but not added is never dropped without a word: leaving its panel asks, Yes (the
// default) adds it to the player it was set up for, a refused add keeps the user there, No drops
// it.
TEST_F(KickFixture, LeavingASetUpPlayAsksWhetherToAddIt) {
    ASSERT_TRUE(screen.clickCell(0, 4));
    screen.selectKickType(KickType::FieldGoal);
    screen.setKickYards("35");
    screen.setKickMark(KickMark::Good, true);
    ASSERT_TRUE(screen.clickCell(1, 4));
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown.back(),
              (Message{"The kick you set up (FG 35 Good) is not on the list. Add it now?",
                       "Kick Not Added", Buttons::YesNo, Icon::Question, Answer::Yes}));
    EXPECT_TRUE(screen.kickItems().empty());     // on Kay's list, not on Ray's
    screen.selectKickType(KickType::ExtraPoint); // the reset state: nothing to ask
    ASSERT_TRUE(screen.clickCell(0, 4));
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(screen.kickItems(), (Strings{"FG 35 Good "}));

    screen.selectKickType(KickType::Punt);
    screen.setKickYards("101");
    EXPECT_FALSE(screen.clickCell(1, 0));
    EXPECT_EQ(prompter.shown.back().text, "Punt yards can not be > 100.");
    EXPECT_EQ(screen.selectedCell(), (PlayerScreen::Cell{0, 4}));
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::KickYards, -1}));
    prompter.answers = {Answer::No};
    EXPECT_EQ(screen.ok(), PlayerScreen::Leave::GameList);
    EXPECT_EQ(statsFile(), listRecord(1, 9, 'K', {}, {{'F', 35, 2}}));

    // Returns likewise, here on the way to the team totals.
    ASSERT_TRUE(screen.clickCell(1, 5));
    screen.selectReturnType(ReturnType::Kick);
    screen.setReturnYards("20");
    ASSERT_TRUE(screen.toggleTeamTotals());
    EXPECT_EQ(lastMessage(),
              "The return you set up (KR 20) is not on the list. Add it now?|Return Not Added");
    EXPECT_EQ(screen.returnItems(), (Strings{"KR 20 "}));
}

TEST(PlayItems, StoredMarksAreDecodedFromTheLargestBitDown) {
    EXPECT_EQ(kickItemText({'F', 35, 2}, false), "FG 35 Good ");
    EXPECT_EQ(kickItemText({'F', 35, 6}, false), "FG 35 Good Blk "); // 4 blocked, 2 good
    EXPECT_EQ(kickItemText({'F', 35, 0}, false), "FG 35 Missed ");
    EXPECT_EQ(kickItemText({'X', 0, 2}, true), "Xpt Good ");
    EXPECT_EQ(kickItemText({'P', 44, 56}, false), "Punt 44 FC In20 TB ");
    EXPECT_EQ(kickItemText({'P', 44, 4}, false), "Punt 44 Blk ");
    EXPECT_EQ(returnItemText({'P', 0, 14}), "PR 0 FC F TD ");
    EXPECT_EQ(returnItemText({'K', 30, 3}), "KR 30 ");
    // A damaged slot still shows something, and blank or zeroed slots are no plays.
    PlayList plays{};
    plays[0] = {'Z', 5, 0};
    plays[1] = {'\0', 0, 0};
    plays[3] = {'F', 20, 2};
    EXPECT_EQ(kickItems(plays), (Strings{"Z 5 Missed ", "FG 20 Good "}));
    // An item past the last is none to remove; a full list takes no more.
    EXPECT_FALSE(removePlay(plays, 2));
    plays.fill({'X', 0, 2});
    EXPECT_FALSE(appendPlay(plays, {'F', 1, 2}));
}
