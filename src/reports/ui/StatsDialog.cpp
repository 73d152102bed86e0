#include "StatsDialog.h"

#include "TableReportDialog.h"

#include "ComputeDialog.h"
#include "FormatDialogs.h"
#include "FrozenColumnsGrid.h"
#include "PlayerDialogs.h"
#include "ReportGrid.h"
#include "reports/ReportColumns.h"
#include "reports/ReportFormats.h"
#include "storage/Bytes.h"
#include "storage/DiskError.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {
namespace {

constexpr int kMultipleTeams = 0; // the team box's line for every marked team

QString windowTitleOf(char category, const std::vector<TeamSeason>& seasons) {
    return fromUtf8(std::string(reportTitle(category))) + QStringLiteral(" - ") +
           fromFileText(teamsLine(seasons));
}

} // namespace

StatsDialog::StatsDialog(ReportContext& context, char category, std::vector<int> teams,
                         int currentTeam, QWidget* parent)
    : QDialog(parent), context_(context), category_(category), teams_(std::move(teams)),
      currentTeam_(currentTeam) {
    setObjectName(QStringLiteral("frmStats"));
    setModal(true);
    if (teams_.empty())
        teams_.push_back(currentTeam_);
    for (int team : teams_) {
        // A team that cannot be read was reported by the storage layer; what was read counts.
        (void)viewTeamSeason(context_.files, team, seasons_[team]);
    }

    categories_ = categoryBox(this);
    categories_->setCurrentIndex(std::max(0, categoryIndex(category_)));

    teamBox_ = new QComboBox(this);
    teamBox_->setObjectName(QStringLiteral("cboTeams"));
    if (teams_.size() > 1) {
        std::vector<TeamSeason> all;
        for (int team : teams_)
            all.push_back(seasons_[team]);
        teamBox_->addItem(fromFileText(teamsLine(all)), kMultipleTeams);
    }
    for (int team : teams_)
        teamBox_->addItem(fromFileText(seasons_[team].name), team);

    title_ = reportTitleLabel(this);
    selection_ = new QLabel(this);
    selection_->setObjectName(QStringLiteral("lblSelection"));

    grid_ = new FrozenColumnsGrid(this, "grdStatsFrozen");
    grid_->setObjectName(QStringLiteral("grdStats"));
    setUpReportGrid(grid_, true);
    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &StatsDialog::headingClicked);

    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute..."));
    auto* format = namedButton(this, "cmdFormat", QStringLiteral("&Format..."));
    auto* sort = namedButton(this, "cmdSort", QStringLiteral("&Sort..."));
    auto* minimum = namedButton(this, "cmdMin", QStringLiteral("&Minimum..."));
    auto* player = namedButton(this, "cmdPlayer", QStringLiteral("&Player..."));
    auto* team = namedButton(this, "cmdTeam", QStringLiteral("&Team"));
    auto* gameLog = namedButton(this, "cmdGameLog", QStringLiteral("Game &Log..."));
    gameLog->setToolTip(QStringLiteral("The chosen player's line game by game, with a chart"));
    team->setToolTip(QStringLiteral("Report on every player again"));
    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("P&rint..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    connect(compute, &QPushButton::clicked, this, &StatsDialog::openCompute);
    connect(format, &QPushButton::clicked, this, &StatsDialog::openFormat);
    connect(sort, &QPushButton::clicked, this, &StatsDialog::openSort);
    connect(minimum, &QPushButton::clicked, this, &StatsDialog::openMinimum);
    connect(player, &QPushButton::clicked, this, &StatsDialog::openPlayers);
    connect(team, &QPushButton::clicked, this, &StatsDialog::wholeTeam);
    connect(gameLog, &QPushButton::clicked, this, &StatsDialog::openGameLog);
    connect(export_, &QPushButton::clicked, this, &StatsDialog::exportReport);
    connect(print_, &QPushButton::clicked, this, &StatsDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* categoryLabel = labelFor(categories_, QStringLiteral("Categor&y:"));
    auto* teamLabel = labelFor(teamBox_, QStringLiteral("Te&ams:"));
    auto* top = new QHBoxLayout;
    top->addWidget(categoryLabel);
    top->addWidget(categories_);
    top->addSpacing(16);
    top->addWidget(teamLabel);
    top->addWidget(teamBox_, 1);

    const std::vector<QWidget*> order = {compute, format,  sort,    minimum, player,
                                         team,    gameLog, export_, print_,  exit};
    auto* layout =
        reportScreenLayout(this, top, title_, selection_, grid_, buttonRow(order, export_));
    std::vector<QWidget*> tabs = {categories_, teamBox_, grid_};
    tabs.insert(tabs.end(), order.begin(), order.end());
    chainTabOrder(tabs);

    loadFormat();
    this->compute();
    connect(categories_, &QComboBox::currentIndexChanged, this, &StatsDialog::categoryChosen);
    connect(teamBox_, &QComboBox::currentIndexChanged, this, &StatsDialog::teamsChosen);

    fitScreenToGrid(this, layout, grid_, 560);
    grid_->setFocus();
}

std::vector<TeamSeason> StatsDialog::chosenSeasons() const {
    std::vector<TeamSeason> chosen;
    const int team = teamBox_->currentData().toInt();
    for (int t : teams_)
        if (team == kMultipleTeams || t == team)
            chosen.push_back(seasons_.at(t));
    return chosen;
}

int StatsDialog::listTeam() const {
    const int team = teamBox_->currentData().toInt();
    if (team != kMultipleTeams)
        return team;
    return std::find(teams_.begin(), teams_.end(), currentTeam_) != teams_.end() ? currentTeam_
                                                                                 : teams_.front();
}

void StatsDialog::loadFormat() {
    format_ = chosenFormat(context_, category_);
    columns_ = shownColumns(format_);
}

SortSetting StatsDialog::currentSort() const {
    const int k = categoryIndex(category_);
    if (k >= 0 && context_.sort[static_cast<std::size_t>(k)])
        return *context_.sort[static_cast<std::size_t>(k)];
    return SortSetting{format_.sortColumn, format_.sortDirection == 'A' ? 'A' : 'D'};
}

void StatsDialog::compute() {
    // The statistics are read as they are computed: a disk that fails meanwhile meets the disk
    // error handler, and Retry computes again.
    const Status read = withDiskErrors(context_.prompter, [&] {
        report_ = ComputeStatistics(category_, chosenSeasons(), context_.selection, filter_);
        return report_.status;
    });
    if (!read)
        report_ = StatReport{}; // figures short of some records are not shown
    rosterOrder_ = report_.players;
    applySort();
    showReport();
    grid_->horizontalScrollBar()->setValue(0); // a new report starts at its left edge
    if (!report_.overflows.empty())
        context_.prompter.ask(Message{"Overflow", std::string(reportTitle(category_)), Buttons::Ok,
                                      Icon::Critical, Answer::Ok});
}

void StatsDialog::applySort() {
    report_.players = rosterOrder_;
    const SortSetting sort = currentSort();
    sortPlayers(report_, sort.column, sort.direction);
}

StatisticsDocument StatsDialog::document() const {
    StatisticsDocument d;
    d.report = report_;
    d.columns = columns_;
    d.heading.title = trim(format_.reportName);
    if (d.heading.title.empty())
        d.heading.title = std::string(reportTitle(category_));
    d.heading.team = teamsLine(chosenSeasons());
    d.heading.selection = context_.selection.describe(context_.session.config);
    d.emptyText = context_.selection.emptyReportText();
    return d;
}

void StatsDialog::showHeadings() {
    QStringList headings = {QStringLiteral("No"), QStringLiteral("Name")};
    if (report_.multipleTeams)
        headings << QStringLiteral("Team");
    setReportHeadings(grid_, headings,
                      report_.multipleTeams ? std::vector<int>{1, 2} : std::vector<int>{1},
                      category_, columns_, context_.session.columns);
}

void StatsDialog::showReport() {
    const StatisticsDocument d = document();
    setWindowTitle(windowTitleOf(category_, chosenSeasons()));
    title_->setText(fromFileText(d.heading.title));
    QString selection = fromFileText(d.heading.selection);
    if (filter_.minimumGames > 1)
        selection += QStringLiteral("; players with at least %1 games").arg(filter_.minimumGames);
    if (!filter_.players.empty())
        selection += QStringLiteral("; %1 chosen players").arg(filter_.players.size());
    selection_->setText(selection);

    showHeadings();
    const int lead = report_.multipleTeams ? 3 : 2;
    auto fillRow = [&](int row, const PlayerFigures& f, bool totals) {
        setNumberAndName(grid_, row, f, totals);
        if (report_.multipleTeams)
            grid_->setItem(row, 2,
                           reportCell(totals ? QString() : fromFileText(f.teamShortName), false));
        setFigureCells(grid_, row, lead, category_, columns_, f, totals);
    };
    if (report_.empty()) {
        showEmptyReport(grid_, d.emptyText);
    } else {
        const int players = static_cast<int>(report_.players.size());
        grid_->setRowCount(players + 1);
        for (int row = 0; row < players; ++row)
            fillRow(row, report_.players[static_cast<std::size_t>(row)], false);
        fillRow(players, report_.totals, true);
    }
    auto* grid = static_cast<FrozenColumnsGrid*>(grid_);
    const SortSetting sort = currentSort();
    const auto at = std::find(columns_.begin(), columns_.end(), int(sort.column));
    fitReportColumns(grid,
                     at == columns_.end() ? -1 : lead + static_cast<int>(at - columns_.begin()),
                     sort.direction);
    // The number and name stay in view while the figures scroll sideways.
    grid->freezeColumns(report_.empty() ? 0 : lead);

    const bool usable = report_.overflows.empty();
    print_->setEnabled(usable);
    export_->setEnabled(usable);
}

void StatsDialog::headingClicked(int section) {
    const int lead = report_.multipleTeams ? 3 : 2;
    const int index = section - lead;
    if (index < 0 || index >= static_cast<int>(columns_.size()))
        return;
    const int code = columns_[static_cast<std::size_t>(index)];
    const SortSetting sort = clickedSort(currentSort(), code);
    if (const int k = categoryIndex(category_); k >= 0)
        context_.sort[static_cast<std::size_t>(k)] = sort;
    applySort();
    showReport();
}

void StatsDialog::setCategory(char category) {
    const int k = categoryIndex(category);
    if (k < 0)
        return;
    if (categories_->currentIndex() != k) {
        categories_->setCurrentIndex(k); // computes through categoryChosen
        return;
    }
    category_ = category;
    loadFormat();
    compute();
}

void StatsDialog::categoryChosen() {
    const QVariant letter = categories_->currentData();
    category_ = letter.toChar().toLatin1();
    // A player choice of one category means little in another.
    filter_ = PlayerFilter{};
    loadFormat();
    compute();
}

void StatsDialog::teamsChosen() {
    filter_.players.clear();
    compute();
}

void StatsDialog::openCompute() {
    TeamSeason& listed = seasons_[listTeam()];
    ComputeDialog dialog(context_.selection, context_.session.config, listed.games,
                         context_.prompter, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    context_.selection = dialog.selection();
    applyMarks(listed.games, dialog.markedGames());
    compute();
}

void StatsDialog::openFormat() {
    const int k = categoryIndex(category_);
    if (k < 0)
        return;
    auto& chosen = context_.chosenReport[static_cast<std::size_t>(k)];
    ReportSelectDialog dialog(context_.files, context_.prompter, context_.session.config,
                              context_.session.columns, category_, chosen, this);
    const ReportFormatRecord before = format_;
    if (dialog.exec() == QDialog::Accepted)
        chosen = dialog.chosen();
    // Reports may have been changed or deleted even when the list was left with Cancel.
    loadFormat();
    // The sort chosen on the screen belongs to the category and outlasts the format dialog. It
    // gives way when the report shown now brings another sort of its own (its sort was changed,
    // or a report with a different sort was chosen) and when its column is no longer shown.
    auto& sort = context_.sort[static_cast<std::size_t>(k)];
    const bool ownSortChanged =
        format_.sortColumn != before.sortColumn || format_.sortDirection != before.sortDirection;
    if (sort && (ownSortChanged ||
                 std::find(columns_.begin(), columns_.end(), int(sort->column)) == columns_.end()))
        sort.reset();
    applySort();
    showReport();
    grid_->horizontalScrollBar()->setValue(0); // other columns: from the left edge again
}

void StatsDialog::openSort() {
    SortDialog dialog(category_, context_.session.columns, currentSort(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (const int k = categoryIndex(category_); k >= 0)
        context_.sort[static_cast<std::size_t>(k)] = dialog.sort();
    applySort();
    showReport();
}

void StatsDialog::openMinimum() {
    MinimumDialog dialog(filter_.minimumGames, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    filter_.minimumGames = dialog.minimum();
    compute();
}

void StatsDialog::openPlayers() {
    // Every player the report would list without a choice of players.
    PlayerFilter everyone;
    everyone.minimumGames = filter_.minimumGames;
    const StatReport all =
        ComputeStatistics(category_, chosenSeasons(), context_.selection, everyone);
    std::vector<PlayerChoice> players;
    for (const PlayerFigures& f : all.players) {
        QString line =
            QStringLiteral("%1 %2").arg(f.number, 3).arg(fromFileText(trimRight(f.name)));
        if (all.multipleTeams)
            line = fromFileText(fit(f.teamShortName, width::shortName)) + QLatin1Char(' ') + line;
        players.push_back({f.teamNumber, f.number, line});
    }
    IndividualDialog dialog(players, filter_.players, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    filter_.players = dialog.chosen();
    compute();
}

void StatsDialog::wholeTeam() {
    filter_ = PlayerFilter{};
    compute();
}

void StatsDialog::openGameLog() {
    const int row = grid_->currentRow();
    if (row < 0 || row >= static_cast<int>(report_.players.size())) {
        context_.prompter.ask(Message{"Choose a player's line first.", "Game Log", Buttons::Ok,
                                      Icon::Information, Answer::Ok});
        return;
    }
    const PlayerFigures& player = report_.players[static_cast<std::size_t>(row)];
    // The column the cursor is in is the one charted.
    const int figure = grid_->currentColumn() - (report_.multipleTeams ? 3 : 2);
    const int chartColumn = figure >= 0 && figure < static_cast<int>(columns_.size())
                                ? columns_[static_cast<std::size_t>(figure)]
                                : 0;
    GameLogDialog log(context_, player.teamNumber, category_, player.number, columns_, chartColumn,
                      this);
    log.exec();
}

void StatsDialog::print() {
    const StatisticsDocument d = document();
    const ColumnTable& table = context_.session.columns;
    context_.printer.print(
        this, fromUtf8(std::string(reportTitle(category_))), fromFileText(d.heading.title),
        [&](const PrintOptions& options) { return statisticsPages(d, table, options); });
}

bool StatsDialog::exportTo(const QString& path, bool html) {
    const StatisticsDocument d = document();
    const ColumnTable& table = context_.session.columns;
    const int top = context_.printer.settings().options.topPlayers;
    const std::string contents =
        html ? statisticsHtml(d, table, top) : statisticsCsv(d, table, top);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void StatsDialog::exportReport() {
    QString path;
    bool html = false;
    if (chooseExportFile(this, document().heading, path, html))
        exportTo(path, html);
}

} // namespace scorvane
