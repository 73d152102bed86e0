#include "shell/MenuModel.h"
#include "shell/Help.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace scorvane {
namespace {

struct Expected {
    const char* name;
    const char* caption; // "" for a separator
    int helpTopic = 0;
};

TEST(MenuModel, MenuBarInOrder) {
    const std::vector<std::pair<Expected, std::vector<Expected>>> expected = {
        {{"mnuFile", "&File"},
         {{"mnuDataPath", "&Data Directory"},
          {"mnuDash1", ""},
          {"mnuBackUp", "&Back Up Files"},
          {"mnuRestore", "&Restore Files"},
          {"mnuDash2", ""},
          {"mnuExitProgram", "E&xit Program"}}},
        {{"mnuReport", "&Reports"},
         {{"mnuPassing", "&Passing"},
          {"mnuReceiving", "&Receiving"},
          {"mnuRushing", "Ru&shing"},
          {"mnuDefense", "&Defense"},
          {"mnuKicking", "&Kicking"},
          {"mnuReturns", "Re&turns"},
          {"mnuDash814", ""},
          {"mnuGames", "&Game Scores"},
          {"mnuRecord", "R&ecord"},
          {"mnuDash123", ""},
          {"mnuStandings", "&Standings"}}},
        {{"mnuUpdate", "&Update"},
         {{"mnuUpdateGames", "&Games"},
          {"mnuRoster", "&Roster"},
          {"mnuTeamName", "&Team Name"},
          {"mnuDash3", ""},
          {"mnuChangePlayerNumber", "&Change Player Number"},
          {"mnuDeleteFiles", "&Delete Files"}}},
        {{"mnuOptions", "&Options"}, {{"mnuNameYourOwn", "&Name Your Own"}}},
        {{"mnuHelp", "&Help"},
         {{"mnuGettingStarted", "&Overview", 10},
          {"mnudash5", ""},
          {"mnuPassingStatistics", "&Passing Statistics", 240},
          {"mnuReceivingStatistics", "Re&ceiving Statistics", 250},
          {"mnuDefensiveStatistics", "&Defensive Statistics", 270},
          {"mnuKickingStatistics", "&Kicking Statistics", 280},
          {"mnuReturnStatistics", "Re&turn Statistics", 290},
          {"mnuDash4", ""},
          {"mnuAbout", "&About"}}},
    };
    const auto& tree = menuTree();
    ASSERT_EQ(tree.size(), expected.size());
    for (std::size_t m = 0; m < tree.size(); ++m) {
        EXPECT_EQ(tree[m].name, expected[m].first.name);
        EXPECT_EQ(tree[m].caption, expected[m].first.caption);
        const auto& items = expected[m].second;
        ASSERT_EQ(tree[m].items.size(), items.size()) << tree[m].name;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const MenuItem& it = tree[m].items[i];
            EXPECT_EQ(it.name, items[i].name);
            EXPECT_EQ(it.caption, items[i].caption) << it.name;
            EXPECT_EQ(it.isSeparator(), std::string(items[i].caption).empty()) << it.name;
            EXPECT_EQ(it.helpTopic, items[i].helpTopic) << it.name;
            EXPECT_EQ(findMenuItem(it.name), &it);
        }
    }
}

TEST(MenuModel, CommandsSetTheShellState) {
    ShellState state;
    auto choose = [&](const char* name) { return state.choose(*findMenuItem(name)); };
    for (auto [name, letter] : {std::pair{"mnuKicking", 'K'},
                                {"mnuGames", 'G'},
                                {"mnuRecord", 'E'},
                                {"mnuStandings", 'S'},
                                {"mnuPassing", 'P'}}) {
        choose(name);
        EXPECT_EQ(state.reportLetter, letter) << name;
    }
    EXPECT_EQ(choose("mnuBackUp"), Screen::BackUpRestore);
    EXPECT_EQ(state.backupMode, 'Y');
    choose("mnuRestore");
    EXPECT_EQ(state.backupMode, 'N');
    EXPECT_EQ(state.reportLetter, 'P'); // unchanged by commands that are no report
    EXPECT_EQ(choose("mnuRoster"), Screen::Roster);
    EXPECT_EQ(state.rosterMode, 'N');
    EXPECT_EQ(findMenuItem("mnuNoSuchItem"), nullptr);
}

TEST(Help, MissingPageShowsTheHelpErrorAndExistingPageOpens) {
    testing::TempDir program;
    testing::FakePrompter prompter;
    EXPECT_EQ(findHelpPage(prompter, program.dir(), 240), "");
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].title, "Help Error");
    EXPECT_EQ(prompter.shown[0].text,
              "Unable to display help.  This is because the program is installed to a network "
              "folder and your temporary windows folder is also a network folder.  You may "
              "download the printable help file from our website instead.");

    std::filesystem::create_directory(program.path() / "help");
    program.write("help/topic240.html", Bytes{'<', 'p', '>'});
    prompter.shown.clear();
    EXPECT_EQ(findHelpPage(prompter, program.dir(), 240), program.dir() + "help/topic240.html");
    EXPECT_TRUE(prompter.shown.empty());
}

} // namespace
} // namespace scorvane
