#pragma once

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

namespace scorvane {

class DataFiles;
class Prompter;
class TeamSelection;

// Update > Delete Files: the marked teams, of which the user chooses one whose roster, player
// information, games and statistics are deleted after a Yes/No question (No the default). After a
// deletion the screen closes; the team's line of the team list is empty and no team is marked.
class DeleteFilesDialog : public QDialog {
    Q_OBJECT

public:
    DeleteFilesDialog(TeamSelection& teams, DataFiles& files, Prompter& prompter,
                      QWidget* parent = nullptr);

    QListWidget* teamList() const { return list_; }
    // The team of the chosen line, 0 when none is chosen.
    int chosenTeam() const;

private:
    void showCounts();
    void deleteChosen();

    TeamSelection& teams_;
    DataFiles& files_;
    Prompter& prompter_;
    QListWidget* list_ = nullptr;
    QLabel* counts_ = nullptr;
    QPushButton* delete_ = nullptr;
};

} // namespace scorvane
