#pragma once

#include "shell/MenuModel.h"
#include "shell/Startup.h"
#include "storage/Prompter.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <map>
#include <string>
#include <vector>

class QAction;
class QCloseEvent;
class QIcon;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace scorvane {

class HelpWindow;

// The program's main window: the menu bar of menuTree(), a quiet start page and the exit
// button. Menu commands go through ShellState::choose, which records what the command sets
// (report letter, back up mode, roster mode), and then open their screen.
//
// Help topics, About and Exit are handled here. Every other screen is opened by whatever was
// registered for it with registerScreen; a command whose screen has none stays disabled.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    using Opener = std::function<void()>;

    MainWindow(Session& session, Prompter& prompter, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Makes the commands of `screen` open it through `opener`; an empty opener takes the screen
    // away again. Help topics, About and Exit are built in and not looked up here.
    void registerScreen(Screen screen, Opener opener);

    // How many teams are marked. Team-dependent commands are enabled only while it is above 0.
    void setSelectedTeamCount(int count);
    int selectedTeamCount() const { return selectedTeams_; }

    // Shows a new data directory (UTF-8) in the caption and on the start page; the hint below it
    // follows the session's start-up mark. Changing the session's paths, its mark and the
    // configuration is the caller's business.
    void setDataDirectory(const std::string& dataDirectory);

    // Puts the team selection (the resting screen) on the start page, below the data directory,
    // and gives it the keyboard focus. The window takes the panel over.
    void setTeamPanel(QWidget* panel);

    ShellState& shellState() { return state_; }
    const ShellState& shellState() const { return state_; }
    Session& session() { return session_; }

    // The menu command (or separator) of that object name, or nullptr.
    QAction* action(const QString& name) const;
    // The help window once a page has been shown, else nullptr.
    HelpWindow* helpWindow() const;

    // Runs a command as if it had been chosen from the menu.
    void runCommand(const MenuItem& item);

    // The football drawn on the start page, as the program's icon.
    static QIcon programIcon();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    QWidget* buildStartPage();
    bool isAvailable(const MenuItem& item) const;
    void updateCommandStates();
    void showHelpTopic(int topic);
    void showAbout();

    Session& session_;
    Prompter& prompter_;
    ShellState state_;
    int selectedTeams_ = 0;
    std::map<Screen, Opener> openers_;
    std::vector<std::pair<QAction*, const MenuItem*>> commands_;
    QHash<QString, QAction*> actions_;
    QLabel* dataDirectoryLabel_ = nullptr;
    QLabel* hintLabel_ = nullptr;
    QVBoxLayout* panelSlot_ = nullptr;
    QPushButton* exitButton_ = nullptr;
    QPointer<HelpWindow> help_;
};

} // namespace scorvane
