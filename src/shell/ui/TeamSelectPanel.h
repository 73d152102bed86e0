#pragma once

#include <QFrame>

class QLabel;
class QListWidget;

namespace scorvane {

class TeamSelection;

// The resting screen: the 100 team slots, of which the user marks the teams the menu commands
// work on. The list's index of team n is n - 1.
//
// Every change of the list's selection is handed to TeamSelection::click at once, so the marks
// and the current team always match what the user sees; countChanged then tells how many teams
// are marked. The panel hands the keyboard focus to its list.
class TeamSelectPanel : public QFrame {
    Q_OBJECT

public:
    explicit TeamSelectPanel(TeamSelection& teams, QWidget* parent = nullptr);

    // Opening the list: fills the team names, puts the current line on the current team and
    // selects the marked teams (none after the data directory changed).
    void refresh();

    QListWidget* list() const { return list_; }

signals:
    void countChanged(int count);
    // A line was double-clicked; it is marked and is the current team by now.
    void teamActivated(int teamNumber);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void selectionChanged();
    void showCount();

    TeamSelection& teams_;
    QListWidget* list_ = nullptr;
    QLabel* count_ = nullptr;
    QLabel* current_ = nullptr;
    bool filling_ = false;
};

} // namespace scorvane
