#include "games/GameScreen.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace scorvane;

// Designated initializers name only the fields a test cares about.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
using namespace scorvane::testing;

namespace {

struct GameFixture : ::testing::Test, ScratchData {
    GameList games;

    GameFixture() { files = data.team(2); }
    // Adds a game with these score boxes (the opponent's five, then the team's); returns its bytes.
    Bytes add(std::array<std::string, 10> scores) {
        EXPECT_TRUE(games.load(files));
        GameForm form(EntryMode::Add, 0, games);
        form.fields() = {"1015 3", "Field", "  Tigers", 4, scores, "Rain", 3, true, true};
        EXPECT_EQ(form.save(files, games, prompter), GameForm::SaveResult::Saved);
        EXPECT_EQ(form.mode(), EntryMode::Change);
        EXPECT_EQ(form.gameNumber(), games.activeCount());
        const Bytes all = dir.read("FBGS2.DAT");
        return Bytes(all.end() - 200, all.end());
    }
    std::string shown(std::size_t i) const {
        return prompter.shown.at(i).text + "|" + prompter.shown.at(i).title;
    }
};

} // namespace

TEST(GameDate, BlanksBecomeZerosAndTheLabelShowsTheLongDate) {
    for (const auto& [typed, stored, valid, label] :
         std::vector<std::tuple<std::string, std::string, bool, std::string>>{
             {"", "000000", true, ""},
             {"      ", "000000", true, ""},
             {"00 000", "000000", true, ""},
             {"1 1202", "101202", true, "Oct  12,  2002"},
             {"023001", "023001", false, "ERROR"}}) {
        GameForm form(EntryMode::Add, 0, GameList{});
        form.fields().date = typed;
        std::string text = "x";
        EXPECT_EQ(form.checkDate(text), valid) << typed;
        EXPECT_EQ(form.fields().date + "|" + text, stored + "|" + label);
    }
}

TEST_F(GameFixture, SavingAddsTheRecordOnceAndOvertimeIsAskedOnlyForATie) {
    const Bytes b = add({"7", "3", "", "0", "", "14", "", "7", "", ""});
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(intAt(b, 0), 1);
    EXPECT_EQ(textAt(b, 2, 52), "A101503" + fit("Field", 20) + fit("Tigers", 25));
    EXPECT_EQ(intAt(b, 54) * 100 + intAt(b, 56), 703);
    EXPECT_EQ(intAt(b, 64) * 100 + intAt(b, 68), 1407);
    EXPECT_EQ(textAt(b, 74, 61) + digits(intAt(b, 135)) + textAt(b, 137, 63),
              fit("Rain", 58) + "3120" + fit("", 63));

    const Message overtime{"Was this an overtime game?", "Overtime Game?", Buttons::YesNo,
                           Icon::Question, Answer::No};
    // team1, teamOT, opp1, oppOT, answer, asked, stored flag
    for (const auto& [team1, teamOT, opp1, oppOT, answer, asked, flag] : std::vector<
             std::tuple<std::string, std::string, std::string, std::string, Answer, bool, int>>{
             {"14", "", "14", "", Answer::Yes, true, -1},
             {"14", "0", "14", "0", Answer::No, true, 0},
             {"14", "3", "17", "", Answer::No, false, -1},
             {"14", "", "14", "2", Answer::No, false, -1},
             {"21", "", "14", "", Answer::Yes, false, 0}}) {
        prompter.shown.clear();
        prompter.answers = {answer};
        EXPECT_EQ(intAt(add({opp1, "", "", "", oppOT, team1, "", "", "", teamOT}), 135), flag)
            << team1 << teamOT;
        EXPECT_EQ(prompter.shown, asked ? std::vector<Message>{overtime} : std::vector<Message>{});
    }
    EXPECT_EQ(dir.read("FBGS2.DAT").size(), 6u * 200u);

    // Game 1 reopened for a change shows what was stored, and saving rewrites it in place.
    GameForm form(EntryMode::Change, 1, games);
    const auto& f = form.fields();
    EXPECT_EQ(f.scores[GameForm::Opp1] + f.scores[GameForm::TeamOT] + f.opponent + f.location,
              "70TigersField");
    EXPECT_TRUE(f.gameType == 3 && f.home && f.specialSelect && !form.changed());
    form.fields().comment = "Snow";
    ASSERT_EQ(form.save(files, games, prompter), GameForm::SaveResult::Saved);
    EXPECT_EQ(textAt(dir.read("FBGS2.DAT"), 74, 5), "Snow ");
}

TEST_F(GameFixture, CancelAndPlayersAskOnlyAfterAChangeAndABadDateIsNeverSaved) {
    // changed, date, answer, cancel closes, players goes on, games on disk afterwards
    for (const auto& [changed, date, answer, closes, goesOn, written] :
         std::vector<std::tuple<bool, std::string, Answer, bool, bool, std::size_t>>{
             {false, "091503", Answer::No, true, true, 0},
             {true, "091503", Answer::No, false, true, 0},
             {true, "091503", Answer::Yes, true, true, 1},
             {true, "133103", Answer::Yes, true, false, 1}}) {
        GameForm form(EntryMode::Add, 0, games);
        form.fields().date = date;
        form.fields().scores[GameForm::Team1] = "3";
        if (changed)
            form.markChanged();
        prompter.shown.clear();
        prompter.answers = {answer, answer};
        EXPECT_EQ(form.confirmCancel(prompter), closes);
        EXPECT_EQ(form.saveBeforePlayers(files, games, prompter), goesOn);
        EXPECT_EQ(dir.read("FBGS2.DAT").size(), written * 200u);
        // Cancel's question, the Players question, then the date message of a refused save.
        ASSERT_EQ(prompter.shown.size(), changed ? (goesOn ? 2u : 3u) : 0u);
        for (std::size_t i = 0; i < prompter.shown.size(); ++i)
            EXPECT_EQ(shown(i), (std::vector<std::string>{
                                    "Do you really want to cancel?|Game Information Changed!",
                                    "Save game information?|Game Information Changed!",
                                    "Enter game date (MMDDYY)|Game Date Invalid"}[i]));
    }
}

TEST_F(GameFixture, ImportChecksTheOpponentListsItsLiveGamesAndMirrorsOne) {
    GameForm form(EntryMode::Add, 0, games);
    using Check = GameForm::ImportCheck;
    for (auto [opponent, check] :
         {std::pair{0, Check::NoOpponent}, {2, Check::SameTeam}, {5, Check::Ok}}) {
        form.fields().opponentTeam = opponent;
        EXPECT_EQ(form.checkImport(2, prompter), check);
    }
    ASSERT_EQ(prompter.shown.size(), 2u);
    EXPECT_EQ(shown(0) + shown(1), "Select opponent first|No Opponent Selected"
                                   "Opponent can not be update team|Incorrect Opponent");

    // Team 5's two games, with a deleted one between them.
    std::vector<GameRecord> theirs(3);
    theirs[1].gameStatus = 'D';
    theirs[2] = {2,           'A', "091303", "Home Field", "Us", {10, 0, 0, 0, 6}, {7, 0, 0, 3, 0},
                 "Close one", '4', '2'};
    TeamFiles opponent = data.team(5);
    ASSERT_TRUE(opponent.replaceAllWith(FileKind::Games, theirs));

    std::vector<ImportChoice> choices;
    ASSERT_TRUE(listOpponentGames(opponent, ConfigRecord::defaults(), choices));
    ASSERT_EQ(choices.size(), 2u);
    EXPECT_EQ(choices[1].position, 3);
    EXPECT_EQ(choices[1].line, GameList::line(theirs[2], ConfigRecord::defaults()));
    GameRecord game;
    ASSERT_TRUE(readOpponentGame(opponent, 3, game));

    form.applyImport(game, false);
    const auto& f = form.fields();
    EXPECT_EQ(f.date + "|" + f.location + "|" + f.comment, "091303|Home Field|");
    EXPECT_EQ(f.scores,
              (std::array<std::string, 10>{"7", "0", "0", "3", "0", "10", "0", "0", "0", "6"}));
    EXPECT_TRUE(f.home && f.gameType == 4 && form.changed());
    form.applyImport(game, true);
    EXPECT_EQ(form.fields().comment, "Close one");
}

// A game stored with points that do not fit 16 bits, or with scores no box could hold: the user
// is told, an import takes nothing, and a re-save keeps every value the user did not edit.
TEST_F(GameFixture, StoredScoresOutsideTheBoxesSurviveAndOverflowIsReported) {
    GameRecord odd{.gameNumber = 1,
                   .opponent = "Giants",
                   .opponentScore = {30000, 2767, 1, 0, 0},
                   .teamScore = {1200, -3, 7, 0, 0}};
    ASSERT_TRUE(files.replaceAllWith(FileKind::Games, std::vector<GameRecord>{odd}));
    ASSERT_TRUE(games.load(files));
    const Bytes before = dir.read("FBGS2.DAT");

    GameForm form(EntryMode::Change, 1, games);
    EXPECT_TRUE(form.reportOverflow(prompter));
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(shown(0), "Overflow|Error");
    // Only the comment is edited: every score stays as stored.
    form.fields().comment = "Snow";
    form.markChanged();
    ASSERT_EQ(form.save(files, games, prompter), GameForm::SaveResult::Saved);
    Bytes expected = before;
    std::copy_n("Snow", 4, expected.begin() + 74);
    EXPECT_EQ(dir.read("FBGS2.DAT"), expected);
    // An edited box takes what was typed.
    form.fields().scores[GameForm::Team1] = "14";
    ASSERT_EQ(form.save(files, games, prompter), GameForm::SaveResult::Saved);
    EXPECT_EQ(intAt(dir.read("FBGS2.DAT"), 64), 14);
    EXPECT_EQ(intAt(dir.read("FBGS2.DAT"), 66), -3);

    // Imported from the other side, the same game is refused with the message.
    TeamFiles other = data.team(7);
    ASSERT_TRUE(other.replaceAllWith(FileKind::Games, std::vector<GameRecord>{odd}));
    GameForm fresh(EntryMode::Add, 0, games);
    prompter.shown.clear();
    EXPECT_FALSE(fresh.importFrom(other, 1, true, prompter));
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(shown(0), "Overflow|Error");
    EXPECT_FALSE(fresh.changed());
    EXPECT_EQ(fresh.fields().scores[GameForm::Team1], "");
}
