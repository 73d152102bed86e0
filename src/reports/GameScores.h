#pragma once

#include "Season.h"
#include "Selection.h"
#include "TableReport.h"

#include "storage/ConfigRecord.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// One game of the game scores report.
struct GameScore {
    int gameNumber = 0;
    std::string date;     // "MM/DD/YY", or empty for a game without a date
    std::string gameType; // the game type's name, right-trimmed
    std::string opponent; // right-trimmed, Windows-1252
    bool home = false;
    std::array<int, 5> team{}; // quarters 1-4 and overtime
    std::array<int, 5> opponentPoints{};
    int teamTotal = 0;
    int opponentTotal = 0;
    std::string comment;    // right-trimmed
    std::string summary;    // the game's one-line summary, as the game list shows it
    std::string resultWord; // "Won", "Lost" or "Tie"
};

// The team's live games that the selection counts, in game order. Point sums are worked out in
// 32 bits, so a game whose stored points would not fit 16 bits shows its real sum.
std::vector<GameScore> computeGameScores(const TeamSeason& team, const Selection& selection,
                                         const ConfigRecord& config);

// The report: the long form has a game's date, type, opponent, home or away, both teams' points by
// quarter and overtime, the totals and the result, with the comment on a line of its own when the
// game has one; the short form has the game's summary line (on screen and in CSV and HTML: number,
// date, type, opponent, score and result). Totals rows close both.
TableReport gameScoresReport(const std::vector<GameScore>& games, bool longForm,
                             const ReportHeading& heading);

} // namespace scorvane
