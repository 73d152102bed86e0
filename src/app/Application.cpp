#include "Application.h"

#include "entry/ui/PlayerScreenDialog.h"
#include "exchange/ui/ExportGamesDialog.h"
#include "exchange/ui/ImportFileDialog.h"
#include "games/ui/GameMenuDialog.h"
#include "games/ui/NameYourOwnDialog.h"
#include "games/ui/PlayerNumberDialog.h"
#include "games/ui/RosterDialog.h"
#include "reports/ui/ReportScreens.h"
#include "reports/ui/TableReportDialog.h"
#include "seasons/ui/CareerReportDialog.h"
#include "seasons/ui/PlayerCareerDialog.h"
#include "seasons/ui/RecordBookDialog.h"
#include "seasons/ui/SeasonsDialog.h"
#include "shell/ui/BackupDialog.h"
#include "shell/ui/DataDirectoryDialog.h"
#include "shell/ui/DeleteFilesDialog.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/TeamNameDialog.h"
#include "shell/ui/TeamSelectPanel.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
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
    window_->registerScreen(Screen::BackUpRestore, [this] { openBackUpRestore(); });
    window_->registerScreen(Screen::DeleteFiles, [this] { openDeleteFiles(); });
    reports_ = std::make_unique<ReportContext>(session_, files_, prompter_);
    window_->registerScreen(Screen::StatisticsReport, [this] { openStatistics(); });
    window_->registerScreen(Screen::TeamRecord, [this] { openTeamRecord(); });
    window_->registerScreen(Screen::GameScores, [this] {
        openGameScores(*reports_, teams_.currentTeam(), window_.get());
        refreshTeams();
    });
    window_->registerScreen(Screen::Standings, [this] {
        openStandings(*reports_, teams_.markedTeams(), window_.get());
        refreshTeams();
    });
    // The seasons file lies in the configuration folder, beside BXFB.INI.
    window_->registerScreen(Screen::Seasons, [this] {
        openSeasonsList(normalizeDirectory(platform::folderOf(session_.configPath)), prompter_,
                        window_.get());
    });
    window_->registerScreen(Screen::Careers, [this] {
        openCareerReport(*reports_, seasonsFile(), window_.get());
        refreshTeams();
    });
    window_->registerScreen(Screen::RecordBook, [this] {
        openRecordBook(normalizeDirectory(platform::folderOf(session_.configPath)), *reports_,
                       window_.get());
    });

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
    connectRoster(dialog, team);
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
    dialog.setFileImport([this, team, &dialog](int selected) {
        return importGameFromFile(files_, prompter_, teams_, team, selected, &dialog);
    });
    dialog.setExport([this, team, &dialog](int selected) {
        ExportGamesDialog exportDialog(files_, prompter_, teams_, team, session_.config, selected,
                                       &dialog);
        exportDialog.exec();
    });
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
        connectRoster(roster, team);
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

void Application::openStatistics() {
    openStatisticsReport(*reports_, window_->shellState().reportLetter, teams_.markedTeams(),
                         teams_.currentTeam(), window_.get());
    refreshTeams();
}

void Application::openTeamRecord() {
    scorvane::openTeamRecord(*reports_, teams_.currentTeam(), window_.get());
    refreshTeams();
}

void Application::connectRoster(RosterDialog& dialog, int team) {
    dialog.setGameLog([this, team](int player, QWidget* parent) {
        openPlayerGameLog(*reports_, team, player, parent);
    });
    dialog.setPrint([this, team](const RosterEditor& editor, QWidget* parent) {
        printRoster(
            *reports_, teams_.teamName(team), roster_,
            [&editor](int number, ContactField field) { return editor.contact(number, field); },
            parent);
    });
    // The career over the seasons the user keeps, whichever data directory is open.
    dialog.setCareer([this](int, const std::string& name, QWidget* parent) {
        openPlayerCareer(*reports_, seasonsFile(), name, parent);
    });
}

std::string Application::seasonsFile() const {
    return seasonsFilePath(normalizeDirectory(platform::folderOf(session_.configPath)));
}

void Application::openBackUpRestore() {
    const char mode = window_->shellState().backupMode;
    if (!hasDataDirectory()) {
        prompter_.ask({"Choose a data directory first, with File, Data Directory.",
                       mode == 'N' ? "Restore Files" : "Back Up Files", Buttons::Ok, Icon::Warning,
                       Answer::Ok});
        return;
    }
    BackupDialog dialog(mode, files_, prompter_, teams_, window_.get());
    if (dialog.exec() == QDialog::Accepted && dialog.restoring())
        gameTeam_ = 0; // another season's games: the game list starts over on its last game
    refreshTeams();
}

void Application::openDeleteFiles() {
    DeleteFilesDialog dialog(teams_, files_, prompter_, window_.get());
    if (dialog.exec() == QDialog::Accepted && dialog.chosenTeam() == gameTeam_)
        gameTeam_ = 0;
    refreshTeams();
}

} // namespace scorvane
