#include "reports/GameLog.h"
#include "reports/GameScores.h"
#include "reports/ReportCommand.h"
#include "reports/SeasonBuilder.h"
#include "reports/Standings.h"

#include "sample/SampleSeason.h"
#include "storage/TextUtil.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <sstream>

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

// Won, lost, tied and points straight from the game records.
struct Tally {
    int won = 0, lost = 0, tied = 0;
    long long pointsFor = 0, pointsAgainst = 0;
};
Tally tally(const TeamSeason& team) {
    Tally t;
    for (const GameRecord& g : team.games) {
        if (!g.isLive())
            continue;
        const auto sums = g.pointSums();
        t.won += sums->team > sums->opponent;
        t.lost += sums->team < sums->opponent;
        t.tied += sums->team == sums->opponent;
        t.pointsFor += sums->team;
        t.pointsAgainst += sums->opponent;
    }
    return t;
}

} // namespace

TEST_F(SampleTeams, StandingsCountEachTeamsOwnGamesBestFirst) {
    const std::vector<Standing> table = computeStandings(teams, Selection{});
    ASSERT_EQ(table.size(), 3u);
    EXPECT_EQ(table[0].team, 1);
    EXPECT_EQ(table[2].team, 3); // no games: last, with .000
    EXPECT_EQ(table[2].games(), 0);
    for (const Standing& s : table) {
        const Tally t = tally(teams[static_cast<std::size_t>(s.team - 1)]);
        EXPECT_EQ(s.won, t.won) << s.team;
        EXPECT_EQ(s.lost, t.lost);
        EXPECT_EQ(s.tied, t.tied);
        EXPECT_EQ(s.pointsFor, t.pointsFor);
        EXPECT_EQ(s.pointsAgainst, t.pointsAgainst);
    }
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
    std::size_t comments = 0;
    for (const GameScore& g : games)
        comments += !g.comment.empty();
    EXPECT_EQ(longForm.printedBody.size(), 2 * games.size() + comments);
    EXPECT_EQ(shortForm.printedBody.size(), games.size());
    int won = 0;
    for (const GameScore& g : games)
        won += g.resultWord == "Won";
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
    int rusher = 0; // the lowest number with a rushing record
    ASSERT_TRUE(hawks.stats.forEach([&](ByteView rec) {
        const StatHeader h = StatHeader::decode(rec);
        if (h.category == 'R' && h.playerNumber >= 1 && (rusher == 0 || h.playerNumber < rusher))
            rusher = h.playerNumber;
    }));
    ASSERT_NE(rusher, 0);
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

// The command: game scores, standings and a game log, and the refusals of what does not apply.
TEST_F(SampleTeams, TheCommandWritesTheGameReports) {
    auto run = [&](std::vector<std::string> args, std::string& out) {
        args.insert(args.begin(), {"--data", dir.dir()});
        std::ostringstream o, e;
        const int code = runReportCommand(args, o, e, dir.dir());
        out = o.str() + e.str();
        return code;
    };
    std::string out;
    EXPECT_EQ(run({"--team", "1", "--category", "G", "--short"}, out), kCommandOk);
    EXPECT_NE(
        out.find(trimRight(GameLine(teams[0].games[0], *teams[0].games[0].pointSums(), config))),
        std::string::npos);
    EXPECT_EQ(run({"--team", "1,2", "--category", "S", "--format", "csv"}, out), kCommandOk);
    EXPECT_EQ(out.substr(0, out.find("\r\n")), "Team,W,L,T,Pct,PF,PA,Diff");
    EXPECT_EQ(run({"--team", "1,2", "--category", "S"}, out), kCommandOk);
    EXPECT_EQ(out.rfind("Team Standings ", 0), 0u);
    EXPECT_EQ(run({"--team", "1", "--category", "R", "--player", "22", "--by-game"}, out),
              kCommandOk);
    EXPECT_NE(out.find("Season"), std::string::npos);
    for (std::vector<std::string> bad :
         {std::vector<std::string>{"--team", "1,2", "--category", "G"},
          {"--team", "1", "--category", "P", "--short"},
          {"--team", "1", "--category", "R", "--by-game"},
          {"--team", "1", "--category", "S", "--player", "7"},
          {"--team", "1", "--category", "R", "--player", "98", "--by-game"}})
        EXPECT_EQ(run(bad, out), kCommandBadUsage) << bad[3];
}
