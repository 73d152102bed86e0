// Printed and saved reports: the text file, the print dialog, pages, the selection dialog, the
// team record, the roster listing and the CSV and HTML documents.
#include "reports/ReportDocument.h"
#include "reports/ReportOutput.h"
#include "reports/RosterListing.h"
#include "reports/Selection.h"
#include "reports/TeamRecord.h"

#include "SeasonBuilder.h"
#include "storage/Platform.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

using namespace scorvane;
using scorvane::testing::SeasonBuilder;

namespace {

using Strings = std::vector<std::string>;

std::string asText(const Bytes& b) {
    return std::string(b.begin(), b.end());
}

Status print(const std::string& path, bool append, const Strings& lines) {
    TextFileOutput out(path, append);
    return printLines(out, lines, nullptr);
}

std::vector<Strings> pagesOf(const Strings& lines) {
    std::vector<Strings> pages(1);
    for (const auto& l : lines) {
        if (l == kNewPageLine)
            pages.emplace_back();
        else
            pages.back().push_back(l);
    }
    return pages;
}

ConfigRecord namedTypes() {
    ConfigRecord c = ConfigRecord::defaults();
    c.gameTypeNames[0] = fit("League", 10);
    c.gameTypeNames[1] = fit("Non-League", 10);
    return c;
}

} // namespace

// Append adds after the first report, replace keeps only the second; whole report files; files
// that cannot be opened.
TEST(TextFileOutput, AppendReplaceWholeFilesAndFilesThatCannotBeOpened) {
    scorvane::testing::TempDir dir;
    const std::string path = dir.file("report.txt");
    // Trailing spaces go, a form-feed line stays a form feed of its own, names become UTF-8.
    ASSERT_TRUE(print(path, true, {"First   ", "  Jos\xe9 ", kNewPageLine, ""}));
    EXPECT_EQ(asText(dir.read("report.txt")), "First\n  Jos\xc3\xa9\n\f\n\n");
    ASSERT_TRUE(print(path, true, {"Second"}));
    EXPECT_EQ(asText(dir.read("report.txt")), "First\n  Jos\xc3\xa9\n\f\n\nSecond\n");
    ASSERT_TRUE(print(path, false, {"Third", "x  y  "}));
    EXPECT_EQ(asText(dir.read("report.txt")), "Third\nx  y\n");

    // The routine itself: open, print, close; another mode letter is refused.
    TextFileOutput out(path, true);
    ASSERT_TRUE(PrintReportLine(out, 'O'));
    ASSERT_TRUE(PrintReportLine(out, 'P', "Fourth"));
    EXPECT_FALSE(PrintReportLine(out, 'X', "never"));
    ASSERT_TRUE(PrintReportLine(out, 'C'));
    EXPECT_EQ(asText(dir.read("report.txt")), "Third\nx  y\nFourth\n");

    // A report longer than one written piece keeps every line, in order, after the old ones.
    Strings many;
    for (int i = 0; i < 5000; ++i)
        many.push_back(std::to_string(100000 + i) + std::string(24, '.'));
    ASSERT_TRUE(print(path, true, many));
    const std::string text = asText(dir.read("report.txt"));
    ASSERT_EQ(text.size(), 18u + 5000u * 31u);
    EXPECT_EQ(text.substr(18 + 4999 * 31), "104999" + std::string(24, '.') + "\n");

    // A whole report file (CSV, HTML) replaces the one before it.
    scorvane::testing::FakePrompter prompter;
    ASSERT_TRUE(saveReportFile(path, "No,Name\r\n", &prompter));
    ASSERT_TRUE(saveReportFile(path, "x", &prompter));
    EXPECT_EQ(dir.read("report.txt"), Bytes{'x'});
    EXPECT_TRUE(prompter.shown.empty());

    // A printed or saved report whose file cannot be opened (its folder is not there) is offered
    // Retry, then Cancel; nothing is created.
    const std::string missing = dir.file("missing/report.txt");
    const std::function<Status(Prompter*)> writers[] = {
        [&](Prompter* p) {
            TextFileOutput out(missing, false);
            return printLines(out, {"line"}, p);
        },
        [&](Prompter* p) { return saveReportFile(missing, "x", p); }};
    for (const auto& write : writers) {
        scorvane::testing::FakePrompter prompter;
        prompter.answers = {Answer::Retry, Answer::Cancel};
        EXPECT_FALSE(write(&prompter));
        ASSERT_EQ(prompter.shown.size(), 2u);
        EXPECT_EQ(prompter.shown[0].title, "Printer/File Error");
        EXPECT_EQ(prompter.shown[0].buttons, Buttons::RetryCancel);
        EXPECT_NE(prompter.shown[0].text.find(platform::shownPath(missing)), std::string::npos);
        EXPECT_FALSE(dir.exists("missing"));
    }
    EXPECT_EQ(printErrorMessage(true, "whatever").text, "Printer not ready");
}

// Copies, then lines per page, then top players: the first bad field is the one named.
TEST(PrintOptions, DialogChecksInItsOrder) {
    const std::array<std::string, 4> cases[] = {
        {"0", "60", "999", "Copies Invalid: Must be greater than 1"},
        {"51", "20", "0", "Copies Invalid: 50 copies maximum"},
        {"50", "20", "0", "Lines per Page Invalid: Must be greater than 20"},
        {"50", "21", "0", "Top Players Invalid: Must be 1 to 999"},
        {"1", "21", "5", "ok"}};
    PrintOptions options;
    for (const auto& [copies, lines, top, said] : cases) {
        const PrintEntry e{"", copies, lines, top, " out.txt ", false};
        const auto error = storePrintOptions(e, options);
        EXPECT_EQ(error ? error->message.title + ": " + error->message.text : "ok", said);
    }
    EXPECT_EQ(options.copies, 1);
    EXPECT_EQ(options.linesPerPage, 21);
    EXPECT_EQ(options.topPlayers, 5);
    EXPECT_EQ(options.fileMode, 'R');
    EXPECT_EQ(options.fileName, "out.txt");
}

TEST(PageLayout, PagesHoldTheirLinesAndTheTotalsStayTogether) {
    PageParts parts;
    parts.title = "Rushing Statistics";
    parts.subtitles = {"Hawks", "Games 1 to 999, all game types"};
    parts.headings = {std::string(40, 'H'), std::string(40, '-')};
    for (int i = 1; i <= 30; ++i)
        parts.body.push_back("player " + digits(i));
    parts.closing = {"", "    Totals"};
    // Pages split at the form-feed lines; none longer than 21 lines.
    const auto pages = pagesOf(layOutPages(parts, 21));
    ASSERT_EQ(pages.size(), 3u);
    for (std::size_t p = 0; p < pages.size(); ++p) {
        EXPECT_LE(pages[p].size(), 21u);
        EXPECT_EQ(pages[p][0], "Rushing Statistics" + std::string(16, ' ') + "Page " +
                                   digits(static_cast<long long>(p + 1)));
        EXPECT_EQ(pages[p][4], parts.headings[0]);
    }
    // 15 players fit under the 6 heading lines; the two closing lines do not fit after the 30th
    // and go to a page of their own, together.
    EXPECT_EQ(pages[0].back(), "player 15");
    EXPECT_EQ(pages[1].back(), "player 30");
    EXPECT_EQ(pages[2], (Strings{pages[2][0], "Hawks", "Games 1 to 999, all game types", "",
                                 parts.headings[0], parts.headings[1], "", "    Totals"}));
    // Two lines fewer and the totals end the second page.
    parts.body.resize(28);
    const Strings shorter = layOutPages(parts, 21);
    EXPECT_EQ(std::count(shorter.begin(), shorter.end(), kNewPageLine), 1);
    EXPECT_EQ(shorter.back(), "    Totals");
    EXPECT_EQ(shorter[shorter.size() - 3], "player 28");

    // A run of lines kept together but longer than a page (18 body lines) is cut where the page
    // ends.
    parts.subtitles.clear();
    parts.headings = {"----"};
    parts.closing.clear();
    parts.groups = {25};
    const auto cut = pagesOf(layOutPages(parts, 21));
    ASSERT_EQ(cut.size(), 2u);
    EXPECT_EQ(cut[0].back(), "player 18");
    EXPECT_EQ(cut[1][3], "player 19");

    // Copies start on new pages.
    const Strings report = {"a", "b", kNewPageLine, "c"};
    EXPECT_EQ(repeatCopies(report, 1), report);
    EXPECT_EQ(repeatCopies(report, 2),
              (Strings{"a", "b", kNewPageLine, "c", kNewPageLine, "a", "b", kNewPageLine, "c"}));
}

TEST(Selection, StoringTheDialogsChoice) {
    Selection s;
    SelectionEntry e;
    e.fromGame = "50";
    e.toGame = "10";
    e.playerName = "  Caleb Morrison";
    e.gameTypes[3] = false;
    ASSERT_FALSE(storeSelection(e, s));
    EXPECT_EQ(s.fromGame, 10);
    EXPECT_EQ(s.toGame, 50);
    EXPECT_EQ(s.playerName, "caleb morrison   ");
    EXPECT_FALSE(s.allGameTypes());
    EXPECT_EQ(s.describe(namedTypes()),
              "Games 10 to 50, League, Non-League, GameType 3, GameType 5, GameType 6, "
              "GameType 7, player caleb morrison");

    for (const char* bad : {"0", "1000", "", "x"}) {
        Selection untouched = s;
        e.fromGame = bad;
        const auto error = storeSelection(e, untouched);
        ASSERT_TRUE(error) << bad;
        EXPECT_EQ(error->message.text, "Must be 1 to 999");
        EXPECT_EQ(error->message.title, "From Game Invalid");
        EXPECT_EQ(error->focus, SelectionField::FromGame);
        EXPECT_EQ(untouched.fromGame, 10); // nothing stored
    }
    e.fromGame = "1";
    e.toGame = "1000";
    EXPECT_EQ(storeSelection(e, s)->message.title, "To Game Invalid");
    e.toGame = "999";
    e.gameTypes.fill(true);
    e.specialSelect = true;
    ASSERT_FALSE(storeSelection(e, s));
    EXPECT_TRUE(s.allGameTypes());
    EXPECT_EQ(s.emptyReportText(), "No Games");
    s.specialSelect = false;
    EXPECT_EQ(s.emptyReportText(), "No Players");
}

TEST(TeamRecord, PercentageAndTheTieColumn) {
    const ConfigRecord config = namedTypes();
    SeasonBuilder b;
    b.game(1, '1', 21, 7).game(2, '1', 3, 10).game(3, '1', 0, 0).game(4, '2', 14, 13);
    b.game(5, '3', 7, 6).game(6, '1', 99, 0);
    Selection firstFour;
    firstFour.toGame = 4;
    TeamRecordReport r = computeTeamRecord({b.season}, firstFour);
    EXPECT_EQ(r.shownRows(), (std::vector<int>{1, 2, kTotalsRow})); // no row for type 3
    EXPECT_TRUE(r.anyTies());
    EXPECT_EQ(formatPct(r.rows[kTotalsRow].pct), ".625"); // 2 won, 1 lost, 1 tied
    EXPECT_EQ(formatPct(r.rows[2].pct), "1.000");
    EXPECT_EQ(teamRecordHeaders(true),
              (Strings{"Game Type", "Won", "Lost", "Tie", "Pct", "PF", "PA"}));
    EXPECT_EQ(teamRecordHeaderLine(true),
              "Game Type    Won    Lost    Ties     Pct      PF      PA");
    EXPECT_EQ(teamRecordLine(r, 1, config, true),
              "League         1       1       1    .500      24      17");
    EXPECT_EQ(teamRecordLine(r, kTotalsRow, config, true),
              "Totals         2       1       1    .625      38      30");

    // Without the 0-0 game there is no tie anywhere, and so no Tie column.
    b.season.games[2].gameStatus = 'D';
    r = computeTeamRecord({b.season}, firstFour);
    EXPECT_FALSE(r.anyTies());
    EXPECT_EQ(teamRecordHeaders(false), (Strings{"Game Type", "Won", "Lost", "Pct", "PF", "PA"}));
    EXPECT_EQ(teamRecordHeaderLine(false), "Game Type    Won    Lost     Pct      PF      PA");
    EXPECT_EQ(teamRecordLine(r, kTotalsRow, config, false),
              "Totals         2       1    .667      38      30");
    EXPECT_EQ(teamRecordCsv(r, config),
              "Game Type,Won,Lost,Tie,Pct,PF,PA\r\nLeague,1,1,0,.500,24,17\r\n"
              "Non-League,1,0,0,1.000,14,13\r\nTotals,2,1,0,.667,38,30\r\n");

    // Nothing selected: no rows, and the printed record says so.
    Selection none;
    none.fromGame = none.toGame = 7;
    r = computeTeamRecord({b.season}, none);
    EXPECT_TRUE(r.empty());
    EXPECT_TRUE(r.shownRows().empty());
    const auto lines = teamRecordPages(r, config, {"Team Record", "Hawks", "Games 7 to 7"}, {});
    EXPECT_EQ(lines.back(), "No Games");

    // A game whose points leave 16 bits is reported, never counted with wrapped points.
    b.season.games[0].teamScore = {32767, 1, 0, 0, 0};
    r = computeTeamRecord({b.season}, Selection{});
    ASSERT_EQ(r.overflows.size(), 1u);
    EXPECT_EQ(r.rows[kTotalsRow].games(), 4);

    // Points too wide for their column widen it, heading and every row, and are never cut.
    r = TeamRecordReport{};
    r.rows[1] = r.rows[kTotalsRow] = {2, 0, 0, 1.0f, 123456789, 30};
    const auto wide = teamRecordPages(r, config, {"Team Record", "Hawks", "All games"}, {});
    EXPECT_EQ(wide[4], "Game Type    Won    Lost     Pct        PF      PA");
    EXPECT_EQ(wide[6], "League         2       0   1.000 123456789      30");
    EXPECT_EQ(wide.back(), "Totals         2       0   1.000 123456789      30");
}

TEST(ReportDocument, CsvAndHtmlOfAStatisticsReport) {
    SeasonBuilder b;
    b.player(7, "O'Neil, \"Ace\" <7>").player(9, "Sims").game(1);
    b.list(1, 7, 'K', {}); // a list without kicks still counts the game
    b.list(1, 9, 'K', {{'F', 30, kickmark::Good}, {'F', 44, 0}});
    StatisticsDocument d;
    d.report = ComputeStatistics('K', {b.season}, Selection{});
    d.columns = {1, 11, 17};
    d.heading = {"Kicking Statistics", "Hawks & Co", "Games 1 to 999, all game types"};
    const ColumnTable table;
    EXPECT_EQ(statisticsCsv(d, table, 999), "No,Name,G,FG All,FLg\r\n"
                                            "7,\"O'Neil, \"\"Ace\"\" <7>\",1,0/0   0.0%,0\r\n"
                                            "9,Sims,1,1/2  50.0%,30\r\n"
                                            ",Totals,1,1/2  50.0%,30\r\n");
    // The top players cut the lines, never the totals.
    EXPECT_EQ(statisticsCsv(d, table, 1), "No,Name,G,FG All,FLg\r\n"
                                          "7,\"O'Neil, \"\"Ace\"\" <7>\",1,0/0   0.0%,0\r\n"
                                          ",Totals,1,1/2  50.0%,30\r\n");

    const std::string html = statisticsHtml(d, table, 999);
    EXPECT_EQ(html.rfind("<!DOCTYPE html>", 0), 0u);
    EXPECT_NE(html.find("O&#39;Neil, &quot;Ace&quot; &lt;7&gt;"), std::string::npos);
    EXPECT_NE(html.find("<p class=\"team\">Hawks &amp; Co</p>"), std::string::npos);
    EXPECT_NE(html.find("<th>FG All</th>"), std::string::npos);
    EXPECT_EQ(html.find("<7>"), std::string::npos);
}

// A figure that fills its column or is wider than it widens that column for the whole printed
// report, so that it keeps a space before it; a report whose figures all fit keeps its headings'
// widths.
TEST(ReportDocument, AFigureWithoutASpaceBeforeItWidensItsColumn) {
    struct Case {
        char category;
        std::vector<int> columns;
        std::vector<std::pair<int, std::vector<std::pair<int, int>>>> players; // number, fields
        std::string heading;
        Strings figures; // each player's figures, then the totals'
    };
    const Case cases[] = {
        // Receiving Big 10 + 20 and Y@C 800 + 623: the totals' 1423 fills " Y@C".
        {'C',
         {6, 14},
         {{81, {{6, 10}, {3, 900}, {7, 100}}}, {85, {{6, 20}, {3, 700}, {7, 77}}}},
         " Big  Y@C",
         {"  10  800", "  20  623", "  30 1423"}},
        // Defense: 6000 and 4000 solo tackles make a total of 10000, wider than " Tkl".
        {'D',
         {1, 2},
         {{90, {{3, 6000}}}, {91, {{3, 4000}}}},
         "  G   Tkl",
         {"  1  6000", "  1  4000", "  1 10000"}},
        // Every figure fits: the headings' widths, as always.
        {'D',
         {1, 2},
         {{90, {{3, 30}}}, {91, {{3, 12}}}},
         "  G Tkl",
         {"  1  30", "  1  12", "  1  42"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.heading);
        SeasonBuilder b;
        b.game(1);
        for (const auto& [number, fields] : c.players) {
            b.player(number, "P" + digits(number));
            for (const auto& [code, value] : fields) // records of one game add up
                b.stats(1, number, c.category, {{code, value}});
        }
        StatisticsDocument d;
        d.report = ComputeStatistics(c.category, {b.season}, Selection{});
        d.columns = c.columns;
        d.heading = {"Title", "Hawks", "All games"};
        const Strings lines = statisticsPages(d, ColumnTable{}, PrintOptions{});

        Strings expected = {" No " + fit("Name", 17) + c.heading};
        expected.push_back(std::string(expected[0].size(), '-'));
        for (std::size_t i = 0; i < c.players.size(); ++i) {
            const std::string number = digits(c.players[i].first);
            expected.push_back(" " + number + " " + fit("P" + number, 17) + c.figures[i]);
        }
        expected.push_back("");
        expected.push_back("    " + fit("Totals", 17) + c.figures.back());
        ASSERT_EQ(lines.size(), 4 + expected.size());
        EXPECT_EQ(Strings(lines.begin() + 4, lines.end()), expected);
    }
}

// Entries in number order with their contact details; city or state alone stand without the
// comma, and details of a number not in use are never printed.
TEST(RosterListing, EntriesInNumberOrderWithTheirContactDetails) {
    Roster roster;
    for (const auto& [number, name] :
         {std::pair{22, "Marcus Bell"}, {7, "Caleb Morrison"}, {85, "Nate Carlson"}}) {
        roster.inUse[number] = true;
        roster.names[number] = fit(name, 17);
    }
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
    PrintOptions options;
    const Strings lines = rosterPages("Riverside Hawks", roster, lookup, options);
    ASSERT_EQ(std::count(lines.begin(), lines.end(), kNewPageLine), 0);
    EXPECT_EQ(lines[0].substr(0, 6), "Roster");
    EXPECT_EQ(lines[0].substr(lines[0].size() - 6), "Page 1");
    EXPECT_EQ(lines[1], "Riverside Hawks");
    const Strings body(lines.begin() + 4, lines.end());
    EXPECT_EQ(body,
              (Strings{" 7 - Caleb Morrison", "     (555) 214-0371", "     1408 Maple Avenue",
                       "     Riverside, OH  45219", "     Team captain", "", "22 - Marcus Bell",
                       "     Riverside", "", "85 - Nate Carlson", "     OH  45221"}));
    EXPECT_EQ(rosterEntry(22, roster.names[22], lookup),
              std::vector(body.begin() + 6, body.end() - 3));
    EXPECT_EQ(rosterPages("Riverside Hawks", Roster{}, lookup, options).back(), "No Players");

    // An entry is never split across pages: each here is the name and three details, then a
    // blank line; three entries (14 lines with their blanks) fit the 17 a page has room for.
    Roster twelve;
    for (int n = 1; n <= 12; ++n) {
        twelve.inUse[static_cast<std::size_t>(n)] = true;
        twelve.names[static_cast<std::size_t>(n)] = fit("Player " + digits(n), 17);
    }
    const ContactLookup three = [](int, ContactField f) {
        return f == ContactField::Phone || f == ContactField::Address1 || f == ContactField::Other
                   ? std::string("detail")
                   : std::string();
    };
    options.linesPerPage = 21;
    const auto pages = pagesOf(rosterPages("Hawks", twelve, three, options));
    ASSERT_EQ(pages.size(), 4u);
    for (const auto& page : pages) {
        EXPECT_LE(page.size(), 21u);
        EXPECT_EQ(page[3], std::string(40, '-'));
        // Every page's body starts with a name line and ends with a whole entry (and the blank
        // line after it, but the last).
        EXPECT_NE(page[4].find(" - Player "), std::string::npos) << page[4];
        const auto last = std::find_if(page.rbegin(), page.rend(),
                                       [](const std::string& l) { return !l.empty(); });
        EXPECT_EQ(*last, "     detail");
    }
    EXPECT_EQ(pages.back().back(), "     detail");
    EXPECT_EQ(pages[0][4], " 1 - Player 1");
    EXPECT_EQ(pages[1][4], " 4 - Player 4");
}
