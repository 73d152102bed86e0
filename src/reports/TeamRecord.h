#pragma once

#include "Season.h"
#include "Selection.h"

#include "storage/ConfigRecord.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// One row of the team record: a game type's games, or the totals.
struct RecordRow {
    long long won = 0; // 16-bit counts, checked
    long long lost = 0;
    long long ties = 0;
    float pct = 0.0f;        // (won + ties / 2) / games, single precision
    long long pointsFor = 0; // 32-bit sums, checked
    long long pointsAgainst = 0;

    long long games() const { return won + lost + ties; }
};

inline constexpr int kTotalsRow = 8;

// The won-lost-tied record over the selected games of one or more teams (the rows add up all of
// them). A game counts for its team as won when its points exceed the opponent's, lost when they
// fall short, tied when they are equal (0-0 too).
struct TeamRecordReport {
    std::array<RecordRow, kTotalsRow + 1> rows{}; // 1..7 the game types, 8 the totals; [0] unused
    // One line per figure that left its range ("Overflow: ..."); none of them is ever shown.
    std::vector<std::string> overflows;

    // Whether any game type has a tie: only then the "Tie" column is shown.
    bool anyTies() const;
    bool empty() const { return rows[kTotalsRow].games() == 0; }
    // The rows shown: every game type with a counted game, in type order, then the totals (8);
    // nothing when no game was counted.
    std::vector<int> shownRows() const;
};

TeamRecordReport computeTeamRecord(const std::vector<TeamSeason>& teams,
                                   const Selection& selection);

// "Record - " and the team's name.
std::string teamRecordTitle(const std::string& teamName);
// The screen's header cells: "Game Type", "Won", "Lost", "Tie" (with ties only), "Pct", "PF", "PA".
std::vector<std::string> teamRecordHeaders(bool withTies);
// A row's label: the game type's name, or "Totals".
std::string teamRecordLabel(int row, const ConfigRecord& config);
// The winning percentage as "###.000": .625, 1.000, .000.
std::string formatPct(float pct);
// A row's cells as the screen shows them, in header order.
std::vector<std::string> teamRecordCells(const TeamRecordReport& report, int row,
                                         const ConfigRecord& config, bool withTies);

// The printed header line and rows: the label in 10 characters, then each number right-justified
// under the end of its heading, in 6 characters for Won and 8 for the others. A column whose
// figure would not keep a space before it is widened for the whole record (`teamRecordWidths`,
// the numbers' columns from Won on); the header line without widths has the usual ones.
std::vector<int> teamRecordWidths(const TeamRecordReport& report, const ConfigRecord& config,
                                  bool withTies);
std::string teamRecordHeaderLine(bool withTies, const std::vector<int>& widths = {});
std::string teamRecordLine(const TeamRecordReport& report, int row, const ConfigRecord& config,
                           bool withTies);

} // namespace scorvane
