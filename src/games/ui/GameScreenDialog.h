#pragma once

#include "games/GameScreen.h"
#include "storage/DataFiles.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace scorvane {

class GameList;
class Prompter;
class TeamList;
struct ConfigRecord;

// Lets a box take only the keys a score box takes (digits, Backspace, Delete). Keys that type
// nothing (Tab, the arrows, Home, End, Enter, Escape) keep working; pasting is refused too.
void acceptScoreKeysOnly(QLineEdit* box);

// One game's information: date, location, opponent, home or away, Special Select, game type,
// the points of each quarter and overtime, and a comment.
//
// The boxes hand every edit to the GameForm as it is typed, so the form always holds what the
// user sees; filling the boxes from the form is never taken as an edit. OK saves the game as the
// mode says; Cancel, Escape and the window's close box ask first when something was changed.
class GameScreenDialog : public QDialog {
    Q_OBJECT

public:
    // `mode` is Add (after the last game), Insert (before game `gameNumber`) or Change
    // (change game `gameNumber`). `teamNumber` is the team whose games these are.
    GameScreenDialog(DataFiles& data, TeamFiles files, GameList& games, Prompter& prompter,
                     const ConfigRecord& config, const TeamList& teams, int teamNumber,
                     EntryMode mode, int gameNumber, QWidget* parent = nullptr);
    ~GameScreenDialog() override;

    const GameForm& form() const { return form_; }

    // Whether the player screen can be opened from here. Without it the Players button stays
    // disabled and a saved new game goes back to the list.
    void setPlayersAvailable(bool available);
    // Whether the screen closed to go on to the player screen of form().gameNumber(): after a game
    // was added or inserted, or through the Players button.
    bool toPlayers() const { return toPlayers_; }

    // Cancel, Escape and the close box all end here.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* makeBox(const char* name, int maxLength);
    void fill();
    void showTotals();
    void dateEntered();
    void opponentEntered();
    void save();
    void players();
    void import();

    DataFiles& data_;
    TeamFiles files_;
    GameList& games_;
    Prompter& prompter_;
    const ConfigRecord& config_;
    const TeamList& teams_;
    int team_;
    GameForm form_;
    bool filling_ = false;
    bool playersAvailable_ = false;
    bool toPlayers_ = false;
    QPushButton* players_ = nullptr;

    QLineEdit* date_ = nullptr;
    QLabel* displayDate_ = nullptr;
    QLineEdit* location_ = nullptr;
    QComboBox* opponents_ = nullptr;
    QCheckBox* home_ = nullptr;
    QCheckBox* special_ = nullptr;
    QListWidget* gameTypes_ = nullptr;
    QLineEdit* comment_ = nullptr;
    std::array<QLineEdit*, GameForm::BoxCount> scores_{};
    QLabel* teamTotal_ = nullptr;
    QLabel* opponentTotal_ = nullptr;
};

} // namespace scorvane
