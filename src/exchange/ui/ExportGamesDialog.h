#pragma once

#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/TeamList.h"

#include <QDialog>

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace scorvane {

// The export of a team's games to files outside the data directory: the games ticked in the list,
// each to its own file in the chosen folder, as press-box XML (with the opponent's side when the
// opponent's team in the data directory has the game too) or as the high-school stats site's
// text. Looking writes nothing; Export writes only the files in that folder, each whole.
class ExportGamesDialog : public QDialog {
    Q_OBJECT

public:
    // `selectedGame`: the game selected in the game list (0 for none), ticked at first.
    ExportGamesDialog(DataFiles& data, Prompter& prompter, const TeamList& teams, int team,
                      const ConfigRecord& config, int selectedGame, QWidget* parent = nullptr);

    // The files written by the last Export, 0 when none were.
    int exported() const { return exported_; }

private:
    void tickedChanged();
    void browse();
    void exportGames();
    std::vector<int> tickedGames() const;

    DataFiles& data_;
    Prompter& prompter_;
    const TeamList& teams_;
    int team_;
    int exported_ = 0;

    QListWidget* games_ = nullptr;
    QRadioButton* pressBox_ = nullptr;
    QRadioButton* siteText_ = nullptr;
    QLineEdit* folder_ = nullptr;
    QPushButton* ok_ = nullptr;
};

} // namespace scorvane
