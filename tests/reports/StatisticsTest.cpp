#include "reports/Statistics.h"

#include "ReportChecks.h"
#include "SeasonBuilder.h"

#include <gtest/gtest.h>

#include <set>

using namespace scorvane;
using scorvane::testing::figureKey;
using scorvane::testing::SeasonBuilder;

namespace {

const ColumnTable kTable;

StatReport compute(char category, const SeasonBuilder& b, const Selection& s = {}) {
    return ComputeStatistics(category, {b.season}, s);
}

std::string text(const StatReport& r, const PlayerFigures& p, int code) {
    return figureText(r.category, code, p[code]);
}

// Each column's text on a line, by column code.
void expectTexts(const StatReport& r, const PlayerFigures& p,
                 const std::vector<std::pair<int, std::string>>& texts) {
    for (const auto& [code, want] : texts)
        EXPECT_EQ(text(r, p, code), want) << "column " << code;
}

std::vector<int> numbers(const StatReport& r) {
    std::vector<int> out;
    for (const auto& p : r.players)
        out.push_back(p.number);
    return out;
}

} // namespace

TEST(Statistics, PasserRatingPartsAreClampedEachOnItsOwn) {
    SeasonBuilder b;
    b.game(1).game(2);
    // 10 of 10, 200 yards, 4 touchdowns, no interception: every part at its 2.375 ceiling.
    b.stats(1, 7, 'P', {{2, 10}, {3, 10}, {4, 200}, {6, 4}});
    // The same passer with 10 interceptions: d alone falls to 0, the others stay at 2.375.
    b.stats(1, 8, 'P', {{2, 10}, {3, 10}, {4, 200}, {6, 4}, {5, 10}});
    // Nothing completed and everything intercepted: every part is 0, never below.
    b.stats(2, 9, 'P', {{2, 10}, {4, -20}, {5, 10}});
    // No attempt: Pct, Avg and Rtg stay 0.
    b.stats(2, 10, 'P', {{6, 1}});
    const StatReport r = compute('P', b);
    ASSERT_EQ(numbers(r), (std::vector<int>{7, 8, 9, 10}));

    // Column 16 is yards per completion; 118.8 is 7.125 x 100 / 6 = 118.75, half up.
    expectTexts(r, r.players[0], {{17, "158.3"}, {15, "100.0"}, {16, "20.0"}});
    expectTexts(r, r.players[1], {{17, "118.8"}});
    expectTexts(r, r.players[2], {{17, "0.0"}, {16, "0.0"}});
    expectTexts(r, r.players[3], {{15, "0.0"}, {17, "0.0"}, {18, "6"}});

    // Printed in the width of its heading "   Rtg".
    const std::string line = FormatPlayerLine(r, r.players[0], {1, 17}, kTable);
    EXPECT_EQ(line, "  7 " + fit("", 17) + "  1 158.3");
}

TEST(Statistics, ReceivingAndDefenseDerivedColumns) {
    SeasonBuilder b;
    b.player(81, "Jordan Hayes").game(1).game(2);
    b.stats(1, 81, 'C', {{2, 4}, {3, 10}, {7, 25}, {8, 2}, {4, 1}, {10, 1}});
    b.stats(2, 81, 'C', {{2, 6}, {3, 20}, {7, 20}, {8, 3}, {5, 12}});
    const StatReport r = compute('C', b);
    ASSERT_EQ(r.players.size(), 1u);
    const auto& p = r.players[0];
    // Y@C = Yds 30 - YAC 45; FD% = 5 / 10, not multiplied by 100; Avg = 30 / 10;
    // Pts = 1 x 6 + 1 x 2; Lg the longest, not the sum.
    expectTexts(r, p, {{14, "-15"}, {17, "0.5"}, {15, "3.0"}, {16, "8"}, {5, "12"}, {1, "2"}});
    EXPECT_EQ(FormatPlayerLine(r, p, {14, 17}, kTable), " 81 Jordan Hayes      -15   0.5");

    // Defense: Tkl = Sol + Ast, sacks entered in halves.
    b.stats(1, 90, 'D', {{3, 3}, {4, 2}, {10, 15}}).stats(2, 90, 'D', {{3, 1}, {10, 10}});
    const StatReport d = compute('D', b);
    expectTexts(d, d.players.at(0), {{2, "6"}, {10, "2.5"}});
    EXPECT_EQ(FormatPlayerLine(d, d.players.at(0), {2, 10}, kTable),
              " 90 " + fit("", 17) + "   6   2.5");
}

// Made/attempted texts, and display masks rounding half away from zero.
TEST(Statistics, MadeAttemptedAndMaskTexts) {
    const std::tuple<long long, long long, std::string> made[] = {
        {0, 0, "0/0   0.0%"}, {1, 3, "1/3  33.3%"},
        {3, 4, "3/4  75.0%"}, {10, 10, "10/10 100.0%"},
        {2, 3, "2/3  66.7%"}, {30000000, 30000000, "Overflow"}}; // made x 100 past 32 bits
    for (const auto& [m, a, want] : made)
        EXPECT_EQ(FormatMadeAttempted(m, a), want);
    // A mask read only as far as its end (cut from a longer text here), leading zeros written
    // before the digits, and the largest figure still written as a number.
    const std::string_view cut("##00", 3);
    const std::tuple<double, std::string_view, std::string> masks[] = {
        {0.25, "##0.0", "0.3"},         {-0.25, "##0.0", "-0.3"},   {1234.56, "###0.0", "1234.6"},
        {75, " ##0.0", " 75.0"},        {0.625, "###.000", ".625"}, {1.0, "###.000", "1.000"},
        {2.0 / 3.0, "###.000", ".667"}, {0.0, "###.000", ".000"},   {5, cut, "5"},
        {7.25, "000.0", "007.3"},       {1e17, "0.0", "Overflow"}};
    for (const auto& [value, mask, want] : masks)
        EXPECT_EQ(formatNumber(value, mask), want) << value << " " << mask;
    EXPECT_EQ(formatNumber(9e16, "0.0"), "90000000000000000.0");
}

TEST(Statistics, SixteenBitFiguresOverflowAndAreNeverWrapped) {
    SeasonBuilder b;
    b.game(1).game(2);
    b.stats(1, 1, 'P', {{6, 5461}});          // 32766 points: fits
    b.stats(1, 2, 'P', {{6, 5461}, {12, 1}}); // 32768: one too many
    b.stats(1, 3, 'P', {{6, 5462}});          // the product alone leaves 16 bits
    const StatReport r = compute('P', b);
    ASSERT_EQ(r.players.size(), 3u);
    expectTexts(r, r.players[0], {{18, "32766"}});
    expectTexts(r, r.players[1], {{18, "Overflow"}});
    expectTexts(r, r.players[2], {{18, "Overflow"}});
    std::vector<std::pair<int, int>> noted;
    for (const auto& n : r.overflows)
        noted.emplace_back(n.playerNumber, n.column);
    // The totals line sums in 32 bits: 98306 points fit there.
    EXPECT_EQ(noted, (std::vector<std::pair<int, int>>{{2, 18}, {3, 18}}));
    EXPECT_EQ(text(r, r.totals, 18), "98306");

    // Y@C: two games of 32767 yards each make 65534, past 16 bits for the player.
    SeasonBuilder c;
    c.game(1).game(2);
    c.stats(1, 5, 'C', {{2, 1}, {3, 32767}});
    c.stats(2, 5, 'C', {{2, 1}, {3, 32767}});
    const StatReport rc = compute('C', c);
    ASSERT_EQ(rc.overflows.size(), 1u);
    EXPECT_EQ(rc.overflows[0].column, 14);
    EXPECT_EQ(text(rc, rc.players[0], 3), "65534");
    EXPECT_EQ(text(rc, rc.totals, 14), "65534");
    // Never shown as a number: the column is widened to show the word whole, and the totals'
    // 65534 in it.
    EXPECT_EQ(FormatPlayerLine(rc, rc.players[0], {14}, kTable),
              "  5 " + fit("", 17) + " Overflow");
    EXPECT_EQ(FormatTotalsLine(rc, {14}, kTable), "    " + fit("Totals", 17) + "    65534");
}

TEST(Statistics, SelectionDecidesGamesPlayedAndListing) {
    SeasonBuilder b;
    b.player(10, "Ten").player(20, "Twenty").player(30, "Thirty");
    b.game(1, '1').game(2, '2').game(3, '1', 0, 0, '2');
    b.stats(1, 10, 'R', {{2, 5}, {3, 20}});
    b.stats(2, 10, 'R', {{2, 5}, {3, 30}});
    b.stats(3, 20, 'R', {{2, 1}, {3, 4}});
    b.stats(2, 30, 'R', {{2, 9}, {3, 9}}, 'D'); // deleted: never counts

    Selection games12;
    games12.fromGame = 1;
    games12.toGame = 2;
    StatReport r = compute('R', b, games12);
    ASSERT_EQ(numbers(r), std::vector<int>{10}); // 20 played only game 3, 30 nothing live
    EXPECT_EQ(r.players[0].games(), 2);
    EXPECT_EQ(text(r, r.players[0], 3), "50");

    Selection type1;
    type1.gameTypes = {true, false, false, false, false, false, false};
    r = compute('R', b, type1);
    ASSERT_EQ(numbers(r), (std::vector<int>{10, 20}));
    EXPECT_EQ(r.players[0].games(), 1);
    EXPECT_EQ(text(r, r.players[0], 3), "20");
    EXPECT_EQ(r.totals.games(), 2); // games 1 and 3

    Selection special;
    special.specialSelect = true;
    EXPECT_EQ(numbers(compute('R', b, special)), std::vector<int>{20});
    EXPECT_EQ(numbers(compute('R', b, {.playerName = selectionPlayerName("  TWENTY")})),
              std::vector<int>{20});
    Selection byNumber;
    byNumber.playerNumber = 10;
    EXPECT_EQ(numbers(compute('R', b, byNumber)), std::vector<int>{10});

    // A deleted game's records do not count even when they are still marked live.
    b.season.games[1].gameStatus = 'D';
    r = compute('R', b, games12);
    ASSERT_EQ(r.players.size(), 1u);
    EXPECT_EQ(r.players[0].games(), 1);
}

TEST(Statistics, EqualKeysKeepRosterOrderInBothDirections) {
    SeasonBuilder b;
    b.game(1);
    for (int n : {30, 5, 12, 9})
        b.stats(1, n, 'R', {{2, 1}, {3, n == 12 ? 80 : 40}});
    StatReport r = compute('R', b);
    EXPECT_EQ(numbers(r), (std::vector<int>{5, 9, 12, 30})); // roster order, not file order
    sortPlayers(r, 3, 'D');
    EXPECT_EQ(numbers(r), (std::vector<int>{12, 5, 9, 30}));
    sortPlayers(r, 3, 'A');
    EXPECT_EQ(numbers(r), (std::vector<int>{5, 9, 30, 12}));
    sortPlayers(r, 12, 'D'); // Avg: 80.0 against 40.0
    EXPECT_EQ(numbers(r), (std::vector<int>{12, 5, 9, 30}));
    sortPlayers(r, 25, 'A'); // no such column: order stays
    EXPECT_EQ(numbers(r), (std::vector<int>{12, 5, 9, 30}));

    // A full roster with two figures only: each group stays in roster order.
    SeasonBuilder many;
    many.game(1);
    std::vector<int> expected, others;
    for (int n = kMaxPlayers; n >= 1; --n)
        many.stats(1, n, 'R', {{2, 1}, {3, n % 3 == 0 ? 80 : 40}});
    for (int n = 1; n <= kMaxPlayers; ++n)
        (n % 3 == 0 ? expected : others).push_back(n);
    expected.insert(expected.end(), others.begin(), others.end());
    r = compute('R', many);
    sortPlayers(r, 3, 'D');
    EXPECT_EQ(numbers(r), expected);
}

TEST(Statistics, TotalsRecomputeRatiosFromSummedCounts) {
    SeasonBuilder b;
    b.game(1).game(2);
    b.stats(1, 1, 'P', {{2, 10}, {3, 5}, {4, 50}, {8, -3}});
    b.stats(2, 2, 'P', {{2, 30}, {3, 30}, {4, 300}, {8, 45}});
    b.stats(1, 2, 'P', {{2, 1}, {3, 0}, {8, -7}});
    const StatReport r = compute('P', b);
    // Pct 30 of 31, and 35 of 41 on the totals, not the mean of the two; a negative longest gain
    // shows, the totals' is the longest of all; G counts selected games with a listed player.
    expectTexts(r, r.players[0], {{15, "50.0"}, {8, "-3"}});
    expectTexts(r, r.players[1], {{15, "96.8"}, {8, "45"}});
    expectTexts(r, r.totals, {{15, "85.4"}, {2, "41"}, {8, "45"}, {1, "2"}});
    EXPECT_EQ(FormatTotalsLine(r, {1, 2, 15}, kTable), "    Totals             2  41  85.4");
    EXPECT_EQ(FormatHeadingLine(r, {1, 2, 15}, kTable), " No Name               G Att   Pct");
}

// Kicking and returns from their lists, every column.
TEST(Statistics, KickingAndReturnsFromTheirLists) {
    using kickmark::Blocked, kickmark::Good, kickmark::Inside20, kickmark::Touchback,
        returnmark::Fumble, returnmark::Touchdown;
    constexpr auto kickFc = kickmark::FairCatch, returnFc = returnmark::FairCatch;
    SeasonBuilder b;
    b.game(1).game(2);
    const std::vector<ListEntry> kicks = {
        {'X', 0, Good},       {'X', 0, Blocked}, {'P', 40, Inside20},
        {'P', 52, Touchback}, {'P', 0, Blocked}, {'P', 38, kickFc + Inside20},
        {'F', 20, Good},      {'F', 21, 0},      {'F', 35, Good},
        {'F', 40, Blocked},   {'F', 41, Good},   {'Q', 99, Good}};
    b.list(1, 3, 'K', kicks, {1, 2, 3, 4, 5});
    b.list(2, 3, 'K', {{'F', 55, 0}, {'X', 0, Good}}, {10, 0, 0, 0, 0});
    const std::vector<ListEntry> returns = {{'P', 10, 0},         {'P', 0, returnFc},
                                            {'P', 65, Touchdown}, {'P', -3, Fumble},
                                            {'K', 22, 0},         {'K', 48, Fumble + Touchdown},
                                            {'K', 0, returnFc}};
    b.list(1, 2, 'T', returns);
    // Kicking: G, extra points, XB, punts, PB, P20, PFC, PTB, PLg, PAv = 130 / 4, FG All, FG 0 to
    // 20, 21 to 30, 31 to 40, 41 and over, FGB, FLg of made kicks only; the user columns sum the
    // summary values.
    const std::pair<char, std::vector<std::string>> cases[] = {
        {'K', {"2",          "2/3  66.7%", "1",          "4",    "1",          "2",
               "1",          "1",          "52",         "32.5", "3/6  50.0%", "1/1 100.0%",
               "0/1   0.0%", "1/2  50.0%", "1/2  50.0%", "1",    "41",         "11",
               "2",          "3",          "4",          "5"}},
        {'T',
         {"1", "4", "18.0", "1", "1", "1", "65", "72", "3", "23.3", "1", "1", "1", "48", "70"}}};
    for (const auto& [category, expected] : cases) {
        const StatReport r = compute(category, b);
        ASSERT_EQ(r.players.size(), 1u);
        for (std::size_t code = 1; code <= expected.size(); ++code)
            EXPECT_EQ(text(r, r.players[0], static_cast<int>(code)), expected[code - 1])
                << category << code;
    }
    const StatReport r = compute('K', b);
    EXPECT_EQ(FormatPlayerLine(r, r.players[0], {2, 11}, kTable),
              "  3 " + fit("", 17) + "     2/3  66.7%    3/6  50.0%");
}

TEST(Statistics, SeveralTeamsCarryTheirShortNameAndShareTheTotals) {
    SeasonBuilder hawks(1, "Riverside Hawks", "Hawks");
    hawks.player(7, "Caleb").game(1).stats(1, 7, 'R', {{2, 3}, {3, 30}});
    SeasonBuilder tigers(2, "Lakeview Tigers", "Tigers");
    tigers.player(7, "Liam").game(1).game(2);
    tigers.stats(1, 7, 'R', {{2, 2}, {3, 5}}).stats(2, 7, 'R', {{2, 5}, {3, 5}});
    const StatReport r = ComputeStatistics('R', {hawks.season, tigers.season}, Selection{});
    ASSERT_TRUE(r.multipleTeams);
    ASSERT_EQ(r.players.size(), 2u);
    EXPECT_EQ(FormatHeadingLine(r, {1, 3}, kTable), " No Name              Team        G  Yds");
    EXPECT_EQ(FormatPlayerLine(r, r.players[1], {1, 3}, kTable),
              "  7 Liam              Tigers      2   10");
    EXPECT_EQ(FormatTotalsLine(r, {1, 2, 3, 12}, kTable),
              "    Totals                        3  10   40  4.0");
}

// "Less than n Games" and chosen players narrow the lines and the totals; chosen players are told
// apart by team (Tigers' 6, not a Hawks' 6), and the totals' games are the listed players' teams'.
TEST(Statistics, PlayerFilterNarrowsTheLinesAndTheTotals) {
    constexpr int Att = 2, Yds = 4;
    // Hawks: 7 passes in three games, 12 in one; Tigers: 6 in two.
    SeasonBuilder hawks(1, "Riverside Hawks", "Hawks");
    hawks.player(7, "Caleb Morrison").player(12, "Drew Kessler").game(1).game(2).game(3);
    hawks.stats(1, 7, 'P', {{Att, 10}, {Yds, 100}})
        .stats(2, 7, 'P', {{Att, 12}, {Yds, 90}})
        .stats(3, 7, 'P', {{Att, 8}, {Yds, 40}})
        .stats(3, 12, 'P', {{Att, 4}, {Yds, 30}});
    SeasonBuilder tigers(2, "Lakeview Tigers", "Tigers");
    tigers.player(6, "Liam Brennan").game(1).game(2);
    tigers.stats(1, 6, 'P', {{Att, 20}, {Yds, 210}}).stats(2, 6, 'P', {{Att, 18}, {Yds, 160}});
    const std::set<std::pair<int, int>> chosen = {{2, 6}, {1, 12}}; // team, number
    struct Case {
        int minimumGames;
        bool chosen;
        std::string listed;
        long long yards, attempts, games;
        bool narrows;
    };
    const Case cases[] = {
        {0, false, "Hawks 7, Hawks 12, Tigers 6", 630, 72, 5, false},
        {1, false, "Hawks 7, Hawks 12, Tigers 6", 630, 72, 5, false},
        {2, false, "Hawks 7, Tigers 6", 600, 68, 5, true},
        {3, false, "Hawks 7", 230, 30, 3, true},
        {0, true, "Hawks 12, Tigers 6", 400, 42, 3, true},
        {2, true, "Tigers 6", 370, 38, 2, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.listed);
        const PlayerFilter filter{c.minimumGames, c.chosen ? chosen : decltype(chosen){}};
        const StatReport r =
            ComputeStatistics('P', {hawks.season, tigers.season}, Selection{}, filter);
        std::string listed;
        for (const auto& p : r.players)
            listed += (listed.empty() ? "" : ", ") + p.teamShortName + " " + digits(p.number);
        EXPECT_EQ(listed, c.listed);
        EXPECT_EQ(r.totals[Yds].value, c.yards);
        EXPECT_EQ(r.totals[Att].value, c.attempts);
        EXPECT_EQ(r.totals.games(), c.games);
        EXPECT_EQ(filter.narrows(), c.narrows);
    }
}

TEST(Statistics, DamagedRecordsAreSkipped) {
    SeasonBuilder b;
    b.game(1);
    b.stats(1, 0, 'P', {{2, 5}}).stats(1, 100, 'P', {{2, 5}}).stats(1, -3, 'P', {{2, 5}});
    b.stats(1, 4, 'P', {{2, 5}});
    b.season.stats.push_back(Bytes{1, 0, 4, 0, 'P', 'A'}); // cut short: reads as zeros
    b.season.stats.push_back(Bytes{1, 0, 4, 0, 'Z', 'A'}); // a category no report has
    b.season.stats.push_back(Bytes{});
    b.list(1, 4, 'K', {{'F', 30, 0x7FFF}, {'\0', -32768, -1}});
    const StatReport r = compute('P', b);
    ASSERT_EQ(numbers(r), std::vector<int>{4});
    EXPECT_EQ(r.players[0].games(), 1); // two records of one game count it once
    EXPECT_EQ(text(r, r.players[0], 2), "5");
    const StatReport k = compute('K', b);
    EXPECT_EQ(text(k, k.players.at(0), 11), "1/1 100.0%");
    EXPECT_TRUE(ComputeStatistics('X', {b.season}, Selection{}).empty());
}

// The record book works out a single game's ranked figures one at a time: each must be exactly the
// figure of the whole line, counts and derived columns alike, in range or not, on a player's line
// and on the totals line.
TEST(Statistics, OneFigureIsTheWholeLinesFigure) {
    const std::vector<long long> values = {7, 0, -3, 40, 2147483648LL, 1, 32767, 9, 5000};
    for (char category : std::string("PCRDKT"))
        for (std::size_t shift = 0; shift < values.size(); ++shift) {
            LineSums sums;
            for (int code = 2; code <= kMaxColumnCode; ++code) {
                const auto c = static_cast<std::size_t>(code);
                sums.value[c] = values[(c + shift) % values.size()];
                sums.made[c] = values[(c + shift + 1) % values.size()];
                sums.attempted[c] = values[(c + shift + 2) % values.size()];
            }
            sums.puntYards = values[shift];
            for (bool totals : {false, true}) {
                PlayerFigures line;
                lineFigures(category, sums, 3, totals, line);
                for (int code = 2; code <= ColumnTable::columnCount(category); ++code) {
                    const Figure one = lineFigure(category, sums, code, totals);
                    SCOPED_TRACE(std::string(1, category) + " column " + std::to_string(code));
                    EXPECT_EQ(figureKey(one), figureKey(line[code]));
                }
            }
        }
}
