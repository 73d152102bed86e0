#pragma once

#include "GameResults.h"
#include "PlayLists.h"
#include "TeamTotals.h"
#include "Validation.h"

#include "games/Roster.h"
#include "storage/ColumnTable.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// The player screen of one game: each roster player's results in the six categories, entered
// panel by panel, with the kick and return lists and the team totals view.
//
// The screen's window drives this model one user action at a time and then shows its state again.
// Everything entered stays in memory until it is saved; the statistics file is written only by
// OK and by going to the game screen, in one whole-file replacement. Opening writes nothing but
// what indexing the game's statistics corrects.
//
// Texts from the files (player names) are Windows-1252; every other text is the program's own.
class PlayerScreen {
public:
    // Where the screen goes after OK, Cancel or Game Screen.
    enum class Leave { Stay, GameList, GameScreen };
    enum class Button { Ok, Cancel, TeamTotals, GameScreen, Roster };

    // The control that should get the focus after the last action.
    struct Focus {
        enum class Target { None, Field, KickYards, ReturnYards };
        Target target = Target::None;
        int field = -1; // for Target::Field

        bool operator==(const Focus&) const = default;
    };
    // A cell of the player table: a row (player) and a column (0..5 the categories, later columns
    // the player's number and name).
    struct Cell {
        int row = -1;
        int column = -1;

        bool operator==(const Cell&) const = default;
    };
    struct Row {
        int number = 0;
        std::string name; // 17 characters as stored, right-trimmed
    };
    struct Heading {
        std::string gameNumber; // "Game 1"
        std::string date;       // the long date; empty for no date
        std::string location;
        std::string homeName, homeScore, visitorName, visitorScore;
    };

    // The columns of the player table that stand for the categories.
    static constexpr int kCategoryColumns = kCategoryCount;

    // Opens the screen on game `gameNumber` of the team: reads the roster (the table's rows are
    // the players in use, in number order), the game and the game's statistics, then selects the
    // first player in PASSING as a click would. `teamName` is shown in the heading.
    [[nodiscard]] Status open(TeamFiles& files, int gameNumber, const ColumnTable& columns,
                              Prompter& prompter, const std::string& teamName = {});

    // --- what the screen shows
    // --------------------------------------------------------------------
    const Heading& heading() const { return heading_; }
    const std::vector<Row>& rows() const { return rows_; }
    // Whether the ball mark (results recorded) shows in a category cell of a row.
    bool ballMark(int row, int category) const;
    // A category's count of recorded players, as a plain number.
    std::string counterText(int category) const;
    // Where the table's selection belongs.
    Cell selectedCell() const { return selected_; }
    int currentRow() const;
    int currentPlayer() const { return player_; }
    int currentCategory() const { return category_; }
    char categoryLetter() const { return kCategoryLetters[static_cast<std::size_t>(category_)]; }

    std::string playerNameText() const; // lblPlayerName: the name, or "Team Totals"
    std::string statTypeText() const;   // lblStatType: "PASSING" ... "RETURNS"
    bool fieldShown(int field) const;
    std::string fieldCaption(int field) const;
    const std::string& fieldText(int field) const;
    // The fields hold totals, which cannot be edited, while the team totals view is on.
    bool fieldsEditable() const { return !totalsShown_; }
    bool sackNoteShown() const { return categoryLetter() == 'D'; }
    bool kicksShown() const { return categoryLetter() == 'K'; }
    bool returnsShown() const { return categoryLetter() == 'T'; }
    bool played() const; // chkPlayed
    bool playedEnabled() const { return !totalsShown_ && player_ != 0; }
    bool rosterEnabled() const { return !totalsShown_; }
    bool teamTotalsShown() const { return totalsShown_; }
    std::string teamButtonCaption() const { return totalsShown_ ? "&Players" : "&Team Totals"; }
    const std::string& statusText() const { return status_; }
    Focus focus() const { return focus_; }
    bool playerChanged() const { return playerChanged_; }
    bool resultsChanged() const { return resultsChanged_; }
    // The outcome of the last save; a disk error has been reported to the user already.
    const Status& saveStatus() const { return saveStatus_; }

    // The kicks and returns panels. In the totals view their entry controls are unavailable, the
    // yards labels hidden and the summary labels shown.
    const KickEntry& kickEntry() const { return kick_; }
    const ReturnEntry& returnEntry() const { return return_; }
    bool entryControlsEnabled() const { return !totalsShown_; }
    bool kickMarkEnabled(KickMark m) const { return !totalsShown_ && kick_.markAvailable(m); }
    bool kickYardsEnabled() const { return !totalsShown_ && kick_.yardsAvailable(); }
    const std::vector<std::string>& kickItems() const { return kickItems_; }
    const std::vector<std::string>& returnItems() const { return returnItems_; }
    int kickSelection() const { return kickSelection_; }
    int returnSelection() const { return returnSelection_; }
    bool summaryShown() const { return totalsShown_; }
    const TeamTotals& totals() const { return totals_; } // the summary label texts

    // --- actions
    // ------------------------------------------------------------------------------------ A click
    // on a cell of the player table. The current entries are checked first when they were edited;
    // when they fail, the player and category stay, the message has been shown and false comes back
    // (the selection belongs on selectedCell() again). Columns past 5 keep the category.
    bool clickCell(int row, int column);
    // The user changed the text of a field. Characters the field refuses are taken out; the text
    // kept is returned. Marks the player changed, shows the ball mark and ticks Played.
    std::string editField(int field, std::string_view text);
    // While the window fills its own controls from the model, text changes are no edits.
    class Filling {
    public:
        explicit Filling(PlayerScreen& screen) : screen_(screen), was_(screen.filling_) {
            screen.filling_ = true;
        }
        ~Filling() { screen_.filling_ = was_; }
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

    private:
        PlayerScreen& screen_;
        bool was_;
    };
    int nextFieldAfterEnter(int field) const;

    // Focus changes that set the status line.
    void fieldFocused(int field);
    void fieldLeft();
    void tableFocused();
    void playedFocused();
    void buttonFocused(Button button);

    // A click on Played In Game (the user's own; a tick set by the screen itself is no click).
    void clickPlayed();

    void selectKickType(KickType type);
    std::string setKickYards(std::string_view text); // returns the text kept
    void setKickMark(KickMark mark, bool on);
    bool addKick();
    void selectKickItem(int item);
    // Deletes item `selected` (-1 when none is selected).
    bool deleteKick(int selected);
    void selectReturnType(ReturnType type);
    std::string setReturnYards(std::string_view text);
    void setReturnMark(ReturnMark mark, bool on);
    bool addReturn();
    void selectReturnItem(int item);
    bool deleteReturn(int selected);

    // Team Totals / Players. False when the current entries failed their check.
    bool toggleTeamTotals();

    Leave ok();
    Leave cancel();
    Leave toGameScreen();
    // Before the roster opens: true when it may (the current entries passed their check).
    bool prepareRoster();
    // After the roster closed: the table is filled again and PASSING selected.
    void rosterClosed(const Roster& roster);

    // Checks the shown panel; on a failure shows the message and moves the focus. True for OK.
    bool validateCategory();

    static Message cancelQuestion();
    static Message saveQuestion();
    // Asked before leaving a kick or return that was set up but not added; `item` is its list text.
    static Message addKickQuestion(const std::string& item);
    static Message addReturnQuestion(const std::string& item);

private:
    void fillRows(const Roster& roster);
    void selectPlayer(int row, int column);
    void showPanel();
    void takeOver();
    void markEdited();
    void setFocusField(int field);
    int firstField() const;
    bool canEnterPlays(char category) const;
    bool checkBeforeLeaving();
    bool settleSetUpPlay();
    Status save();
    CategoryResults& current();
    const CategoryResults& current() const;

    TeamFiles* files_ = nullptr;
    Prompter* prompter_ = nullptr;
    const ColumnTable* columns_ = nullptr;
    GameRecord game_;
    Heading heading_;
    std::vector<Row> rows_;
    GameResults results_;
    std::array<int, kCategoryCount> counters_{};

    int category_ = 0;
    int player_ = 0; // the current player's number, 0 with an empty roster
    FieldTexts texts_;
    bool playerChanged_ = false;
    bool resultsChanged_ = false;
    bool totalsShown_ = false;
    bool filling_ = false;
    Cell selected_;
    std::string status_;
    Focus focus_;
    Status saveStatus_;

    KickEntry kick_;
    ReturnEntry return_;
    std::vector<std::string> kickItems_, returnItems_;
    int kickSelection_ = -1, returnSelection_ = -1;
    TeamTotals totals_;
};

} // namespace scorvane
