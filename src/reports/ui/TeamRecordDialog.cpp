#include "TeamRecordDialog.h"

#include "ComputeDialog.h"
#include "ReportGrid.h"
#include "storage/Bytes.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {
TeamRecordDialog::TeamRecordDialog(ReportContext& context, int team, QWidget* parent)
    : QDialog(parent), context_(context) {
    setObjectName(QStringLiteral("frmRecord"));
    setModal(true);
    // A team that cannot be read was reported by the storage layer; what was read counts.
    (void)viewTeamSeason(context_.files, team, season_);
    setWindowTitle(fromFileText(teamRecordTitle(season_.name)));

    selection_ = new QLabel(this);
    selection_->setObjectName(QStringLiteral("lblSelection"));
    table_ = new QTableWidget(this);
    table_->setObjectName(QStringLiteral("tblRecord"));
    setUpRowsGrid(table_);

    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute..."));
    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("&Print..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    connect(compute, &QPushButton::clicked, this, &TeamRecordDialog::openCompute);
    connect(export_, &QPushButton::clicked, this, &TeamRecordDialog::exportRecord);
    connect(print_, &QPushButton::clicked, this, &TeamRecordDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(selection_);
    layout->addWidget(table_, 1);
    layout->addLayout(buttonRow({compute, export_, print_, exit}, export_));
    chainTabOrder({table_, compute, export_, print_, exit});
    resize(620, 360);

    this->compute();
    compute->setFocus();
}

ReportHeading TeamRecordDialog::heading() const {
    return ReportHeading{"Team Record", season_.name,
                         context_.selection.describe(context_.session.config)};
}

void TeamRecordDialog::compute() {
    record_ = computeTeamRecord({season_}, context_.selection);
    showRecord();
    if (!record_.overflows.empty())
        context_.prompter.ask(
            Message{"Overflow", "Team Record", Buttons::Ok, Icon::Critical, Answer::Ok});
}

void TeamRecordDialog::showRecord() {
    const ConfigRecord& config = context_.session.config;
    selection_->setText(fromFileText(heading().selection));
    const bool ties = record_.anyTies();
    const std::vector<std::string> headers = teamRecordHeaders(ties);
    table_->clear();
    table_->setColumnCount(static_cast<int>(headers.size()));
    QStringList labels;
    for (const auto& h : headers)
        labels << fromUtf8(h);
    table_->setHorizontalHeaderLabels(labels);
    for (int c = 1; c < table_->columnCount(); ++c)
        table_->horizontalHeaderItem(c)->setTextAlignment(Qt::AlignVCenter | Qt::AlignRight);
    table_->horizontalHeaderItem(0)->setTextAlignment(Qt::AlignVCenter | Qt::AlignLeft);

    const std::vector<int> rows = record_.shownRows();
    table_->setRowCount(static_cast<int>(rows.size()));
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        const int row = rows[static_cast<std::size_t>(r)];
        const std::vector<std::string> cells = teamRecordCells(record_, row, config, ties);
        for (int c = 0; c < static_cast<int>(cells.size()); ++c) {
            auto* item = new QTableWidgetItem(fromFileText(cells[static_cast<std::size_t>(c)]));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setTextAlignment(Qt::AlignVCenter | (c == 0 ? Qt::AlignLeft : Qt::AlignRight));
            if (row == kTotalsRow) {
                QFont font = item->font();
                font.setBold(true);
                item->setFont(font);
            }
            table_->setItem(r, c, item);
        }
    }
    table_->resizeColumnsToContents();
    const int numberWidth = table_->fontMetrics().horizontalAdvance(QStringLiteral("00000000"));
    for (int c = 1; c < table_->columnCount(); ++c)
        table_->setColumnWidth(c, std::max(table_->columnWidth(c), numberWidth));
    const bool usable = !record_.empty() && record_.overflows.empty();
    print_->setEnabled(usable);
    export_->setEnabled(usable);
}

void TeamRecordDialog::openCompute() {
    ComputeDialog dialog(context_.selection, context_.session.config, season_.games,
                         context_.prompter, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    context_.selection = dialog.selection();
    applyMarks(season_.games, dialog.markedGames());
    compute();
}

void TeamRecordDialog::print() {
    const ReportHeading h = heading();
    const ConfigRecord& config = context_.session.config;
    context_.printer.print(
        this, QStringLiteral("Team Record"), QStringLiteral("Team Record"),
        [&](const PrintOptions& options) { return teamRecordPages(record_, config, h, options); });
}

bool TeamRecordDialog::exportTo(const QString& path, bool html) {
    const ConfigRecord& config = context_.session.config;
    const std::string contents =
        html ? teamRecordHtml(record_, config, heading()) : teamRecordCsv(record_, config);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void TeamRecordDialog::exportRecord() {
    QString path;
    bool html = false;
    if (chooseExportFile(this, heading(), path, html))
        exportTo(path, html);
}

} // namespace scorvane
