// The help pages in help/: every topic the menu shows exists, every link leads to a page, and
// every column of every category is explained on its category's page.

#include "shell/MenuModel.h"
#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"
#include "storage/TextUtil.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace scorvane {
namespace {

const std::filesystem::path kHelp = std::filesystem::path(SCORVANE_SOURCE_DIR) / "help";

std::string page(const std::string& name) {
    std::ifstream in(kHelp / name);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}
std::string page(int topic) {
    return page("topic" + std::to_string(topic) + ".html");
}

std::set<std::string> pages() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kHelp))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(HelpPages, EveryMenuTopicHasItsPage) {
    int topics = 0;
    for (const Menu& menu : menuTree())
        for (const MenuItem& item : menu.items)
            if (item.screen == Screen::HelpTopic) {
                ++topics;
                EXPECT_FALSE(page(item.helpTopic).empty()) << item.name;
            }
    EXPECT_EQ(topics, 6);
}

TEST(HelpPages, EveryLinkLeadsToAPageAndTheOverviewReachesThemAll) {
    const std::set<std::string> all = pages();
    const std::regex link("href=\"([^\"#]*)");
    for (const std::string& name : all) {
        const std::string html = page(name);
        EXPECT_NE(html.find("<title>"), std::string::npos) << name;
        for (std::sregex_iterator it(html.begin(), html.end(), link), end; it != end; ++it)
            EXPECT_TRUE(all.contains((*it)[1].str())) << name << " links to " << (*it)[1];
    }
    const std::string overview = page(10);
    for (const std::string& name : all) {
        if (name != "topic10.html") {
            EXPECT_NE(overview.find("href=\"" + name + "\""), std::string::npos)
                << "the overview does not lead to " << name;
        }
    }
}

TEST(HelpPages, EveryColumnOfEveryCategoryIsExplained) {
    const ColumnTable columns(ConfigRecord::defaults());
    const std::pair<char, int> categories[] = {{'P', 240}, {'C', 250}, {'R', 260},
                                               {'D', 270}, {'K', 280}, {'T', 290}};
    for (auto [category, topic] : categories) {
        const std::string html = page(topic);
        // The fixed columns; the five before the end are the user's own.
        for (int index = 1; index < ColumnTable::firstUserColumn(category); ++index) {
            const std::string name = trim(columns.columnName(category, index));
            EXPECT_NE(html.find(">" + name + "</td>"), std::string::npos)
                << category << " column " << index << " \"" << name << "\" in topic" << topic;
        }
        EXPECT_NE(html.find("Name Your Own"), std::string::npos) << topic;
    }
    // Kicking's extra point and field goal columns carry longer headings on the report.
    const std::string kicking = page(280);
    for (const char* heading :
         {"Extra Points", "FG All", "FG 0 to 20", "FG 21 to 30", "FG 31 to 40", "FG 40+"})
        EXPECT_NE(kicking.find(std::string("<td class=\"c\">") + heading + "</td>"),
                  std::string::npos)
            << heading;
}

} // namespace
} // namespace scorvane
