#pragma once

#include <string>
#include <vector>

namespace scorvane {

// What a menu command opens.
enum class Screen {
    None,
    DataDirectory,
    BackUpRestore,
    StatisticsReport, // passing .. returns, by report letter
    GameScores,
    TeamRecord,
    Standings,
    Seasons,    // the seasons list, who is who
    Careers,    // careers over the seasons
    RecordBook, // the record book over the seasons
    GameList,
    Roster,
    TeamName,
    ChangePlayerNumber,
    DeleteFiles,
    NameYourOwn,
    HelpTopic,
    About,
    Exit,
};

struct MenuItem {
    std::string name;    // "mnuPassing"; separators are named too ("mnuDash1")
    std::string caption; // "&Passing"; empty for a separator
    Screen screen = Screen::None;
    char reportLetter = ' '; // the report letter a Reports command sets
    char backupMode = ' ';   // "Y" back up, "N" restore
    int helpTopic = 0;
    // Commands that work on the marked teams: enabled only while at least one team is marked.
    bool teamDependent = false;

    bool isSeparator() const { return caption.empty(); }
};

struct Menu {
    std::string name;    // "mnuFile"
    std::string caption; // "&File"
    std::vector<MenuItem> items;
};

// The main window's menu bar, in order.
const std::vector<Menu>& menuTree();
// The item of that name, or nullptr.
const MenuItem* findMenuItem(const std::string& name);

// Shell-wide state set by the menu commands and read by the screens they open.
struct ShellState {
    char reportLetter = ' ';
    char backupMode = ' ';
    char rosterMode = ' ';

    // Records what the command sets (report letter, back up mode, roster mode) and says which
    // screen it opens.
    Screen choose(const MenuItem& item);
};

} // namespace scorvane
