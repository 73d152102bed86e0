#include "ReportDocument.h"

#include "TableReport.h"

#include "storage/Bytes.h"
#include "storage/Cp1252.h"

#include <algorithm>

namespace scorvane {
namespace {

std::size_t shownPlayers(const StatReport& report, int topPlayers) {
    return std::min(report.players.size(), static_cast<std::size_t>(std::max(topPlayers, 0)));
}

std::vector<std::string> figureCells(const StatisticsDocument& d, const PlayerFigures& f) {
    std::vector<std::string> cells;
    for (int code : d.columns)
        if (isReportColumn(d.report.category, code))
            cells.push_back(trim(figureText(d.report.category, code, f[code])));
    return cells;
}

std::vector<std::string> playerCells(const StatisticsDocument& d, const PlayerFigures& f,
                                     bool totals) {
    std::vector<std::string> cells = {totals ? "" : digits(f.number),
                                      totals ? "Totals" : trimRight(f.name)};
    if (d.report.multipleTeams)
        cells.push_back(totals ? "" : f.teamShortName);
    const std::vector<std::string> figures = figureCells(d, f);
    cells.insert(cells.end(), figures.begin(), figures.end());
    return cells;
}

std::vector<std::string> headingCells(const StatisticsDocument& d, const ColumnTable& table) {
    std::vector<std::string> cells = {"No", "Name"};
    if (d.report.multipleTeams)
        cells.emplace_back("Team");
    for (int code : d.columns)
        if (isReportColumn(d.report.category, code))
            cells.push_back(trim(columnHeading(d.report.category, code, table)));
    return cells;
}

} // namespace

std::string teamsLine(const std::vector<TeamSeason>& teams) {
    if (teams.size() == 1)
        return teams.front().name;
    std::string line = "Multiple Teams:";
    for (std::size_t i = 0; i < teams.size(); ++i)
        line += (i ? ", " : " ") + teams[i].shortName;
    return line;
}

std::vector<std::string> statisticsPages(const StatisticsDocument& document,
                                         const ColumnTable& table, const PrintOptions& options) {
    const StatReport& report = document.report;
    PageParts parts;
    parts.title = options.title.empty() ? document.heading.title : options.title;
    parts.subtitles = {document.heading.team, document.heading.selection};
    // One set of widths for every line, so that a widened column stays straight down the pages.
    const std::vector<int> widths = printedWidths(report, document.columns, table);
    const std::string heading = FormatHeadingLine(report, document.columns, table, widths);
    parts.headings = {heading, underline(heading)};
    if (report.empty()) {
        parts.body = {document.emptyText};
    } else {
        const std::size_t shown = shownPlayers(report, options.topPlayers);
        for (std::size_t i = 0; i < shown; ++i)
            parts.body.push_back(
                FormatPlayerLine(report, report.players[i], document.columns, widths));
        parts.closing = {"", FormatTotalsLine(report, document.columns, widths)};
    }
    return layOutPages(parts, options.linesPerPage);
}

std::vector<std::string> teamRecordPages(const TeamRecordReport& record, const ConfigRecord& config,
                                         const ReportHeading& heading,
                                         const PrintOptions& options) {
    const bool ties = record.anyTies();
    PageParts parts;
    parts.title = options.title.empty() ? heading.title : options.title;
    parts.subtitles = {heading.team, heading.selection};
    const std::string header = teamRecordHeaderLine(ties, teamRecordWidths(record, config, ties));
    parts.headings = {header, underline(header)};
    if (record.empty()) {
        parts.body = {"No Games"};
    } else {
        for (int row : record.shownRows()) {
            const std::string line = teamRecordLine(record, row, config, ties);
            (row == kTotalsRow ? parts.closing : parts.body).push_back(line);
        }
    }
    return layOutPages(parts, options.linesPerPage);
}

std::string statisticsCsv(const StatisticsDocument& document, const ColumnTable& table,
                          int topPlayers) {
    std::string csv = csvRow(headingCells(document, table));
    const std::size_t shown = shownPlayers(document.report, topPlayers);
    for (std::size_t i = 0; i < shown; ++i)
        csv += csvRow(playerCells(document, document.report.players[i], false));
    csv += csvRow(playerCells(document, document.report.totals, true));
    return csv;
}

std::string teamRecordCsv(const TeamRecordReport& record, const ConfigRecord& config) {
    std::string csv = csvRow(teamRecordHeaders(true));
    for (int row : record.shownRows())
        csv += csvRow(teamRecordCells(record, row, config, true));
    if (record.empty())
        csv += csvRow(teamRecordCells(record, kTotalsRow, config, true));
    return csv;
}

std::string statisticsHtml(const StatisticsDocument& document, const ColumnTable& table,
                           int topPlayers) {
    const std::size_t textCells = document.report.multipleTeams ? 3 : 2;
    const std::vector<std::string> headings = headingCells(document, table);
    std::string html = htmlPageStart(document.heading);
    html += "<table>\n<thead>\n" + htmlRow(headings, textCells, true) + "</thead>\n<tbody>\n";
    if (document.report.empty()) {
        html += "<tr><td class=\"text\" colspan=\"" +
                digits(static_cast<long long>(headings.size())) + "\">" +
                htmlEscape(document.emptyText) + "</td></tr>\n";
    } else {
        const std::size_t shown = shownPlayers(document.report, topPlayers);
        for (std::size_t i = 0; i < shown; ++i)
            html +=
                htmlRow(playerCells(document, document.report.players[i], false), textCells, false);
    }
    html += "</tbody>\n<tfoot>\n" +
            htmlRow(playerCells(document, document.report.totals, true), textCells, false) +
            "</tfoot>\n</table>\n";
    return html + kHtmlPageEnd;
}

std::string teamRecordHtml(const TeamRecordReport& record, const ConfigRecord& config,
                           const ReportHeading& heading) {
    const bool ties = record.anyTies();
    std::string html = htmlPageStart(heading);
    html +=
        "<table>\n<thead>\n" + htmlRow(teamRecordHeaders(ties), 1, true) + "</thead>\n<tbody>\n";
    std::string totals;
    for (int row : record.shownRows()) {
        const std::string line = htmlRow(teamRecordCells(record, row, config, ties), 1, false);
        (row == kTotalsRow ? totals : html) += line;
    }
    if (record.empty())
        html += "<tr><td class=\"text\" colspan=\"" +
                digits(static_cast<long long>(teamRecordHeaders(ties).size())) +
                "\">No Games</td></tr>\n";
    html += "</tbody>\n<tfoot>\n" + totals + "</tfoot>\n</table>\n";
    return html + kHtmlPageEnd;
}

} // namespace scorvane
