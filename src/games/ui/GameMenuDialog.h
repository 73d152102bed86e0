#pragma once

#include "games/GameList.h"
#include "games/GameScreen.h"
#include "storage/DataFiles.h"

#include <QDialog>

#include <functional>

class QAction;
class QListWidget;
class QPushButton;

namespace scorvane {

class DataFiles;
class TeamFiles;
class Prompter;
class TeamList;
struct ConfigRecord;

// A team's games, one summary line each, and the commands on them: add, insert before, change
// and delete a game, and mark games for Special Select (the space bar or the list's context
// menu). Each command on a game opens the game screen; when it closes, the list is rebuilt with
// the marks cleared and a "New Game" line last.
class GameMenuDialog : public QDialog {
    Q_OBJECT

public:
    // `currentGame` is the game worked on last (0 for none); its line is selected on opening.
    GameMenuDialog(DataFiles& files, Prompter& prompter, const ConfigRecord& config,
                   const TeamList& teams, int teamNumber, int currentGame = 0,
                   QWidget* parent = nullptr);
    ~GameMenuDialog() override;

    int currentGame() const { return currentGame_; }

    // Opens the player screen of a game of this team and returns true when the user left it for
    // the game screen, false when for the game list. Without one, Players stays disabled.
    using PlayerScreenOpener = std::function<bool(int gameNumber)>;
    void setPlayerScreen(PlayerScreenOpener open);

    // Imports a game from a file, given the game selected in the list (0 for none); returns true
    // when the team's files changed. Without one, Import from File stays hidden.
    using FileImporter = std::function<bool(int selectedGame)>;
    void setFileImport(FileImporter import);
    // Exports games to files, given the game selected in the list. Without one, Export is hidden.
    using GameExporter = std::function<void(int selectedGame)>;
    void setExport(GameExporter exporter);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open();
    void showLines(const std::vector<std::string>& lines, int gameLines, int row);
    int selectedGame() const;
    // The game screen and the player screen of one game, one after the other as the user moves
    // between them, until the user is back on the list.
    void openGame(EntryMode mode, int gameNumber, bool playersFirst = false);
    void openPlayers();
    void addGame();
    void insertGame();
    void changeGame();
    void deleteGame();
    void toggleMark();
    void importFile();

    DataFiles& data_;
    TeamFiles files_;
    Prompter& prompter_;
    const ConfigRecord& config_;
    const TeamList& teams_;
    int team_;
    int currentGame_;
    GameList games_;
    int gameLines_ = 0;
    PlayerScreenOpener openPlayers_;
    FileImporter importFile_;
    GameExporter export_;
    QListWidget* list_ = nullptr;
    QAction* toggleMark_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* insert_ = nullptr;
    QPushButton* modify_ = nullptr;
    QPushButton* players_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* importButton_ = nullptr;
    QPushButton* exportButton_ = nullptr;
};

} // namespace scorvane
