#include "reports/ReportChecks.h"
#include "reports/ReportCommand.h"
#include "seasons/Career.h"
#include "seasons/RecordBook.h"
#include "seasons/SeasonsCommand.h"
#include "seasons/SeasonsDocument.h"
#include "seasons/SeasonsFile.h"
#include "shell/FolderSnapshot.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/StatLayout.h"
#include "storage/TeamList.h"
#include "support/FakePrompter.h"
#include "support/SeasonFolders.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>

using namespace scorvane;
using scorvane::testing::TempDir;
using namespace scorvane::testing;

namespace {

// Three seasons of one team. The passer changes number (7, then 12) and his name is written
// three ways ("Chris Vale", "chris valé  ", "Chris Vale"); the receiver is misspelt in 2023
// ("Jon Smyth") and linked to "John Smith"; the two "Sam Lee" are brothers, told apart; number
// 40 has no name in 2023 and 2024 and is no one's career.
std::vector<SeasonData> threeSeasons() {
    return {
        {"2023",
         {{7, "Chris Vale"}, {22, "Jon Smyth"}, {30, "Dale Ortiz"}},
         {{21, 7}, {14, 10}, {17, 3}},
         {pass(1, 7, 6, 5, 60, 0, 1, 22), pass(2, 7, 4, 4, 50, 1, 0, 31),
          catches(1, 22, 4, 40, 1, 10, 3), catches(3, 22, 2, 30, 0, 5, 2),
          rush(1, 30, 12, 120, 30, 1), rush(2, 30, 1, 50, 50), rush(2, 40, 3, 9, 5),
          rush(3, 30, 10, 60, 15)}},
        {"2024",
         {{12, "chris val\xE9  "}, {22, "John Smith"}, {30, "Dale Ortiz"}, {5, "Sam Lee"}},
         {{28, 0}, {35, 14}, {10, 24}},
         {pass(1, 12, 50, 15, 200, 2, 2, 40), pass(2, 12, 50, 15, 150, 3, 1, 18),
          catches(1, 22, 6, 90, 2, 30, 5), catches(2, 22, 5, 45, 0, 12, 1),
          rush(1, 30, 15, 150, 40, 2), rush(2, 30, 11, 110, 22), rush(3, 30, 20, 90, 12),
          rush(3, 5, 2, 7, 4), rush(1, 40, 4, 12, 6)}},
        {"2025",
         {{12, "Chris Vale"}, {22, "John Smith"}, {30, "Dale Ortiz"}, {5, "Sam Lee"}},
         {{42, 3}, {17, 14}, {0, 21}},
         {pass(1, 12, 20, 12, 180, 0, 3, 45), pass(2, 12, 8, 2, 10, 1, 0, 6),
          catches(1, 22, 7, 120, 1, 40, 6), catches(2, 22, 3, 20, 0, 2, 1),
          rush(1, 30, 12, 100, 25), rush(2, 30, 10, 60, 11), rush(3, 30, 11, 120, 33),
          rush(2, 5, 1, 12, 12)}},
    };
}

// Who is who, as the test data means it: career name -> (season index, number) of each season.
const std::map<std::string, std::vector<std::pair<std::size_t, int>>> kPeople = {
    {"Chris Vale", {{0, 7}, {1, 12}, {2, 12}}},
    {"John Smith", {{0, 22}, {1, 22}, {2, 22}}},
    {"Dale Ortiz", {{0, 30}, {1, 30}, {2, 30}}},
};

struct ThreeSeasons {
    // Each season in a folder named by its label.
    TempDir root;
    Strings dirs;
    std::vector<SeasonData> data = threeSeasons();
    SeasonsList list;

    ThreeSeasons() {
        for (const SeasonData& d : data) {
            dirs.push_back(root.dir() + d.label + "/");
            std::filesystem::create_directory(dirs.back());
            EXPECT_TRUE(writeSeason(dirs.back(), d));
            EXPECT_EQ(addSeason(list, {d.label, dirs.back(), 1}), std::nullopt);
        }
        EXPECT_EQ(addLink(list, {{"2023", "Jon Smyth"}, {"2024", "John Smith"}, false}),
                  std::nullopt);
        EXPECT_EQ(addLink(list, {{"2024", "Sam Lee"}, {"2025", "sam lee"}, true}), std::nullopt);
    }
    SeasonSet open() const { return openSeasons(list.seasons, list.links); }

    // Every file of the folders, the seasons' and the one holding them.
    std::vector<FolderSnapshot> snapshot() const {
        std::vector<FolderSnapshot> all = {scorvane::testing::snapshot(root.path())};
        for (const std::string& d : dirs)
            all.push_back(scorvane::testing::snapshot(d));
        return all;
    }

    // One person's records of a category as a single season held in memory, his games numbered
    // apart season by season: the season report of it is what his career must show.
    TeamSeason asOneSeason(const std::string& person, char category) const {
        TeamSeason one;
        one.number = 1;
        one.players[1] = fit(person, 17);
        for (const auto& [season, number] : kPeople.at(person))
            for (const Rec& r : data[season].records) {
                if (r.player != number || r.category != category)
                    continue;
                const int g = static_cast<int>(season) * 100 + r.game;
                one.games.push_back(game(g, 0, 0));
                one.stats.push_back(encode(r, g, 1));
            }
        return one;
    }
};

// The cells of every body row of every table of an HTML page, table by table.
std::vector<std::vector<Strings>> htmlTables(const std::string& html) {
    std::vector<std::vector<Strings>> tables;
    for (std::size_t at = html.find("<tbody>"); at != std::string::npos;
         at = html.find("<tbody>", at + 1)) {
        const std::size_t end = html.find("</tbody>", at);
        std::vector<Strings> rows;
        for (std::size_t tr = html.find("<tr>", at); tr < end; tr = html.find("<tr>", tr + 1)) {
            Strings cells;
            const std::size_t rowEnd = html.find("</tr>", tr);
            for (std::size_t td = html.find("<td", tr); td < rowEnd;
                 td = html.find("<td", td + 1)) {
                const std::size_t open = html.find('>', td) + 1;
                cells.push_back(html.substr(open, html.find("</td>", open) - open));
            }
            rows.push_back(cells);
        }
        tables.push_back(rows);
    }
    return tables;
}

const CareerLine* lineOf(const CareerReport& report, const std::string& name) {
    for (const CareerLine& l : report.players)
        if (trimRight(l.name) == name)
            return &l;
    return nullptr;
}

} // namespace

// A career is the season computation over every season's records: counts summed, longest gains
// the greatest, games summed, and every derived column (Pct, Avg, Rtg, Pts, Y@C, FD%) worked out
// from the career sums, whatever number or spelling the player had. A linked misspelling joins
// the career (brothers told apart and players without a name stay apart: the printed report).
TEST(Career, EachPersonsLineIsTheSeasonComputationOverAllHisRecords) {
    ThreeSeasons t;
    for (char category : {'P', 'C', 'R'}) {
        SeasonSet set = t.open();
        const CareerReport report = computeCareers(set, category, Selection{});
        EXPECT_TRUE(report.messages.empty());
        const int count = ColumnTable::columnCount(category);
        for (const auto& [person, seasons] : kPeople) {
            const CareerLine* line = lineOf(report, person);
            const StatReport one =
                ComputeStatistics(category, {t.asOneSeason(person, category)}, Selection{});
            if (one.players.empty()) {
                EXPECT_EQ(line, nullptr) << category << person;
                continue;
            }
            ASSERT_NE(line, nullptr) << category << " " << person;
            EXPECT_EQ(line->seasons, 3) << person;
            for (int code = 1; code <= count; ++code) {
                EXPECT_EQ(figureKey(line->figures[code]), figureKey(one.players[0][code]))
                    << category << " " << person << " " << code;
            }
        }
    }

    SeasonSet set = t.open();
    const CareerReport passing = computeCareers(set, 'P', Selection{});
    const CareerLine* chris = lineOf(passing, "Chris Vale");
    ASSERT_NE(chris, nullptr);
    EXPECT_EQ(chris->number, 12);           // his latest
    EXPECT_EQ(chris->figures[8].value, 45); // Lg: the greatest
    // 53 of 138 is 38.4%; the mean of the seasons' 90%, 30% and 50% would be 56.7%.
    EXPECT_EQ(chris->figures[15].ratio, static_cast<float>(53.0 / 138.0 * 100.0));
}

// A season that cannot be read is named with its folder and left out; the others are reported.
// No report writes a byte to any season's folder.
TEST(Career, AMissingSeasonIsReportedAndNoDataDirectoryChanges) {
    ThreeSeasons t;
    const auto before = t.snapshot();
    TempDir gone;
    const std::string missing = gone.dir() + "2022/";
    std::vector<SeasonEntry> chosen = t.list.seasons;
    chosen.insert(chosen.begin(), SeasonEntry{"2022", missing, 1});
    SeasonSet set = openSeasons(chosen, t.list.links);
    ASSERT_EQ(set.messages.size(), 1u); // its text is checked on the command

    const CareerReport passing = computeCareers(set, 'P', Selection{});
    ASSERT_NE(lineOf(passing, "Chris Vale"), nullptr);
    EXPECT_EQ(lineOf(passing, "Chris Vale")->figures[2].value, 138);
    for (char category : {'C', 'R', 'D', 'K', 'T'}) {
        (void)computeCareers(set, category, Selection{});
        RecordBookOptions options;
        options.category = category;
        (void)computeRecordBook(set, options);
    }
    EXPECT_EQ(playerCareers(set, 'R', Selection{}, "dale ortiz").size(), 1u);
    (void)computeTeamRecords(set, Selection{});
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(t.snapshot(), before);
}

// Single games ranked with shared ranks, a tie at the last place listing everyone tied; a ratio
// counts only from its minimum of attempts.
TEST(RecordBook, RanksTiesAndMinimums) {
    ThreeSeasons t;
    SeasonSet set = t.open();
    RecordBookOptions options;
    options.category = 'R';
    options.columns = {3, 12};
    const RecordBook book = computeRecordBook(set, options);
    const RecordList* yards = book.find(3, RecordScope::Game);
    ASSERT_NE(yards, nullptr);
    // Rushing yards in a game: 150 120 120 110 100 90 60 60 50 12 12 | 9 7.
    std::vector<std::pair<int, long long>> ranks;
    for (const RecordEntry& e : yards->entries)
        ranks.emplace_back(e.rank, e.figure.value);
    EXPECT_EQ(ranks, (std::vector<std::pair<int, long long>>{{1, 150},
                                                             {2, 120},
                                                             {2, 120},
                                                             {4, 110},
                                                             {5, 100},
                                                             {6, 90},
                                                             {7, 60},
                                                             {7, 60},
                                                             {9, 50},
                                                             {10, 12},
                                                             {10, 12}}));

    // The whole book in one pass over each file gives every category's book as it is alone.
    std::vector<RecordBookOptions> all;
    for (char category : std::string("PCRDKT")) {
        all.push_back(options);
        all.back().category = category;
        all.back().columns = category == 'R' ? options.columns : std::vector<int>{};
    }
    const std::vector<RecordBook> books = computeRecordBooks(set, all);
    ASSERT_EQ(books.size(), all.size());
    for (std::size_t b = 0; b < all.size(); ++b) {
        const RecordBook alone = computeRecordBook(set, all[b]);
        ASSERT_EQ(books[b].lists.size(), alone.lists.size()) << all[b].category;
        for (std::size_t i = 0; i < alone.lists.size(); ++i)
            EXPECT_EQ(recordListCsv(books[b], books[b].lists[i]),
                      recordListCsv(alone, alone.lists[i]))
                << all[b].category << i;
    }

    options.top = 7; // a tie at the 7th place lists both
    const RecordBook seven = computeRecordBook(set, options);
    EXPECT_EQ(seven.find(3, RecordScope::Game)->entries.size(), 8u);

    // Avg in a game needs 10 carries: the 50-yard single carry is no record.
    const RecordList* avg = book.find(12, RecordScope::Game);
    ASSERT_NE(avg, nullptr);
    ASSERT_FALSE(avg->entries.empty());
    EXPECT_EQ(avg->entries[0].figure.ratio, static_cast<float>(120.0 / 11.0)); // 11 carries
    options.top = 10;
    options.minimums[12] = {1, 1, 1};
    const RecordBook anyCarry = computeRecordBook(set, options);
    EXPECT_EQ(anyCarry.find(12, RecordScope::Game)->entries[0].figure.ratio, 50.0f);
    // A career needs 100 carries: only Dale has them, over 3 seasons.
    const RecordList* career = book.find(12, RecordScope::Career);
    ASSERT_NE(career, nullptr);
    EXPECT_EQ(recordListCsv(book, *career), "Rank,Name,Value,Season,Game,Date,Opponent\r\n"
                                            "1,Dale Ortiz,8.4,2023-2025,,,\r\n");

    // The whole book's CSV and HTML page hold every list's entries (the CSV rows of each list as
    // the list's own CSV has them, the page's tables the same entries) and the team's records
    // after them; the page stands alone.
    RecordBookDocument document;
    document.categories.push_back(book);
    document.team = computeTeamRecords(set, Selection{}, 3);
    document.heading = {"Record Book", seasonsTeamLine(set), "Games 1 to 999, all game types"};
    ASSERT_EQ(book.lists.size(), 6u);
    const ColumnTable table;

    const auto rows = csvRows(recordBookCsv(document, table));
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows[0], (Strings{"Category", "Record", "Scope", "Rank", "Name", "Value", "Season",
                                "Game", "Date", "Opponent"}));
    std::vector<Strings> expected;
    for (const RecordList& list : book.lists) {
        const auto listRows = csvRows(recordListCsv(book, list));
        for (std::size_t i = 1; i < listRows.size(); ++i) {
            Strings row = {"Rushing", list.column == 3 ? "Yds" : "Avg",
                           list.scope == RecordScope::Game     ? "Game"
                           : list.scope == RecordScope::Season ? "Season"
                                                               : "Career"};
            row.insert(row.end(), listRows[i].begin(), listRows[i].end());
            expected.push_back(row);
        }
    }
    ASSERT_EQ(rows.size(), 1 + expected.size() + 3 + 3 + 2);
    EXPECT_EQ(std::vector<Strings>(rows.begin() + 1,
                                   rows.begin() + 1 + static_cast<std::ptrdiff_t>(expected.size())),
              expected);
    EXPECT_EQ(rows[1], (Strings{"Rushing", "Yds", "Game", "1", "Dale Ortiz", "150", "2024", "1",
                                "09/01/24", "Opponent 1"}));
    const std::size_t team = 1 + expected.size();
    EXPECT_EQ(rows[team], (Strings{"Team", "Most Points Scored", "Game", "1", "", "42", "2025", "1",
                                   "09/01/24", "Opponent 1"}));
    EXPECT_EQ(rows[team + 3], (Strings{"Team", "Fewest Points Allowed", "Game", "1", "", "0",
                                       "2024", "1", "09/01/24", "Opponent 1"}));
    EXPECT_EQ(rows[team + 6], (Strings{"Team", "Longest Winning Streak", "Streak", "1", "", "5",
                                       "2023-2024", "1-2", "", ""}));

    const std::string html = recordBookHtml(document, table);
    const auto tables = htmlTables(html);
    ASSERT_EQ(tables.size(), 6u + 3u);
    for (std::size_t i = 0; i < book.lists.size(); ++i) {
        std::vector<Strings> want;
        for (const RecordEntry& e : book.lists[i].entries) {
            Strings row = {digits(e.rank), e.name,
                           trim(figureText('R', book.lists[i].column, e.figure)), e.season};
            if (book.lists[i].scope == RecordScope::Game)
                row.insert(row.end(), {digits(e.game), e.date, e.opponent});
            want.push_back(row);
        }
        if (want.empty())
            want = {{"No records"}};
        EXPECT_EQ(tables[i], want) << i;
    }
    EXPECT_EQ(tables[5], (std::vector<Strings>{{"1", "Dale Ortiz", "8.4", "2023-2025"}}));
    EXPECT_EQ(tables[6][0], (Strings{"1", "42", "2025", "1", "09/01/24", "Opponent 1", "42-3"}));
    EXPECT_EQ(tables[8], (std::vector<Strings>{{"1", "5", "2023 game 1", "2024 game 2"},
                                               {"2", "2", "2025 game 1", "2025 game 2"}}));
    EXPECT_LT(html.find("Hawks, Seasons 2023-2025"), html.find("<section"));
    EXPECT_NE(html.find("Career <span class=\"note\">(at least 100 Rsh)</span>"),
              std::string::npos);
    for (const char* outside : {"<script", "<link", "src=", "http"})
        EXPECT_EQ(html.find(outside), std::string::npos) << outside;

    // Printed: each list under its title, an entry's figures under the list's headings.
    const Strings page = recordBookPages(document, table, PrintOptions{});
    const auto title =
        std::find(page.begin(), page.end(), "Rushing Avg, Career (at least 100 Rsh)");
    ASSERT_GE(std::distance(title, page.end()), 4);
    EXPECT_EQ(words(title[1]), (Strings{"Rank", "Name", "Avg", "Seasons"}));
    EXPECT_EQ(words(title[3]), (Strings{"1", "Dale", "Ortiz", "8.4", "2023-2025"}));
}

// The seasons file: what is written reads back the same; lines it cannot use are reported and
// left out, and reading never rewrites the file; a second season of the same folder and team is
// refused.
TEST(SeasonsFile, RoundTripBadLinesAndDuplicates) {
    TempDir config;
    TempDir season;
    SeasonsList list;
    ASSERT_EQ(addSeason(list, {"2024", season.dir(), 1}), std::nullopt);
    ASSERT_EQ(addSeason(list, {"2025", season.dir(), 2}), std::nullopt);
    ASSERT_EQ(addLink(list, {{"2024", "Jos\xE9 Cruz"}, {"2025", "Jose Cruz Jr"}, false}),
              std::nullopt);
    ASSERT_EQ(addLink(list, {{"2024", "Sam Lee"}, {"2025", "Sam Lee"}, true}), std::nullopt);
    const std::string path = seasonsFilePath(config.dir());
    ASSERT_TRUE(writeSeasonsFile(path, list));
    const Bytes written = config.read("seasons.txt");
    EXPECT_NE(std::string(written.begin(), written.end()).find("link\t2024\tJos\xC3\xA9 Cruz"),
              std::string::npos); // UTF-8 in the file
    SeasonsList back;
    Strings problems;
    ASSERT_TRUE(readSeasonsFile(path, back, problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(back, list);

    const std::pair<std::string, std::string> bad[] = {
        {"season\t2026\tx\t/tmp/a/", "Line 3: the team \"x\" is not 1 to 100."},
        {"season\t2026\t101\t/tmp/a/", "Line 3: the team \"101\" is not 1 to 100."},
        {"season\t2026\t1", "Line 3: a season needs a label, a team and a folder."},
        {"season\t2024\t1\t/tmp/b/", "Line 3: the label \"2024\" is used twice."},
        {"link\t2024\tA\t2099\tB", "Line 3: There is no season \"2099\" in the list."},
        {"link\t2024\t \t2024\tB", "Line 3: An empty name cannot be linked."},
        {"team\t2024", "Line 3: \"team\" is no kind of line this file holds."},
    };
    for (const auto& [line, problem] : bad) {
        const std::string text = "Scorvane seasons\t1\nseason\t2024\t1\t/tmp/x/\r\n" + line +
                                 "\n# a remark\n\nseason\t2027\t3\t/tmp/y/\n";
        config.write("seasons.txt", Bytes(text.begin(), text.end()));
        SeasonsList read;
        problems.clear();
        ASSERT_TRUE(readSeasonsFile(path, read, problems));
        ASSERT_EQ(problems.size(), 1u) << line;
        EXPECT_EQ(problems[0], platform::shownPath(path) + ", " + problem);
        ASSERT_EQ(read.seasons.size(), 2u) << line; // the good lines around it are kept
        EXPECT_EQ(read.seasons[1], (SeasonEntry{"2027", "/tmp/y/", 3}));
        EXPECT_EQ(config.read("seasons.txt"), Bytes(text.begin(), text.end()));
    }
    const std::string foreign = "teams\n2024\n";
    config.write("seasons.txt", Bytes(foreign.begin(), foreign.end()));
    SeasonsList none;
    problems.clear();
    ASSERT_TRUE(readSeasonsFile(path, none, problems));
    EXPECT_TRUE(none.seasons.empty());
    EXPECT_EQ(problems.size(), 1u);

    // The same folder written another way, and the same team: refused; another team: fine.
    std::filesystem::create_directory(season.path() / "sub");
    const std::string sameFolder = season.dir() + "sub/../";
    SeasonsList copy = list;
    const auto refused = addSeason(copy, {"2026", sameFolder, 2});
    ASSERT_TRUE(refused.has_value());
    EXPECT_EQ(*refused, "Season \"2025\" is already team 2 of " +
                            platform::shownPath(normalizeDirectory(season.dir())) + ".");
    EXPECT_EQ(copy, list);
    EXPECT_EQ(addSeason(copy, {"2026", sameFolder, 3}), std::nullopt);
    EXPECT_TRUE(addSeason(copy, {"2024", "/elsewhere/", 1}).has_value()); // a label used
}

// The printed career report is the season report's lines with the seasons count after the name,
// under its own heading; the totals line leaves it blank. The heading's seasons line names the
// seasons, runs of years written first-last. The CSV has the seasons count too.
TEST(Career, PrintedLinesCarryTheSeasonsCount) {
    const std::vector<std::pair<Strings, std::string>> lines = {
        {{"2023", "2024", "2025"}, "Seasons 2023-2025"},
        {{"2021", "2023", "2025"}, "Seasons 2021, 2023, 2025"},
        {{"2025"}, "Season 2025"},
        {{"2019", "2020", "2022", "Fall"}, "Seasons 2019-2020, 2022, Fall"},
    };
    for (const auto& [labels, line] : lines)
        EXPECT_EQ(seasonsLine(labels), line);

    ThreeSeasons t;
    SeasonSet set = t.open();
    CareerDocument document;
    document.report = computeCareers(set, 'R', Selection{});
    sortCareers(document.report, 3, 'D');
    document.columns = {1, 2, 3, 12};
    document.heading = {careerTitle('R'), seasonsTeamLine(set), "Games 1 to 999"};
    const ColumnTable table;
    const Strings page = careerPages(document, table, PrintOptions{});
    // Dale Ortiz first by yards: 3 seasons, 9 games, 102 carries for 860 yards; the brothers one
    // season each; the two seasons of number 40 without a name apart.
    EXPECT_EQ(Strings(page.begin() + 1, page.end()),
              (Strings{"Hawks, Seasons 2023-2025", "Games 1 to 999", "",
                       " No Name              Sns  G Rsh  Yds  Avg", std::string(42, '-'),
                       " 30 Dale Ortiz          3  9 102  860  8.4",
                       " 40                     1  1   4   12  3.0",
                       "  5 Sam Lee             1  1   1   12 12.0",
                       " 40                     1  1   3    9  3.0",
                       "  5 Sam Lee             1  1   2    7  3.5", "",
                       "    Totals                 9 112  900  8.0"}));

    // The CSV: Name, Seasons, G and the chosen columns, rows in the report's order, then the
    // totals with the ratio worked out from the summed counts.
    CareerReport passing = computeCareers(set, 'P', Selection{});
    sortCareers(passing, 4, 'D');
    EXPECT_EQ(careerCsv(passing, {1, 2, 3, 15}, table), "Name,Seasons,G,Att,Cm,Pct\r\n"
                                                        "Chris Vale,3,6,138,53,38.4\r\n"
                                                        "Totals,,6,138,53,38.4\r\n");
}

namespace {

struct Command {
    std::string out;
    std::string err;
    int run(const Strings& args) {
        std::ostringstream o, e;
        const int code = runSeasonsCommand(args, o, e, "/nonexistent-program-folder/");
        out = o.str();
        err = e.str();
        return code;
    }
};

} // namespace

// Bad arguments are refused with one line and status 2, before anything is read or written.
TEST(SeasonsCommand, ArgumentErrors) {
    ThreeSeasons t;
    const std::string d = t.dirs[0];
    EXPECT_TRUE(isSeasonsCommand({"--team", "1", "--record-book"}));
    EXPECT_TRUE(isSeasonsCommand({"--season=/x/"}));
    EXPECT_FALSE(isSeasonsCommand({"--team", "1", "--category", "P"}));
    const std::pair<Strings, std::string> cases[] = {
        {{"--career", "--category", "R"}, "no seasons: give --season DIR[:TEAM] or --seasons FILE"},
        {{"--season", d}, "seasons need --career or --record-book"},
        {{"--season", d, "--career", "--record-book"},
         "--career and --record-book cannot both be given"},
        {{"--season", d, "--seasons", d + "seasons.txt", "--career"},
         "--season and --seasons cannot both be given"},
        {{"--season", d, "--career"}, "--category is required"},
        {{"--season", d, "--career", "--category", "E"},
         "--category: \"E\" is not one of P, C, R, D, K, T"},
        {{"--season", d, "--career", "--category", "R", "--bogus"},
         "unknown argument \"--bogus\" (see --help)"},
        {{"--season", d + ":101", "--career", "--category", "R"},
         "--season: \"101\" is not a team number 1 to 100"},
        {{"--season", d, "--season", d + ":1", "--record-book"},
         "--season " + d + ":1: Season \"2023\" is already team 1 of " + platform::shownPath(d) +
             "."},
        {{"--season", d, "--record-book", "--column", "3"}, "--column needs --category"},
        {{"--season", d, "--record-book", "--category", "R", "--column", "1"},
         "--column: \"1\" is not a column code 2 to 18 of category R"},
        {{"--season", d, "--record-book", "--category", "R", "--scope", "week"},
         "--scope: \"week\" is not game, season or career"},
        {{"--season", d, "--record-book", "--category", "R", "--sort", "3"},
         "--sort does not apply to --record-book"},
        {{"--season", d, "--career", "--category", "R", "--scope", "game"},
         "--scope does not apply to --career"},
        {{"--season", d, "--career", "--category", "R", "--player", "Dale Ortiz", "--top", "3"},
         "--top does not apply to --career --player"},
        {{"--season", d, "--career", "--category", "R", "--columns", "2,40"},
         "--columns: \"40\" is not a column code 1 to 18 of category R"},
        {{"--season", d, "--career", "--category", "R", "--output", d + "careers.txt"},
         "--output: reports are not written into a season's data directory"},
        {{"--season", d, "--career", "--category", "R", "--player", "Nobody"},
         "--player: no player \"Nobody\" with Rushing Statistics in the chosen seasons"},
    };
    const auto before = t.snapshot();
    for (const auto& [args, message] : cases) {
        Command command;
        EXPECT_EQ(command.run(args), kCommandBadUsage) << message;
        EXPECT_EQ(command.err, "scorvane-report: " + message + "\n");
        EXPECT_EQ(command.out, "");
    }
    EXPECT_EQ(t.snapshot(), before);
}

// The command over season folders and over the seasons file: careers joined across seasons and
// spellings, a player's career, one record list in its own CSV form and the whole book; a missing
// season is named and left out with status 1. No byte of any season's folder changes and no file
// appears there.
TEST(SeasonsCommand, ReportsOverSeasonFoldersWithoutWritingToThem) {
    ThreeSeasons t;
    TempDir elsewhere;
    const std::string seasonsFile = elsewhere.file("seasons.txt");
    ASSERT_TRUE(writeSeasonsFile(seasonsFile, t.list));
    const auto before = t.snapshot();
    Command c;

    const std::pair<Strings, std::string> csvRuns[] = {
        {{"--season", t.dirs[1], "--season", t.dirs[2] + ":1", "--career", "--category", "P",
          "--columns", "1,2,3,15"},
         "Name,Seasons,G,Att,Cm,Pct\r\nChris Vale,2,4,128,44,34.4\r\nTotals,,4,128,44,34.4\r\n"},
        {{"--seasons", seasonsFile, "--career", "--category", "P", "--player", "CHRIS VALE",
          "--columns", "1,2,3,15"},
         "Season,G,Att,Cm,Pct\r\n2023,2,10,9,90.0\r\n2024,2,100,30,30.0\r\n2025,2,28,14,50.0\r\n"
         "Career,6,138,53,38.4\r\n"},
        {{"--seasons", seasonsFile, "--record-book", "--category", "R", "--column", "3", "--scope",
          "season", "--top", "3"},
         "Rank,Name,Value,Season,Game,Date,Opponent\r\n1,Dale Ortiz,350,2024,,,\r\n"
         "2,Dale Ortiz,280,2025,,,\r\n3,Dale Ortiz,230,2023,,,\r\n"}};
    for (auto [args, csv] : csvRuns) {
        args.insert(args.end(), {"--format", "csv"});
        EXPECT_EQ(c.run(args), kCommandOk) << c.err;
        EXPECT_EQ(c.out, csv);
    }

    EXPECT_EQ(c.run({"--seasons", seasonsFile, "--record-book", "--output",
                     elsewhere.file("book.html"), "--format", "html"}),
              kCommandOk)
        << c.err;
    const Bytes page = elsewhere.read("book.html");
    const std::string html(page.begin(), page.end());
    for (const char* part : {"<h2>Passing</h2>", "<h2>Returns</h2>", "<h2>Team Records</h2>",
                             "Hawks, Seasons 2023-2025"})
        EXPECT_NE(html.find(part), std::string::npos) << part;

    EXPECT_EQ(c.run({"--seasons", seasonsFile, "--record-book", "--lines", "40"}), kCommandOk);
    const auto printed = split(c.out, "\n");
    ASSERT_GT(printed.size(), 40u);
    EXPECT_EQ(printed[1], "Hawks, Seasons 2023-2025");
    EXPECT_NE(c.out.find("\f"), std::string::npos);

    const std::string missing = elsewhere.dir() + "2022/";
    EXPECT_EQ(c.run({"--season", missing, "--season", t.dirs[2], "--career", "--category", "R",
                     "--columns", "1,3", "--format", "csv"}),
              kCommandFailed);
    EXPECT_NE(c.err.find("Season 2022: the folder " + platform::shownPath(missing)),
              std::string::npos)
        << c.err;
    EXPECT_NE(c.out.find("Dale Ortiz,1,3,280\r\n"), std::string::npos) << c.out;
    EXPECT_FALSE(std::filesystem::exists(missing));

    EXPECT_EQ(t.snapshot(), before);
}
