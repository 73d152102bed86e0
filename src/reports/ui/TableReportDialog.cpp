#include "TableReportDialog.h"

#include "ChartDialog.h"
#include "ComputeDialog.h"
#include "FormatDialogs.h"
#include "reports/ChartData.h"
#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "storage/DiskError.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace scorvane {

// --- the table on screen --------------------------------------------------------------------

TableReportDialog::TableReportDialog(ReportContext& context, const char* objectName,
                                     QWidget* parent)
    : QDialog(parent), context_(context) {
    setObjectName(QString::fromLatin1(objectName));
    setModal(true);
    options_ = new QHBoxLayout;
    selection_ = new QLabel(this);
    selection_->setObjectName(QStringLiteral("lblSelection"));
    selection_->setTextFormat(Qt::PlainText);
    table_ = new QTableWidget(this);
    table_->setObjectName(QStringLiteral("tblReport"));
    table_->verticalHeader()->hide();
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setFont(reportScreenFont());
}

void TableReportDialog::finish(bool withChart) {
    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute..."));
    chart_ = namedButton(this, "cmdChart", QStringLiteral("C&hart..."));
    chart_->setVisible(withChart);
    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("&Print..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    compute->setEnabled(selectionGames() != nullptr);
    connect(compute, &QPushButton::clicked, this, &TableReportDialog::openCompute);
    connect(chart_, &QPushButton::clicked, this, [this] { showChart(); });
    connect(export_, &QPushButton::clicked, this, &TableReportDialog::exportReport);
    connect(print_, &QPushButton::clicked, this, &TableReportDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(options_);
    layout->addWidget(selection_);
    layout->addWidget(table_, 1);
    layout->addLayout(buttonRow({compute, chart_, export_, print_, exit}, export_));
    resize(900, 480);
    refresh();
    table_->setFocus();
}

void TableReportDialog::refresh() {
    report_ = build();
    setWindowTitle(fromFileText(report_.heading.title + " - " + report_.heading.team));
    selection_->setText(fromFileText(report_.heading.selection));
    table_->clear();
    table_->setColumnCount(static_cast<int>(report_.columns.size()));
    QStringList labels;
    for (const auto& c : report_.columns)
        labels << fromFileText(c.heading);
    table_->setHorizontalHeaderLabels(labels);
    const auto align = [&](int c) {
        return Qt::AlignVCenter |
               (report_.columns[static_cast<std::size_t>(c)].text ? Qt::AlignLeft : Qt::AlignRight);
    };
    for (int c = 0; c < table_->columnCount(); ++c)
        table_->horizontalHeaderItem(c)->setTextAlignment(align(c));

    std::vector<std::vector<std::string>> rows = report_.rows;
    rows.insert(rows.end(), report_.closing.begin(), report_.closing.end());
    const bool empty = report_.rows.empty();
    table_->setRowCount(empty ? 1 : static_cast<int>(rows.size()));
    if (empty)
        table_->setItem(0, 0, new QTableWidgetItem(fromFileText(report_.emptyText)));
    for (int r = 0; !empty && r < static_cast<int>(rows.size()); ++r) {
        const auto& cells = rows[static_cast<std::size_t>(r)];
        for (int c = 0; c < static_cast<int>(cells.size()) && c < table_->columnCount(); ++c) {
            auto* item = new QTableWidgetItem(fromFileText(cells[static_cast<std::size_t>(c)]));
            item->setTextAlignment(align(c));
            if (r >= static_cast<int>(report_.rows.size())) {
                QFont font = item->font();
                font.setBold(true);
                item->setFont(font);
            }
            table_->setItem(r, c, item);
        }
    }
    table_->resizeColumnsToContents();
    print_->setEnabled(!empty);
    export_->setEnabled(!empty);
    chart_->setEnabled(!empty);
}

void TableReportDialog::openCompute() {
    std::vector<GameRecord>* games = selectionGames();
    if (!games)
        return;
    ComputeDialog dialog(context_.selection, context_.session.config, *games, context_.prompter,
                         this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    context_.selection = dialog.selection();
    applyMarks(*games, dialog.markedGames());
    refresh();
}

void TableReportDialog::print() {
    const TableReport report = report_;
    context_.printer.print(
        this, reportName(), fromFileText(report.heading.title),
        [&](const PrintOptions& options) { return tablePages(report, options); });
}

bool TableReportDialog::exportTo(const QString& path, bool html) {
    const std::string contents = html ? tableHtml(report_) : tableCsv(report_);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void TableReportDialog::exportReport() {
    QString path;
    bool html = false;
    if (chooseExportFile(this, report_.heading, path, html))
        exportTo(path, html);
}

void openGameScores(ReportContext& context, int team, QWidget* parent) {
    GameScoresDialog dialog(context, team, parent);
    dialog.exec();
}

void openStandings(ReportContext& context, const std::vector<int>& teams, QWidget* parent) {
    StandingsDialog dialog(context, teams, parent);
    dialog.exec();
}

// --- game scores ----------------------------------------------------------------------------

GameScoresDialog::GameScoresDialog(ReportContext& context, int team, QWidget* parent)
    : TableReportDialog(context, "frmScores", parent) {
    // A team that cannot be read was reported by the storage layer; what was read counts.
    (void)viewTeamSeason(context_.files, team, season_);
    longForm_ = new QRadioButton(QStringLiteral("&Long form"), this);
    longForm_->setObjectName(QStringLiteral("optLongForm"));
    auto* shortForm = new QRadioButton(QStringLiteral("&Short form"), this);
    shortForm->setObjectName(QStringLiteral("optShortForm"));
    longForm_->setChecked(true);
    options_->addWidget(longForm_);
    options_->addWidget(shortForm);
    options_->addStretch(1);
    connect(longForm_, &QRadioButton::toggled, this, [this] { refresh(); });
    finish(true);
}

TableReport GameScoresDialog::build() {
    games_ = computeGameScores(season_, context_.selection, context_.session.config);
    return gameScoresReport(
        games_, longForm_->isChecked(),
        {"Game Scores", season_.name, context_.selection.describe(context_.session.config)});
}

void GameScoresDialog::showChart() {
    const QuarterPoints points = quarterPoints(games_);
    ChartDialog chart(quarterPointsChart(points, fromFileText(season_.name)),
                      QStringLiteral("Points by Quarter - ") + fromFileText(season_.name), this);
    chart.exec();
}

// --- standings ------------------------------------------------------------------------------

StandingsDialog::StandingsDialog(ReportContext& context, const std::vector<int>& teams,
                                 QWidget* parent)
    : TableReportDialog(context, "frmStandings", parent) {
    for (int team : teams) {
        TeamSeason season;
        // A team that cannot be read was reported by the storage layer; what was read counts.
        (void)viewTeamSeason(context_.files, team, season);
        seasons_.push_back(std::move(season));
    }
    finish(false);
}

std::vector<GameRecord>* StandingsDialog::selectionGames() {
    // The games listed for Special Select are the first team's.
    return seasons_.empty() ? nullptr : &seasons_.front().games;
}

TableReport StandingsDialog::build() {
    return standingsReport(computeStandings(seasons_, context_.selection),
                           {"Team Standings", teamsLine(seasons_),
                            context_.selection.describe(context_.session.config)});
}

// --- a player's game log --------------------------------------------------------------------

GameLogDialog::GameLogDialog(ReportContext& context, int team, char category, int playerNumber,
                             std::vector<int> columns, int chartColumn, QWidget* parent)
    : TableReportDialog(context, "frmGameLog", parent), category_(category), player_(playerNumber),
      columns_(std::move(columns)) {
    // A team that cannot be read was reported by the storage layer; what was read counts.
    (void)viewTeamSeason(context_.files, team, season_);
    auto* label = new QLabel(QStringLiteral("Chart &column:"), this);
    chartColumn_ = new QComboBox(this);
    chartColumn_->setObjectName(QStringLiteral("cboChartColumn"));
    label->setBuddy(chartColumn_);
    const ColumnTable& table = context_.session.columns;
    for (int code : columns_) {
        if (!isReportColumn(category_, code) || code == 1)
            continue;
        chartColumn_->addItem(columnCaption(category_, code, table), code);
        if (code == chartColumn)
            chartColumn_->setCurrentIndex(chartColumn_->count() - 1);
    }
    options_->addWidget(label);
    options_->addWidget(chartColumn_);
    options_->addStretch(1);
    finish(true);
}

QString GameLogDialog::reportName() const {
    return fromUtf8(std::string(reportTitle(category_))) + QStringLiteral(" by Game");
}

TableReport GameLogDialog::build() {
    // A disk that fails while the statistics are read meets the disk error handler.
    (void)withDiskErrors(context_.prompter, [&] {
        log_ = computeGameLog(category_, season_, context_.selection, player_);
        return log_.status;
    });
    const std::string title = std::string(reportTitle(category_)) + " by Game - " +
                              digits(player_) + " " + trimRight(log_.playerName);
    return gameLogReport(
        log_, columns_, context_.session.columns,
        {title, season_.name, context_.selection.describe(context_.session.config)});
}

void GameLogDialog::showChart() {
    const int code = chartColumn_->currentData().toInt();
    if (code == 0)
        return;
    std::vector<std::string> labels;
    const std::vector<double> values = columnByGame(log_, code, labels);
    const QString column = chartColumn_->currentText();
    const QString player = fromFileText(trimRight(log_.playerName));
    ChartDialog chart(gameByGameChart(values, labels, column),
                      column + QStringLiteral(" by Game - ") + player, this);
    chart.exec();
}

} // namespace scorvane
