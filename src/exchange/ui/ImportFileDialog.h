#pragma once

#include "exchange/GameImport.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/TeamList.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QTreeWidget;

namespace scorvane {

// The preview of a press-box game before it is imported: which side is ours, where the game goes
// (a new game, or the results of a game of the list replaced), the game and, player by player,
// what goes into each category, with every number not on the roster offered for adding, and what
// is left to enter by hand or not imported. OK writes it all as one change; the other side can go
// into the opponent's team of the same data directory as well.
class ImportFileDialog : public QDialog {
    Q_OBJECT

public:
    // `selectedGame`: the game selected in the game list (0 for none), offered first as the game
    // whose results are replaced.
    ImportFileDialog(DataFiles& data, Prompter& prompter, const TeamList& teams, int team,
                     PressBoxGame game, const QString& fileName, int selectedGame,
                     QWidget* parent = nullptr);

    // The game written, 0 when nothing was.
    int importedGame() const { return imported_; }

private:
    void sideChosen();
    void showPreview();
    void importGame();

    DataFiles& data_;
    Prompter& prompter_;
    const TeamList& teams_;
    int team_;
    PressBoxGame game_;
    Roster roster_;
    int liveGames_ = 0;
    std::optional<GameImport> import_;
    int imported_ = 0;

    QComboBox* side_ = nullptr;
    QComboBox* target_ = nullptr;
    QLabel* gameLabel_ = nullptr;
    QTreeWidget* players_ = nullptr;
    QListWidget* byHand_ = nullptr;
    QListWidget* notImported_ = nullptr;
    QCheckBox* other_ = nullptr;
    QComboBox* otherTeam_ = nullptr;
    QLabel* problem_ = nullptr;
};

// Asks for a press-box file, reads it and shows its preview. A file that cannot be read or used is
// refused with its message. Returns true when the team's files changed.
bool importGameFromFile(DataFiles& data, Prompter& prompter, const TeamList& teams, int team,
                        int selectedGame, QWidget* parent);

} // namespace scorvane
