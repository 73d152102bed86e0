#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace scorvane {

class DataFiles;
class TeamSelection;

// A team's long and short names. OK stores them in the team list; Default empties both boxes
// first, so the team gets its default names ("Team 7"). Cancel stores nothing.
class TeamNameDialog : public QDialog {
    Q_OBJECT

public:
    TeamNameDialog(TeamSelection& teams, DataFiles& files, int teamNumber,
                   QWidget* parent = nullptr);

    int teamNumber() const { return team_; }

private:
    void store();

    TeamSelection& teams_;
    DataFiles& files_;
    int team_;
    QLineEdit* longName_ = nullptr;
    QLineEdit* shortName_ = nullptr;
};

} // namespace scorvane
