#pragma once

#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Records.h"
#include "storage/Status.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scorvane {

// The column codes a format prints, in print order: entries 1..31 of its column list, leaving out
// empty entries and codes its category does not have.
std::vector<int> formatColumns(const ReportFormatRecord& format);

// The column codes a report shows: the format's columns, or the category's default ones when the
// format has none that its category knows (a new report not yet confirmed, a damaged record).
std::vector<int> shownColumns(const ReportFormatRecord& format);

// A category's default format: its default columns, sorted descending on its default column, and
// named after the report ("Passing Statistics").
ReportFormatRecord defaultFormat(char category);
// The Default button: the category's default columns (entries after them cleared) and the
// direction "D"; the sort column becomes the default one for passing (4), rushing (3), defense (2)
// and returns (1), and stays as it was for receiving and kicking.
void applyDefaultColumns(ReportFormatRecord& format);
// The format a category uses while the report-format file has none for it: the columns and sort
// the configuration keeps for the category, or the default ones when its column list is empty.
ReportFormatRecord startingFormat(char category, const ConfigRecord& config);

// What the format dialog holds when OK is pressed. Texts are Windows-1252.
struct FormatEdit {
    std::string title;
    std::vector<int> columns; // in list order
    int sortColumn = 1;
    bool descending = true;
};
// The format as the dialog confirms it: an empty column list takes the default columns, at most 31
// codes are kept, the title is trimmed ("Unnamed Report" when empty) and cut to 20 characters.
ReportFormatRecord confirmFormat(const ReportFormatRecord& format, const FormatEdit& edit);

// The saved report formats of "FBRPTFMT.DAT" in the report directory. Records are never removed
// or reused: a deleted report keeps its record, marked "*", and a new one is appended.
class SavedReports {
public:
    // Reads every record through the program's files (an absent file is created empty).
    [[nodiscard]] Status load(DataFiles& data);
    // Reads the file of a report directory without creating or changing anything.
    [[nodiscard]] Status readOnly(const std::string& reportDirectory);
    void assign(std::vector<ReportFormatRecord> records) { records_ = std::move(records); }

    const std::vector<ReportFormatRecord>& records() const { return records_; }
    // The record numbers (from 1) of the category's reports that are not deleted, in file order.
    std::vector<int> reportsOf(char category) const;
    const ReportFormatRecord& record(int recordNumber) const;
    // The report of the category whose trimmed name equals `name` (Windows-1252), exactly or else
    // ignoring case; 0 when there is none.
    int find(char category, std::string_view name) const;
    // The format a report of the category starts with: its first saved report, or the starting
    // format (startingFormat) when the file has none.
    ReportFormatRecord current(char category, const ConfigRecord& config) const;

    // Appends a new report of the category, named "Report " and the number of the category's
    // reports with it, with an empty column list and the category's default sort.
    [[nodiscard]] Status add(DataFiles& data, char category, int& recordNumber);
    // Writes the first report of a category that has none: its starting format.
    [[nodiscard]] Status ensureReport(DataFiles& data, char category, const ConfigRecord& config,
                                      int& recordNumber);
    // Rewrites a report in place.
    [[nodiscard]] Status change(DataFiles& data, int recordNumber,
                                const ReportFormatRecord& format);
    // Deletes a report after "Are you sure?"; the only report of its category is refused with
    // "Cannot Delete Only Report". `deleted` tells whether the mark was written.
    [[nodiscard]] Status remove(DataFiles& data, Prompter& prompter, int recordNumber,
                                bool& deleted);

    static Message onlyReportMessage();
    static Message deleteQuestion();

private:
    [[nodiscard]] Status append(DataFiles& data, const ReportFormatRecord& format,
                                int& recordNumber);

    std::vector<ReportFormatRecord> records_;
};

} // namespace scorvane
