#pragma once

#include "reports/Selection.h"
#include "storage/ConfigRecord.h"
#include "storage/Prompter.h"
#include "storage/Records.h"

#include <QDialog>

#include <array>
#include <set>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace scorvane {

// The choice of games and player a report is computed over: the game range, the seven game types
// (named as the configuration names them), Special Select with the team's games to mark, and one
// player by number or name. Compute checks the range ("Must be 1 to 999", "From Game Invalid" /
// "To Game Invalid", the focus back on the box), swaps a reversed range and closes; the caller then
// computes. Cancel changes nothing.
//
// The game type check boxes are named chkGameType1 to chkGameType7.
class ComputeDialog : public QDialog {
    Q_OBJECT

public:
    // `games` are the team's games as the report holds them: the live ones are listed, marked when
    // their Special Select mark is "2".
    ComputeDialog(const Selection& selection, const ConfigRecord& config,
                  const std::vector<GameRecord>& games, Prompter& prompter,
                  QWidget* parent = nullptr);

    // What Compute stored.
    const Selection& selection() const { return selection_; }
    // The game numbers marked in the list.
    std::set<int> markedGames() const;

private:
    void compute();
    void chooseAll();
    void clearGameTypes();
    void clearGameList();
    void countMarks();

    Prompter& prompter_;
    Selection selection_;
    QLineEdit* low_ = nullptr;
    QLineEdit* high_ = nullptr;
    std::array<QCheckBox*, kGameTypeCount> types_{};
    QCheckBox* special_ = nullptr;
    QListWidget* games_ = nullptr;
    QLabel* selected_ = nullptr;
    QLineEdit* playerNumber_ = nullptr;
    QLineEdit* playerName_ = nullptr;
};

// Applies the marks of the Special Select list to the games the report holds (in memory only):
// live games get "2" when their number is marked and "1" otherwise.
void applyMarks(std::vector<GameRecord>& games, const std::set<int>& marked);

} // namespace scorvane
