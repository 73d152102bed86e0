#pragma once

#include "ReportOutput.h"
#include "Season.h"
#include "Selection.h"
#include "Statistics.h"
#include "TeamRecord.h"

#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"

#include <string>
#include <vector>

namespace scorvane {

// What a report says about itself above its columns. Windows-1252 text.
struct ReportHeading {
    std::string title;     // "Passing Statistics", a saved report's name, "Team Record"
    std::string team;      // the team's name, or "Multiple Teams: " and the short names
    std::string selection; // Selection::describe
};

// The team line of a report over these teams.
std::string teamsLine(const std::vector<TeamSeason>& teams);

// A computed statistics report with its columns (in print order) and heading.
struct StatisticsDocument {
    StatReport report;
    std::vector<int> columns;
    ReportHeading heading;
    std::string emptyText = "No Players"; // Selection::emptyReportText
};

// The lines of a printed statistics report: the page heading with the column headings
// underlined, the first `topPlayers` player lines (or the empty-report text), then a blank line
// and the totals line over every listed player, cut into pages.
std::vector<std::string> statisticsPages(const StatisticsDocument& document,
                                         const ColumnTable& table, const PrintOptions& options);
// The lines of the printed team record: the header line underlined, the game type rows and the
// totals row ("No Games" when no game was counted).
std::vector<std::string> teamRecordPages(const TeamRecordReport& record, const ConfigRecord& config,
                                         const ReportHeading& heading, const PrintOptions& options);

// The report as CSV (RFC 4180: comma separated, CRLF line ends, UTF-8 without byte order mark).
// Statistics: "No,Name," (and "Team," over several teams) then each column's heading trimmed; a
// row per player line; last the totals row with an empty number. Values are the report's own
// texts, trimmed, never cut to their column's width.
std::string statisticsCsv(const StatisticsDocument& document, const ColumnTable& table,
                          int topPlayers);
// Team record: "Game Type,Won,Lost,Tie,Pct,PF,PA" (the Tie column always), a row per game type
// with counted games, then the totals row.
std::string teamRecordCsv(const TeamRecordReport& record, const ConfigRecord& config);

// The report as one self-contained HTML page: title, team, selection and the table.
std::string statisticsHtml(const StatisticsDocument& document, const ColumnTable& table,
                           int topPlayers);
std::string teamRecordHtml(const TeamRecordReport& record, const ConfigRecord& config,
                           const ReportHeading& heading);

} // namespace scorvane
