#include "entry/ScreenFixture.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;
using Focus = PlayerScreen::Focus;
using Cell = PlayerScreen::Cell;

namespace {

struct PlayerFixture : ScreenFixture {
    void SetUp() override {
        roster({{3, "Ann Arbor"}, {7, "Bo Brown"}, {12, "Cy Clark"}});
        games(2);
    }
    std::vector<std::string> fields() const {
        std::vector<std::string> out;
        for (int f = 0; f < 27; ++f)
            if (screen.fieldShown(f))
                out.push_back(screen.fieldCaption(f) + "=" + screen.fieldText(f));
        return out;
    }
};

} // namespace

TEST_F(PlayerFixture, OpensOnTheFirstPlayerInPassingWithWhatIsRecorded) {
    stats({categoryRecord(1, 7, 'D', {5, 2, 0, 0, 0, 0, 0, 25, 0, 0, 4}),
           categoryRecord(1, 7, 'P', {3, 2, 20, 0, 1, 0, 15}), categoryRecord(2, 3, 'P', {9, 9})});
    open(1, "Ravens");
    ASSERT_EQ(screen.rows().size(), 3u);
    EXPECT_EQ(screen.rows()[1].number * 1000 + screen.rows()[2].number, 7012);
    EXPECT_EQ(screen.selectedCell(), (Cell{0, 0}));
    EXPECT_EQ(screen.playerNameText() + "|" + screen.statTypeText(), "Ann Arbor|PASSING");
    EXPECT_FALSE(screen.played());
    EXPECT_EQ(screen.counterText(0) + screen.counterText(3) + screen.counterText(1), "110");
    EXPECT_TRUE(screen.ballMark(1, 0) && screen.ballMark(1, 3) && !screen.ballMark(0, 0));
    EXPECT_EQ(screen.heading().gameNumber + "|" + screen.heading().visitorName, "Game 1|Ravens");

    ASSERT_TRUE(screen.clickCell(1, 3));
    EXPECT_EQ(fields(), (std::vector<std::string>{"Sol=5", "Ast=2", "Int=0", "Blk=0", "Hur=0",
                                                  "F=0", "FC=0", "Sk=2.5", "TD=0", "Pen=0", "D1=4",
                                                  "D2=0", "D3=0", "D4=0", "D5=0"}));
    EXPECT_TRUE(screen.played() && screen.sackNoteShown());
    // A column after the categories changes the player, not the category.
    ASSERT_TRUE(screen.clickCell(2, 7));
    EXPECT_EQ(screen.statTypeText() + "|" + screen.fieldText(0), "DEFENSE|0");
    ASSERT_TRUE(screen.clickCell(1, 0));
    EXPECT_EQ(screen.fieldText(0) + screen.fieldText(5) + screen.fieldText(2), "31520");
    EXPECT_FALSE(screen.resultsChanged());
}

TEST_F(PlayerFixture, EditsTickPlayedAndCountButTheScreensOwnFillingDoesNot) {
    open();
    {
        PlayerScreen::Filling filling(screen);
        screen.editField(0, "4");
    }
    EXPECT_FALSE(screen.playerChanged() || screen.resultsChanged() || screen.played());
    EXPECT_EQ(screen.editField(2, "1x5"), "15");
    EXPECT_TRUE(screen.playerChanged() && screen.resultsChanged() && screen.played());
    EXPECT_EQ(screen.counterText(0), "1");
    EXPECT_TRUE(screen.ballMark(0, 0));
    screen.editField(1, "2");
    EXPECT_EQ(screen.counterText(0), "1"); // counted once

    // Unticking removes the results: fields "0", the mark and the count go, focus to field 0.
    screen.clickPlayed();
    EXPECT_EQ(screen.fieldText(2) + screen.counterText(0), "00");
    EXPECT_FALSE(screen.played() || screen.ballMark(0, 0));
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::Field, 0}));
    screen.clickPlayed();
    EXPECT_EQ(screen.counterText(0), "1");

    // Status line texts.
    screen.fieldFocused(0);
    EXPECT_EQ(screen.statusText(), "Attempts ");
    screen.fieldFocused(24);
    EXPECT_EQ(screen.statusText(), "User Defined Field");
    screen.fieldLeft();
    EXPECT_EQ(screen.statusText(), "");
    screen.tableFocused();
    EXPECT_EQ(screen.statusText(), "Player Table - Click on Table to Select");
    screen.buttonFocused(PlayerScreen::Button::Ok);
    EXPECT_EQ(screen.statusText(), "Save All Player Results Entered");
    EXPECT_EQ(screen.nextFieldAfterEnter(12), 22);
}

TEST_F(PlayerFixture, AFailedCheckKeepsThePlayerAndItsEntries) {
    open();
    type("0=10 1=6 4=5");
    EXPECT_FALSE(screen.clickCell(2, 3));
    EXPECT_EQ(lastMessage(), "Cm + Int > Att|Error");
    EXPECT_EQ(screen.selectedCell(), (Cell{0, 0}));
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::Field, 0}));
    EXPECT_EQ(screen.statTypeText() + screen.fieldText(0), "PASSING10");

    // The other ways out check too, and stop.
    EXPECT_FALSE(screen.toggleTeamTotals());
    EXPECT_EQ(screen.teamButtonCaption(), "&Team Totals");
    EXPECT_FALSE(screen.prepareRoster());
    EXPECT_EQ(screen.ok(), PlayerScreen::Leave::Stay);
    EXPECT_EQ(prompter.shown.size(), 4u);

    // A number too large for the file is refused, not cut.
    type("0=99999");
    EXPECT_EQ(screen.ok(), PlayerScreen::Leave::Stay);
    EXPECT_EQ(lastMessage(), "Number must be between -32768 and 32767|Error");
    EXPECT_EQ(statsFile(), Bytes{});

    type("0=11");
    ASSERT_TRUE(screen.clickCell(1, 1));
    ASSERT_TRUE(screen.clickCell(0, 0));
    EXPECT_EQ(screen.fieldText(0) + screen.fieldText(4), "115");
}

TEST_F(PlayerFixture, LeavingAsksOnlyWhenSomethingChanged) {
    const Message cancelQuestion{"Do you really want to cancel?", "Player Statistics Changed!",
                                 Buttons::YesNo, Icon::Question, Answer::No};
    open();
    EXPECT_EQ(screen.cancel(), PlayerScreen::Leave::GameList);
    EXPECT_TRUE(prompter.shown.empty());

    type(1, 4, "22=3");
    prompter.answers = {Answer::No};
    EXPECT_EQ(screen.cancel(), PlayerScreen::Leave::Stay);
    EXPECT_EQ(prompter.shown.back(), cancelQuestion);
    EXPECT_EQ(screen.focus(), (Focus{Focus::Target::Field, 22})); // kicking has no field 0
    type(2, 0, "0=1");
    prompter.answers = {Answer::Yes};
    EXPECT_EQ(screen.cancel(), PlayerScreen::Leave::GameList);
    EXPECT_EQ(statsFile(), Bytes{}); // cancel writes nothing

    // Game screen: No leaves without saving; Yes saves.
    prompter.answers = {Answer::No};
    EXPECT_EQ(screen.toGameScreen(), PlayerScreen::Leave::GameScreen);
    EXPECT_EQ(lastMessage(), "Save player statistics?|Player Statistics Changed!");
    EXPECT_EQ(statsFile(), Bytes{});
    prompter.answers = {Answer::Yes};
    EXPECT_EQ(screen.toGameScreen(), PlayerScreen::Leave::GameScreen);
    EXPECT_EQ(statsFile(),
              joined({listRecord(1, 7, 'K', {3}, {}), categoryRecord(1, 12, 'P', {1})}));
}

TEST_F(PlayerFixture, TeamTotalsSumEveryRecordedPlayer) {
    stats({categoryRecord(1, 3, 'P', {10, 6, 80, 0, 1, 0, 40}),
           categoryRecord(1, 7, 'P', {8, 4, 50, 0, 0, 0, 25, 0, 0, 0, 0, 0, 2}),
           categoryRecord(1, 7, 'D', {0, 0, 0, 0, 0, 0, 0, 15}),
           categoryRecord(1, 12, 'D', {0, 0, 0, 0, 0, 0, 0, 10}),
           listRecord(1, 3, 'K', {}, {{'F', 35, 2}, {'F', 48, 4}, {'X', 0, 2}, {'P', 41, 24}}),
           listRecord(1, 12, 'T', {}, {{'K', 95, 8}, {'K', 23, 4}, {'K', 20, 0}})});
    open();
    ASSERT_TRUE(screen.toggleTeamTotals());
    EXPECT_EQ(screen.teamButtonCaption() + "|" + screen.playerNameText(), "&Players|Team Totals");
    EXPECT_EQ(screen.statusText(), "Players Recorded - 2");
    // Att 18, Cm 10, Yds 130, Lg 40 + 25 = 65, FD 2
    EXPECT_EQ(screen.fieldText(0) + "," + screen.fieldText(1) + "," + screen.fieldText(2) + "," +
                  screen.fieldText(5) + "," + screen.fieldText(7),
              "18,10,130,65,2");
    EXPECT_FALSE(screen.fieldsEditable() || screen.playedEnabled() || screen.rosterEnabled());
    EXPECT_EQ(screen.editField(0, "1"), "18");

    ASSERT_TRUE(screen.toggleTeamTotals());
    EXPECT_EQ(screen.teamButtonCaption() + "|" + screen.playerNameText() + "|" +
                  screen.fieldText(0),
              "&Team Totals|Ann Arbor|10"); // the totals were not taken over

    for (const auto& [column, status, field] :
         std::vector<std::tuple<int, std::string, std::string>>{{3, " 2", "2.5"}, {1, " 0", "0"}}) {
        ASSERT_TRUE(screen.clickCell(0, column));
        ASSERT_TRUE(screen.toggleTeamTotals());
        EXPECT_EQ(screen.statusText(), "Players Recorded -" + status);
        EXPECT_EQ(screen.fieldText(column == 3 ? 7 : 0), field);
        ASSERT_TRUE(screen.toggleTeamTotals());
    }

    ASSERT_TRUE(screen.clickCell(0, 4));
    ASSERT_TRUE(screen.toggleTeamTotals());
    EXPECT_EQ(screen.kickItems(), (std::vector<std::string>{"FG 35 Good ", "FG 48 Blk ",
                                                            "XPt Good ", "Punt 41 FC In20 "}));
    EXPECT_EQ(screen.totals().fieldGoals + "|" + screen.totals().extraPoints + "|" +
                  screen.totals().punts,
              "1 for 2 Field Goals|1 for 1 Extra Points|1 Punt");
    EXPECT_TRUE(screen.summaryShown() && !screen.entryControlsEnabled());
    ASSERT_TRUE(screen.toggleTeamTotals());
    ASSERT_TRUE(screen.clickCell(0, 5));
    ASSERT_TRUE(screen.toggleTeamTotals());
    EXPECT_EQ(screen.returnItems(), (std::vector<std::string>{"KR 95 TD ", "KR 23 F ", "KR 20 "}));
    EXPECT_EQ(screen.totals().kickReturns + "|" + screen.totals().puntReturns + "|" +
                  screen.totals().punts,
              "3 Kick Returns|0 Punt Returns|0 Punts");
}

TEST_F(PlayerFixture, TheRosterClosingRefillsTheTableInPassing) {
    open();
    type(1, 2, "0=2 1=9");
    ASSERT_TRUE(screen.prepareRoster());
    Roster changed;
    changed.inUse[7] = changed.inUse[40] = true;
    changed.names[7] = "Bo Brown";
    changed.names[40] = "Dee Dunn";
    screen.rosterClosed(changed);
    EXPECT_EQ(screen.rows().size(), 2u);
    EXPECT_EQ(screen.selectedCell(), (Cell{0, 0}));
    EXPECT_EQ(screen.statTypeText() + "|" + screen.playerNameText(), "PASSING|Bo Brown");
    ASSERT_TRUE(screen.clickCell(0, 2));
    EXPECT_EQ(screen.fieldText(0) + screen.fieldText(1), "29"); // kept through the roster
}
