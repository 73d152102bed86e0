#include "TeamRecord.h"

#include "Statistics.h"

#include "storage/TextUtil.h"

#include <algorithm>
#include <limits>

namespace scorvane {
namespace {

constexpr long long kInt16Max = std::numeric_limits<std::int16_t>::max();
constexpr long long kInt32Max = std::numeric_limits<std::int32_t>::max();
constexpr long long kInt32Min = std::numeric_limits<std::int32_t>::min();

// The printed columns after the 10-character label: each number ends under its heading.
constexpr int kWonWidth = 6;
constexpr int kOtherWidth = 8;

void count(RecordRow& row, int team, int opponent) {
    if (team < opponent)
        ++row.lost;
    else if (team == opponent)
        ++row.ties;
    else
        ++row.won;
    row.pointsFor += team;
    row.pointsAgainst += opponent;
}

} // namespace

bool TeamRecordReport::anyTies() const {
    for (int t = 1; t <= 7; ++t)
        if (rows[static_cast<std::size_t>(t)].ties > 0)
            return true;
    return false;
}

std::vector<int> TeamRecordReport::shownRows() const {
    std::vector<int> out;
    for (int r = 1; r <= kTotalsRow; ++r)
        if (rows[static_cast<std::size_t>(r)].games() > 0)
            out.push_back(r);
    return out;
}

TeamRecordReport computeTeamRecord(const std::vector<TeamSeason>& teams,
                                   const Selection& selection) {
    TeamRecordReport report;
    for (const TeamSeason& team : teams) {
        for (const GameRecord& game : team.games) {
            if (!selection.countsGame(game))
                continue;
            const auto sums = game.pointSums();
            if (!sums) {
                report.overflows.push_back("Overflow: the points of game " +
                                           digits(game.gameNumber) + " of " + team.name);
                continue;
            }
            const int type = game.gameTypeNumber();
            count(report.rows[static_cast<std::size_t>(type)], sums->team, sums->opponent);
            count(report.rows[kTotalsRow], sums->team, sums->opponent);
        }
    }
    static const char* const kRowNames[] = {"",
                                            "game type 1",
                                            "game type 2",
                                            "game type 3",
                                            "game type 4",
                                            "game type 5",
                                            "game type 6",
                                            "game type 7",
                                            "Totals"};
    for (int r = 1; r <= kTotalsRow; ++r) {
        RecordRow& row = report.rows[static_cast<std::size_t>(r)];
        auto check = [&](long long v, long long low, long long high, const char* what) {
            if (v < low || v > high)
                report.overflows.push_back(std::string("Overflow: ") + what + " of " +
                                           kRowNames[r]);
        };
        check(row.won, 0, kInt16Max, "Won");
        check(row.lost, 0, kInt16Max, "Lost");
        check(row.ties, 0, kInt16Max, "Ties");
        check(row.pointsFor, kInt32Min, kInt32Max, "PF");
        check(row.pointsAgainst, kInt32Min, kInt32Max, "PA");
        const long long g = row.games();
        if (g > 0)
            row.pct = static_cast<float>(
                (static_cast<double>(row.won) + 0.5 * static_cast<double>(row.ties)) /
                static_cast<double>(g));
    }
    return report;
}

std::string teamRecordTitle(const std::string& teamName) {
    return "Record - " + teamName;
}

std::vector<std::string> teamRecordHeaders(bool withTies) {
    if (withTies)
        return {"Game Type", "Won", "Lost", "Tie", "Pct", "PF", "PA"};
    return {"Game Type", "Won", "Lost", "Pct", "PF", "PA"};
}

std::string teamRecordLabel(int row, const ConfigRecord& config) {
    if (row == kTotalsRow)
        return "Totals";
    if (row < 1 || row > 7)
        return {};
    return trimRight(config.gameTypeNames[static_cast<std::size_t>(row - 1)]);
}

std::string formatPct(float pct) {
    return formatNumber(pct, "###.000");
}

std::vector<std::string> teamRecordCells(const TeamRecordReport& report, int row,
                                         const ConfigRecord& config, bool withTies) {
    const RecordRow& r = report.rows.at(static_cast<std::size_t>(row));
    std::vector<std::string> cells = {teamRecordLabel(row, config), digits(r.won), digits(r.lost)};
    if (withTies)
        cells.push_back(digits(r.ties));
    cells.push_back(formatPct(r.pct));
    cells.push_back(digits(r.pointsFor));
    cells.push_back(digits(r.pointsAgainst));
    return cells;
}

std::vector<int> teamRecordWidths(const TeamRecordReport& report, const ConfigRecord& config,
                                  bool withTies) {
    std::vector<int> widths(withTies ? 6 : 5, kOtherWidth);
    widths[0] = kWonWidth;
    for (int row : report.shownRows()) {
        const std::vector<std::string> cells = teamRecordCells(report, row, config, withTies);
        for (std::size_t i = 1; i < cells.size(); ++i)
            widths[i - 1] = std::max(widths[i - 1], static_cast<int>(cells[i].size()) + 1);
    }
    return widths;
}

std::string teamRecordHeaderLine(bool withTies, const std::vector<int>& widths) {
    const std::vector<std::string> headings =
        withTies ? std::vector<std::string>{"Won", "Lost", "Ties", "Pct", "PF", "PA"}
                 : std::vector<std::string>{"Won", "Lost", "Pct", "PF", "PA"};
    std::string line = "Game Type ";
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const int width = i < widths.size() ? widths[i] : i == 0 ? kWonWidth : kOtherWidth;
        line += AlignText(headings[i], width, 'L');
    }
    return line;
}

std::string teamRecordLine(const TeamRecordReport& report, int row, const ConfigRecord& config,
                           bool withTies) {
    const std::vector<std::string> cells = teamRecordCells(report, row, config, withTies);
    const std::vector<int> widths = teamRecordWidths(report, config, withTies);
    std::string line = fit(row == kTotalsRow ? "Totals" : cells[0], 10);
    for (std::size_t i = 1; i < cells.size(); ++i)
        line += AlignText(cells[i], widths[i - 1], 'L');
    return line;
}

} // namespace scorvane
