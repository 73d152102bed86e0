#pragma once

#include "Career.h"
#include "RecordBook.h"

#include "reports/ReportDocument.h"
#include "reports/ReportOutput.h"
#include "storage/ColumnTable.h"

#include <string>
#include <vector>

namespace scorvane {

// The reports over seasons as the screens print them, the files export them and the report
// command writes them. Text for printing is Windows-1252 like every other report; CSV and HTML
// are UTF-8.

// The seasons a report covers, for its heading: "Seasons 2023-2025" for consecutive list entries,
// "Seasons 2021, 2023, 2025" otherwise, "Season 2025" for one. Labels and line are UTF-8, as the
// seasons file keeps the labels.
std::string seasonsLine(const std::vector<std::string>& labels);
// The team line of a report over the seasons read (Windows-1252): the latest season's team name
// and the seasons line, "Hawks, Seasons 2023-2025".
std::string seasonsTeamLine(const SeasonSet& set);

// The title of a category's career report: "Career Passing" ... "Career Returns", on screen,
// printed and from the command line.
std::string careerTitle(char category);

// A career report with its columns (in print order) and heading (title careerTitle; team: the
// team's name and the seasons line; selection: Selection::describe).
struct CareerDocument {
    CareerReport report;
    std::vector<int> columns;
    ReportHeading heading;
    std::string emptyText = "No Players";
};

// The printed career report, laid out as a season's statistics report is, with the seasons count
// ("Sns") after the name: the first `topPlayers` lines, then the totals line, cut into pages.
std::vector<std::string> careerPages(const CareerDocument& document, const ColumnTable& table,
                                     const PrintOptions& options);
// The career report as one self-contained HTML page.
std::string careerHtml(const CareerDocument& document, const ColumnTable& table, int topPlayers);

// One player's career: a line per season (the season's label in the name's place) and the
// career line under it, printed with the category's columns.
struct PlayerCareerDocument {
    char category = 'P';
    PlayerCareer career;
    std::vector<int> columns;
    ReportHeading heading; // title "Career: <name>"; team and selection as the career report's
};
std::vector<std::string> playerCareerPages(const PlayerCareerDocument& document,
                                           const ColumnTable& table, const PrintOptions& options);
// "Season,G," and the columns' headings trimmed, a row per season and the "Career" row.
std::string playerCareerCsv(const PlayerCareerDocument& document, const ColumnTable& table);
// One self-contained HTML page: a row per season (label, number, columns) and the career row.
std::string playerCareerHtml(const PlayerCareerDocument& document, const ColumnTable& table);

// The whole record book: each chosen category's lists and the team's records.
struct RecordBookDocument {
    std::vector<RecordBook> categories; // in the order P C R D K T, those chosen
    TeamRecords team;
    ReportHeading heading; // title "Record Book"; team: the team's name and the seasons line
};

// The printed record book: for each category, each column's game, season and career lists (rank,
// name, figure, season, and for a game the date and opponent), then the team's records.
std::vector<std::string> recordBookPages(const RecordBookDocument& document,
                                         const ColumnTable& table, const PrintOptions& options);
// The record book as one self-contained HTML page a coach can put on a school's web site: the
// heading, a section per category with a table per column and scope, and the team's records.
std::string recordBookHtml(const RecordBookDocument& document, const ColumnTable& table);
// The record book as one CSV: "Category,Record,Scope,Rank,Name,Value,Season,Game,Date,Opponent"
// with a row per entry (Category "Passing" ... "Returns", Record the column's heading, Scope
// "Game", "Season" or "Career"), then the team's records: Category "Team", Name empty, Record "Most
// Points Scored" or "Fewest Points Allowed" (Scope "Game", Value the points) and "Longest Winning
// Streak" (Scope "Streak", Value the wins, Season first-last, Game "first-last": from the game of
// the first season to the game of the last).
std::string recordBookCsv(const RecordBookDocument& document, const ColumnTable& table);

} // namespace scorvane
