#include "shell/Help.h"
#include "shell/MenuModel.h"
#include "shell/Startup.h"
#include "storage/Platform.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace scorvane {
namespace {

// Each menu as "name caption:", then each item as " name caption #help topic," (a separator has
// no caption, an item without help no topic).
TEST(MenuModel, MenuBarInOrder) {
    std::string bar;
    for (const Menu& menu : menuTree()) {
        bar += menu.name + " " + menu.caption + ":";
        for (const MenuItem& it : menu.items) {
            bar += " " + it.name + (it.caption.empty() ? "" : " " + it.caption) +
                   (it.helpTopic ? " #" + std::to_string(it.helpTopic) : "") + ",";
            EXPECT_EQ(findMenuItem(it.name), &it);
        }
        bar += "\n";
    }
    EXPECT_EQ(bar, "mnuFile &File: mnuDataPath &Data Directory, mnuDash1, "
                   "mnuBackUp &Back Up Files, mnuRestore &Restore Files, mnuDash2, "
                   "mnuExitProgram E&xit Program,\n"
                   "mnuReport &Reports: mnuPassing &Passing, mnuReceiving &Receiving, "
                   "mnuRushing Ru&shing, mnuDefense &Defense, mnuKicking &Kicking, "
                   "mnuReturns Re&turns, mnuDash814, mnuGames &Game Scores, mnuRecord R&ecord, "
                   "mnuDash123, mnuStandings &Standings, mnuDash815, mnuSeasons Seas&ons..., "
                   "mnuCareers &Careers..., mnuRecordBook Record &Book...,\n"
                   "mnuUpdate &Update: mnuUpdateGames &Games, mnuRoster &Roster, "
                   "mnuTeamName &Team Name, mnuDash3, mnuChangePlayerNumber &Change Player Number, "
                   "mnuDeleteFiles &Delete Files,\n"
                   "mnuOptions &Options: mnuNameYourOwn &Name Your Own,\n"
                   "mnuHelp &Help: mnuGettingStarted &Overview #10, mnudash5, "
                   "mnuPassingStatistics &Passing Statistics #240, "
                   "mnuReceivingStatistics Re&ceiving Statistics #250, "
                   "mnuDefensiveStatistics &Defensive Statistics #270, "
                   "mnuKickingStatistics &Kicking Statistics #280, "
                   "mnuReturnStatistics Re&turn Statistics #290, mnuDash4, mnuAbout &About,\n");
    EXPECT_EQ(findMenuItem("mnuNoSuchItem"), nullptr);
}

// What each command leaves in the shell state as report letter, back up mode and roster mode;
// commands that are no report keep the letter.
TEST(MenuModel, CommandsSetTheShellState) {
    ShellState state;
    for (auto [name, screen, modes] : {std::tuple{"mnuKicking", Screen::StatisticsReport, "K  "},
                                       {"mnuGames", Screen::GameScores, "G  "},
                                       {"mnuRecord", Screen::TeamRecord, "E  "},
                                       {"mnuStandings", Screen::Standings, "S  "},
                                       {"mnuRecordBook", Screen::RecordBook, "S  "},
                                       {"mnuBackUp", Screen::BackUpRestore, "SY "},
                                       {"mnuRestore", Screen::BackUpRestore, "SN "},
                                       {"mnuRoster", Screen::Roster, "SNN"}}) {
        EXPECT_EQ(state.choose(*findMenuItem(name)), screen) << name;
        EXPECT_EQ(std::string({state.reportLetter, state.backupMode, state.rosterMode}), modes)
            << name;
    }
}

TEST(Help, MissingPageShowsTheHelpError) {
    testing::TempDir program;
    testing::FakePrompter prompter;
    EXPECT_EQ(findHelpPage(prompter, program.dir(), 240), "");
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].title, "Help Error");
    EXPECT_EQ(prompter.shown[0].text,
              "Unable to display help.  This is because the program is installed to a network "
              "folder and your temporary windows folder is also a network folder.  You may "
              "download the printable help file from our website instead.");
}

class StartupTest : public ::testing::Test {
protected:
    testing::TempDir program, data;
    testing::FakePrompter prompter;
    Session session;

    StartupOutcome start() { return runStartup(prompter, program.dir(), session); }
};

TEST_F(StartupTest, UnusableConfigurationEndsTheProgramWithoutWriting) {
    for (std::size_t length : {0u, 1000u}) {
        SCOPED_TRACE(length);
        if (length)
            program.write("BXFB.INI", Bytes(length, 'z'));
        prompter = {};
        EXPECT_EQ(start(), StartupOutcome::Ended);
        ASSERT_EQ(prompter.shown.size(), 1u);
        EXPECT_EQ(prompter.shown[0].text, "BXFB.INI File Corrupt or Not Found");
        EXPECT_EQ(prompter.shown[0].title, "Reinstall Scorvane for Football");
        EXPECT_EQ(prompter.endCalls, 1);
        EXPECT_EQ(program.exists("BXFB.INI"), length > 0);
        EXPECT_EQ(program.read("BXFB.INI"), Bytes(length, 'z'));
    }
}

// Start-up needs a team list in the data directory; an older configuration is upgraded on the way.
TEST_F(StartupTest, ReadyWithATeamListAndUpgraded) {
    ConfigRecord c = ConfigRecord::defaults();
    c.dataDirectory = data.path().string(); // as typed: without a trailing separator
    c.userColumns[0][0] = "QBR";
    c.userColumns[5][4] = "RTD";
    c.sort[2] = {4, 'A'};
    program.write("BXFB.INI", c.encode());
    EXPECT_EQ(start(), StartupOutcome::NeedDataDirectory);
    EXPECT_EQ(session.startupMark, StartupMark::NoDataDirectory);
    EXPECT_EQ(session.columns.columnName('P', 19), "QBR");
    EXPECT_EQ(session.columns.columnName('T', ColumnTable::firstUserColumn('T') + 4), "RTD");
    EXPECT_EQ(session.options.sort, c.sort);

    data.write("FBTEAMS.DAT", Bytes(40, ' '));
    for (std::size_t length : {ConfigRecord::Length, ConfigRecord::LegacyLength}) {
        Bytes ini = c.encode();
        ini.resize(length);
        program.write("BXFB.INI", ini);
        session = {};
        EXPECT_EQ(start(), StartupOutcome::Ready);
        EXPECT_EQ(session.startupMark, StartupMark::Ready);
        EXPECT_EQ(session.configUpgraded, length == ConfigRecord::LegacyLength);
        EXPECT_EQ(program.read("BXFB.INI").size(), 1018u);
        EXPECT_EQ(session.paths.dataDirectory, data.dir());
        EXPECT_EQ(session.paths.reportDirectory, data.dir()); // empty report directory
    }
    EXPECT_TRUE(prompter.shown.empty());
}

TEST(MainCaption, NamesTheDataDirectory) {
    EXPECT_EQ(mainCaption("C:\\FB\\"), "Scorvane for Football v2.1 (Data Directory: C:\\FB\\)");
    // The program's own "/" (a folder found beside the program) is shown as Windows writes it.
    EXPECT_EQ(mainCaption("C:\\x\\bin\\/sample-season/"),
              platform::isWindows()
                  ? "Scorvane for Football v2.1 (Data Directory: C:\\x\\bin\\sample-season\\)"
                  : "Scorvane for Football v2.1 (Data Directory: C:\\x\\bin\\/sample-season/)");
}

} // namespace
} // namespace scorvane
