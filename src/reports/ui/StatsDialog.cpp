#include "StatsDialog.h"

#include "TableReportDialog.h"

#include "ComputeDialog.h"
#include "FormatDialogs.h"
#include "PlayerDialogs.h"
#include "reports/ReportColumns.h"
#include "reports/ReportFormats.h"
#include "storage/Bytes.h"
#include "storage/DiskError.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {
namespace {

constexpr int kMultipleTeams = 0; // the team box's line for every marked team

QPushButton* button(QWidget* parent, const char* name, const QString& text) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QTableWidgetItem* cell(const QString& text, bool number, bool bold = false) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setTextAlignment(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
    if (bold) {
        QFont font = item->font();
        font.setBold(true);
        item->setFont(font);
    }
    return item;
}

// The report grid. Its first columns (the player's number and name, and the team on a report
// over several teams) stay in view while the figures scroll sideways: a second view over the same
// items and the same selection lies over the grid's left edge, shows only those columns and
// scrolls up and down with the grid. The grid keeps the keyboard; the cell it moves to is scrolled
// clear of the frozen columns.
class FrozenColumnsGrid : public QTableWidget {
public:
    explicit FrozenColumnsGrid(QWidget* parent) : QTableWidget(parent) {
        setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        frozen_ = new QTableView(this);
        frozen_->setObjectName(QStringLiteral("grdStatsFrozen"));
        frozen_->setModel(model());
        frozen_->setSelectionModel(selectionModel());
        frozen_->setFocusPolicy(Qt::NoFocus);
        frozen_->setFrameShape(QFrame::NoFrame);
        frozen_->setEditTriggers(QAbstractItemView::NoEditTriggers);
        frozen_->setSelectionBehavior(QAbstractItemView::SelectRows);
        frozen_->setSelectionMode(QAbstractItemView::SingleSelection);
        frozen_->setWordWrap(false);
        frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        frozen_->verticalHeader()->hide();
        frozen_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        frozen_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        frozen_->horizontalHeader()->setSectionsClickable(false);
        frozen_->horizontalHeader()->setHighlightSections(false);
        frozen_->hide();
        viewport()->stackUnder(frozen_);
        connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { layoutFrozen(); });
        connect(verticalScrollBar(), &QAbstractSlider::valueChanged, frozen_->verticalScrollBar(),
                &QAbstractSlider::setValue);
        connect(frozen_->verticalScrollBar(), &QAbstractSlider::valueChanged, verticalScrollBar(),
                &QAbstractSlider::setValue);
    }

    // How many columns from the left stay in view; 0 lets every column scroll.
    void freezeColumns(int count) {
        frozenCount_ = count;
        layoutFrozen();
    }

    // The width of a column's widest item.
    int contentsWidth(int column) const { return sizeHintForColumn(column); }

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override {
        if (frozenCount_ == 0 || !index.isValid()) {
            QTableWidget::scrollTo(index, hint);
            return;
        }
        QScrollBar* sideways = horizontalScrollBar();
        const int kept = sideways->value();
        QTableWidget::scrollTo(index, hint);
        if (index.column() < frozenCount_) {
            sideways->setValue(kept); // always in view: only the rows scroll
            return;
        }
        const int covered = frozenWidth() - visualRect(index).left();
        if (covered > 0)
            sideways->setValue(sideways->value() - covered);
    }

protected:
    void updateGeometries() override {
        QTableWidget::updateGeometries();
        layoutFrozen();
    }
    void resizeEvent(QResizeEvent* event) override {
        QTableWidget::resizeEvent(event);
        layoutFrozen();
    }

private:
    int frozenWidth() const {
        int width = 0;
        for (int c = 0; c < std::min(frozenCount_, columnCount()); ++c)
            width += columnWidth(c);
        return width;
    }

    void layoutFrozen() {
        if (!frozen_)
            return; // the grid's own set-up, before the frozen view is there
        if (frozenCount_ == 0 || columnCount() == 0) {
            frozen_->hide();
            return;
        }
        for (int c = 0; c < columnCount(); ++c) {
            frozen_->setColumnHidden(c, c >= frozenCount_);
            if (c < frozenCount_)
                frozen_->setColumnWidth(c, columnWidth(c));
        }
        frozen_->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
        frozen_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
        frozen_->setGeometry(viewport()->x(), horizontalHeader()->y(), frozenWidth(),
                             horizontalHeader()->height() + viewport()->height());
        frozen_->verticalScrollBar()->setValue(verticalScrollBar()->value());
        frozen_->show();
    }

    QTableView* frozen_ = nullptr;
    int frozenCount_ = 0;
};

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

    categories_ = new QComboBox(this);
    categories_->setObjectName(QStringLiteral("cboCategory"));
    for (char letter : kCategoryLetters)
        categories_->addItem(fromUtf8(std::string(reportTitle(letter))), QChar::fromLatin1(letter));
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

    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = title_->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    title_->setFont(bold);
    selection_ = new QLabel(this);
    selection_->setObjectName(QStringLiteral("lblSelection"));

    grid_ = new FrozenColumnsGrid(this);
    grid_->setObjectName(QStringLiteral("grdStats"));
    grid_->setFont(reportScreenFont());
    grid_->horizontalHeader()->setFont(reportScreenFont());
    grid_->verticalHeader()->hide();
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->verticalHeader()->setDefaultSectionSize(QFontMetrics(grid_->font()).height() + 6);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setWordWrap(false);
    grid_->horizontalHeader()->setSectionsClickable(true);
    grid_->horizontalHeader()->setHighlightSections(false);
    grid_->horizontalHeader()->setToolTip(QStringLiteral("Click a column to sort by it"));
    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &StatsDialog::headingClicked);

    auto* compute = button(this, "cmdCompute", QStringLiteral("&Compute..."));
    auto* format = button(this, "cmdFormat", QStringLiteral("&Format..."));
    auto* sort = button(this, "cmdSort", QStringLiteral("&Sort..."));
    auto* minimum = button(this, "cmdMin", QStringLiteral("&Minimum..."));
    auto* player = button(this, "cmdPlayer", QStringLiteral("&Player..."));
    auto* team = button(this, "cmdTeam", QStringLiteral("&Team"));
    auto* gameLog = button(this, "cmdGameLog", QStringLiteral("Game &Log..."));
    gameLog->setToolTip(QStringLiteral("The chosen player's line game by game, with a chart"));
    team->setToolTip(QStringLiteral("Report on every player again"));
    export_ = button(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = button(this, "cmdPrint", QStringLiteral("P&rint..."));
    auto* exit = button(this, "cmdExit", QStringLiteral("&Exit"));
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

    auto* categoryLabel = new QLabel(QStringLiteral("Categor&y:"), this);
    categoryLabel->setBuddy(categories_);
    auto* teamLabel = new QLabel(QStringLiteral("Te&ams:"), this);
    teamLabel->setBuddy(teamBox_);
    auto* top = new QHBoxLayout;
    top->addWidget(categoryLabel);
    top->addWidget(categories_);
    top->addSpacing(16);
    top->addWidget(teamLabel);
    top->addWidget(teamBox_, 1);

    auto* buttons = new QHBoxLayout;
    const std::vector<QPushButton*> order = {compute, format,  sort,    minimum, player,
                                             team,    gameLog, export_, print_,  exit};
    for (QPushButton* b : order) {
        if (b == export_)
            buttons->addStretch(1);
        buttons->addWidget(b);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(6);
    layout->addWidget(title_);
    layout->addWidget(selection_);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);

    setTabOrder(categories_, teamBox_);
    setTabOrder(teamBox_, grid_);
    setTabOrder(grid_, order.front());
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);

    loadFormat();
    this->compute();
    connect(categories_, &QComboBox::currentIndexChanged, this, &StatsDialog::categoryChosen);
    connect(teamBox_, &QComboBox::currentIndexChanged, this, &StatsDialog::teamsChosen);

    // Wide enough for the report's columns and a scroll bar beside them, as far as the screen
    // allows.
    const QMargins margins = layout->contentsMargins();
    int width = margins.left() + margins.right() + 2 * grid_->frameWidth() +
                grid_->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, grid_) + 4;
    for (int c = 0; c < grid_->columnCount(); ++c)
        width += grid_->columnWidth(c);
    const QScreen* screen = this->screen();
    const int widest = screen ? screen->availableGeometry().width() - 40 : 1200;
    resize(std::clamp(width, sizeHint().width(), std::max(widest, 640)), 560);
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
    const ColumnTable& table = context_.session.columns;
    QStringList headings = {QStringLiteral("No"), QStringLiteral("Name")};
    if (report_.multipleTeams)
        headings << QStringLiteral("Team");
    for (int code : columns_)
        headings << columnCaption(category_, code, table);
    grid_->clear();
    grid_->clearSpans();
    grid_->setColumnCount(static_cast<int>(headings.size()));
    grid_->setHorizontalHeaderLabels(headings);
    const int lead = report_.multipleTeams ? 3 : 2;
    for (int c = 0; c < grid_->columnCount(); ++c)
        grid_->horizontalHeaderItem(c)->setTextAlignment(
            Qt::AlignVCenter | (c == 0 || c >= lead ? Qt::AlignRight : Qt::AlignLeft));
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
        grid_->setItem(row, 0, cell(totals ? QString() : QString::number(f.number), true, totals));
        grid_->setItem(row, 1,
                       cell(totals ? QStringLiteral("Totals") : fromFileText(trimRight(f.name)),
                            false, totals));
        if (report_.multipleTeams)
            grid_->setItem(row, 2, cell(totals ? QString() : fromFileText(f.teamShortName), false));
        int c = lead;
        for (int code : columns_)
            grid_->setItem(
                row, c++,
                cell(fromFileText(trim(figureText(category_, code, f[code]))), true, totals));
    };
    if (report_.empty()) {
        grid_->setRowCount(1);
        grid_->setItem(0, 0, cell(QString(), true));
        grid_->setItem(0, 1, cell(fromUtf8(d.emptyText), false));
        grid_->setSpan(0, 1, 1, grid_->columnCount() - 1);
    } else {
        const int players = static_cast<int>(report_.players.size());
        grid_->setRowCount(players + 1);
        for (int row = 0; row < players; ++row)
            fillRow(row, report_.players[static_cast<std::size_t>(row)], false);
        fillRow(players, report_.totals, true);
    }
    // Each column as wide as its heading or its widest figure, whichever is wider. The header
    // leaves room for a sort arrow beside every heading while the arrow is shown, so the headings
    // are measured without it and only the sorted column gets that room.
    auto* grid = static_cast<FrozenColumnsGrid*>(grid_);
    QHeaderView* header = grid_->horizontalHeader();
    header->setSortIndicatorShown(false);
    std::vector<int> widths;
    for (int c = 0; c < grid_->columnCount(); ++c)
        widths.push_back(std::max(header->sectionSizeHint(c), grid->contentsWidth(c)));
    const SortSetting sort = currentSort();
    const auto at = std::find(columns_.begin(), columns_.end(), int(sort.column));
    if (at != columns_.end()) {
        // The order itself is handed over; the style draws the arrow its own way for it.
        const int sorted = lead + static_cast<int>(at - columns_.begin());
        header->setSortIndicator(sorted,
                                 sort.direction == 'D' ? Qt::DescendingOrder : Qt::AscendingOrder);
        header->setSortIndicatorShown(true);
        auto& width = widths[static_cast<std::size_t>(sorted)];
        width = std::max(width, header->sectionSizeHint(sorted));
    }
    for (int c = 0; c < grid_->columnCount(); ++c)
        grid_->setColumnWidth(c, widths[static_cast<std::size_t>(c)]);
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
    SortSetting sort = currentSort();
    // The sorted column again turns the order round; another column sorts greatest first.
    sort.direction = sort.column == code && sort.direction == 'D' ? 'A' : 'D';
    sort.column = static_cast<std::int16_t>(code);
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
