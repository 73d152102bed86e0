// The pieces of the report logic the screens lean on: narrowing the listed players, the Special
// Select list lines, reading teams for a screen, the printed roster, runs of lines kept on a page,
// copies, the columns of damaged formats and writing a whole report file.

#include "reports/ReportFormats.h"
#include "reports/ReportOutput.h"
#include "reports/RosterListing.h"
#include "reports/Selection.h"
#include "reports/Statistics.h"

#include "SeasonBuilder.h"
#include "storage/Platform.h"
#include "storage/TeamList.h"
#include "support/FakePrompter.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

using namespace scorvane;
using scorvane::testing::SeasonBuilder;

namespace {

constexpr int Att = 2, Yds = 4;

// Two teams: Hawks 7 passes in three games, 12 in one; Tigers 6 in two.
std::vector<TeamSeason> twoTeams() {
    SeasonBuilder hawks(1, "Riverside Hawks", "Hawks");
    hawks.player(7, "Caleb Morrison").player(12, "Drew Kessler");
    hawks.game(1).game(2).game(3);
    hawks.stats(1, 7, 'P', {{Att, 10}, {Yds, 100}})
        .stats(2, 7, 'P', {{Att, 12}, {Yds, 90}})
        .stats(3, 7, 'P', {{Att, 8}, {Yds, 40}})
        .stats(3, 12, 'P', {{Att, 4}, {Yds, 30}});
    SeasonBuilder tigers(2, "Lakeview Tigers", "Tigers");
    tigers.player(6, "Liam Brennan").game(1).game(2);
    tigers.stats(1, 6, 'P', {{Att, 20}, {Yds, 210}}).stats(2, 6, 'P', {{Att, 18}, {Yds, 160}});
    return {hawks.season, tigers.season};
}

std::vector<std::vector<std::string>> pagesOf(const std::vector<std::string>& lines) {
    std::vector<std::vector<std::string>> pages(1);
    for (const auto& l : lines) {
        if (l == kNewPageLine)
            pages.emplace_back();
        else
            pages.back().push_back(l);
    }
    return pages;
}

std::map<std::string, std::uintmax_t> folderContents(const std::filesystem::path& folder) {
    std::map<std::string, std::uintmax_t> files;
    for (const auto& e : std::filesystem::directory_iterator(folder))
        files[e.path().filename().string()] = e.file_size();
    return files;
}

} // namespace

TEST(PlayerFilter, MinimumGamesAndChosenPlayersNarrowTheLinesAndTheTotals) {
    const std::vector<TeamSeason> teams = twoTeams();
    const Selection all;

    const StatReport everyone = ComputeStatistics('P', teams, all);
    ASSERT_EQ(everyone.players.size(), 3u);
    EXPECT_EQ(everyone.totals[Yds].value, 630);

    // "Less than 2 Games": Drew Kessler (one game) is left out, the totals follow.
    PlayerFilter twoGames;
    twoGames.minimumGames = 2;
    const StatReport regulars = ComputeStatistics('P', teams, all, twoGames);
    ASSERT_EQ(regulars.players.size(), 2u);
    EXPECT_EQ(regulars.players[0].number, 7);
    EXPECT_EQ(regulars.players[1].number, 6);
    EXPECT_EQ(regulars.totals[Yds].value, 600);
    EXPECT_EQ(regulars.totals[Att].value, 68);

    // Three games leave only the Hawks' passer; his team's three games are the totals' games.
    PlayerFilter threeGames;
    threeGames.minimumGames = 3;
    const StatReport starter = ComputeStatistics('P', teams, all, threeGames);
    ASSERT_EQ(starter.players.size(), 1u);
    EXPECT_EQ(starter.totals.games(), 3);

    // Chosen players are told apart by team: Tigers' 6, not a Hawks' 6.
    PlayerFilter chosen;
    chosen.players = {{2, 6}, {1, 12}};
    const StatReport two = ComputeStatistics('P', teams, all, chosen);
    ASSERT_EQ(two.players.size(), 2u);
    EXPECT_EQ(two.players[0].teamShortName, "Hawks");
    EXPECT_EQ(two.players[0].number, 12);
    EXPECT_EQ(two.players[1].teamShortName, "Tigers");
    EXPECT_EQ(two.totals[Yds].value, 400);
    EXPECT_EQ(two.totals.games(), 3); // Hawks' game 3 and the Tigers' two

    chosen.minimumGames = 2;
    EXPECT_EQ(ComputeStatistics('P', teams, all, chosen).players.size(), 1u);
    EXPECT_TRUE(chosen.narrows());
    EXPECT_FALSE(PlayerFilter{}.narrows());
}

TEST(SpecialSelectList, ALineHoldsDateScoresAndOpponent) {
    GameRecord g;
    g.gameDate = "091225";
    g.opponent = fit("Northgate Comets", 25);
    g.teamScore = {7, 6, 7, 7, 0};
    g.opponentScore = {0, 7, 0, 6, 3};
    EXPECT_EQ(specialSelectLine(g), "09/12/25   27 -  16  Northgate Comets         ");

    g.teamScore = {100, 0, 0, 0, 0};
    g.opponentScore = {};
    EXPECT_EQ(specialSelectLine(g).substr(8, 12), "  100 -   0 ");
    // Points that cannot be summed in 16 bits show blank rather than wrapped.
    g.teamScore = {32000, 32000, 0, 0, 0};
    EXPECT_EQ(specialSelectLine(g).substr(8, 12), "      -     ");
}

TEST(ViewTeamSeason, ReadsWithoutCreatingFilesAndFallsBackToTheProgramsFiles) {
    scorvane::testing::ScratchData s;
    ASSERT_TRUE(TeamList::createTeamList(s.data));
    TeamList names;
    ASSERT_TRUE(names.storeNames(s.data, 2, "Lakeview Tigers", "Tigers"));
    const auto before = folderContents(s.dir.path());

    TeamSeason season;
    ASSERT_TRUE(viewTeamSeason(s.data, 2, season));
    EXPECT_EQ(season.name, "Lakeview Tigers");
    EXPECT_EQ(season.shortName, "Tigers");
    EXPECT_TRUE(season.games.empty());
    EXPECT_EQ(folderContents(s.dir.path()), before);

    // A roster of an older layout (one record of 50 bytes) cannot be read as it is: the program's
    // files convert it.
    Bytes old(50, ' ');
    old[0] = 9;
    old[1] = 0;
    const std::string name = "Old Timer";
    std::copy(name.begin(), name.end(), old.begin() + 2);
    s.dir.write("FBPN2.DAT", old);
    ASSERT_FALSE(readTeamSeason(s.data.paths(), 2, season));
    ASSERT_TRUE(viewTeamSeason(s.data, 2, season));
    EXPECT_EQ(season.name, "Lakeview Tigers");
    EXPECT_EQ(season.playerName(9), fit("Old Timer", 17));
    EXPECT_EQ(s.dir.read("FBPN2.DAT").size(), 201u);
}

TEST(RosterListing, EntriesInNumberOrderWithTheirContactDetails) {
    Roster roster;
    roster.inUse[22] = true;
    roster.names[22] = fit("Marcus Bell", 17);
    roster.inUse[7] = true;
    roster.names[7] = fit("Caleb Morrison", 17);
    roster.inUse[85] = true;
    roster.names[85] = fit("Nate Carlson", 17);
    // Contact details of a number not in use are never printed.
    std::map<std::pair<int, ContactField>, std::string> contacts = {
        {{7, ContactField::Phone}, "(555) 214-0371      "},
        {{7, ContactField::Address1}, "  1408 Maple Avenue"},
        {{7, ContactField::City}, "Riverside"},
        {{7, ContactField::State}, "OH"},
        {{7, ContactField::Zip}, "45219"},
        {{7, ContactField::Other}, "Team captain"},
        {{22, ContactField::City}, "Riverside"},
        {{85, ContactField::State}, "OH"},
        {{85, ContactField::Zip}, "45221"},
        {{40, ContactField::Phone}, "555-0000"},
    };
    const ContactLookup lookup = [&](int n, ContactField f) {
        const auto it = contacts.find({n, f});
        return it == contacts.end() ? std::string() : it->second;
    };

    EXPECT_EQ(rosterEntry(7, roster.names[7], lookup),
              (std::vector<std::string>{" 7 - Caleb Morrison", "     (555) 214-0371",
                                        "     1408 Maple Avenue", "     Riverside, OH  45219",
                                        "     Team captain"}));
    // City or state alone stand without the comma.
    EXPECT_EQ(rosterEntry(22, roster.names[22], lookup),
              (std::vector<std::string>{"22 - Marcus Bell", "     Riverside"}));
    EXPECT_EQ(rosterEntry(85, roster.names[85], lookup),
              (std::vector<std::string>{"85 - Nate Carlson", "     OH  45221"}));

    PrintOptions options;
    const std::vector<std::string> lines = rosterPages("Riverside Hawks", roster, lookup, options);
    ASSERT_EQ(std::count(lines.begin(), lines.end(), kNewPageLine), 0);
    EXPECT_EQ(lines[0].substr(0, 6), "Roster");
    EXPECT_EQ(lines[0].substr(lines[0].size() - 6), "Page 1");
    EXPECT_EQ(lines[1], "Riverside Hawks");
    const std::vector<std::string> body(lines.begin() + 4, lines.end());
    EXPECT_EQ(body, (std::vector<std::string>{
                        " 7 - Caleb Morrison", "     (555) 214-0371", "     1408 Maple Avenue",
                        "     Riverside, OH  45219", "     Team captain", "", "22 - Marcus Bell",
                        "     Riverside", "", "85 - Nate Carlson", "     OH  45221"}));

    Roster empty;
    EXPECT_EQ(rosterPages("Riverside Hawks", empty, lookup, options).back(), "No Players");
}

TEST(RosterListing, AnEntryIsNeverSplitAcrossPages) {
    Roster roster;
    for (int n = 1; n <= 12; ++n) {
        roster.inUse[static_cast<std::size_t>(n)] = true;
        roster.names[static_cast<std::size_t>(n)] = fit("Player " + digits(n), 17);
    }
    // Each entry: the name and three details, then a blank line.
    const ContactLookup lookup = [](int, ContactField f) {
        return f == ContactField::Phone || f == ContactField::Address1 || f == ContactField::Other
                   ? std::string("detail")
                   : std::string();
    };
    PrintOptions options;
    options.linesPerPage = 21; // 4 heading lines, room for 17
    const auto pages = pagesOf(rosterPages("Hawks", roster, lookup, options));
    ASSERT_EQ(pages.size(), 4u);
    for (const auto& page : pages) {
        EXPECT_LE(page.size(), 21u);
        // Every page's body starts with a name line and ends with a whole entry (and the blank
        // line after it, but the last).
        EXPECT_NE(page[4].find(" - Player "), std::string::npos) << page[4];
        const auto last = std::find_if(page.rbegin(), page.rend(),
                                       [](const std::string& l) { return !l.empty(); });
        EXPECT_EQ(*last, "     detail");
        EXPECT_EQ(page[3], std::string(40, '-'));
    }
    EXPECT_EQ(pages.back().back(), "     detail");
    // Three entries (14 lines with their blanks) fit a page; the fourth would be cut.
    EXPECT_EQ(pages[0][4], " 1 - Player 1");
    EXPECT_EQ(pages[1][4], " 4 - Player 4");
}

TEST(PageLayout, RunsLongerThanAPageAreCutAndCopiesStartOnNewPages) {
    PageParts parts;
    parts.title = "Roster";
    parts.headings = {"----"};
    for (int i = 1; i <= 30; ++i)
        parts.body.push_back("line " + digits(i));
    parts.groups = {25}; // longer than a page of 21 (18 body lines): cut where the page ends
    const auto pages = pagesOf(layOutPages(parts, 21));
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].back(), "line 18");
    EXPECT_EQ(pages[1][3], "line 19");

    const std::vector<std::string> report = {"a", "b", kNewPageLine, "c"};
    EXPECT_EQ(repeatCopies(report, 1), report);
    EXPECT_EQ(repeatCopies(report, 2),
              (std::vector<std::string>{"a", "b", kNewPageLine, "c", kNewPageLine, "a", "b",
                                        kNewPageLine, "c"}));
}

TEST(ShownColumns, DamagedFormatsShowUsableColumnsOrTheDefaults) {
    ReportFormatRecord f = defaultFormat('K');
    f.columns.fill(0);
    f.columns[1] = 99; // past kicking's last column
    f.columns[2] = 4;
    f.columns[3] = -3;
    f.columns[4] = 17;
    EXPECT_EQ(shownColumns(f), (std::vector<int>{4, 17}));
    f.columns.fill(0);
    f.columns[1] = 40;
    EXPECT_EQ(shownColumns(f), (std::vector<int>{1, 2, 4, 9, 10, 11, 17}));
    f.category = 'Z'; // no such category: nothing to show
    EXPECT_TRUE(shownColumns(f).empty());

    // A file of the wrong length with unknown letters and bad codes still reads.
    scorvane::testing::ScratchData s;
    ReportFormatRecord good = defaultFormat('P');
    good.reportName = fit("Season passing", 20);
    ReportFormatRecord unknown = good;
    unknown.category = '?';
    Bytes file = unknown.encode();
    const Bytes second = good.encode();
    file.insert(file.end(), second.begin(), second.end());
    file.resize(file.size() + 50, 'x');
    s.dir.write("FBRPTFMT.DAT", file);
    SavedReports saved;
    ASSERT_TRUE(saved.readOnly(s.dir.dir()));
    EXPECT_EQ(saved.reportsOf('P'), (std::vector<int>{2}));
    EXPECT_TRUE(saved.reportsOf('?').size() == 1 && saved.reportsOf('K').empty());
    // Kicking, left without a report, starts from its default.
    EXPECT_EQ(shownColumns(saved.current('K', ConfigRecord::defaults())),
              (std::vector<int>{1, 2, 4, 9, 10, 11, 17}));
}

TEST(SaveReportFile, WritesTheWholeFileOrOffersRetryAndCancel) {
    scorvane::testing::TempDir dir;
    scorvane::testing::FakePrompter prompter;
    const std::string path = dir.file("passing.csv");
    ASSERT_TRUE(saveReportFile(path, "No,Name\r\n", &prompter));
    ASSERT_TRUE(saveReportFile(path, "x", &prompter));
    EXPECT_EQ(dir.read("passing.csv"), Bytes{'x'});
    EXPECT_TRUE(prompter.shown.empty());

    // A folder that is not there: Retry once, then Cancel.
    const std::string nowhere = dir.file("missing/passing.csv");
    prompter.answers = {Answer::Retry, Answer::Cancel};
    EXPECT_FALSE(saveReportFile(nowhere, "x", &prompter));
    ASSERT_EQ(prompter.shown.size(), 2u);
    EXPECT_EQ(prompter.shown[0].title, "Printer/File Error");
    EXPECT_EQ(prompter.shown[0].buttons, Buttons::RetryCancel);
    EXPECT_NE(prompter.shown[0].text.find(scorvane::platform::shownPath(nowhere)),
              std::string::npos);
    EXPECT_FALSE(dir.exists("missing"));
}
