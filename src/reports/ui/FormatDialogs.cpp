#include "FormatDialogs.h"

#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace scorvane {
namespace {

QListWidget* columnList(QWidget* parent, const char* name) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QString::fromLatin1(name));
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setMinimumWidth(list->fontMetrics().horizontalAdvance(QString(18, QLatin1Char('M'))));
    return list;
}

void addColumnItem(QListWidget* list, char category, int code, const ColumnTable& table,
                   int row = -1) {
    auto* item = new QListWidgetItem(columnCaption(category, code, table));
    item->setData(Qt::UserRole, code);
    if (row < 0)
        list->addItem(item);
    else
        list->insertItem(row, item);
}

int codeAt(const QListWidget* list, int row) {
    return list->item(row)->data(Qt::UserRole).toInt();
}

// Moves the chosen line of one list to another, at `row` (the end for -1); the line after it is
// chosen next, so a run of columns can be moved with one key after another.
void moveChosen(QListWidget* from, QListWidget* to, const std::function<int(int)>& rowFor) {
    const int row = from->currentRow();
    if (row < 0)
        return;
    QListWidgetItem* item = from->takeItem(row);
    const int at = rowFor(item->data(Qt::UserRole).toInt());
    to->insertItem(at < 0 ? to->count() : at, item);
    if (from->count() > 0)
        from->setCurrentRow(std::min(row, from->count() - 1));
    to->setCurrentItem(item);
}

} // namespace

QString columnCaption(char category, int code, const ColumnTable& table) {
    return fromFileText(trim(columnHeading(category, code, table)));
}

// --- the saved reports ---------------------------------------------------------------------------

ReportSelectDialog::ReportSelectDialog(DataFiles& files, Prompter& prompter,
                                       const ConfigRecord& config, const ColumnTable& table,
                                       char category, int current, QWidget* parent)
    : QDialog(parent), files_(files), prompter_(prompter), config_(config), table_(table),
      category_(category), chosen_(current) {
    setObjectName(QStringLiteral("frmRptSelect"));
    setWindowTitle(QStringLiteral("Reports - ") + fromUtf8(std::string(reportTitle(category))));
    setModal(true);

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstReports"));
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setMinimumWidth(list_->fontMetrics().horizontalAdvance(QString(26, QLatin1Char('M'))));
    auto* add = namedButton(this, "cmdAdd", QStringLiteral("&Add"));
    auto* change = namedButton(this, "cmdChange", QStringLiteral("&Change..."));
    auto* remove = namedButton(this, "cmdDelete", QStringLiteral("&Delete"));
    auto [ok, cancel] = okCancelButtons(this);
    connect(add, &QPushButton::clicked, this, &ReportSelectDialog::add);
    connect(change, &QPushButton::clicked, this, &ReportSelectDialog::change);
    connect(remove, &QPushButton::clicked, this, &ReportSelectDialog::remove);
    connect(ok, &QPushButton::clicked, this, &ReportSelectDialog::choose);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::itemDoubleClicked, this, &ReportSelectDialog::choose);

    auto* buttons = new QVBoxLayout;
    for (QPushButton* b : {add, change, remove})
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
    setTabOrder(list_, add);
    setTabOrder(add, change);
    setTabOrder(change, remove);
    setTabOrder(remove, ok);
    setTabOrder(ok, cancel);
    resize(sizeHint().width(), 300);

    load();
    fill(current);
    list_->setFocus();
}

void ReportSelectDialog::load() {
    // Read without creating the file; a file that cannot be read that way goes through the
    // program's files, whose disk error handler speaks to the user.
    if (!saved_.readOnly(files_.paths().reportDirectory))
        (void)saved_.load(files_);
}

void ReportSelectDialog::fill(int select) {
    list_->clear();
    const std::vector<int> reports = saved_.reportsOf(category_);
    if (reports.empty()) {
        auto* item = new QListWidgetItem(
            fromFileText(trim(startingFormat(category_, config_).reportName)), list_);
        item->setData(Qt::UserRole, 0);
    }
    for (int n : reports) {
        auto* item = new QListWidgetItem(fromFileText(trim(saved_.record(n).reportName)), list_);
        item->setData(Qt::UserRole, n);
    }
    int row = 0;
    for (int r = 0; r < list_->count(); ++r)
        if (codeAt(list_, r) == select)
            row = r;
    list_->setCurrentRow(row);
}

int ReportSelectDialog::selectedRecord() const {
    const int row = list_->currentRow();
    return row < 0 ? -1 : codeAt(list_, row);
}

int ReportSelectDialog::firstReport() {
    int record = 0;
    // A disk error was shown by the storage layer.
    if (!saved_.ensureReport(files_, category_, config_, record))
        return -1;
    return record;
}

void ReportSelectDialog::add() {
    const int selected = selectedRecord();
    if (selected == 0 && firstReport() < 0)
        return;
    int record = 0;
    if (!saved_.add(files_, category_, record)) {
        fill(selected);
        return;
    }
    fill(record);
    list_->setFocus();
}

void ReportSelectDialog::change() {
    int record = selectedRecord();
    if (record < 0)
        return;
    const ReportFormatRecord format =
        record == 0 ? saved_.current(category_, config_) : saved_.record(record);
    FormatDialog dialog(format, table_, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (record == 0 && (record = firstReport()) < 0)
        return;
    // A disk error was shown by the storage layer; the list shows what the file holds.
    (void)saved_.change(files_, record, dialog.format());
    fill(record);
    list_->setFocus();
}

void ReportSelectDialog::remove() {
    const int record = selectedRecord();
    if (record < 0)
        return;
    if (record == 0) {
        // The starting format stands alone in the list: it is the only report.
        prompter_.ask(SavedReports::onlyReportMessage());
        return;
    }
    bool deleted = false;
    (void)saved_.remove(files_, prompter_, record, deleted);
    if (deleted)
        fill(chosen_ == record ? 0 : chosen_);
    list_->setFocus();
}

void ReportSelectDialog::choose() {
    const int record = selectedRecord();
    if (record < 0)
        return;
    chosen_ = record;
    accept();
}

// --- one report's format -------------------------------------------------------------------------

FormatDialog::FormatDialog(const ReportFormatRecord& format, const ColumnTable& table,
                           QWidget* parent)
    : QDialog(parent), format_(format), table_(table) {
    setObjectName(QStringLiteral("frmFormat"));
    setWindowTitle(QStringLiteral("Report Format - ") +
                   fromUtf8(std::string(reportTitle(format.category))));
    setModal(true);

    all_ = columnList(this, "lstAll");
    chosen_ = columnList(this, "lstSelCat");
    // The print order can also be changed by dragging a column up or down.
    chosen_->setDragDropMode(QAbstractItemView::InternalMove);
    auto* add = namedButton(this, "cmdAdd", QStringLiteral("&Add >>"));
    auto* remove = namedButton(this, "cmdDelete", QStringLiteral("<< &Remove"));
    auto* defaults = namedButton(this, "cmdDefault", QStringLiteral("De&fault"));
    title_ = new QLineEdit(fromFileText(trim(format.reportName)), this);
    title_->setObjectName(QStringLiteral("txtTitle"));
    selectAllOnFocus(title_);
    sort_ = new QComboBox(this);
    sort_->setObjectName(QStringLiteral("cmbCats"));
    descending_ = new QRadioButton(QStringLiteral("D&escending"), this);
    descending_->setObjectName(QStringLiteral("optDesc"));
    ascending_ = new QRadioButton(QStringLiteral("A&scending"), this);
    ascending_->setObjectName(QStringLiteral("optAsc"));
    auto [ok, cancel] = okCancelButtons(this);

    connect(add, &QPushButton::clicked, this, &FormatDialog::addColumn);
    connect(remove, &QPushButton::clicked, this, &FormatDialog::removeColumn);
    connect(all_, &QListWidget::itemDoubleClicked, this, &FormatDialog::addColumn);
    connect(chosen_, &QListWidget::itemDoubleClicked, this, &FormatDialog::removeColumn);
    connect(defaults, &QPushButton::clicked, this, &FormatDialog::loadDefault);
    connect(ok, &QPushButton::clicked, this, &FormatDialog::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto label = [this](const QString& text, QWidget* buddy) {
        auto* l = new QLabel(text, this);
        l->setBuddy(buddy);
        return l;
    };
    auto* moves = new QVBoxLayout;
    moves->addStretch(1);
    moves->addWidget(add);
    moves->addWidget(remove);
    moves->addSpacing(12);
    moves->addWidget(defaults);
    moves->addStretch(1);
    auto* lists = new QGridLayout;
    lists->addWidget(label(QStringLiteral("Columns &Not in the Report:"), all_), 0, 0);
    lists->addWidget(all_, 1, 0);
    lists->addLayout(moves, 1, 1);
    lists->addWidget(label(QStringLiteral("Report &Columns:"), chosen_), 0, 2);
    lists->addWidget(chosen_, 1, 2);

    auto* direction = new QHBoxLayout;
    direction->addWidget(descending_);
    direction->addWidget(ascending_);
    direction->addStretch(1);
    auto* form = new QGridLayout;
    form->addWidget(label(QStringLiteral("&Title:"), title_), 0, 0);
    form->addWidget(title_, 0, 1);
    form->addWidget(label(QStringLiteral("Sort &By:"), sort_), 1, 0);
    form->addWidget(sort_, 1, 1);
    form->addLayout(direction, 2, 1);
    form->setColumnStretch(1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(8);
    layout->addLayout(lists, 1);
    layout->addLayout(buttons);

    setTabOrder(title_, sort_);
    setTabOrder(sort_, descending_);
    setTabOrder(descending_, ascending_);
    setTabOrder(ascending_, all_);
    setTabOrder(all_, add);
    setTabOrder(add, remove);
    setTabOrder(remove, defaults);
    setTabOrder(defaults, chosen_);
    setTabOrder(chosen_, ok);
    setTabOrder(ok, cancel);
    resize(sizeHint().width(), 480);

    showFormat(format);
    title_->setFocus();
}

void FormatDialog::showFormat(const ReportFormatRecord& format) {
    const char category = format.category;
    const std::vector<int> codes = formatColumns(format);
    all_->clear();
    chosen_->clear();
    for (int code : codes)
        addColumnItem(chosen_, category, code, table_);
    sort_->clear();
    const int count = ColumnTable::columnCount(category);
    for (int code = 1; code <= count; ++code) {
        if (std::find(codes.begin(), codes.end(), code) == codes.end())
            addColumnItem(all_, category, code, table_);
        sort_->addItem(columnCaption(category, code, table_), code);
    }
    // A sort code the category lacks (a damaged record) shows as the first column.
    const int sortRow = sort_->findData(int(format.sortColumn));
    sort_->setCurrentIndex(sortRow < 0 ? 0 : sortRow);
    (format.sortDirection == 'A' ? ascending_ : descending_)->setChecked(true);
    all_->setCurrentRow(0);
    chosen_->setCurrentRow(0);
}

void FormatDialog::addColumn() {
    moveChosen(all_, chosen_, [](int) { return -1; });
}

void FormatDialog::removeColumn() {
    // Back in column order among the columns not in the report.
    moveChosen(chosen_, all_, [this](int code) {
        int row = 0;
        while (row < all_->count() && codeAt(all_, row) < code)
            ++row;
        return row;
    });
}

void FormatDialog::loadDefault() {
    ReportFormatRecord format = format_;
    format.sortColumn = static_cast<std::int16_t>(sort_->currentData().toInt());
    format.sortDirection = descending_->isChecked() ? 'D' : 'A';
    applyDefaultColumns(format);
    showFormat(format);
}

void FormatDialog::confirm() {
    FormatEdit edit;
    edit.title = toFileText(title_->text());
    for (int row = 0; row < chosen_->count(); ++row)
        edit.columns.push_back(codeAt(chosen_, row));
    edit.sortColumn = sort_->currentData().toInt();
    edit.descending = descending_->isChecked();
    format_ = confirmFormat(format_, edit);
    accept();
}

// --- the sort ------------------------------------------------------------------------------------

SortDialog::SortDialog(char category, const ColumnTable& table, SortSetting sort, QWidget* parent)
    : QDialog(parent), sort_(sort) {
    setObjectName(QStringLiteral("frmSort"));
    setWindowTitle(QStringLiteral("Sort - ") + fromUtf8(std::string(reportTitle(category))));
    setModal(true);

    columns_ = columnList(this, "lstCat");
    const int count = ColumnTable::columnCount(category);
    for (int code = 1; code <= count; ++code)
        addColumnItem(columns_, category, code, table);
    columns_->setCurrentRow(sort.column >= 1 && sort.column <= count ? sort.column - 1 : 0);
    descending_ = new QRadioButton(QStringLiteral("&Descending"), this);
    descending_->setObjectName(QStringLiteral("optDesc"));
    auto* ascending = new QRadioButton(QStringLiteral("&Ascending"), this);
    ascending->setObjectName(QStringLiteral("optAsc"));
    (sort.direction == 'D' ? descending_ : ascending)->setChecked(true);
    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &SortDialog::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(columns_, &QListWidget::itemDoubleClicked, this, &SortDialog::confirm);

    auto* label = new QLabel(QStringLiteral("Sort &By:"), this);
    label->setBuddy(columns_);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(descending_);
    buttons->addWidget(ascending);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* left = new QVBoxLayout;
    left->addWidget(label);
    left->addWidget(columns_, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(buttons);
    setTabOrder(columns_, descending_);
    setTabOrder(descending_, ascending);
    setTabOrder(ascending, ok);
    setTabOrder(ok, cancel);
    resize(sizeHint().width(), 360);
    columns_->setFocus();
}

void SortDialog::confirm() {
    const int row = columns_->currentRow();
    if (row < 0)
        return;
    sort_.column = static_cast<std::int16_t>(codeAt(columns_, row));
    sort_.direction = descending_->isChecked() ? 'D' : 'A';
    accept();
}

} // namespace scorvane
