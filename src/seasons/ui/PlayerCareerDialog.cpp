#include "PlayerCareerDialog.h"

#include "CareerReportDialog.h"

#include "reports/ChartData.h"
#include "reports/ReportColumns.h"
#include "reports/ReportFormats.h"
#include "reports/ReportOutput.h"
#include "reports/ui/ChartDialog.h"
#include "reports/ui/FormatDialogs.h"
#include "reports/ui/ReportGrid.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

namespace scorvane {
namespace {

constexpr int kLead = 3; // Season, No and Name before the figures

} // namespace

PlayerCareerDialog::PlayerCareerDialog(ReportContext& context, std::vector<SeasonEntry> seasons,
                                       std::vector<PlayerLink> links, char category,
                                       const Selection& selection, ScreenMarks marks,
                                       std::string name, std::vector<int> columns, QWidget* parent)
    : QDialog(parent), context_(context), seasons_(std::move(seasons)), links_(std::move(links)),
      selection_(selection), marks_(std::move(marks)), name_(std::move(name)), category_(category),
      columns_(std::move(columns)) {
    setObjectName(QStringLiteral("frmPlayerCareer"));
    setModal(true);

    categories_ = categoryBox(this);
    persons_ = new QComboBox(this);
    persons_->setObjectName(QStringLiteral("cboPerson"));
    persons_->setToolTip(QStringLiteral("More than one player went by this name"));

    title_ = reportTitleLabel(this);
    selectionLabel_ = new QLabel(this);
    selectionLabel_->setObjectName(QStringLiteral("lblSelection"));
    selectionLabel_->setTextFormat(Qt::PlainText);

    table_ = new QTableWidget(this);
    table_->setObjectName(QStringLiteral("tblCareer"));
    setUpReportGrid(table_, false);

    chartColumn_ = new QComboBox(this);
    chartColumn_->setObjectName(QStringLiteral("cboChartColumn"));
    chart_ = namedButton(this, "cmdChart", QStringLiteral("C&hart..."));
    chart_->setToolTip(QStringLiteral("The chosen column season by season"));
    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("P&rint..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    connect(chart_, &QPushButton::clicked, this, &PlayerCareerDialog::showChart);
    connect(export_, &QPushButton::clicked, this, &PlayerCareerDialog::exportCareer);
    connect(print_, &QPushButton::clicked, this, &PlayerCareerDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* categoryLabel = labelFor(categories_, QStringLiteral("Categor&y:"));
    personsLabel_ = labelFor(persons_, QStringLiteral("&Player:"));
    auto* chartLabel = labelFor(chartColumn_, QStringLiteral("Chart &column:"));
    auto* top = new QHBoxLayout;
    top->addWidget(categoryLabel);
    top->addWidget(categories_);
    top->addSpacing(16);
    top->addWidget(personsLabel_);
    top->addWidget(persons_);
    top->addStretch(1);

    reportScreenLayout(
        this, top, title_, selectionLabel_, table_,
        buttonRow({chartLabel, chartColumn_, chart_, export_, print_, exit}, export_));
    chainTabOrder({categories_, persons_, table_, chartColumn_, chart_, export_, print_, exit});

    if (categoryIndex(category_) >= 0) {
        compute(true);
    } else {
        // The first category in which he has results; the seasons left out are told once.
        bool told = false;
        for (char letter : kCategoryLetters) {
            category_ = letter;
            columns_.clear();
            compute(!told);
            told = true;
            if (!careers_.empty())
                break;
        }
        if (careers_.empty())
            category_ = kCategoryLetters.front();
    }
    categories_->setCurrentIndex(std::max(0, categoryIndex(category_)));
    showCareer();
    connect(categories_, &QComboBox::currentIndexChanged, this,
            &PlayerCareerDialog::categoryChosen);
    connect(persons_, &QComboBox::currentIndexChanged, this, [this] { showCareer(); });
    resize(std::max(sizeHint().width(), 860), 420);
    table_->setFocus();
}

void PlayerCareerDialog::compute(bool tell) {
    if (columns_.empty())
        columns_ = shownColumns(defaultFormat(category_));
    SeasonSet set = openMarkedSeasons(seasons_, links_, marks_);
    std::vector<std::string> messages = set.messages;
    std::vector<std::string> read;
    careers_ = playerCareers(set, category_, selection_, name_, &read);
    messages.insert(messages.end(), read.begin(), read.end());
    teamLine_ = seasonsTeamLine(set);
    if (tell)
        tellSeasonsLeftOut(context_.prompter, messages, "Career");
}

int PlayerCareerDialog::person() const {
    return std::max(0, persons_->currentIndex());
}

PlayerCareerDocument PlayerCareerDialog::document() const {
    PlayerCareerDocument d;
    d.category = category_;
    if (!careers_.empty())
        d.career = careers_[static_cast<std::size_t>(
            std::min<int>(person(), static_cast<int>(careers_.size()) - 1))];
    d.columns = columns_;
    const std::string& name = careers_.empty() ? name_ : d.career.career.name;
    d.heading.title = "Career: " + trimRight(trim(name));
    d.heading.team = teamLine_;
    d.heading.selection = selection_.describe(context_.session.config);
    return d;
}

void PlayerCareerDialog::showCareer() {
    // The persons of this name, each told by his seasons and number.
    {
        const QSignalBlocker quiet(persons_);
        const int kept = persons_->currentIndex();
        persons_->clear();
        for (const PlayerCareer& c : careers_) {
            const CareerLine& line = c.career;
            QString seasons = fromUtf8(line.firstSeason);
            if (line.lastSeason != line.firstSeason)
                seasons += QStringLiteral("-") + fromUtf8(line.lastSeason);
            persons_->addItem(QStringLiteral("%1 %2 (%3)")
                                  .arg(line.number)
                                  .arg(fromFileText(trimRight(line.name)), seasons));
        }
        persons_->setCurrentIndex(std::clamp(kept, 0, std::max(0, persons_->count() - 1)));
    }
    persons_->setVisible(careers_.size() > 1);
    personsLabel_->setVisible(careers_.size() > 1);

    const PlayerCareerDocument d = document();
    const ColumnTable& table = context_.session.columns;
    setWindowTitle(fromFileText(d.heading.title) + QStringLiteral(" - ") +
                   fromUtf8(std::string(reportTitle(category_))));
    title_->setText(fromFileText(d.heading.title));
    selectionLabel_->setText(fromFileText(d.heading.team) + QStringLiteral("; ") +
                             fromFileText(d.heading.selection));

    setReportHeadings(table_,
                      {QStringLiteral("Season"), QStringLiteral("No"), QStringLiteral("Name")},
                      {0, 2}, category_, columns_, table);
    auto fillRow = [&](int row, const QString& season, const PlayerFigures& f, bool career) {
        table_->setItem(row, 0, reportCell(season, false, career));
        table_->setItem(row, 1, reportCell(QString::number(f.number), true, career));
        table_->setItem(row, 2, reportCell(fromFileText(trimRight(f.name)), false, career));
        setFigureCells(table_, row, kLead, category_, columns_, f, career);
    };
    const PlayerCareer& career = d.career;
    if (careers_.empty()) {
        table_->setRowCount(1);
        table_->setItem(
            0, 0,
            reportCell(QStringLiteral("No results in this category over these seasons"), false));
        table_->setSpan(0, 0, 1, table_->columnCount());
    } else {
        const int seasons = static_cast<int>(career.seasons.size());
        table_->setRowCount(seasons + 1);
        for (int row = 0; row < seasons; ++row) {
            const auto& line = career.seasons[static_cast<std::size_t>(row)];
            fillRow(row, fromUtf8(line.season), line.figures, false);
        }
        fillRow(seasons, QStringLiteral("Career"), career.career.figures, true);
    }
    table_->resizeColumnsToContents();

    {
        const QSignalBlocker quiet(chartColumn_);
        const int kept = chartColumn_->currentData().toInt();
        chartColumn_->clear();
        for (int code : columns_) {
            if (!isReportColumn(category_, code) || code == 1)
                continue;
            chartColumn_->addItem(columnCaption(category_, code, table), code);
            if (code == kept)
                chartColumn_->setCurrentIndex(chartColumn_->count() - 1);
        }
    }
    const bool any = !careers_.empty();
    chart_->setEnabled(any && chartColumn_->count() > 0);
    chartColumn_->setEnabled(any);
    print_->setEnabled(any);
    export_->setEnabled(any);
}

void PlayerCareerDialog::setCategory(char category) {
    const int k = categoryIndex(category);
    if (k >= 0)
        categories_->setCurrentIndex(k); // computes through categoryChosen when it changes
}

void PlayerCareerDialog::categoryChosen() {
    category_ = categories_->currentData().toChar().toLatin1();
    columns_.clear(); // another category's default columns
    compute(false);   // the seasons left out were told when the screen opened
    showCareer();
}

void PlayerCareerDialog::showChart() {
    const int code = chartColumn_->currentData().toInt();
    if (code == 0 || careers_.empty())
        return;
    const PlayerCareer career = document().career;
    std::vector<double> values;
    std::vector<std::string> labels;
    for (const auto& line : career.seasons) {
        values.push_back(figureNumber(category_, code, line.figures[code]));
        labels.push_back(utf8ToCp1252(line.season));
    }
    const QString column = chartColumn_->currentText();
    const QString player = fromFileText(trimRight(career.career.name));
    ChartDialog chart(gameByGameChart(values, labels, column, QStringLiteral("Season")),
                      column + QStringLiteral(" by Season - ") + player, this);
    chart.exec();
}

void PlayerCareerDialog::print() {
    const PlayerCareerDocument d = document();
    const ColumnTable& table = context_.session.columns;
    context_.printer.print(
        this, QStringLiteral("Career"), fromFileText(d.heading.title),
        [&](const PrintOptions& options) { return playerCareerPages(d, table, options); });
}

bool PlayerCareerDialog::exportTo(const QString& path) {
    const std::string contents = playerCareerCsv(document(), context_.session.columns);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void PlayerCareerDialog::exportCareer() {
    QString path;
    ExportKind kind = ExportKind::Csv;
    const PlayerCareerDocument d = document();
    const QString name = fromUtf8(careerTitle(category_)) + QLatin1Char(' ') +
                         fromFileText(trimRight(d.career.career.name));
    if (!chooseSeasonsExportFile(this, name, false, path, kind))
        return;
    if (kind == ExportKind::Text) {
        // The print dialog's lines per page; the title is this career's.
        PrintOptions options = context_.printer.settings().options;
        options.title = d.heading.title;
        TextFileOutput output(toUtf8(path), false);
        (void)printLines(output, playerCareerPages(d, context_.session.columns, options),
                         &context_.prompter);
        return;
    }
    exportTo(path);
}

void openPlayerCareer(ReportContext& context, const std::string& seasonsFile,
                      const std::string& name, QWidget* parent) {
    if (trim(name).empty()) {
        context.prompter.ask(Message{"Choose a player with a name first.", "Career", Buttons::Ok,
                                     Icon::Information, Answer::Ok});
        return;
    }
    SeasonsList list;
    if (!readSeasonsForReport(context.prompter, seasonsFile, list, "Career"))
        return;
    PlayerCareerDialog dialog(context, list.seasons, list.links, 0, Selection{}, {}, name, {},
                              parent);
    if (dialog.careers().empty()) {
        context.prompter.ask(Message{"No results are recorded for " +
                                         cp1252ToUtf8(trimRight(trim(name))) +
                                         " in the seasons listed.",
                                     "Career", Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }
    dialog.exec();
}

} // namespace scorvane
