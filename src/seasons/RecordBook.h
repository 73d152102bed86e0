#pragma once

#include "Career.h"

#include <map>
#include <string>
#include <vector>

namespace scorvane {

// The record book over the chosen seasons: for each ticked column of a category the best single
// games, seasons and careers, and the team's records from its game files.
//
// Every list is ranked from the highest figure down (longest gains, made field goals and ratio
// columns alike). Equal figures share a rank ("1, 2, 2, 4") and are listed by name; a list holds
// every entry whose rank is within the top N, so a tie at the last place lists everyone tied.
// Players are named as spelt in the latest chosen season they played.

enum class RecordScope { Game, Season, Career };

// The least number of attempts a ratio or average column needs in each scope to count: a 13-yard
// average on one carry is no record.
struct RecordMinimum {
    int game = 0;
    int season = 0;
    int career = 0;

    int in(RecordScope scope) const {
        return scope == RecordScope::Game ? game : scope == RecordScope::Season ? season : career;
    }
};

// The column that holds the attempts of a ratio or average column (Att for Pct and Rtg, Cm for the
// passing Avg, Rec for the receiving Avg and FD%, Rsh for the rushing Avg, Pnt for the punting
// PAv, PRt and KRt for the return averages), 0 for any other column.
int attemptsColumn(char category, int code);
// The default minimums: 10 in a game, 50 in a season and 100 in a career for the passing columns
// and the rushing average; 5, 25 and 50 for the receiving columns; 3, 15 and 30 for the punting and
// return averages. Zero for a column without attempts.
RecordMinimum defaultMinimum(char category, int code);

// The columns ticked when the coach has not chosen: passing Yds, TD, Cm, Pct; rushing Yds, TD,
// Rsh, Avg, Lg; receiving Rec, Yds, TD; defense Tkl, Int, Sk; kicking FG All (made), FLg, PAv;
// returns PYd, PTD, KYd, KTD.
std::vector<int> defaultRecordColumns(char category);

struct RecordBookOptions {
    char category = 'P';
    Selection selection;
    std::vector<int> columns; // empty: defaultRecordColumns
    int top = 10;
    std::map<int, RecordMinimum> minimums; // by column code, over the defaults
};

struct RecordEntry {
    int rank = 0;
    std::string name; // Windows-1252, right-trimmed
    Figure figure;
    std::string season;   // the label; "first-last" for a career
    int game = 0;         // game scope only
    std::string date;     // "MM/DD/YY", game scope only
    std::string opponent; // Windows-1252, trimmed; game scope only
};

struct RecordList {
    int column = 0;
    RecordScope scope = RecordScope::Game;
    int minimum = 0; // attempts needed to count; 0 for a column without attempts
    std::vector<RecordEntry> entries;
};

struct RecordBook {
    char category = 'P';
    std::vector<RecordList> lists; // by column, then game, season, career
    std::vector<std::string> messages;

    const RecordList* find(int column, RecordScope scope) const;
};

// One pass over each season's statistics file.
RecordBook computeRecordBook(SeasonSet& set, const RecordBookOptions& options);
// The books of several categories (the whole record book) from the same one pass over each file,
// each as computeRecordBook would make it; all over the first one's selection.
std::vector<RecordBook> computeRecordBooks(SeasonSet& set,
                                           const std::vector<RecordBookOptions>& options);

// The team's records from its game files over the chosen seasons and the selection's games.
struct TeamGameEntry {
    int rank = 0;
    std::string season;
    int game = 0;
    std::string date; // "MM/DD/YY"
    std::string opponent;
    int scored = 0;
    int allowed = 0;
};
struct StreakEntry {
    int rank = 0;
    int wins = 0;
    std::string fromSeason;
    int fromGame = 0;
    std::string toSeason;
    int toGame = 0;
};
struct TeamRecords {
    std::vector<TeamGameEntry> mostScored;    // most points in a game
    std::vector<TeamGameEntry> fewestAllowed; // fewest points allowed in a game
    // Winning streaks, longest first: games won one after another in game order, carried from one
    // season into the next in the order the seasons are given; a loss or a tie ends a streak.
    std::vector<StreakEntry> streaks;
};
TeamRecords computeTeamRecords(const SeasonSet& set, const Selection& selection, int top = 10);

// One list as CSV (UTF-8, CRLF): "Rank,Name,Value,Season,Game,Date,Opponent"; Game, Date and
// Opponent are empty for season and career lists.
std::string recordListCsv(const RecordBook& book, const RecordList& list);

} // namespace scorvane
