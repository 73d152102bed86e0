#pragma once

#include "ReportColumns.h"
#include "Season.h"
#include "Selection.h"

#include "storage/ColumnTable.h"

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scorvane {

// One figure of a report line. Which members count depends on the column's kind: `value` for
// games, counts, longest gains, sacks (in tenths), Pts and Y@C; `ratio` for the ratio and average
// columns (single precision, as the program keeps them); `made` and `attempted` for the extra point
// and field goal columns. A figure whose value left its range is marked `overflow` and is never
// written as a number.
struct Figure {
    long long value = 0;
    float ratio = 0.0f;
    long long made = 0;
    long long attempted = 0;
    bool overflow = false;
};

// The season figures of one line of a report: a listed player, or the totals.
struct PlayerFigures {
    int teamNumber = 0;
    std::string teamShortName;                        // Windows-1252, right-trimmed
    int number = 0;                                   // player number; 0 on the totals line
    std::string name;                                 // 17 characters, Windows-1252
    std::array<Figure, kMaxColumnCode + 1> columns{}; // by column code; [0] unused

    const Figure& operator[](int code) const { return columns.at(static_cast<std::size_t>(code)); }
    Figure& operator[](int code) { return columns.at(static_cast<std::size_t>(code)); }
    long long games() const { return columns[1].value; }
};

// A figure that does not fit its range: the line it stands on and its column.
struct OverflowNote {
    int teamNumber = 0;
    int playerNumber = 0; // 0: the totals line
    std::string playerName;
    int column = 0;
};

// The computed report of one category over one or more teams.
struct StatReport {
    char category = 'P';
    bool multipleTeams = false;
    // The listed players, each with at least one selected game: teams in the order given, each
    // team's players in roster order (until sortPlayers orders them).
    std::vector<PlayerFigures> players;
    // Counting columns summed over the listed players in 32 bits, longest gains as the largest
    // of them, games as the selected games in which any listed player took part, and the ratio,
    // Pts and Y@C columns worked out again from the summed counts.
    PlayerFigures totals;
    std::vector<OverflowNote> overflows;
    // Not ok when a statistics file could not be read to its end: the figures are then short of
    // the records after the failure and must not be shown as the season's.
    Status status;

    bool empty() const { return players.empty(); }
};

// Which of the players with selected games a report lists, on top of the selection's one player:
// the players with at least `minimumGames` selected games ("Less than" N " Games" leaves out the
// others) and, when `players` names any, only those (team number, player number) pairs. The totals
// then cover the listed players only.
struct PlayerFilter {
    int minimumGames = 0;
    std::set<std::pair<int, int>> players;

    bool lists(int teamNumber, int playerNumber, long long games) const;
    bool narrows() const { return minimumGames > 1 || !players.empty(); }
};

// The counted sums of one line, in 64 bits so that a sum that leaves the 32-bit range can be told
// rather than wrapped: what every figure of the line is worked out from (lineFigures). A season's
// line, its totals, a career's line and one game's performance are all made from these alike.
struct LineSums {
    std::array<long long, kMaxColumnCode + 1> value{};
    std::array<bool, kMaxColumnCode + 1> longestSeen{};
    std::array<long long, kMaxColumnCode + 1> made{};
    std::array<long long, kMaxColumnCode + 1> attempted{};
    long long puntYards = 0;

    void add(int code, long long v) { value[static_cast<std::size_t>(code)] += v; }
    // A longest-gain column takes the first counted value as it is (so a negative longest gain
    // shows when every counted one is negative), then only greater ones.
    void longest(int code, long long v);
    void kick(int code, bool good);
    // Another line's sums: counts added, longest gains the greater.
    void addLine(char category, const LineSums& other);
};

// Reads the statistics records of one category into sums, the record's columns located once.
class CategoryRecords {
public:
    explicit CategoryRecords(char category);
    // Adds the figures of one record of the category (its header already checked) to `sums`.
    void add(ByteView record, LineSums& sums) const;

private:
    struct Entered {
        int code = 0;
        std::size_t slot = 0;
        bool longest = false;
    };
    char category_;
    std::vector<Entered> entered_;
};

// The figures of a line from its sums and its games: the counts checked against the 32-bit range
// (a player's games against 16 bits) and every derived column (Pct, Avg, Rtg, FD%, PAv, KAv, Pts,
// Y@C, Tkl) worked out from the sums, never from other derived figures. A player's line keeps Pts
// and Y@C in 16 bits, the totals line in 32.
void lineFigures(char category, const LineSums& sums, long long games, bool totals,
                 PlayerFigures& f);
// One figure of such a line other than its games (code 2 and up), exactly as lineFigures works it
// out: a single game offered to the record book needs only the columns it is ranked by.
Figure lineFigure(char category, const LineSums& sums, int code, bool totals);

// Whether the column is worked out from other sums rather than summed itself.
bool isDerived(char category, int code);

// The team's games that the selection counts, marked by game number (0..32767).
std::vector<bool> selectedGames(const TeamSeason& team, const Selection& selection);

// Accumulates and derives the figures of `category` over the selected games of every team.
// Records that are deleted, of another category, of a game not selected or of a player number
// outside 1..99 are skipped.
StatReport ComputeStatistics(char category, const std::vector<TeamSeason>& teams,
                             const Selection& selection, const PlayerFilter& filter = {});

// Orders the player lines by a column, "D" descending and anything else ascending. Players with
// equal figures keep their order (roster order). A code the category lacks leaves the order as
// it is.
void sortPlayers(StatReport& report, int sortColumn, char direction);

// The number written with a display mask: "###0.0" and "##0.0" (one decimal, no leading zeros but
// the units), " ##0.0" (the same after a space) and "###.000" (three decimals, nothing before the
// point when the whole part is 0: .667). Rounded half away from zero.
std::string formatNumber(double value, std::string_view mask);

// "made/attempted" followed by the percentage right-justified in 7 characters with its "%":
// 3 of 4 gives "3/4  75.0%", 0 of 0 gives "0/0   0.0%". "Overflow" when made x 100 leaves the
// 32-bit range.
std::string FormatMadeAttempted(std::int32_t made, std::int32_t attempted);

// A figure's text as written in a report, before it is fitted to its column ("Overflow" for a
// figure out of range).
std::string figureText(char category, int code, const Figure& figure);

// The lines of a statistics report for a list of column codes (codes the category lacks are left
// out): the heading line, a player's line and the totals line. Each line starts with the player's
// number right-justified in 3 and his name in 17 (with the team's short name in 10 after it when
// the report spans several teams); then each column's value right-justified in its printed width.
//
// A column's printed width is its heading's width, unless a figure of the report (on any player's
// line or the totals line) would not keep a space before it there: then the whole column is
// widened to that figure's width and one, its heading moved right with it, so that no figure is
// ever cut or run into its neighbour. `printedWidths` works the widths out over the whole report,
// in the order of `columns` (0 for a code the category lacks); the lines of one report must be
// made with the same widths. The forms without widths work them out themselves.
std::vector<int> printedWidths(const StatReport& report, const std::vector<int>& columns,
                               const ColumnTable& table);
std::string FormatHeadingLine(const StatReport& report, const std::vector<int>& columns,
                              const ColumnTable& table, const std::vector<int>& widths);
std::string FormatPlayerLine(const StatReport& report, const PlayerFigures& player,
                             const std::vector<int>& columns, const std::vector<int>& widths);
std::string FormatTotalsLine(const StatReport& report, const std::vector<int>& columns,
                             const std::vector<int>& widths);
std::string FormatHeadingLine(const StatReport& report, const std::vector<int>& columns,
                              const ColumnTable& table);
std::string FormatPlayerLine(const StatReport& report, const PlayerFigures& player,
                             const std::vector<int>& columns, const ColumnTable& table);
std::string FormatTotalsLine(const StatReport& report, const std::vector<int>& columns,
                             const ColumnTable& table);

} // namespace scorvane
