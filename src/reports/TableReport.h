#pragma once

#include "ReportDocument.h"
#include "ReportOutput.h"

#include <string>
#include <vector>

namespace scorvane {

// A report that is a plain table: the game scores, the standings and a player's game log. The
// same table is printed (columns of fixed width under their headings), written as CSV and as an
// HTML page. Texts are Windows-1252.
struct TableColumn {
    std::string heading;
    int width = 0;     // printed width, widened for the whole report where a cell is longer
    bool text = false; // left-aligned text; numbers are right-aligned
};

struct TableReport {
    ReportHeading heading;
    std::vector<TableColumn> columns;
    std::vector<std::vector<std::string>> rows;
    std::vector<std::vector<std::string>> closing; // totals rows, kept together at the end
    std::string emptyText = "No Games";
    // Printed lines that replace the heading, the rows and the closing rows when set (a long form
    // with several lines per row); the CSV and HTML still show one row per entry.
    std::string printedHeading;
    std::vector<std::string> printedBody;
    std::vector<std::string> printedClosing;
};

// One printed line of cells under the table's headings: each cell right- or left-justified in
// its column's width, one space between columns, trailing spaces removed.
std::string tableLine(const std::vector<TableColumn>& columns,
                      const std::vector<std::string>& cells);
// The columns, each widened to the longest of its cells in `rows` (headings included, when they
// are among the rows), so that no printed cell is cut and each keeps a space before it. Columns
// whose cells all fit keep their widths.
std::vector<TableColumn> widenColumns(std::vector<TableColumn> columns,
                                      const std::vector<std::vector<std::string>>& rows);
std::vector<std::string> tablePages(const TableReport& report, const PrintOptions& options);
// RFC 4180, CRLF line ends, UTF-8 without byte order mark.
std::string tableCsv(const TableReport& report);
std::string tableHtml(const TableReport& report);

// The pieces the other report documents share.
std::string csvRow(const std::vector<std::string>& cp1252Fields);
std::string htmlEscape(const std::string& cp1252);
std::string htmlPageStart(const ReportHeading& heading);
std::string htmlRow(const std::vector<std::string>& cells, std::size_t textCells, bool header);
inline constexpr const char* kHtmlPageEnd = "</body>\n</html>\n";

} // namespace scorvane
