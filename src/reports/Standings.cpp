#include "Standings.h"

#include "Statistics.h"

#include "storage/Bytes.h"

#include <algorithm>

namespace scorvane {

std::vector<Standing> computeStandings(const std::vector<TeamSeason>& teams,
                                       const Selection& selection) {
    std::vector<Standing> out;
    for (const TeamSeason& t : teams) {
        Standing s;
        s.team = t.number;
        s.name = t.name;
        s.shortName = t.shortName;
        for (const GameRecord& g : t.games) {
            if (!selection.countsGame(g))
                continue;
            long long ours = 0, theirs = 0;
            for (std::size_t q = 0; q < 5; ++q) {
                ours += g.teamScore[q];
                theirs += g.opponentScore[q];
            }
            s.won += ours > theirs;
            s.lost += ours < theirs;
            s.tied += ours == theirs;
            s.pointsFor += ours;
            s.pointsAgainst += theirs;
        }
        if (s.games() > 0)
            s.pct = (s.won + 0.5 * s.tied) / s.games();
        out.push_back(std::move(s));
    }
    std::stable_sort(out.begin(), out.end(), [](const Standing& a, const Standing& b) {
        if (a.pct != b.pct)
            return a.pct > b.pct;
        if (a.difference() != b.difference())
            return a.difference() > b.difference();
        return a.won > b.won;
    });
    return out;
}

TableReport standingsReport(const std::vector<Standing>& standings, const ReportHeading& heading) {
    TableReport report;
    report.heading = heading;
    report.emptyText = "No Teams";
    report.columns = {{"Team", 25, true}, {"W", 4},  {"L", 4},  {"T", 4},
                      {"Pct", 7},         {"PF", 6}, {"PA", 6}, {"Diff", 6}};
    for (const Standing& s : standings) {
        const long long diff = s.difference();
        report.rows.push_back({s.name, digits(s.won), digits(s.lost), digits(s.tied),
                               formatNumber(s.pct, "###.000"), digits(s.pointsFor),
                               digits(s.pointsAgainst), (diff > 0 ? "+" : "") + digits(diff)});
    }
    return report;
}

} // namespace scorvane
