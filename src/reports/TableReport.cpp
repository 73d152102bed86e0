#include "TableReport.h"

#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {
std::string csvField(const std::string& utf8) {
    if (utf8.find_first_of(",\"\r\n") == std::string::npos)
        return utf8;
    std::string out = "\"";
    for (char c : utf8) {
        if (c == '"')
            out += '"';
        out += c;
    }
    return out + "\"";
}

} // namespace

// A row of Windows-1252 fields.
std::string csvRow(const std::vector<std::string>& fields) {
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i)
        row += (i ? "," : "") + csvField(cp1252ToUtf8(fields[i]));
    return row + "\r\n";
}

std::string htmlEscape(const std::string& cp1252) {
    std::string out;
    for (char c : cp1252ToUtf8(cp1252)) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

namespace {
const char* const kStyle = "body{font-family:sans-serif;margin:2em;color:#111}"
                           "h1{font-size:1.4em;margin-bottom:0.2em}"
                           "p{margin:0.2em 0}"
                           "table{border-collapse:collapse;margin-top:1em}"
                           "th,td{border:1px solid #999;padding:2px 8px;text-align:right;"
                           "white-space:pre}"
                           "th{background:#e8e8e8}"
                           ".text{text-align:left}"
                           "tfoot td{font-weight:bold}";
} // namespace

std::string htmlPageStart(const ReportHeading& heading) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    html += "<title>" + htmlEscape(heading.title) + " - " + htmlEscape(heading.team) + "</title>\n";
    html += "<style>" + std::string(kStyle) + "</style>\n</head>\n<body>\n";
    html += "<h1>" + htmlEscape(heading.title) + "</h1>\n";
    html += "<p class=\"team\">" + htmlEscape(heading.team) + "</p>\n";
    html += "<p class=\"selection\">" + htmlEscape(heading.selection) + "</p>\n";
    return html;
}

// A table row; the first `textCells` cells are text (left-aligned).
std::string htmlRow(const std::vector<std::string>& cells, std::size_t textCells, bool header) {
    const char* tag = header ? "th" : "td";
    std::string row = "<tr>";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row += std::string("<") + tag + (i < textCells ? " class=\"text\"" : "") + ">" +
               htmlEscape(cells[i]) + "</" + tag + ">";
    }
    return row + "</tr>\n";
}

namespace {

// A cell as printed: justified in its width by its kind; a cell longer than its column is
// printed whole all the same (widenColumns keeps that from happening within a report).
std::string printedCell(const TableColumn& column, const std::string& cell) {
    const std::string text = trim(cell);
    if (text.size() >= static_cast<std::size_t>(column.width))
        return text;
    return AlignText(text, column.width, column.text ? 'R' : 'L');
}

std::vector<std::string> headingCells(const TableReport& report) {
    std::vector<std::string> cells;
    for (const auto& c : report.columns)
        cells.push_back(c.heading);
    return cells;
}

std::string tableHtmlRow(const TableReport& report, const std::vector<std::string>& cells,
                         bool header) {
    const char* tag = header ? "th" : "td";
    std::string row = "<tr>";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const bool text = i < report.columns.size() && report.columns[i].text;
        row += std::string("<") + tag + (text ? " class=\"text\"" : "") + ">" +
               htmlEscape(cells[i]) + "</" + tag + ">";
    }
    return row + "</tr>\n";
}

} // namespace

std::string tableLine(const std::vector<TableColumn>& columns,
                      const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i)
            line += ' ';
        line += printedCell(columns[i], i < cells.size() ? cells[i] : std::string());
    }
    return trimRight(line);
}

std::vector<TableColumn> widenColumns(std::vector<TableColumn> columns,
                                      const std::vector<std::vector<std::string>>& rows) {
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size() && i < columns.size(); ++i)
            columns[i].width = std::max(columns[i].width, static_cast<int>(trim(row[i]).size()));
    return columns;
}

std::vector<std::string> tablePages(const TableReport& report, const PrintOptions& options) {
    PageParts parts;
    parts.title = options.title.empty() ? report.heading.title : options.title;
    parts.subtitles = {report.heading.team, report.heading.selection};
    const bool ownLines = !report.printedHeading.empty();
    std::vector<TableColumn> columns = report.columns;
    if (!ownLines) {
        std::vector<std::vector<std::string>> all = {headingCells(report)};
        all.insert(all.end(), report.rows.begin(), report.rows.end());
        all.insert(all.end(), report.closing.begin(), report.closing.end());
        columns = widenColumns(std::move(columns), all);
    }
    const std::string header =
        ownLines ? report.printedHeading : tableLine(columns, headingCells(report));
    parts.headings = {header, underline(header)};
    if (ownLines) {
        parts.body = report.printedBody;
        parts.closing = report.printedClosing;
    } else {
        for (const auto& row : report.rows)
            parts.body.push_back(tableLine(columns, row));
        for (const auto& row : report.closing)
            parts.closing.push_back(tableLine(columns, row));
    }
    if (parts.body.empty())
        parts.body = {report.emptyText};
    if (!parts.closing.empty())
        parts.closing.insert(parts.closing.begin(), std::string());
    return layOutPages(parts, options.linesPerPage);
}

std::string tableCsv(const TableReport& report) {
    std::string csv = csvRow(headingCells(report));
    for (const auto& row : report.rows)
        csv += csvRow(row);
    for (const auto& row : report.closing)
        csv += csvRow(row);
    return csv;
}

std::string tableHtml(const TableReport& report) {
    std::string html = htmlPageStart(report.heading);
    html += "<table>\n<thead>\n" + tableHtmlRow(report, headingCells(report), true) +
            "</thead>\n<tbody>\n";
    for (const auto& row : report.rows)
        html += tableHtmlRow(report, row, false);
    if (report.rows.empty())
        html += "<tr><td class=\"text\" colspan=\"" +
                digits(static_cast<long long>(report.columns.size())) + "\">" +
                htmlEscape(report.emptyText) + "</td></tr>\n";
    html += "</tbody>\n<tfoot>\n";
    for (const auto& row : report.closing)
        html += tableHtmlRow(report, row, false);
    return html + "</tfoot>\n</table>\n" + kHtmlPageEnd;
}

} // namespace scorvane
