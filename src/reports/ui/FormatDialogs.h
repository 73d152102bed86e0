#pragma once

#include "reports/ReportFormats.h"
#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace scorvane {

// A column of a category as the format lists show it: its printed heading, trimmed.
QString columnCaption(char category, int code, const ColumnTable& table);

// The saved reports of one category: Add appends a new one, Change edits the chosen one in the
// format dialog and rewrites it, Delete marks it deleted after "Are you sure?" (the only report of
// a category is refused), OK makes the chosen report the current one.
//
// While the file holds no report of the category, the list shows the category's starting format;
// it is written as the category's first report only when the user adds, changes or deletes one,
// so that looking at the list writes nothing.
class ReportSelectDialog : public QDialog {
    Q_OBJECT

public:
    // `current` is the record number of the report in use (0: the category's first).
    ReportSelectDialog(DataFiles& files, Prompter& prompter, const ConfigRecord& config,
                       const ColumnTable& table, char category, int current,
                       QWidget* parent = nullptr);

    // The record number of the report chosen with OK; 0 for the starting format, never written.
    int chosen() const { return chosen_; }

private:
    void load();
    void fill(int select);
    int selectedRecord() const;
    // Writes the starting format as the category's first report when the file has none yet.
    int firstReport();
    void add();
    void change();
    void remove();
    void choose();

    DataFiles& files_;
    Prompter& prompter_;
    const ConfigRecord& config_;
    const ColumnTable& table_;
    char category_;
    SavedReports saved_;
    QListWidget* list_ = nullptr;
    int chosen_ = 0;
};

// One report's format: the columns not in it (lstAll) and its columns in print order (lstSelCat),
// moved with Add and Remove (or a double click); Default loads the category's default columns; the
// title; the sort column and direction. OK confirms the format as confirmFormat says.
class FormatDialog : public QDialog {
    Q_OBJECT

public:
    FormatDialog(const ReportFormatRecord& format, const ColumnTable& table,
                 QWidget* parent = nullptr);

    // The confirmed format, after OK.
    const ReportFormatRecord& format() const { return format_; }

private:
    void showFormat(const ReportFormatRecord& format);
    void addColumn();
    void removeColumn();
    void loadDefault();
    void confirm();

    ReportFormatRecord format_;
    const ColumnTable& table_;
    QListWidget* all_ = nullptr;
    QListWidget* chosen_ = nullptr;
    QLineEdit* title_ = nullptr;
    QComboBox* sort_ = nullptr;
    QRadioButton* descending_ = nullptr;
    QRadioButton* ascending_ = nullptr;
};

// The sort of a category's report: the column (lstCat) and the direction.
class SortDialog : public QDialog {
    Q_OBJECT

public:
    SortDialog(char category, const ColumnTable& table, SortSetting sort,
               QWidget* parent = nullptr);

    // The column and direction ("A" or "D"), after OK.
    SortSetting sort() const { return sort_; }

private:
    void confirm();

    SortSetting sort_;
    QListWidget* columns_ = nullptr;
    QRadioButton* descending_ = nullptr;
};

} // namespace scorvane
