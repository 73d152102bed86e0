#include "SeasonsDocument.h"

#include "SeasonsCsv.h"

#include "reports/ReportColumns.h"
#include "reports/TableReport.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/TextUtil.h"

#include <algorithm>
#include <optional>

namespace scorvane {
namespace {

// The number and name at the start of every report line ("  7 Chris Vale        "): the seasons
// count goes after them.
constexpr std::size_t kLeading = 4 + width::playerName;

std::string padLeft(const std::string& text, std::size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

// A report line with the seasons count (" Sns") put in after the number and name.
std::string withSeasons(std::string line, const std::string& seasons) {
    if (line.size() < kLeading)
        line.resize(kLeading, ' ');
    return line.insert(kLeading, " " + padLeft(seasons, 3));
}

std::optional<long long> wholeLabel(const std::string& label) {
    if (label.empty() || label.size() > 9 ||
        !std::all_of(label.begin(), label.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return std::stoll(label);
}

// A statistics report made of the career lines, so that the season report's line formatting and
// widening serve the career report unchanged.
StatReport asStatReport(const CareerReport& report) {
    StatReport s;
    s.category = report.category;
    for (const CareerLine& line : report.players) {
        PlayerFigures f = line.figures;
        f.number = line.number;
        f.name = line.name;
        s.players.push_back(std::move(f));
    }
    s.totals = report.totals;
    return s;
}

std::vector<std::string> figureCells(char category, const std::vector<int>& columns,
                                     const PlayerFigures& f) {
    std::vector<std::string> cells;
    for (int code : columns)
        if (isReportColumn(category, code))
            cells.push_back(trim(figureText(category, code, f[code])));
    return cells;
}

std::vector<std::string> columnCells(char category, const std::vector<int>& columns,
                                     const ColumnTable& table) {
    std::vector<std::string> cells;
    for (int code : columns)
        if (isReportColumn(category, code))
            cells.push_back(trim(columnHeading(category, code, table)));
    return cells;
}

std::string colspanRow(std::size_t columns, const std::string& cp1252) {
    return "<tr><td class=\"text\" colspan=\"" + digits(static_cast<long long>(columns)) + "\">" +
           htmlEscape(cp1252) + "</td></tr>\n";
}

// --- the record book's pieces ----------------------------------------------------------------

std::string categoryName(char category) {
    switch (category) {
    case 'P':
        return "Passing";
    case 'C':
        return "Receiving";
    case 'R':
        return "Rushing";
    case 'D':
        return "Defense";
    case 'K':
        return "Kicking";
    case 'T':
        return "Returns";
    default:
        return std::string(1, category);
    }
}

std::string scopeName(RecordScope scope) {
    return scope == RecordScope::Game ? "Game" : scope == RecordScope::Season ? "Season" : "Career";
}

std::string scopeTitle(RecordScope scope) {
    return scope == RecordScope::Game ? "Single Game" : scopeName(scope);
}

// "at least 10 Att" for a ratio column's list; empty for any other.
std::string minimumNote(char category, const RecordList& list, const ColumnTable& table) {
    const int attempts = attemptsColumn(category, list.column);
    if (list.minimum <= 0 || attempts == 0)
        return {};
    return "at least " + digits(list.minimum) + " " +
           trim(columnHeading(category, attempts, table));
}

// "Rushing Yds, Single Game (at least 10 Rsh)", Windows-1252.
std::string listTitle(char category, const RecordList& list, const ColumnTable& table) {
    std::string title = categoryName(category) + " " +
                        trim(columnHeading(category, list.column, table)) + ", " +
                        scopeTitle(list.scope);
    if (const std::string note = minimumNote(category, list, table); !note.empty())
        title += " (" + note + ")";
    return title;
}

std::vector<TableColumn> listColumns(char category, const RecordList& list,
                                     const ColumnTable& table) {
    std::vector<TableColumn> columns = {
        {"Rank", 4, false},
        {"Name", static_cast<int>(width::playerName), true},
        {trim(columnHeading(category, list.column, table)), 5, false},
        {list.scope == RecordScope::Career ? "Seasons" : "Season", 9, true}};
    if (list.scope == RecordScope::Game)
        columns.insert(columns.end(),
                       {{"Game", 4, false}, {"Date", 8, true}, {"Opponent", 0, true}});
    return columns;
}

// An entry's cells in Windows-1252, as many as the list's columns.
std::vector<std::string> entryCells(char category, const RecordList& list, const RecordEntry& e) {
    std::vector<std::string> cells = {digits(e.rank), trimRight(e.name),
                                      trim(figureText(category, list.column, e.figure)),
                                      utf8ToCp1252(e.season)};
    if (list.scope == RecordScope::Game)
        cells.insert(cells.end(), {digits(e.game), e.date, e.opponent});
    return cells;
}

// The team's records as small tables: their titles, columns and rows (Windows-1252).
struct TeamTable {
    std::string title;
    std::vector<TableColumn> columns;
    std::vector<std::vector<std::string>> rows;
};

std::vector<TeamTable> teamTables(const TeamRecords& team) {
    const auto gameColumns = [](const char* points) {
        return std::vector<TableColumn>{
            {"Rank", 4, false}, {points, 3, false},    {"Season", 9, true}, {"Game", 4, false},
            {"Date", 8, true},  {"Opponent", 0, true}, {"Score", 5, false}};
    };
    const auto gameRow = [](const TeamGameEntry& e, int points) {
        return std::vector<std::string>{digits(e.rank),
                                        digits(points),
                                        utf8ToCp1252(e.season),
                                        digits(e.game),
                                        e.date,
                                        e.opponent,
                                        digits(e.scored) + "-" + digits(e.allowed)};
    };
    std::vector<TeamTable> tables(3);
    tables[0].title = "Most Points Scored";
    tables[0].columns = gameColumns("Pts");
    for (const TeamGameEntry& e : team.mostScored)
        tables[0].rows.push_back(gameRow(e, e.scored));
    tables[1].title = "Fewest Points Allowed";
    tables[1].columns = gameColumns("Opp");
    for (const TeamGameEntry& e : team.fewestAllowed)
        tables[1].rows.push_back(gameRow(e, e.allowed));
    tables[2].title = "Longest Winning Streak";
    tables[2].columns = {
        {"Rank", 4, false}, {"Wins", 4, false}, {"From", 0, true}, {"To", 0, true}};
    for (const StreakEntry& e : team.streaks)
        tables[2].rows.push_back({digits(e.rank), digits(e.wins),
                                  utf8ToCp1252(e.fromSeason) + " game " + digits(e.fromGame),
                                  utf8ToCp1252(e.toSeason) + " game " + digits(e.toGame)});
    return tables;
}

// A printed table: its title, the heading line underlined and the rows, then a blank line.
std::vector<std::string> printedTable(const std::string& title, std::vector<TableColumn> columns,
                                      const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> headings;
    for (const TableColumn& c : columns)
        headings.push_back(c.heading);
    columns = widenColumns(widenColumns(std::move(columns), rows), {headings});
    const std::string heading = tableLine(columns, headings);
    std::vector<std::string> lines = {title, heading, underline(heading)};
    if (rows.empty())
        lines.emplace_back("No Records");
    for (const auto& row : rows)
        lines.push_back(tableLine(columns, row));
    lines.emplace_back();
    return lines;
}

std::string htmlTable(const std::string& caption, const std::string& note,
                      const std::vector<TableColumn>& columns,
                      const std::vector<std::vector<std::string>>& rows) {
    std::string html = "<table>\n<caption>" + htmlEscape(caption);
    if (!note.empty())
        html += " <span class=\"note\">(" + htmlEscape(note) + ")</span>";
    html += "</caption>\n<thead><tr>";
    for (const TableColumn& c : columns)
        html += std::string("<th") + (c.text ? " class=\"text\"" : "") + ">" +
                htmlEscape(c.heading) + "</th>";
    html += "</tr></thead>\n<tbody>\n";
    if (rows.empty())
        html += colspanRow(columns.size(), "No records");
    for (const auto& row : rows) {
        html += "<tr>";
        for (std::size_t i = 0; i < row.size() && i < columns.size(); ++i)
            html += std::string("<td") + (columns[i].text ? " class=\"text\"" : "") + ">" +
                    htmlEscape(row[i]) + "</td>";
        html += "</tr>\n";
    }
    return html + "</tbody>\n</table>\n";
}

const char* const kRecordBookStyle =
    "body{font-family:system-ui,-apple-system,'Segoe UI',Roboto,Arial,sans-serif;color:#1a1a1a;"
    "margin:0 auto;padding:1.5em 2em 3em;max-width:78em;line-height:1.35}"
    "header{border-bottom:3px solid #1a1a1a;padding-bottom:0.6em;margin-bottom:1em}"
    "h1{font-size:1.8em;margin:0 0 0.2em}"
    "header p{margin:0.1em 0;color:#444}"
    "header p.team{font-size:1.15em;font-weight:600;color:#1a1a1a}"
    "nav{margin:0.6em 0 0}nav a{margin-right:1em;color:#1a4f8a;text-decoration:none}"
    "h2{font-size:1.4em;margin:1.6em 0 0.4em;border-bottom:1px solid #999;padding-bottom:0.15em}"
    "h3{font-size:1.1em;margin:1.1em 0 0.3em}"
    ".lists{display:flex;flex-wrap:wrap;gap:1.2em 2em;align-items:flex-start}"
    "table{border-collapse:collapse;font-size:0.92em}"
    "caption{text-align:left;font-weight:600;padding:0 0 0.3em}"
    ".note{font-weight:normal;color:#555}"
    "th,td{border:1px solid #c4c4c4;padding:2px 8px;text-align:right;white-space:nowrap}"
    "th{background:#ececec}"
    "tbody tr:nth-child(even){background:#f7f7f7}"
    ".text{text-align:left}"
    "@media print{body{padding:0}section{break-inside:auto}table{break-inside:avoid}}";

} // namespace

std::string careerTitle(char category) {
    switch (category) {
    case 'P':
        return "Career Passing";
    case 'C':
        return "Career Receiving";
    case 'R':
        return "Career Rushing";
    case 'D':
        return "Career Defense";
    case 'K':
        return "Career Kicking";
    case 'T':
        return "Career Returns";
    default:
        return "Career";
    }
}

std::string seasonsLine(const std::vector<std::string>& labels) {
    if (labels.empty())
        return {};
    std::string line = labels.size() == 1 ? "Season " : "Seasons ";
    // Runs of whole-number labels one apart are written first-last.
    for (std::size_t i = 0; i < labels.size();) {
        std::size_t end = i + 1;
        if (auto first = wholeLabel(labels[i]))
            for (long long next = *first + 1; end < labels.size(); ++end, ++next)
                if (wholeLabel(labels[end]) != next)
                    break;
        line += (i ? ", " : "") + labels[i];
        if (end - i > 1)
            line += "-" + labels[end - 1];
        i = end;
    }
    return line;
}

std::string seasonsTeamLine(const SeasonSet& set) {
    if (set.seasons.empty())
        return "No Seasons";
    std::vector<std::string> labels;
    for (const OpenSeason& s : set.seasons)
        labels.push_back(s.label);
    return trimRight(set.seasons.back().team.name) + ", " + utf8ToCp1252(seasonsLine(labels));
}

// --- the career report ---------------------------------------------------------------------------

std::vector<std::string> careerPages(const CareerDocument& document, const ColumnTable& table,
                                     const PrintOptions& options) {
    const StatReport report = asStatReport(document.report);
    PageParts parts;
    parts.title = options.title.empty() ? document.heading.title : options.title;
    parts.subtitles = {document.heading.team, document.heading.selection};
    const std::vector<int> widths = printedWidths(report, document.columns, table);
    const std::string heading =
        withSeasons(FormatHeadingLine(report, document.columns, table, widths), "Sns");
    parts.headings = {heading, underline(heading)};
    if (report.empty()) {
        parts.body = {document.emptyText};
    } else {
        const std::size_t shown = std::min(
            report.players.size(), static_cast<std::size_t>(std::max(options.topPlayers, 0)));
        for (std::size_t i = 0; i < shown; ++i)
            parts.body.push_back(
                withSeasons(FormatPlayerLine(report, report.players[i], document.columns, widths),
                            digits(document.report.players[i].seasons)));
        parts.closing = {"", withSeasons(FormatTotalsLine(report, document.columns, widths), "")};
    }
    return layOutPages(parts, options.linesPerPage);
}

std::string careerHtml(const CareerDocument& document, const ColumnTable& table, int topPlayers) {
    const CareerReport& report = document.report;
    std::vector<std::string> headings = {"No", "Name", "Seasons"};
    const std::vector<std::string> columns = columnCells(report.category, document.columns, table);
    headings.insert(headings.end(), columns.begin(), columns.end());
    const auto row = [&](const std::string& number, const std::string& name,
                         const std::string& seasons, const PlayerFigures& f) {
        std::vector<std::string> cells = {number, name, seasons};
        const std::vector<std::string> figures = figureCells(report.category, document.columns, f);
        cells.insert(cells.end(), figures.begin(), figures.end());
        return htmlRow(cells, 2, false);
    };
    std::string html = htmlPageStart(document.heading);
    html += "<table>\n<thead>\n" + htmlRow(headings, 2, true) + "</thead>\n<tbody>\n";
    if (report.players.empty())
        html += colspanRow(headings.size(), document.emptyText);
    const std::size_t shown =
        std::min(report.players.size(), static_cast<std::size_t>(std::max(topPlayers, 0)));
    for (std::size_t i = 0; i < shown; ++i) {
        const CareerLine& line = report.players[i];
        html += row(digits(line.number), trimRight(line.name), digits(line.seasons), line.figures);
    }
    html += "</tbody>\n<tfoot>\n" + row("", "Totals", "", report.totals) + "</tfoot>\n</table>\n";
    return html + kHtmlPageEnd;
}

// --- a player's career -----------------------------------------------------------------------

std::vector<std::string> playerCareerPages(const PlayerCareerDocument& document,
                                           const ColumnTable& table, const PrintOptions& options) {
    const PlayerCareer& career = document.career;
    StatReport report;
    report.category = document.category;
    for (const PlayerCareer::SeasonLine& s : career.seasons) {
        PlayerFigures f = s.figures;
        f.name = fit(utf8ToCp1252(s.season), width::playerName);
        report.players.push_back(std::move(f));
    }
    // The career line is a player's line: its figures widen the columns like the seasons'.
    report.players.push_back(career.career.figures);
    const std::vector<int> widths = printedWidths(report, document.columns, table);
    report.players.pop_back();

    PageParts parts;
    parts.title = options.title.empty() ? document.heading.title : options.title;
    parts.subtitles = {document.heading.team, document.heading.selection};
    std::string heading = FormatHeadingLine(report, document.columns, table, widths);
    heading.replace(4, width::playerName, fit("Season", width::playerName));
    parts.headings = {heading, underline(heading)};
    for (const PlayerFigures& f : report.players)
        parts.body.push_back(FormatPlayerLine(report, f, document.columns, widths));
    std::string line = FormatPlayerLine(report, career.career.figures, document.columns, widths);
    line.replace(0, kLeading, "    " + fit("Career", width::playerName));
    parts.closing = {"", line};
    return layOutPages(parts, options.linesPerPage);
}

std::string playerCareerCsv(const PlayerCareerDocument& document, const ColumnTable& table) {
    const char category = document.category;
    std::vector<int> shown;
    for (int code : document.columns)
        if (code != 1 && isReportColumn(category, code))
            shown.push_back(code);
    std::vector<std::string> heading = {"Season", "G"};
    for (int code : shown)
        heading.push_back(cp1252ToUtf8(trim(columnHeading(category, code, table))));
    std::string csv = csvLine(heading);
    const auto row = [&](const std::string& season, const PlayerFigures& f) {
        std::vector<std::string> cells = {season, trim(figureText(category, 1, f[1]))};
        for (int code : shown)
            cells.push_back(cp1252ToUtf8(trim(figureText(category, code, f[code]))));
        return csvLine(cells);
    };
    for (const PlayerCareer::SeasonLine& s : document.career.seasons)
        csv += row(s.season, s.figures);
    return csv + row("Career", document.career.career.figures);
}

std::string playerCareerHtml(const PlayerCareerDocument& document, const ColumnTable& table) {
    const char category = document.category;
    std::vector<std::string> headings = {"Season", "No"};
    const std::vector<std::string> columns = columnCells(category, document.columns, table);
    headings.insert(headings.end(), columns.begin(), columns.end());
    const auto row = [&](const std::string& season, const std::string& number,
                         const PlayerFigures& f) {
        std::vector<std::string> cells = {season, number};
        const std::vector<std::string> figures = figureCells(category, document.columns, f);
        cells.insert(cells.end(), figures.begin(), figures.end());
        return htmlRow(cells, 1, false);
    };
    std::string html = htmlPageStart(document.heading);
    html += "<table>\n<thead>\n" + htmlRow(headings, 1, true) + "</thead>\n<tbody>\n";
    for (const PlayerCareer::SeasonLine& s : document.career.seasons)
        html += row(utf8ToCp1252(s.season), digits(s.figures.number), s.figures);
    html += "</tbody>\n<tfoot>\n" + row("Career", "", document.career.career.figures) +
            "</tfoot>\n</table>\n";
    return html + kHtmlPageEnd;
}

// --- the record book -------------------------------------------------------------------------

std::vector<std::string> recordBookPages(const RecordBookDocument& document,
                                         const ColumnTable& table, const PrintOptions& options) {
    PageParts parts;
    parts.title = options.title.empty() ? document.heading.title : options.title;
    parts.subtitles = {document.heading.team, document.heading.selection};
    // Each list is kept together on a page, a category's name with its first list.
    const auto add = [&](std::vector<std::string> lines, std::vector<std::string> before = {}) {
        lines.insert(lines.begin(), before.begin(), before.end());
        parts.groups.push_back(lines.size());
        parts.body.insert(parts.body.end(), lines.begin(), lines.end());
    };
    const auto sectionTitle = [](const std::string& name) {
        return std::vector<std::string>{name, std::string(name.size(), '='), ""};
    };
    for (const RecordBook& book : document.categories) {
        std::vector<std::string> before = sectionTitle(categoryName(book.category));
        if (book.lists.empty())
            add({"No Records", ""}, before);
        for (const RecordList& list : book.lists) {
            std::vector<std::vector<std::string>> rows;
            for (const RecordEntry& e : list.entries)
                rows.push_back(entryCells(book.category, list, e));
            add(printedTable(listTitle(book.category, list, table),
                             listColumns(book.category, list, table), rows),
                before);
            before.clear();
        }
    }
    const TeamRecords& team = document.team;
    if (!team.mostScored.empty() || !team.fewestAllowed.empty() || !team.streaks.empty()) {
        std::vector<std::string> before = sectionTitle("Team Records");
        for (const TeamTable& t : teamTables(team)) {
            add(printedTable(t.title, t.columns, t.rows), before);
            before.clear();
        }
    }
    if (parts.body.empty())
        parts.body = {"No Records"};
    return layOutPages(parts, options.linesPerPage);
}

std::string recordBookHtml(const RecordBookDocument& document, const ColumnTable& table) {
    const ReportHeading& h = document.heading;
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    html += "<title>" + htmlEscape(h.title) + " - " + htmlEscape(h.team) + "</title>\n";
    html += "<style>" + std::string(kRecordBookStyle) + "</style>\n</head>\n<body>\n";
    html += "<header>\n<h1>" + htmlEscape(h.title) + "</h1>\n";
    html += "<p class=\"team\">" + htmlEscape(h.team) + "</p>\n";
    html += "<p class=\"selection\">" + htmlEscape(h.selection) + "</p>\n";
    const bool teamRecords = !document.team.mostScored.empty() ||
                             !document.team.fewestAllowed.empty() || !document.team.streaks.empty();
    if (document.categories.size() + (teamRecords ? 1 : 0) > 1) {
        html += "<nav>";
        for (const RecordBook& book : document.categories)
            html += "<a href=\"#" + std::string(1, book.category) + "\">" +
                    htmlEscape(categoryName(book.category)) + "</a>";
        if (teamRecords)
            html += "<a href=\"#team\">Team Records</a>";
        html += "</nav>\n";
    }
    html += "</header>\n";

    for (const RecordBook& book : document.categories) {
        html += "<section id=\"" + std::string(1, book.category) + "\">\n<h2>" +
                htmlEscape(categoryName(book.category)) + "</h2>\n";
        if (book.lists.empty())
            html += "<p>No records.</p>\n";
        // One heading per column, its game, season and career lists side by side.
        for (std::size_t i = 0; i < book.lists.size();) {
            const int column = book.lists[i].column;
            html += "<h3>" + htmlEscape(trim(columnHeading(book.category, column, table))) +
                    "</h3>\n<div class=\"lists\">\n";
            for (; i < book.lists.size() && book.lists[i].column == column; ++i) {
                const RecordList& list = book.lists[i];
                std::vector<std::vector<std::string>> rows;
                for (const RecordEntry& e : list.entries)
                    rows.push_back(entryCells(book.category, list, e));
                html += htmlTable(scopeTitle(list.scope), minimumNote(book.category, list, table),
                                  listColumns(book.category, list, table), rows);
            }
            html += "</div>\n";
        }
        html += "</section>\n";
    }
    if (teamRecords) {
        html += "<section id=\"team\">\n<h2>Team Records</h2>\n<div class=\"lists\">\n";
        for (const TeamTable& t : teamTables(document.team))
            html += htmlTable(t.title, "", t.columns, t.rows);
        html += "</div>\n</section>\n";
    }
    return html + kHtmlPageEnd;
}

std::string recordBookCsv(const RecordBookDocument& document, const ColumnTable& table) {
    std::string csv = csvLine({"Category", "Record", "Scope", "Rank", "Name", "Value", "Season",
                               "Game", "Date", "Opponent"});
    for (const RecordBook& book : document.categories)
        for (const RecordList& list : book.lists) {
            const bool game = list.scope == RecordScope::Game;
            const std::string record =
                cp1252ToUtf8(trim(columnHeading(book.category, list.column, table)));
            for (const RecordEntry& e : list.entries)
                csv += csvLine({categoryName(book.category), record, scopeName(list.scope),
                                digits(e.rank), cp1252ToUtf8(e.name),
                                trim(figureText(book.category, list.column, e.figure)), e.season,
                                game ? digits(e.game) : "", game ? e.date : "",
                                game ? cp1252ToUtf8(e.opponent) : ""});
        }
    // The team's records: the points as the value; a streak's seasons first-last and its games
    // from the first season's game to the last season's.
    const auto gameRow = [&](const char* record, const TeamGameEntry& e, int points) {
        return csvLine({"Team", record, "Game", digits(e.rank), "", digits(points), e.season,
                        digits(e.game), e.date, cp1252ToUtf8(e.opponent)});
    };
    for (const TeamGameEntry& e : document.team.mostScored)
        csv += gameRow("Most Points Scored", e, e.scored);
    for (const TeamGameEntry& e : document.team.fewestAllowed)
        csv += gameRow("Fewest Points Allowed", e, e.allowed);
    for (const StreakEntry& e : document.team.streaks)
        csv +=
            csvLine({"Team", "Longest Winning Streak", "Streak", digits(e.rank), "", digits(e.wins),
                     e.fromSeason == e.toSeason ? e.fromSeason : e.fromSeason + "-" + e.toSeason,
                     digits(e.fromGame) + "-" + digits(e.toGame), "", ""});
    return csv;
}

} // namespace scorvane
