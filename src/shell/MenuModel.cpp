#include "MenuModel.h"

namespace scorvane {
namespace {

MenuItem item(const char* name, const char* caption, Screen screen) {
    MenuItem m;
    m.name = name;
    m.caption = caption;
    m.screen = screen;
    return m;
}

MenuItem rule(const char* name) {
    return item(name, "", Screen::None);
}

MenuItem report(const char* name, const char* caption, Screen screen, char letter) {
    MenuItem m = item(name, caption, screen);
    m.reportLetter = letter;
    m.teamDependent = true;
    return m;
}

MenuItem update(const char* name, const char* caption, Screen screen) {
    MenuItem m = item(name, caption, screen);
    m.teamDependent = true;
    return m;
}

MenuItem help(const char* name, const char* caption, int topic) {
    MenuItem m = item(name, caption, Screen::HelpTopic);
    m.helpTopic = topic;
    return m;
}

MenuItem backup(const char* name, const char* caption, char mode) {
    MenuItem m = item(name, caption, Screen::BackUpRestore);
    m.backupMode = mode;
    return m;
}

std::vector<Menu> buildTree() {
    // The team-dependent set: every report and every update command. The data directory, back up,
    // restore, exit, help and Name Your Own (whose names hold for every team) stay available with
    // no team marked.
    MenuItem nameYourOwn = item("mnuNameYourOwn", "&Name Your Own", Screen::NameYourOwn);
    return {
        {"mnuFile",
         "&File",
         {item("mnuDataPath", "&Data Directory", Screen::DataDirectory), rule("mnuDash1"),
          backup("mnuBackUp", "&Back Up Files", 'Y'), backup("mnuRestore", "&Restore Files", 'N'),
          rule("mnuDash2"), item("mnuExitProgram", "E&xit Program", Screen::Exit)}},
        {"mnuReport",
         "&Reports",
         {report("mnuPassing", "&Passing", Screen::StatisticsReport, 'P'),
          report("mnuReceiving", "&Receiving", Screen::StatisticsReport, 'C'),
          report("mnuRushing", "Ru&shing", Screen::StatisticsReport, 'R'),
          report("mnuDefense", "&Defense", Screen::StatisticsReport, 'D'),
          report("mnuKicking", "&Kicking", Screen::StatisticsReport, 'K'),
          report("mnuReturns", "Re&turns", Screen::StatisticsReport, 'T'), rule("mnuDash814"),
          report("mnuGames", "&Game Scores", Screen::GameScores, 'G'),
          report("mnuRecord", "R&ecord", Screen::TeamRecord, 'E'), rule("mnuDash123"),
          report("mnuStandings", "&Standings", Screen::Standings, 'S'), rule("mnuDash815"),
          item("mnuSeasons", "Seas&ons...", Screen::Seasons),
          item("mnuCareers", "&Careers...", Screen::Careers),
          item("mnuRecordBook", "Record &Book...", Screen::RecordBook)}},
        {"mnuUpdate",
         "&Update",
         {update("mnuUpdateGames", "&Games", Screen::GameList),
          update("mnuRoster", "&Roster", Screen::Roster),
          update("mnuTeamName", "&Team Name", Screen::TeamName), rule("mnuDash3"),
          update("mnuChangePlayerNumber", "&Change Player Number", Screen::ChangePlayerNumber),
          update("mnuDeleteFiles", "&Delete Files", Screen::DeleteFiles)}},
        {"mnuOptions", "&Options", {nameYourOwn}},
        {"mnuHelp",
         "&Help",
         {help("mnuGettingStarted", "&Overview", 10), rule("mnudash5"),
          help("mnuPassingStatistics", "&Passing Statistics", 240),
          help("mnuReceivingStatistics", "Re&ceiving Statistics", 250),
          help("mnuDefensiveStatistics", "&Defensive Statistics", 270),
          help("mnuKickingStatistics", "&Kicking Statistics", 280),
          help("mnuReturnStatistics", "Re&turn Statistics", 290), rule("mnuDash4"),
          item("mnuAbout", "&About", Screen::About)}},
    };
}

} // namespace

const std::vector<Menu>& menuTree() {
    static const std::vector<Menu> tree = buildTree();
    return tree;
}

const MenuItem* findMenuItem(const std::string& name) {
    for (const auto& menu : menuTree())
        for (const auto& it : menu.items)
            if (it.name == name)
                return &it;
    return nullptr;
}

Screen ShellState::choose(const MenuItem& item) {
    if (item.reportLetter != ' ')
        reportLetter = item.reportLetter;
    if (item.backupMode != ' ')
        backupMode = item.backupMode;
    if (item.screen == Screen::Roster)
        rosterMode = 'N';
    return item.screen;
}

} // namespace scorvane
