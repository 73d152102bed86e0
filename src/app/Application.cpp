#include "Application.h"

#include "entry/ui/PlayerScreenDialog.h"
#include "games/ui/GameMenuDialog.h"
#include "games/ui/NameYourOwnDialog.h"
#include "games/ui/PlayerNumberDialog.h"
#include "games/ui/RosterDialog.h"
#include "shell/ui/DataDirectoryDialog.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/TeamNameDialog.h"
#include "shell/ui/TeamSelectPanel.h"
#include "ui/TextCodec.h"

namespace scorvane {

Application::Application(Session session, Prompter& prompter)
    : session_(std::move(session)), prompter_(prompter), files_(session_.paths, prompter) {
    window_ = std::make_unique<MainWindow>(session_, prompter_);
    panel_ = new TeamSelectPanel(teams_);
    window_->setTeamPanel(panel_);
    QObject::connect(panel_, &TeamSelectPanel::countChanged, window_.get(),
                     &MainWindow::setSelectedTeamCount);
    QObject::connect(panel_, &TeamSelectPanel::teamActivated, window_.get(),
                     [this] { openTeamName(); });

    window_->registerScreen(Screen::DataDirectory, [this] { openDataDirectory(); });
    window_->registerScreen(Screen::TeamName, [this] { openTeamName(); });
    window_->registerScreen(Screen::Roster, [this] { openRoster(); });
    window_->registerScreen(Screen::NameYourOwn, [this] { openNameYourOwn(); });
    window_->registerScreen(Screen::GameList, [this] { openGameList(); });
    window_->registerScreen(Screen::ChangePlayerNumber, [this] { openChangePlayerNumber(); });

    // A folder without a team list is not read (reading would leave an empty list behind); the
    // user chooses a data directory first.
    if (hasDataDirectory())
        (void)teams_.load(files_); // a disk error was shown; a short list reads as unnamed teams
    refreshTeams();
}

Application::~Application() = default;

bool Application::hasDataDirectory() const {
    return session_.startupMark == StartupMark::Ready;
}

void Application::refreshTeams() {
    panel_->refresh();
    panel_->setEnabled(hasDataDirectory());
}

void Application::openDataDirectory() {
    DataDirectoryDialog dialog(session_, files_, prompter_, teams_, *window_);
    dialog.exec();
    // Another season's games: the game list starts over on its last game.
    gameTeam_ = 0;
    refreshTeams();
}

void Application::openTeamName() {
    TeamNameDialog dialog(teams_, files_, teams_.currentTeam(), window_.get());
    dialog.exec();
    refreshTeams();
}

void Application::openRoster() {
    const int team = teams_.currentTeam();
    RosterDialog dialog(files_.team(team), roster_, prompter_, fromFileText(teams_.teamName(team)),
                        window_.get());
    dialog.exec();
    refreshTeams();
}

void Application::openNameYourOwn() {
    NameYourOwnDialog dialog(session_, prompter_, window_.get());
    dialog.exec();
    refreshTeams();
}

void Application::openGameList() {
    const int team = teams_.currentTeam();
    GameMenuDialog dialog(files_, prompter_, session_.config, teams_, team,
                          team == gameTeam_ ? currentGame_ : 0, window_.get());
    dialog.setPlayerScreen(
        [this, team, &dialog](int game) { return openPlayerScreen(team, game, &dialog); });
    dialog.exec();
    gameTeam_ = team;
    currentGame_ = dialog.currentGame();
    refreshTeams();
}

bool Application::openPlayerScreen(int team, int game, QWidget* parent) {
    const QString teamName = fromFileText(teams_.teamName(team));
    PlayerScreenDialog* screen = nullptr;
    // The roster opens over the player screen; the player screen fills its table again after.
    auto openRoster = [this, team, teamName, &screen] {
        RosterDialog roster(files_.team(team), roster_, prompter_, teamName, screen);
        roster.exec();
    };
    PlayerScreenDialog dialog(files_.team(team), game, session_.columns, prompter_, teamName,
                              openRoster, parent);
    screen = &dialog;
    dialog.exec();
    return dialog.leftTo() == PlayerScreen::Leave::GameScreen;
}

void Application::openChangePlayerNumber() {
    const int team = teams_.currentTeam();
    TeamFiles files = files_.team(team);
    // A roster that cannot be read was reported by the storage layer; its numbers show empty.
    (void)roster_.load(files);
    PlayerNumberDialog dialog(files, roster_, prompter_, fromFileText(teams_.teamName(team)),
                              window_.get());
    dialog.exec();
    refreshTeams();
}

} // namespace scorvane
