#include "GameScores.h"

#include "storage/Bytes.h"
#include "storage/TextUtil.h"

namespace scorvane {
namespace {

std::string resultOf(int team, int opponent) {
    return team > opponent ? "Won" : team < opponent ? "Lost" : "Tie";
}

// The long form's columns: the game, then one block of points per side.
std::vector<TableColumn> longColumns() {
    return {{"No", 3},          {"Date", 8, true}, {"Type", 10, true}, {"Opponent", 25, true},
            {"H/A", 4, true},   {"Side", 4, true}, {"Q1", 3},          {"Q2", 3},
            {"Q3", 3},          {"Q4", 3},         {"OT", 3},          {"Tot", 4},
            {"Result", 6, true}};
}

std::vector<std::string> sideCells(const std::string& side, const std::array<int, 5>& points,
                                   int total) {
    std::vector<std::string> cells = {side};
    for (int p : points)
        cells.push_back(digits(p));
    cells.push_back(digits(total));
    return cells;
}

} // namespace

std::vector<GameScore> computeGameScores(const TeamSeason& team, const Selection& selection,
                                         const ConfigRecord& config) {
    std::vector<GameScore> out;
    for (const GameRecord& g : team.games) {
        if (!selection.countsGame(g))
            continue;
        GameScore s;
        s.gameNumber = g.gameNumber;
        s.date = g.gameDate == "000000" ? std::string() : ShortDate(g.gameDate);
        const int type = g.gameTypeNumber();
        s.gameType = type > 0 ? trimRight(config.gameTypeNames[static_cast<std::size_t>(type - 1)])
                              : std::string();
        s.opponent = trimRight(g.opponent);
        s.home = g.homeFlag == '1';
        for (std::size_t q = 0; q < 5; ++q) {
            s.team[q] = g.teamScore[q];
            s.opponentPoints[q] = g.opponentScore[q];
            s.teamTotal += g.teamScore[q];
            s.opponentTotal += g.opponentScore[q];
        }
        s.comment = trimRight(g.gameComment);
        s.resultWord = resultOf(s.teamTotal, s.opponentTotal);
        if (const auto sums = g.pointSums())
            s.summary = trimRight(GameLine(g, *sums, config));
        else
            s.summary = trimRight(GameLine(g, PointSums{}, config).substr(0, 51)) + "  Overflow";
        out.push_back(std::move(s));
    }
    return out;
}

TableReport gameScoresReport(const std::vector<GameScore>& games, bool longForm,
                             const ReportHeading& heading) {
    TableReport report;
    report.heading = heading;
    // The long form's table carries every figure of a game on one row; the short form's has what
    // its printed line shows.
    if (longForm)
        report.columns = {{"No", 3},
                          {"Date", 8, true},
                          {"Type", 10, true},
                          {"Opponent", 25, true},
                          {"H/A", 4, true},
                          {"Q1", 3},
                          {"Q2", 3},
                          {"Q3", 3},
                          {"Q4", 3},
                          {"OT", 3},
                          {"Pts", 4},
                          {"Opp Q1", 3},
                          {"Opp Q2", 3},
                          {"Opp Q3", 3},
                          {"Opp Q4", 3},
                          {"Opp OT", 3},
                          {"Opp", 4},
                          {"Result", 6, true},
                          {"Comment", 58, true}};
    else
        report.columns = {{"No", 3},          {"Date", 8, true},
                          {"Type", 10, true}, {"Opponent", 25, true},
                          {"Score", 9},       {"Result", 6, true}};
    int won = 0, lost = 0, tied = 0;
    long long pointsFor = 0, pointsAgainst = 0;
    // The long form's printed lines: the two sides of each game, then its comment (empty: none).
    struct PrintedGame {
        std::vector<std::string> us, them;
        std::string comment;
    };
    std::vector<PrintedGame> printedGames;
    for (const GameScore& g : games) {
        std::vector<std::string> row = {digits(g.gameNumber), g.date, g.gameType, g.opponent};
        if (longForm) {
            row.push_back(g.home ? "Home" : "Away");
            for (int p : g.team)
                row.push_back(digits(p));
            row.push_back(digits(g.teamTotal));
            for (int p : g.opponentPoints)
                row.push_back(digits(p));
            row.push_back(digits(g.opponentTotal));
            row.push_back(g.resultWord);
            row.push_back(g.comment);
        } else {
            row.push_back(digits(g.teamTotal) + "-" + digits(g.opponentTotal));
            row.push_back(g.resultWord);
        }
        report.rows.push_back(row);

        won += g.resultWord == "Won";
        lost += g.resultWord == "Lost";
        tied += g.resultWord == "Tie";
        pointsFor += g.teamTotal;
        pointsAgainst += g.opponentTotal;

        if (longForm) {
            PrintedGame printed;
            printed.us = {digits(g.gameNumber), g.date, g.gameType, g.opponent,
                          g.home ? "Home" : "Away"};
            const auto ours = sideCells("Us", g.team, g.teamTotal);
            printed.us.insert(printed.us.end(), ours.begin(), ours.end());
            printed.us.push_back(g.resultWord);
            printed.them.resize(5);
            const auto theirs = sideCells("Opp", g.opponentPoints, g.opponentTotal);
            printed.them.insert(printed.them.end(), theirs.begin(), theirs.end());
            printed.comment = g.comment;
            printedGames.push_back(std::move(printed));
        } else {
            report.printedBody.push_back(g.summary);
        }
    }
    if (longForm) {
        const std::vector<std::string> heads = {"No", "Date", "Type",  "Opponent", "H/A",
                                                "",   "Q1",   "Q2",    "Q3",       "Q4",
                                                "OT", "Tot",  "Result"};
        // Widths for the whole report, so that a long score is never cut and the lines stay
        // under their headings.
        std::vector<std::vector<std::string>> cells = {heads};
        for (const PrintedGame& p : printedGames) {
            cells.push_back(p.us);
            cells.push_back(p.them);
        }
        const std::vector<TableColumn> printed = widenColumns(longColumns(), cells);
        report.printedHeading = tableLine(printed, heads);
        for (const PrintedGame& p : printedGames) {
            report.printedBody.push_back(tableLine(printed, p.us));
            report.printedBody.push_back(tableLine(printed, p.them));
            if (!p.comment.empty())
                report.printedBody.push_back("    " + p.comment);
        }
    } else {
        report.printedHeading = trimRight(fit("No", 4) + fit("Date", 10) + fit("Type", 12) +
                                          fit("Opponent", 25) + fit("Score", 9) + "Result");
    }
    if (!games.empty()) {
        report.printedClosing = {"Totals: " + digits(won) + " won, " + digits(lost) + " lost, " +
                                 digits(tied) + (tied == 1 ? " tie" : " ties") + "; points for " +
                                 digits(pointsFor) + ", against " + digits(pointsAgainst)};
        std::vector<std::string> totals(report.columns.size());
        totals[1] = "Totals";
        const std::string record = digits(won) + "-" + digits(lost) + "-" + digits(tied);
        if (longForm) {
            totals[10] = digits(pointsFor);
            totals[16] = digits(pointsAgainst);
            totals[17] = record;
        } else {
            totals[4] = digits(pointsFor) + "-" + digits(pointsAgainst);
            totals[5] = record;
        }
        report.closing.push_back(totals);
    }
    return report;
}

} // namespace scorvane
