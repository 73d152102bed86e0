#pragma once

#include "storage/DataFiles.h"

#include <QDialog>

class QLineEdit;
class QListWidget;

namespace scorvane {

class Prompter;
struct Roster;

// Moves the selected player, with all his results, to the number typed in. A refused number
// leaves the focus in the number box; a move rebuilds the list and the dialog stays open for the
// next one until Close.
class PlayerNumberDialog : public QDialog {
    Q_OBJECT

public:
    // `roster` is the team's roster, already loaded for the files' current team.
    PlayerNumberDialog(TeamFiles files, Roster& roster, Prompter& prompter, const QString& teamName,
                       QWidget* parent = nullptr);

private:
    void showPlayers();
    void change();

    TeamFiles files_;
    Roster& roster_;
    Prompter& prompter_;
    QListWidget* list_ = nullptr;
    QLineEdit* number_ = nullptr;
};

} // namespace scorvane
