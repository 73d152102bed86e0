#pragma once

#include "games/Roster.h"
#include "shell/Startup.h"
#include "shell/TeamSelection.h"
#include "storage/DataFiles.h"

#include <memory>
#include <string>

class QWidget;

namespace scorvane {

class MainWindow;
class Prompter;
class RosterDialog;
struct ReportContext;
class TeamSelectPanel;

// What the running program shares: the session from start-up, the data files, the marked teams,
// the current team's roster and the main window with the team selection on it. The screens of
// the menu commands are opened from here, modal over the main window, and the team selection is
// brought up to date whenever one of them closes.
class Application {
public:
    Application(Session session, Prompter& prompter);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    MainWindow& window() { return *window_; }
    TeamSelectPanel& panel() { return *panel_; }
    Session& session() { return session_; }
    DataFiles& files() { return files_; }
    TeamSelection& teams() { return teams_; }
    Roster& roster() { return roster_; }

    void openDataDirectory();
    void openTeamName();
    void openRoster();
    void openNameYourOwn();
    void openGameList();
    void openChangePlayerNumber();
    void openBackUpRestore();
    void openDeleteFiles();
    void openStatistics();
    void openTeamRecord();

private:
    bool hasDataDirectory() const;
    // The player screen of a game; true when the user left it for the game screen.
    bool openPlayerScreen(int team, int game, QWidget* parent);
    void refreshTeams();
    // Print and Game Log on the roster screen are the reports' work.
    void connectRoster(RosterDialog& dialog, int team);
    // The seasons file, beside BXFB.INI in the configuration folder.
    std::string seasonsFile() const;

    Session session_;
    Prompter& prompter_;
    DataFiles files_;
    TeamSelection teams_;
    Roster roster_;
    std::unique_ptr<MainWindow> window_;
    TeamSelectPanel* panel_ = nullptr;
    // The report screens' selection, print options and printer, kept while the program runs.
    std::unique_ptr<ReportContext> reports_;
    // The game worked on last on the game list, and whose it is: the list opens on its line.
    int gameTeam_ = 0;
    int currentGame_ = 0;
};

} // namespace scorvane
