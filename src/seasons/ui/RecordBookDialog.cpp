#include "RecordBookDialog.h"

#include "SeasonsDialog.h"

#include "reports/ReportColumns.h"
#include "reports/ui/ComputeDialog.h"
#include "reports/ui/FormatDialogs.h"
#include "reports/ui/ReportGrid.h"
#include "storage/Bytes.h"
#include "storage/Platform.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {
namespace {

// The records table's columns.
enum RecordColumn { Rank, Name, Value, Season, Game, Date, Opponent, RecordColumns };

// A list's title, bold on a shaded row across the records table.
void addTitleRow(QTableWidget* records, int& row, const QString& text) {
    records->setRowCount(row + 1);
    auto* item = reportCell(text, false, true);
    item->setBackground(records->window()->palette().alternateBase());
    records->setItem(row, 0, item);
    records->setSpan(row, 0, 1, RecordColumns);
    ++row;
}

// The row of a list that holds no record.
void addNoRecordsRow(QTableWidget* records, int& row) {
    records->setRowCount(row + 1);
    records->setItem(row, Name, reportCell(QStringLiteral("No records")));
    ++row;
}

const char* scopeName(RecordScope scope) {
    switch (scope) {
    case RecordScope::Game:
        return "Single Game";
    case RecordScope::Season:
        return "Season";
    default:
        return "Career";
    }
}

// The columns a record can be kept for: the category's report columns but games played.
std::vector<int> recordColumns(char category) {
    std::vector<int> codes;
    for (int code = 2; code <= ColumnTable::columnCount(category); ++code)
        if (isReportColumn(category, code))
            codes.push_back(code);
    return codes;
}

// The minimum boxes of a column's row: game, season, career.
constexpr int kMinimumColumn = 1;

} // namespace

RecordBookDialog::RecordBookDialog(SeasonsList seasons, ReportContext& context, QWidget* parent)
    : QDialog(parent), context_(context), list_(std::move(seasons)) {
    setObjectName(QStringLiteral("frmRecordBook"));
    setWindowTitle(QStringLiteral("Record Book"));
    setModal(true);

    seasons_ = new QListWidget(this);
    seasons_->setObjectName(QStringLiteral("lstSeasons"));
    for (const SeasonEntry& s : list_.seasons) {
        const auto [state, message] = seasonState(s);
        auto* item = new QListWidgetItem(
            fromUtf8(s.label) +
                (state.empty() ? QString() : QStringLiteral(" (") + fromUtf8(state) + ')'),
            seasons_);
        if (message.empty()) {
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
            item->setCheckState(Qt::Checked);
        } else {
            item->setFlags(Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
            item->setToolTip(fromUtf8(message));
        }
    }
    auto* choose = namedButton(this, "cmdSelect", QStringLiteral("Select &Games..."));
    connect(choose, &QPushButton::clicked, this, &RecordBookDialog::openSelection);
    selectionText_ = new QLabel(this);
    selectionText_->setObjectName(QStringLiteral("lblSelection"));
    selectionText_->setTextFormat(Qt::PlainText);
    selectionText_->setWordWrap(true);

    categories_ = new QComboBox(this);
    categories_->setObjectName(QStringLiteral("cboCategory"));
    for (char letter : kCategoryLetters) {
        std::string name(reportTitle(letter));
        name = name.substr(0, name.find(' '));
        categories_->addItem(fromUtf8(name), QChar::fromLatin1(letter));
    }
    connect(categories_, &QComboBox::currentIndexChanged, this, &RecordBookDialog::categoryChosen);

    columns_ = new QTableWidget(this);
    columns_->setObjectName(QStringLiteral("tblColumns"));
    columns_->setColumnCount(4);
    columns_->setHorizontalHeaderLabels({QStringLiteral("Column"), QStringLiteral("Game"),
                                         QStringLiteral("Season"), QStringLiteral("Career")});
    columns_->horizontalHeaderItem(kMinimumColumn)
        ->setToolTip(QStringLiteral("Attempts a single game needs to count"));
    columns_->verticalHeader()->hide();
    columns_->setSelectionMode(QAbstractItemView::SingleSelection);
    columns_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    columns_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    columns_->verticalHeader()->setDefaultSectionSize(QFontMetrics(font()).height() + 10);

    top_ = new QSpinBox(this);
    top_->setObjectName(QStringLiteral("spnTop"));
    top_->setRange(1, 99);
    top_->setValue(10);
    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute"));
    connect(compute, &QPushButton::clicked, this, &RecordBookDialog::compute);

    heading_ = new QLabel(this);
    heading_->setObjectName(QStringLiteral("lblHeading"));
    heading_->setTextFormat(Qt::PlainText);
    records_ = new QTableWidget(this);
    records_->setObjectName(QStringLiteral("tblRecords"));
    records_->setColumnCount(RecordColumns);
    records_->setHorizontalHeaderLabels({QStringLiteral("Rank"), QStringLiteral("Name"),
                                         QStringLiteral("Record"), QStringLiteral("Season"),
                                         QStringLiteral("Game"), QStringLiteral("Date"),
                                         QStringLiteral("Opponent")});
    records_->verticalHeader()->hide();
    records_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    records_->setSelectionBehavior(QAbstractItemView::SelectRows);
    records_->setSelectionMode(QAbstractItemView::SingleSelection);
    records_->setTabKeyNavigation(false);
    records_->setFont(reportScreenFont());
    records_->verticalHeader()->setDefaultSectionSize(QFontMetrics(records_->font()).height() + 6);
    records_->horizontalHeader()->setSectionResizeMode(Opponent, QHeaderView::Stretch);

    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("&Print..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    connect(export_, &QPushButton::clicked, this, &RecordBookDialog::exportBook);
    connect(print_, &QPushButton::clicked, this, &RecordBookDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* topRow = new QHBoxLayout;
    topRow->addWidget(labelFor(top_, QStringLiteral("&Top:")));
    topRow->addWidget(top_);
    topRow->addStretch(1);
    topRow->addWidget(compute);
    auto* left = new QVBoxLayout;
    left->addWidget(labelFor(seasons_, QStringLiteral("&Seasons:")));
    left->addWidget(seasons_, 1);
    left->addWidget(choose, 0, Qt::AlignLeft);
    left->addWidget(selectionText_);
    auto* categoryRow = new QHBoxLayout;
    categoryRow->addWidget(labelFor(categories_, QStringLiteral("C&ategory:")));
    categoryRow->addWidget(categories_, 1);
    left->addLayout(categoryRow);
    left->addWidget(
        labelFor(columns_, QStringLiteral("Co&lumns, and the attempts a record needs:")));
    left->addWidget(columns_, 3);
    left->addLayout(topRow);
    auto* leftBox = new QWidget(this);
    leftBox->setLayout(left);
    left->setContentsMargins(0, 0, 0, 0);
    leftBox->setFixedWidth(360);

    auto* right = new QVBoxLayout;
    right->addWidget(heading_);
    right->addWidget(labelFor(records_, QStringLiteral("&Records:")));
    right->addWidget(records_, 1);
    auto* body = new QHBoxLayout;
    body->addWidget(leftBox);
    body->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(buttonRow({export_, print_, exit}, export_));

    chainTabOrder(
        {seasons_, choose, categories_, columns_, top_, compute, records_, export_, print_, exit});

    for (char letter : kCategoryLetters)
        ticked_[letter] = defaultRecordColumns(letter);
    selectionText_->setText(fromFileText(selection_.describe(context_.session.config)));
    showColumns();
    showBook();
    resize(1200, 760);
    compute->setFocus();
}

char RecordBookDialog::category() const {
    return categories_->currentData().toChar().toLatin1();
}

void RecordBookDialog::categoryChosen() {
    keepColumns();
    shownCategory_ = category();
    showColumns();
    showBook();
}

void RecordBookDialog::showColumns() {
    const char c = shownCategory_;
    const ColumnTable& table = context_.session.columns;
    const std::vector<int>& ticked = ticked_[c];
    const std::vector<int> codes = recordColumns(c);
    columns_->setRowCount(static_cast<int>(codes.size()));
    for (int r = 0; r < columns_->rowCount(); ++r) {
        const int code = codes[static_cast<std::size_t>(r)];
        auto* item = new QTableWidgetItem(columnCaption(c, code, table));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(std::find(ticked.begin(), ticked.end(), code) != ticked.end()
                                ? Qt::Checked
                                : Qt::Unchecked);
        item->setData(Qt::UserRole, code);
        columns_->setItem(r, 0, item);
        const int attempts = attemptsColumn(c, code);
        RecordMinimum minimum = defaultMinimum(c, code);
        if (auto it = minimums_[c].find(code); it != minimums_[c].end())
            minimum = it->second;
        const int values[3] = {minimum.game, minimum.season, minimum.career};
        const char* scopes[3] = {"Game", "Season", "Career"};
        for (int m = 0; m < 3; ++m) {
            columns_->removeCellWidget(r, kMinimumColumn + m);
            columns_->setItem(r, kMinimumColumn + m, reportCell(QString()));
            if (attempts == 0)
                continue;
            auto* box = new QSpinBox(columns_);
            box->setObjectName(QStringLiteral("spnMinimum%1%2").arg(scopes[m]).arg(code));
            box->setRange(0, 9999);
            box->setValue(values[m]);
            box->setFrame(false);
            box->setButtonSymbols(QAbstractSpinBox::NoButtons);
            box->setAlignment(Qt::AlignRight);
            box->setToolTip(QStringLiteral("%1 needed in a %2 for %3 to count")
                                .arg(columnCaption(c, attempts, table),
                                     QString::fromLatin1(scopes[m]).toLower(),
                                     columnCaption(c, code, table)));
            columns_->setCellWidget(r, kMinimumColumn + m, box);
        }
    }
    for (int m = 0; m < 3; ++m)
        columns_->setColumnWidth(kMinimumColumn + m, 62);
}

void RecordBookDialog::keepColumns() {
    const char c = shownCategory_;
    std::vector<int>& ticked = ticked_[c];
    ticked.clear();
    for (int r = 0; r < columns_->rowCount(); ++r) {
        const QTableWidgetItem* item = columns_->item(r, 0);
        const int code = item->data(Qt::UserRole).toInt();
        if (item->checkState() == Qt::Checked)
            ticked.push_back(code);
        int values[3] = {};
        bool any = false;
        for (int m = 0; m < 3; ++m)
            if (auto* box = qobject_cast<QSpinBox*>(columns_->cellWidget(r, kMinimumColumn + m))) {
                values[m] = box->value();
                any = true;
            }
        if (any)
            minimums_[c][code] = RecordMinimum{values[0], values[1], values[2]};
    }
}

void RecordBookDialog::openSelection() {
    // The Special Select list shows the games of the latest season ticked that can be read; the
    // marks chosen there count for that season, the others keep the marks of their game files.
    std::vector<GameRecord> games;
    std::string season;
    for (int r = seasons_->count() - 1; r >= 0 && season.empty(); --r) {
        if (seasons_->item(r)->checkState() != Qt::Checked)
            continue;
        SeasonSet one = openSeasons({list_.seasons[static_cast<std::size_t>(r)]}, {});
        if (one.seasons.empty())
            continue;
        season = one.seasons.front().label;
        games = std::move(one.seasons.front().team.games);
    }
    if (season == marksSeason_ && !marksSeason_.empty())
        applyMarks(games, marks_);
    ComputeDialog dialog(selection_, context_.session.config, games, context_.prompter, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    selection_ = dialog.selection();
    marks_ = dialog.markedGames();
    marksSeason_ = season;
    selectionText_->setText(fromFileText(selection_.describe(context_.session.config)));
}

void RecordBookDialog::compute() {
    keepColumns();
    std::vector<SeasonEntry> chosen;
    for (int r = 0; r < seasons_->count(); ++r)
        if (seasons_->item(r)->checkState() == Qt::Checked)
            chosen.push_back(list_.seasons[static_cast<std::size_t>(r)]);
    if (chosen.empty()) {
        context_.prompter.ask({"Tick at least one season that can be read.", "Record Book",
                               Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }

    SeasonSet set = openSeasons(chosen, list_.links);
    for (OpenSeason& s : set.seasons)
        if (!marksSeason_.empty() && s.label == marksSeason_)
            applyMarks(s.team.games, marks_);

    RecordBookDocument document;
    std::vector<std::string> messages;
    for (char letter : kCategoryLetters) {
        RecordBookOptions options;
        options.category = letter;
        options.selection = selection_;
        options.columns = ticked_[letter];
        options.top = top_->value();
        options.minimums = minimums_[letter];
        RecordBook book =
            options.columns.empty() ? RecordBook{letter, {}, {}} : computeRecordBook(set, options);
        messages.insert(messages.end(), book.messages.begin(), book.messages.end());
        document.categories.push_back(std::move(book));
    }
    messages.insert(messages.end(), set.messages.begin(), set.messages.end());
    document.team = computeTeamRecords(set, selection_, top_->value());

    std::vector<std::string> labels;
    for (const OpenSeason& s : set.seasons)
        labels.push_back(s.label);
    document.heading.title = "Record Book";
    document.heading.team = set.seasons.empty() ? std::string()
                                                : set.seasons.back().team.name + ", " +
                                                      toFileText(fromUtf8(seasonsLine(labels)));
    document.heading.selection = selection_.describe(context_.session.config);
    document_ = std::move(document);
    computed_ = true;
    showBook();

    // Each season left out is named once, whichever category found it.
    std::vector<std::string> unique;
    for (const std::string& m : messages)
        if (std::find(unique.begin(), unique.end(), m) == unique.end())
            unique.push_back(m);
    if (!unique.empty()) {
        std::string text = "Left out of the record book:";
        for (const std::string& m : unique)
            text += "\n" + m;
        context_.prompter.ask({text, "Record Book", Buttons::Ok, Icon::Warning, Answer::Ok});
    }
}

void RecordBookDialog::showBook() {
    records_->clearContents();
    records_->clearSpans();
    records_->setRowCount(0);
    print_->setEnabled(computed_);
    export_->setEnabled(computed_);
    if (!computed_) {
        heading_->setText(QStringLiteral("Tick what the book should hold, then press Compute."));
        return;
    }
    heading_->setText(fromFileText(document_.heading.team) + QStringLiteral("\n") +
                      fromFileText(document_.heading.selection));
    const char c = shownCategory_;
    const ColumnTable& table = context_.session.columns;
    const auto at = std::find_if(document_.categories.begin(), document_.categories.end(),
                                 [c](const RecordBook& b) { return b.category == c; });
    int row = 0;
    if (at != document_.categories.end()) {
        for (const RecordList& list : at->lists) {
            QString text = columnCaption(c, list.column, table) + QStringLiteral(" - ") +
                           QString::fromLatin1(scopeName(list.scope));
            if (list.minimum > 0)
                text += QStringLiteral(" (at least %1 %2)")
                            .arg(list.minimum)
                            .arg(columnCaption(c, attemptsColumn(c, list.column), table));
            addTitleRow(records_, row, text);
            if (list.entries.empty())
                addNoRecordsRow(records_, row);
            for (const RecordEntry& e : list.entries) {
                records_->setRowCount(row + 1);
                records_->setItem(row, Rank, reportCell(QString::number(e.rank), true));
                records_->setItem(row, Name, reportCell(fromFileText(e.name)));
                records_->setItem(
                    row, Value,
                    reportCell(fromFileText(figureText(c, list.column, e.figure)), true));
                records_->setItem(row, Season, reportCell(fromUtf8(e.season)));
                if (list.scope == RecordScope::Game) {
                    records_->setItem(row, Game, reportCell(QString::number(e.game), true));
                    records_->setItem(row, Date, reportCell(fromFileText(e.date)));
                    records_->setItem(row, Opponent, reportCell(fromFileText(e.opponent)));
                }
                ++row;
            }
        }
        if (at->lists.empty()) {
            addTitleRow(records_, row, QStringLiteral("No columns ticked"));
        }
    }
    showTeamRecords(row);
    for (int c = Rank; c < Opponent; ++c)
        records_->resizeColumnToContents(c);
}

void RecordBookDialog::showTeamRecords(int& row) {
    const auto games = [&](const QString& heading, const std::vector<TeamGameEntry>& entries,
                           bool scored) {
        addTitleRow(records_, row, heading);
        for (const TeamGameEntry& e : entries) {
            records_->setRowCount(row + 1);
            records_->setItem(row, Rank, reportCell(QString::number(e.rank), true));
            records_->setItem(row, Name,
                              reportCell(QStringLiteral("%1-%2").arg(e.scored).arg(e.allowed)));
            records_->setItem(row, Value,
                              reportCell(QString::number(scored ? e.scored : e.allowed), true));
            records_->setItem(row, Season, reportCell(fromUtf8(e.season)));
            records_->setItem(row, Game, reportCell(QString::number(e.game), true));
            records_->setItem(row, Date, reportCell(fromFileText(e.date)));
            records_->setItem(row, Opponent, reportCell(fromFileText(e.opponent)));
            ++row;
        }
        if (entries.empty())
            addNoRecordsRow(records_, row);
    };
    games(QStringLiteral("Team - Most Points Scored in a Game"), document_.team.mostScored, true);
    games(QStringLiteral("Team - Fewest Points Allowed in a Game"), document_.team.fewestAllowed,
          false);
    addTitleRow(records_, row, QStringLiteral("Team - Longest Winning Streak"));
    for (const StreakEntry& e : document_.team.streaks) {
        records_->setRowCount(row + 1);
        records_->setItem(row, Rank, reportCell(QString::number(e.rank), true));
        // "Games 3 to 7" within a season, "2023 Game 9 to 2024 Game 2" across two.
        QString games;
        if (e.fromSeason != e.toSeason)
            games = QStringLiteral("%1 Game %2 to %3 Game %4")
                        .arg(fromUtf8(e.fromSeason))
                        .arg(e.fromGame)
                        .arg(fromUtf8(e.toSeason))
                        .arg(e.toGame);
        else if (e.fromGame != e.toGame)
            games = QStringLiteral("Games %1 to %2").arg(e.fromGame).arg(e.toGame);
        else
            games = QStringLiteral("Game %1").arg(e.fromGame);
        records_->setItem(row, Name, reportCell(games));
        records_->setItem(row, Value, reportCell(QString::number(e.wins), true));
        records_->setItem(row, Season,
                          reportCell(e.fromSeason == e.toSeason
                                         ? fromUtf8(e.fromSeason)
                                         : fromUtf8(e.fromSeason) + '-' + fromUtf8(e.toSeason)));
        ++row;
    }
    if (document_.team.streaks.empty())
        addNoRecordsRow(records_, row);
}

void RecordBookDialog::print() {
    if (!computed_)
        return;
    const RecordBookDocument document = document_;
    const ColumnTable& table = context_.session.columns;
    context_.printer.print(
        this, QStringLiteral("Record Book"), QStringLiteral("Record Book"),
        [&](const PrintOptions& options) { return recordBookPages(document, table, options); });
}

bool RecordBookDialog::exportTo(const QString& path, bool html) {
    const ColumnTable& table = context_.session.columns;
    const std::string contents =
        html ? recordBookHtml(document_, table) : recordBookCsv(document_, table);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void RecordBookDialog::exportBook() {
    if (!computed_)
        return;
    const QString htmlFilter = QStringLiteral("Web page (*.html *.htm)");
    const QString csvFilter = QStringLiteral("CSV (*.csv)");
    QFileDialog dialog(this, QStringLiteral("Export Record Book"));
    dialog.setObjectName(QStringLiteral("dlgExport"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({htmlFilter, csvFilter});
    dialog.setDefaultSuffix(QStringLiteral("html"));
    const QString documents = fromUtf8(platform::documentsFolder());
    if (!documents.isEmpty())
        dialog.setDirectory(documents);
    dialog.selectFile(QStringLiteral("Record Book.html"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        const bool html = filter == htmlFilter;
        dialog.setDefaultSuffix(html ? QStringLiteral("html") : QStringLiteral("csv"));
        dialog.selectFile(html ? QStringLiteral("Record Book.html")
                               : QStringLiteral("Record Book.csv"));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().first();
    const bool html = path.endsWith(QStringLiteral(".html"), Qt::CaseInsensitive) ||
                      path.endsWith(QStringLiteral(".htm"), Qt::CaseInsensitive) ||
                      (dialog.selectedNameFilter() == htmlFilter &&
                       !path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive));
    exportTo(path, html);
}

void openRecordBook(const std::string& configDirectory, ReportContext& context, QWidget* parent) {
    SeasonsList list;
    std::vector<std::string> problems;
    // A file that cannot be read reads as no seasons; the Seasons dialog names its problems.
    (void)readSeasonsFile(seasonsFilePath(configDirectory), list, problems);
    if (list.seasons.empty()) {
        context.prompter.ask({"There are no seasons to report on yet. Add them with Reports, "
                              "Seasons.",
                              "Record Book", Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }
    RecordBookDialog dialog(std::move(list), context, parent);
    dialog.exec();
}

} // namespace scorvane
