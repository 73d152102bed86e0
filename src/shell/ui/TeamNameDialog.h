#pragma once

#include <QDialog>

#include <string>

class QLineEdit;
class QPushButton;

namespace scorvane {

class DataFiles;
class TeamSelection;

// A team's long and short names. OK stores them in the team list; Default empties both boxes
// first, so the team gets its default names ("Team 7"). Cancel stores nothing. The team's ID at
// the high-school stats site is kept beside the team's files and written only when it changed;
// a malformed one is refused and the dialog stays open.
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
    QLineEdit* siteId_ = nullptr;
    std::string storedSiteId_; // as the file held it when the dialog opened
};

} // namespace scorvane
