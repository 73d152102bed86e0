// The report-format file of any contents, with a configuration of any contents: reading it, the
// format each category starts with, finding a report by name, and adding, changing and deleting
// reports, which must leave every other record as it was.

#include "FuzzInput.h"
#include "reports/ReportFormats.h"
#include "storage/ColumnTable.h"
#include "support/FakePrompter.h"

using namespace scorvane;
using namespace scorvane::testing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TempDir folder;
    FuzzInput in(data, size);
    const ConfigRecord config = ConfigRecord::decode(in.piece(ConfigRecord::Length));
    const std::string name = in.text(30);
    const Bytes file = in.rest();
    folder.write("FBRPTFMT.DAT", file);

    SavedReports saved;
    FUZZ_CHECK(saved.readOnly(folder.dir()).isOk());
    FUZZ_CHECK(saved.records().size() == file.size() / ReportFormatRecord::Length);
    FUZZ_CHECK(folder.read("FBRPTFMT.DAT") == file); // read without a change
    for (char category : kCategoryLetters) {
        for (int n : saved.reportsOf(category))
            FUZZ_CHECK(n >= 1 && n <= static_cast<int>(saved.records().size()));
        const int found = saved.find(category, name);
        FUZZ_CHECK(found >= 0 && found <= static_cast<int>(saved.records().size()));
        const ReportFormatRecord current = saved.current(category, config);
        for (int code : formatColumns(current))
            FUZZ_CHECK(code >= 1 && code <= ColumnTable::columnCount(category));
        FormatEdit edit;
        edit.title = name;
        for (int i = 0; i < 40 && !in.empty(); ++i)
            edit.columns.push_back(in.number(-2, 40));
        edit.sortColumn = in.number(-2, 40);
        edit.descending = in.byte() % 2 == 0;
        const ReportFormatRecord confirmed = confirmFormat(current, edit);
        FUZZ_CHECK(formatColumns(confirmed).size() <= 31);
    }

    // Changes through the program's files: an added report is appended, a changed or deleted one
    // is rewritten in place.
    FakePrompter prompter;
    prompter.answers = {Answer::Yes, Answer::Yes};
    DataFiles files(DataPaths{folder.dir(), folder.dir(), folder.dir()}, prompter);
    SavedReports live;
    if (!live.load(files))
        return 0;
    const char category = kCategoryLetters[in.byte() % kCategoryCount];
    const std::size_t whole = file.size() / ReportFormatRecord::Length * ReportFormatRecord::Length;
    int added = 0;
    FUZZ_CHECK(live.add(files, category, added).isOk());
    Bytes after = folder.read("FBRPTFMT.DAT");
    FUZZ_CHECK(after.size() >= whole + ReportFormatRecord::Length);
    FUZZ_CHECK(
        std::equal(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(whole), after.begin()));
    bool deleted = false;
    FUZZ_CHECK(live.remove(files, prompter, added, deleted).isOk());
    return 0;
}
