#include "ReportFormats.h"

#include "ReportColumns.h"
#include "Season.h"

#include "storage/ColumnTable.h"

#include <algorithm>
#include <cctype>

namespace scorvane {
namespace {

constexpr std::size_t kListEntries = ConfigRecord::ColumnListLength; // entries 1..31

// The default sort columns of the Default button; receiving and kicking keep theirs.
int defaultSortColumn(char category) {
    switch (category) {
    case 'P':
        return 4;
    case 'R':
        return 3;
    case 'D':
        return 2;
    case 'T':
        return 1;
    default:
        return 0;
    }
}

void setColumns(ReportFormatRecord& format, const std::vector<int>& codes) {
    format.columns.fill(0);
    for (std::size_t i = 0; i < codes.size() && i < kListEntries; ++i)
        format.columns[i + 1] = static_cast<std::int16_t>(codes[i]);
}

std::vector<int> defaultCodes(char category) {
    std::vector<int> codes;
    const int k = categoryIndex(category);
    if (k < 0)
        return codes;
    for (std::int16_t c : defaultColumnList(k))
        if (c != 0)
            codes.push_back(c);
    return codes;
}

std::string upper(std::string_view s) {
    std::string out(s);
    for (auto& c : out)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

} // namespace

std::vector<int> formatColumns(const ReportFormatRecord& format) {
    std::vector<int> codes;
    for (std::size_t i = 1; i <= kListEntries; ++i) {
        const int code = format.columns[i];
        if (isReportColumn(format.category, code))
            codes.push_back(code);
    }
    return codes;
}

std::vector<int> shownColumns(const ReportFormatRecord& format) {
    std::vector<int> codes = formatColumns(format);
    return codes.empty() ? defaultCodes(format.category) : codes;
}

void applyDefaultColumns(ReportFormatRecord& format) {
    setColumns(format, defaultCodes(format.category));
    format.sortDirection = 'D';
    if (const int sort = defaultSortColumn(format.category); sort != 0)
        format.sortColumn = static_cast<std::int16_t>(sort);
}

ReportFormatRecord defaultFormat(char category) {
    ReportFormatRecord format;
    format.category = category;
    format.deletionMark = ' ';
    format.reportName = fit(reportTitle(category), width::reportName);
    const int k = categoryIndex(category);
    format.sortColumn = k < 0 ? 1 : defaultSort(k).column;
    applyDefaultColumns(format);
    return format;
}

ReportFormatRecord startingFormat(char category, const ConfigRecord& config) {
    ReportFormatRecord format = defaultFormat(category);
    const int k = categoryIndex(category);
    if (k < 0)
        return format;
    const auto ks = static_cast<std::size_t>(k);
    std::vector<int> codes;
    for (std::int16_t c : config.columnLists[ks])
        if (isReportColumn(category, c))
            codes.push_back(c);
    if (!codes.empty())
        setColumns(format, codes);
    const SortSetting sort = config.sort[ks];
    if (isReportColumn(category, sort.column)) {
        format.sortColumn = sort.column;
        format.sortDirection = sort.direction == 'D' ? 'D' : 'A';
    }
    return format;
}

ReportFormatRecord confirmFormat(const ReportFormatRecord& format, const FormatEdit& edit) {
    ReportFormatRecord out = format;
    setColumns(out, edit.columns.empty() ? defaultCodes(format.category) : edit.columns);
    out.sortDirection = edit.descending ? 'D' : 'A';
    out.sortColumn = static_cast<std::int16_t>(edit.sortColumn);
    const std::string title = trim(edit.title);
    out.reportName = fit(title.empty() ? "Unnamed Report" : title, width::reportName);
    return out;
}

// --- the file ----------------------------------------------------------------------------------

Status SavedReports::load(DataFiles& data) {
    return data.readAllAs(FileKind::ReportFormats, records_);
}

Status SavedReports::readOnly(const std::string& reportDirectory) {
    records_.clear();
    std::vector<Bytes> raw;
    bool exists = false;
    const std::string path =
        fileName(FileKind::ReportFormats, DataPaths{"", "", reportDirectory}, 0);
    if (Status s = readRecordsReadOnly(path, ReportFormatRecord::Length, raw, exists); !s)
        return s;
    for (const auto& b : raw)
        records_.push_back(ReportFormatRecord::decode(b));
    return Status::ok();
}

std::vector<int> SavedReports::reportsOf(char category) const {
    std::vector<int> out;
    for (std::size_t i = 0; i < records_.size(); ++i)
        if (records_[i].category == category && records_[i].deletionMark != '*')
            out.push_back(static_cast<int>(i + 1));
    return out;
}

const ReportFormatRecord& SavedReports::record(int recordNumber) const {
    return records_.at(static_cast<std::size_t>(recordNumber - 1));
}

int SavedReports::find(char category, std::string_view name) const {
    const std::string wanted = trim(name);
    for (int n : reportsOf(category))
        if (trim(record(n).reportName) == wanted)
            return n;
    for (int n : reportsOf(category))
        if (upper(trim(record(n).reportName)) == upper(wanted))
            return n;
    return 0;
}

ReportFormatRecord SavedReports::current(char category, const ConfigRecord& config) const {
    const std::vector<int> reports = reportsOf(category);
    return reports.empty() ? startingFormat(category, config) : record(reports.front());
}

Status SavedReports::append(DataFiles& data, const ReportFormatRecord& format, int& recordNumber) {
    // Always after the last whole record of the file as it is on disk.
    recordNumber = data.recordCount(FileKind::ReportFormats) + 1;
    ReportFormatRecord written = format;
    if (Status s = data.reportFormatRecord(Access::Write, recordNumber, written); !s)
        return s;
    records_.resize(static_cast<std::size_t>(recordNumber - 1));
    records_.push_back(format);
    return Status::ok();
}

Status SavedReports::add(DataFiles& data, char category, int& recordNumber) {
    ReportFormatRecord format;
    format.category = category;
    format.deletionMark = ' ';
    format.reportName =
        fit("Report " + digits(static_cast<long long>(reportsOf(category).size()) + 1),
            width::reportName);
    format.columns.fill(0);
    const int k = categoryIndex(category);
    const SortSetting sort = k < 0 ? SortSetting{} : defaultSort(k);
    format.sortColumn = sort.column;
    format.sortDirection = sort.direction;
    return append(data, format, recordNumber);
}

Status SavedReports::ensureReport(DataFiles& data, char category, const ConfigRecord& config,
                                  int& recordNumber) {
    const std::vector<int> reports = reportsOf(category);
    if (!reports.empty()) {
        recordNumber = reports.front();
        return Status::ok();
    }
    return append(data, startingFormat(category, config), recordNumber);
}

Status SavedReports::change(DataFiles& data, int recordNumber, const ReportFormatRecord& format) {
    if (recordNumber < 1 || recordNumber > static_cast<int>(records_.size()))
        return Status::error(ErrorKind::RecordRange, "There is no report " + digits(recordNumber));
    ReportFormatRecord written = format;
    if (Status s = data.reportFormatRecord(Access::Write, recordNumber, written); !s)
        return s;
    records_[static_cast<std::size_t>(recordNumber - 1)] = format;
    return Status::ok();
}

Message SavedReports::onlyReportMessage() {
    return Message{"Cannot Delete Only Report", "Only Report!", Buttons::Ok, Icon::Critical,
                   Answer::Ok};
}

Message SavedReports::deleteQuestion() {
    return Message{"Are you sure?", "Delete Report!", Buttons::YesNo, Icon::Question, Answer::No};
}

Status SavedReports::remove(DataFiles& data, Prompter& prompter, int recordNumber, bool& deleted) {
    deleted = false;
    if (recordNumber < 1 || recordNumber > static_cast<int>(records_.size()))
        return Status::error(ErrorKind::RecordRange, "There is no report " + digits(recordNumber));
    ReportFormatRecord format = record(recordNumber);
    if (format.deletionMark == '*')
        return Status::ok();
    if (reportsOf(format.category).size() <= 1) {
        prompter.ask(onlyReportMessage());
        return Status::ok();
    }
    if (prompter.ask(deleteQuestion()) != Answer::Yes)
        return Status::ok();
    format.deletionMark = '*';
    if (Status s = change(data, recordNumber, format); !s)
        return s;
    deleted = true;
    return Status::ok();
}

} // namespace scorvane
