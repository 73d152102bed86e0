#include "reports/ChartData.h"
#include "reports/GameLog.h"
#include "reports/GameScores.h"
#include "reports/SeasonBuilder.h"
#include "reports/Standings.h"

#include "sample/SampleSeason.h"
#include "storage/TextUtil.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

using namespace scorvane;
using scorvane::testing::SeasonBuilder;

namespace {

// The sample season's first two teams as a report reads them.
struct SampleTeams : ::testing::Test, scorvane::testing::ScratchData {
    std::vector<TeamSeason> teams;
    ConfigRecord config = ConfigRecord::defaults();

    void SetUp() override {
        ASSERT_TRUE(writeSampleSeason(data));
        for (int t : {1, 2, 3}) {
            TeamSeason season;
            ASSERT_TRUE(loadTeamSeason(data, t, season));
            teams.push_back(season);
        }
    }
};

// Won, lost, tied, points for and against straight from the game records.
std::array<long long, 5> tally(const TeamSeason& team) {
    std::array<long long, 5> t{};
    for (const GameRecord& g : team.games)
        if (const auto sums = g.pointSums(); g.isLive())
            t = {t[0] + (sums->team > sums->opponent), t[1] + (sums->team < sums->opponent),
                 t[2] + (sums->team == sums->opponent), t[3] + sums->team, t[4] + sums->opponent};
    return t;
}

} // namespace

TEST_F(SampleTeams, StandingsCountEachTeamsOwnGamesBestFirst) {
    const std::vector<Standing> table = computeStandings(teams, Selection{});
    ASSERT_EQ(table.size(), 3u);
    EXPECT_EQ(table[0].team, 1);
    EXPECT_EQ(table[2].team, 3); // no games: last, with .000
    EXPECT_EQ(table[2].games(), 0);
    for (const Standing& s : table)
        EXPECT_EQ((std::array<long long, 5>{s.won, s.lost, s.tied, s.pointsFor, s.pointsAgainst}),
                  tally(teams[static_cast<std::size_t>(s.team - 1)]))
            << s.team;
    const Standing& first = table[0];
    EXPECT_DOUBLE_EQ(first.pct, (first.won + 0.5 * first.tied) / first.games());
    const TableReport report = standingsReport(table, {"Standings", "Teams", "All games"});
    EXPECT_EQ(report.rows[0][4], formatNumber(first.pct, "###.000"));
    EXPECT_EQ(report.rows[2][4], ".000");
}

// Equal percentages are ordered by the points difference, then by wins.
TEST(Standings, TiesInPctGoByPointsDifference) {
    const TeamSeason a = SeasonBuilder(1, "Alpha").game(1, '1', 10, 7).game(2, '1', 0, 3).season;
    const TeamSeason b = SeasonBuilder(2, "Bravo").game(1, '1', 30, 0).game(2, '1', 0, 3).season;
    const TeamSeason c = SeasonBuilder(3, "Charlie").game(1, '1', 7, 7).season; // .500 by a tie
    const TeamSeason d = SeasonBuilder(4, "Delta").game(1, '2', 7, 0).season;
    Selection league;
    league.gameTypes = {true, false, false, false, false, false, false};
    const std::vector<Standing> table = computeStandings({a, b, c, d}, league);
    std::vector<int> order;
    for (const auto& s : table)
        order.push_back(s.team);
    // Bravo +27, Alpha 0 and Charlie 0 at .500 (Alpha has the win); Delta's game is no league game.
    EXPECT_EQ(order, (std::vector<int>{2, 1, 3, 4}));
    EXPECT_EQ(table[3].games(), 0);
    const std::vector<std::string> lines =
        tablePages(standingsReport(table, {"Standings", "League", "League games"}), PrintOptions{});
    EXPECT_EQ(lines[4], "Team                         W    L    T     Pct     PF     PA   Diff");
    EXPECT_EQ(lines[6], "Bravo                        1    1    0    .500     30      3    +27");

    // A number wider than its column widens it on every printed line instead of being cut.
    std::vector<Standing> wide = table;
    wide[0].pointsFor = 1234567;
    const std::vector<std::string> widened =
        tablePages(standingsReport(wide, {"Standings", "League", "League games"}), PrintOptions{});
    EXPECT_EQ(widened[4],
              "Team                         W    L    T     Pct      PF     PA     Diff");
    EXPECT_EQ(widened[6],
              "Bravo                        1    1    0    .500 1234567      3 +1234564");
    EXPECT_EQ(widened[7],
              "Alpha                        1    1    0    .500      10     10        0");
}

TEST_F(SampleTeams, GameScoresFollowTheSelectionAndCloseWithTheRecord) {
    const TeamSeason& hawks = teams[0];
    Selection some;
    some.fromGame = 2;
    some.toGame = 4;
    const std::vector<GameScore> games = computeGameScores(hawks, some, config);
    ASSERT_EQ(games.size(), 3u);
    EXPECT_EQ(games[0].gameNumber, 2);
    const GameRecord& second = hawks.games[1];
    EXPECT_EQ(games[0].teamTotal, second.pointSums()->team);
    EXPECT_EQ(games[0].opponentTotal, second.pointSums()->opponent);
    EXPECT_EQ(games[0].summary, trimRight(GameLine(second, *second.pointSums(), config)));

    // The long form prints two lines a game and the comment under them; the short form one.
    const TableReport longForm = gameScoresReport(games, true, {"Game Scores", "Hawks", "2 to 4"});
    const TableReport shortForm =
        gameScoresReport(games, false, {"Game Scores", "Hawks", "2 to 4"});
    const auto comments = std::count_if(games.begin(), games.end(),
                                        [](const GameScore& g) { return !g.comment.empty(); });
    EXPECT_EQ(longForm.printedBody.size(), 2 * games.size() + static_cast<std::size_t>(comments));
    EXPECT_EQ(shortForm.printedBody.size(), games.size());
    const auto won = std::count_if(games.begin(), games.end(),
                                   [](const GameScore& g) { return g.resultWord == "Won"; });
    EXPECT_NE(longForm.printedClosing.at(0).find("Totals: " + digits(won) + " won"),
              std::string::npos);
    // CSV: one row a game, every figure in it.
    const std::string csv = tableCsv(longForm);
    EXPECT_EQ(csv.substr(0, csv.find("\r\n")),
              "No,Date,Type,Opponent,H/A,Q1,Q2,Q3,Q4,OT,Pts,Opp Q1,Opp Q2,Opp Q3,Opp Q4,Opp OT,"
              "Opp,Result,Comment");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 1 + 3 + 1);

    // A quarter wider than its column widens it, heading and lines, instead of being cut.
    std::vector<GameScore> big = games;
    big[0].team[0] = 1000;
    const TableReport wide = gameScoresReport(big, true, {"Game Scores", "Hawks", "2 to 4"});
    const std::size_t q1 = wide.printedHeading.find("  Q1 ");
    ASSERT_NE(q1, std::string::npos);
    EXPECT_EQ(wide.printedBody[0].substr(q1, 5), "1000 ");
}

// A player's games add up to his season line, which is the report's own line for him.
TEST_F(SampleTeams, GameLogAddsUpToTheSeasonLine) {
    const TeamSeason& hawks = teams[0];
    const int rusher = 22;
    const GameLog log = computeGameLog('R', hawks, Selection{}, rusher);
    ASSERT_FALSE(log.empty());
    long long yards = 0, rushes = 0, longest = 0;
    for (const auto& e : log.games) {
        EXPECT_EQ(e.figures.games(), 1);
        rushes += e.figures[2].value;
        yards += e.figures[3].value;
        longest = std::max(longest, e.figures[4].value);
    }
    EXPECT_EQ(log.season[2].value, rushes);
    EXPECT_EQ(log.season[3].value, yards);
    EXPECT_EQ(log.season[4].value, longest);
    EXPECT_EQ(log.season.games(), static_cast<long long>(log.games.size()));

    Selection him;
    him.playerNumber = rusher;
    const StatReport report = ComputeStatistics('R', {hawks}, him);
    ASSERT_EQ(report.players.size(), 1u);
    EXPECT_FLOAT_EQ(log.season[12].ratio, report.players[0][12].ratio); // Avg
    const TableReport table =
        gameLogReport(log, {1, 2, 3, 12}, ColumnTable(config), {"Rushing", "Hawks", ""});
    EXPECT_EQ(table.rows.size(), log.games.size());
    EXPECT_EQ(table.closing.at(0).at(0), "Season");
    EXPECT_EQ(table.closing[0][4], digits(log.season[3].value));
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

// The points by quarter add up what the games shown scored; a game log column reads as numbers
// in the units a coach expects: sacks in halves, averages as computed, made kicks as a count.
TEST(ChartData, QuarterPointsAndAColumnGameByGame) {
    std::vector<GameScore> games(2);
    games[0].team = {7, 0, 3, 0, 0};
    games[0].opponentPoints = {0, 14, 0, 0, 3};
    games[1].team = {0, 7, 7, 7, 6};
    const QuarterPoints points = quarterPoints(games);
    EXPECT_EQ(points.team, (std::array<long long, 5>{7, 7, 10, 7, 6}));
    EXPECT_EQ(points.opponents, (std::array<long long, 5>{0, 14, 0, 0, 3}));

    const TeamSeason season = SeasonBuilder()
                                  .player(55, "Linebacker")
                                  .game(1)
                                  .game(2)
                                  .game(3)
                                  .stats(1, 55, 'D', {{3, 4}, {10, 25}})
                                  .stats(3, 55, 'D', {{3, 2}, {10, 10}})
                                  .season;
    const GameLog log = computeGameLog('D', season, Selection{}, 55);
    std::vector<std::string> labels;
    EXPECT_EQ(columnByGame(log, 10, labels), (std::vector<double>{2.5, 1.0}));
    EXPECT_EQ(columnByGame(log, 2, labels), (std::vector<double>{4.0, 2.0})); // Tkl = Sol + Ast
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_EQ(labels[1], "Game 3"); // no date stored

    EXPECT_EQ(figureNumber('K', 11, {.made = 3, .attempted = 4}), 3.0);
    EXPECT_EQ(figureNumber('P', 18, {.value = 40000, .overflow = true}), 0.0);
}
