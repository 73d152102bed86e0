#include "reports/ReportFormats.h"

#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

using namespace scorvane;
using scorvane::testing::intAt;
using scorvane::testing::textAt;

namespace {

std::vector<int> codes(std::initializer_list<int> list) {
    return list;
}

struct ReportFormatsTest : ::testing::Test, scorvane::testing::ScratchData {
    SavedReports saved;
    const ConfigRecord config = ConfigRecord::defaults();

    Bytes file() const { return dir.read("FBRPTFMT.DAT"); }
};

} // namespace

// Each category's default columns and sort, the Default button, confirming the format dialog and
// the configuration's columns.
TEST(ReportFormatDefaults, EachCategoryHasItsColumnsAndSort) {
    struct Expected {
        char category;
        std::vector<int> columns;
        int sort;
    };
    const std::vector<Expected> expected = {
        {'P', codes({1, 2, 3, 15, 4, 16, 8, 9, 14, 5, 7, 10, 11, 13, 17, 6, 12, 18}), 4},
        {'C', codes({1, 9, 2, 3, 15, 5, 6, 14, 7, 8, 17, 12, 13, 11, 4, 10, 16}), 2},
        {'R', codes({1, 2, 3, 7, 4, 12, 6, 9, 10, 11, 5, 8, 13}), 3},
        {'D', codes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), 2},
        {'K', codes({1, 2, 4, 9, 10, 11, 17}), 1},
        {'T', codes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}), 1},
    };
    for (const auto& e : expected) {
        const ReportFormatRecord f = defaultFormat(e.category);
        EXPECT_EQ(formatColumns(f), e.columns) << e.category;
        EXPECT_EQ(std::tuple(f.sortColumn, f.sortDirection, f.columns[0] + 0,
                             f.columns[e.columns.size() + 1] + 0),
                  std::tuple(e.sort, 'D', 0, 0))
            << e.category;
    }
    EXPECT_EQ(trimRight(defaultFormat('D').reportName), "Defensive Statistics");

    // The Default button keeps the sort column of receiving and kicking, sets the others.
    ReportFormatRecord receiving = defaultFormat('C');
    receiving.sortColumn = 9;
    receiving.sortDirection = 'A';
    receiving.columns.fill(3);
    applyDefaultColumns(receiving);
    // The columns after the last default one are cleared.
    EXPECT_EQ(std::tuple(receiving.sortColumn + 0, receiving.sortDirection,
                         formatColumns(receiving).size(), receiving.columns[18] + 0),
              std::tuple(9, 'D', std::size_t{17}, 0));
    ReportFormatRecord rushing = defaultFormat('R');
    rushing.sortColumn = 9;
    applyDefaultColumns(rushing);
    EXPECT_EQ(rushing.sortColumn, 3);

    // Confirming the format dialog.
    const ReportFormatRecord base = defaultFormat('R');
    FormatEdit edit;
    edit.title = "   ";
    edit.sortColumn = 12;
    edit.descending = false;
    ReportFormatRecord f = confirmFormat(base, edit);
    EXPECT_EQ(f.reportName, fit("Unnamed Report", 20));
    EXPECT_EQ(formatColumns(f), formatColumns(defaultFormat('R'))); // empty list: the default
    EXPECT_EQ(std::tuple(f.sortColumn + 0, f.sortDirection), std::tuple(12, 'A'));

    edit.title = "  Season leaders by yards per carry ";
    edit.columns = {3, 2};
    f = confirmFormat(base, edit);
    EXPECT_EQ(f.reportName, "Season leaders by ya");
    EXPECT_EQ(formatColumns(f), codes({3, 2}));

    edit.columns.assign(40, 2);
    f = confirmFormat(base, edit);
    EXPECT_EQ(std::pair(formatColumns(f).size(), f.columns[32] + 0),
              std::pair(std::size_t{31}, 0)); // reserved: 0

    // Codes a category lacks are never printed, wherever they stand.
    f.columns[1] = 24;
    f.columns[2] = -4;
    EXPECT_EQ(formatColumns(f).size(), 29u);

    // The configuration's columns serve until a report is saved.
    ConfigRecord config = ConfigRecord::defaults();
    config.columnLists[0].fill(0);
    config.columnLists[0][0] = 2;
    config.columnLists[0][1] = 17;
    config.sort[0] = {17, 'A'};
    f = startingFormat('P', config);
    EXPECT_EQ(formatColumns(f), codes({2, 17}));
    EXPECT_EQ(std::tuple(f.sortColumn + 0, f.sortDirection), std::tuple(17, 'A'));
    config.columnLists[0].fill(0);
    EXPECT_EQ(formatColumns(startingFormat('P', config)), formatColumns(defaultFormat('P')));
}

TEST_F(ReportFormatsTest, AddingAndDeletingGrowTheFileByOneRecordEach) {
    int first = 0, second = 0, third = 0;
    ASSERT_TRUE(saved.ensureReport(data, 'P', config, first));
    ASSERT_TRUE(saved.add(data, 'P', second));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    EXPECT_EQ(file().size(), 2 * 167u);
    EXPECT_EQ(textAt(file(), 167 + 2, 20), fit("Report 2", 20));
    EXPECT_EQ(intAt(file(), 167 + 22), 4); // passing's default sort
    EXPECT_EQ(intAt(file(), 167 + 27), 0); // an empty column list

    prompter.answers = {Answer::Yes};
    bool deleted = false;
    ASSERT_TRUE(saved.remove(data, prompter, first, deleted));
    EXPECT_TRUE(deleted);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0], SavedReports::deleteQuestion());
    EXPECT_EQ(prompter.shown[0].text, "Are you sure?");
    EXPECT_EQ(prompter.shown[0].title, "Delete Report!");
    EXPECT_EQ(prompter.shown[0].defaultAnswer, Answer::No);

    ASSERT_TRUE(saved.add(data, 'P', third));
    EXPECT_EQ(third, 3);
    const Bytes after = file();
    ASSERT_EQ(after.size(), 3 * 167u);
    EXPECT_EQ(after[1], '*'); // the deleted record stays, marked
    EXPECT_EQ(textAt(after, 2, 20), fit("Passing Statistics", 20));
    EXPECT_EQ(textAt(after, 2 * 167 + 2, 20), fit("Report 2", 20)); // two reports again
    EXPECT_EQ(saved.reportsOf('P'), codes({2, 3}));

    // What another reader finds in the file.
    SavedReports again;
    ASSERT_TRUE(again.readOnly(dir.dir()));
    EXPECT_EQ(again.reportsOf('P'), codes({2, 3}));
    EXPECT_EQ(again.find('P', "report 2"), 2);
    EXPECT_EQ(again.find('P', "Report 3"), 0);
}

TEST_F(ReportFormatsTest, TheOnlyReportOfACategoryIsNotDeleted) {
    int passing = 0, kicking = 0, other = 0;
    ASSERT_TRUE(saved.ensureReport(data, 'P', config, passing));
    ASSERT_TRUE(saved.add(data, 'P', other));
    ASSERT_TRUE(saved.ensureReport(data, 'K', config, kicking));
    int again = 0;
    ASSERT_TRUE(saved.ensureReport(data, 'K', config, again)); // already has one
    EXPECT_EQ(again, kicking);
    const Bytes before = file();
    ASSERT_EQ(before.size(), 3 * 167u);

    bool deleted = true;
    ASSERT_TRUE(saved.remove(data, prompter, kicking, deleted));
    EXPECT_FALSE(deleted);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].text, "Cannot Delete Only Report");
    EXPECT_EQ(prompter.shown[0].title, "Only Report!");
    EXPECT_EQ(prompter.shown[0].icon, Icon::Critical);
    EXPECT_EQ(file(), before);

    // Answering No leaves the file as it was, too.
    prompter.answers = {Answer::No};
    ASSERT_TRUE(saved.remove(data, prompter, other, deleted));
    EXPECT_FALSE(deleted);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(saved.current('K', config).category, 'K');
    EXPECT_EQ(formatColumns(saved.current('T', config)), formatColumns(defaultFormat('T')));
}

TEST_F(ReportFormatsTest, DamagedFormatsShowUsableColumnsOrTheDefaults) {
    ReportFormatRecord f = defaultFormat('K');
    f.columns.fill(0);
    f.columns[1] = 99; // past kicking's last column
    f.columns[2] = 4;
    f.columns[3] = -3;
    f.columns[4] = 17;
    EXPECT_EQ(shownColumns(f), (std::vector<int>{4, 17}));
    f.columns.fill(0);
    f.columns[1] = 40;
    EXPECT_EQ(shownColumns(f), (std::vector<int>{1, 2, 4, 9, 10, 11, 17}));
    f.category = 'Z'; // no such category: nothing to show
    EXPECT_TRUE(shownColumns(f).empty());

    // A file of the wrong length with unknown letters and bad codes still reads.
    ReportFormatRecord good = defaultFormat('P');
    good.reportName = fit("Season passing", 20);
    ReportFormatRecord unknown = good;
    unknown.category = '?';
    Bytes file = unknown.encode();
    const Bytes second = good.encode();
    file.insert(file.end(), second.begin(), second.end());
    file.resize(file.size() + 50, 'x');
    dir.write("FBRPTFMT.DAT", file);
    ASSERT_TRUE(saved.readOnly(dir.dir()));
    EXPECT_EQ(saved.reportsOf('P'), (std::vector<int>{2}));
    EXPECT_TRUE(saved.reportsOf('?').size() == 1 && saved.reportsOf('K').empty());
    // Kicking, left without a report, starts from its default.
    EXPECT_EQ(shownColumns(saved.current('K', config)), (std::vector<int>{1, 2, 4, 9, 10, 11, 17}));
}
