#pragma once

#include "Season.h"
#include "Selection.h"
#include "TableReport.h"

#include <string>
#include <vector>

namespace scorvane {

// One team's line of the standings, worked out from the team's own game file.
struct Standing {
    int team = 0;
    std::string name;      // right-trimmed, Windows-1252
    std::string shortName; // right-trimmed
    int won = 0;
    int lost = 0;
    int tied = 0;
    double pct = 0.0; // (won + ties / 2) / games; 0 without games
    long long pointsFor = 0;
    long long pointsAgainst = 0;

    int games() const { return won + lost + tied; }
    long long difference() const { return pointsFor - pointsAgainst; }
};

// The standings of these teams over the games the selection counts (its game types, range and
// Special Select apply to each team's own games), best first: by Pct, then by the points
// difference, then by more wins; teams equal in all three keep the order given.
std::vector<Standing> computeStandings(const std::vector<TeamSeason>& teams,
                                       const Selection& selection);

// The report: Team, W, L, T, Pct ("###.000"), PF, PA, Diff.
TableReport standingsReport(const std::vector<Standing>& standings, const ReportHeading& heading);

} // namespace scorvane
