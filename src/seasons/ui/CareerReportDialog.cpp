#include "CareerReportDialog.h"

#include "PlayerCareerDialog.h"

#include "reports/ReportColumns.h"
#include "reports/ReportOutput.h"
#include "reports/ui/ComputeDialog.h"
#include "reports/ui/FormatDialogs.h"
#include "reports/ui/FrozenColumnsGrid.h"
#include "reports/ui/PlayerDialogs.h"
#include "reports/ui/ReportGrid.h"
#include "storage/Bytes.h"
#include "storage/Cp1252.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {
namespace {

constexpr int kLead = 3; // No, Name and Sns before the figures

// What a message about a season says after its "Season <label>: ".
std::string withoutSeason(const std::string& message, const std::string& label) {
    const std::string prefix = "Season " + label + ": ";
    return message.compare(0, prefix.size(), prefix) == 0 ? message.substr(prefix.size()) : message;
}

std::string joinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

ReportFormatRecord careerFormat(char category) {
    ReportFormatRecord format = defaultFormat(category);
    format.reportName = fit(careerTitle(category), width::reportName);
    format.sortDirection = 'D';
    return format;
}

} // namespace

bool readSeasonsForReport(Prompter& prompter, const std::string& path, SeasonsList& list,
                          const std::string& title) {
    std::vector<std::string> problems;
    if (Status s = readSeasonsFile(path, list, problems); !s) {
        prompter.ask(Message{"The seasons file " + platform::shownPath(path) + " cannot be read (" +
                                 s.message() + ").",
                             title, Buttons::Ok, Icon::Warning, Answer::Ok});
        return false;
    }
    if (!problems.empty())
        prompter.ask(Message{"Some lines of the seasons file " + platform::shownPath(path) +
                                 " were left out:\n" + joinLines(problems),
                             title, Buttons::Ok, Icon::Warning, Answer::Ok});
    if (list.seasons.empty()) {
        prompter.ask(Message{"No seasons are listed yet. Add them with Reports, Seasons.", title,
                             Buttons::Ok, Icon::Information, Answer::Ok});
        return false;
    }
    return true;
}

SeasonSet openMarkedSeasons(const std::vector<SeasonEntry>& chosen,
                            const std::vector<PlayerLink>& links, const ScreenMarks& marks) {
    SeasonSet set = openSeasons(chosen, links);
    for (OpenSeason& season : set.seasons)
        if (!marks.season.empty() && season.label == marks.season)
            applyMarks(season.team.games, marks.games);
    return set;
}

bool chooseSeasonsExportFile(QWidget* parent, const QString& name, bool withHtml, QString& path,
                             ExportKind& kind) {
    std::vector<ExportKind> kinds = {ExportKind::Csv};
    if (withHtml)
        kinds.push_back(ExportKind::Html);
    kinds.push_back(ExportKind::Text);
    // The name without the characters a file name may not hold.
    const QString fileName =
        fromUtf8(trimRight(suggestedFileName({toUtf8(name)}, "", "")) + ".csv");
    return chooseExportFile(parent, fileName, kinds, path, kind);
}

void tellSeasonsLeftOut(Prompter& prompter, const std::vector<std::string>& messages,
                        const std::string& title) {
    if (!messages.empty())
        prompter.ask(Message{joinLines(messages), title, Buttons::Ok, Icon::Warning, Answer::Ok});
}

CareerReportDialog::CareerReportDialog(ReportContext& context, SeasonsList seasons, char category,
                                       QWidget* parent)
    : QDialog(parent), context_(context), seasons_(std::move(seasons)),
      category_(categoryIndex(category) < 0 ? 'P' : category) {
    setObjectName(QStringLiteral("frmCareers"));
    setModal(true);

    // Each season as it reads now: one that cannot be read is shown with what is wrong with it and
    // cannot be ticked.
    seasonList_ = new QListWidget(this);
    seasonList_->setObjectName(QStringLiteral("lstSeasons"));
    for (const SeasonEntry& entry : seasons_.seasons) {
        const SeasonSet probe = openSeasons({entry}, {});
        auto* item = new QListWidgetItem(seasonList_);
        if (probe.seasons.empty()) {
            const std::string why = probe.messages.empty()
                                        ? std::string("cannot be read")
                                        : withoutSeason(probe.messages.front(), entry.label);
            item->setText(fromUtf8(entry.label) + QStringLiteral("  (") + fromUtf8(why) +
                          QLatin1Char(')'));
            item->setToolTip(fromUtf8(why));
            item->setFlags(Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        } else {
            item->setText(fromUtf8(entry.label) + QStringLiteral("  ") +
                          fromFileText(probe.seasons.front().team.name));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Checked);
        }
    }
    const int rows = std::clamp(seasonList_->count(), 3, 6);
    seasonList_->setMaximumHeight(seasonList_->sizeHintForRow(0) * rows +
                                  2 * seasonList_->frameWidth() + 4);

    categories_ = categoryBox(this);
    categories_->setCurrentIndex(std::max(0, categoryIndex(category_)));

    title_ = reportTitleLabel(this);
    selectionLabel_ = new QLabel(this);
    selectionLabel_->setObjectName(QStringLiteral("lblSelection"));
    selectionLabel_->setTextFormat(Qt::PlainText);

    grid_ = new FrozenColumnsGrid(this, "grdCareersFrozen");
    grid_->setObjectName(QStringLiteral("grdCareers"));
    setUpReportGrid(grid_, true);
    grid_->setToolTip(QStringLiteral("Double-click a player, or press Enter, for his career"));
    grid_->installEventFilter(this);
    connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &CareerReportDialog::headingClicked);
    connect(grid_, &QTableWidget::cellDoubleClicked, this,
            [this](int row, int) { openPlayer(row); });
    if (auto* frozen = grid_->findChild<QTableView*>(QStringLiteral("grdCareersFrozen")))
        connect(frozen, &QTableView::doubleClicked, this,
                [this](const QModelIndex& index) { openPlayer(index.row()); });

    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute..."));
    compute->setToolTip(QStringLiteral("The game types and Special Select the careers count"));
    auto* format = namedButton(this, "cmdFormat", QStringLiteral("&Format..."));
    format->setToolTip(QStringLiteral("The report's columns and sort"));
    auto* sort = namedButton(this, "cmdSort", QStringLiteral("&Sort..."));
    auto* minimum = namedButton(this, "cmdMin", QStringLiteral("&Minimum..."));
    player_ = namedButton(this, "cmdPlayer", QStringLiteral("&Player..."));
    player_->setToolTip(QStringLiteral("The chosen player's career season by season"));
    export_ = namedButton(this, "cmdExport", QStringLiteral("E&xport..."));
    print_ = namedButton(this, "cmdPrint", QStringLiteral("P&rint..."));
    auto* exit = namedButton(this, "cmdExit", QStringLiteral("&Exit"));
    connect(compute, &QPushButton::clicked, this, &CareerReportDialog::openCompute);
    connect(format, &QPushButton::clicked, this, &CareerReportDialog::openFormat);
    connect(sort, &QPushButton::clicked, this, &CareerReportDialog::openSort);
    connect(minimum, &QPushButton::clicked, this, &CareerReportDialog::openMinimum);
    connect(player_, &QPushButton::clicked, this, &CareerReportDialog::openCurrentPlayer);
    connect(export_, &QPushButton::clicked, this, &CareerReportDialog::exportReport);
    connect(print_, &QPushButton::clicked, this, &CareerReportDialog::print);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* seasonsLabel = labelFor(seasonList_, QStringLiteral("Seas&ons:"));
    auto* categoryLabel = labelFor(categories_, QStringLiteral("Categor&y:"));
    auto* chooseCategory = new QHBoxLayout;
    chooseCategory->addWidget(categoryLabel);
    chooseCategory->addWidget(categories_);
    chooseCategory->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addLayout(chooseCategory);
    right->addStretch(1);
    auto* left = new QVBoxLayout;
    left->addWidget(seasonsLabel);
    left->addWidget(seasonList_);
    auto* top = new QHBoxLayout;
    top->addLayout(left, 2);
    top->addSpacing(16);
    top->addLayout(right, 1);

    const std::vector<QWidget*> order = {compute, format,  sort,   minimum,
                                         player_, export_, print_, exit};
    auto* layout =
        reportScreenLayout(this, top, title_, selectionLabel_, grid_, buttonRow(order, export_));
    std::vector<QWidget*> tabs = {seasonList_, categories_, grid_};
    tabs.insert(tabs.end(), order.begin(), order.end());
    chainTabOrder(tabs);

    format_ = careerFormat(category_);
    columns_ = shownColumns(format_);
    sort_ = SortSetting{format_.sortColumn, 'D'};
    this->compute();
    connect(categories_, &QComboBox::currentIndexChanged, this,
            &CareerReportDialog::categoryChosen);
    connect(seasonList_, &QListWidget::itemChanged, this, [this] { this->compute(); });

    fitScreenToGrid(this, layout, grid_, 600);
    grid_->setFocus();
}

std::vector<SeasonEntry> CareerReportDialog::chosenSeasons() const {
    std::vector<SeasonEntry> chosen;
    for (int row = 0; row < seasonList_->count(); ++row)
        if (seasonList_->item(row)->checkState() == Qt::Checked)
            chosen.push_back(seasons_.seasons[static_cast<std::size_t>(row)]);
    return chosen;
}

void CareerReportDialog::compute() {
    SeasonSet set = openMarkedSeasons(chosenSeasons(), seasons_.links, marks_);
    report_ = computeCareers(set, category_, selection_, minimumGames_);
    teamLine_ = seasonsTeamLine(set);
    firstOrder_ = report_.players;
    applySort();
    showReport();
    grid_->horizontalScrollBar()->setValue(0); // a new report starts at its left edge
    // Every season left out, named once for this computation.
    tellSeasonsLeftOut(context_.prompter, set.messages, "Careers");
    if (!report_.overflows.empty())
        context_.prompter.ask(
            Message{"Overflow", careerTitle(category_), Buttons::Ok, Icon::Critical, Answer::Ok});
}

void CareerReportDialog::applySort() {
    report_.players = firstOrder_;
    sortCareers(report_, sort_.column, sort_.direction);
}

CareerDocument CareerReportDialog::document() const {
    CareerDocument d;
    d.report = report_;
    d.columns = columns_;
    d.heading.title = trim(format_.reportName);
    if (d.heading.title.empty())
        d.heading.title = careerTitle(category_);
    d.heading.team = teamLine_;
    d.heading.selection = selection_.describe(context_.session.config);
    if (minimumGames_ > 1)
        d.heading.selection += "; at least " + digits(minimumGames_) + " games";
    d.emptyText = selection_.emptyReportText();
    return d;
}

void CareerReportDialog::showReport() {
    const CareerDocument d = document();
    const ColumnTable& table = context_.session.columns;
    setWindowTitle(fromFileText(d.heading.title) +
                   (d.heading.team.empty() ? QString()
                                           : QStringLiteral(" - ") + fromFileText(d.heading.team)));
    title_->setText(fromFileText(d.heading.title));
    selectionLabel_->setText(fromFileText(d.heading.selection));

    setReportHeadings(grid_, {QStringLiteral("No"), QStringLiteral("Name"), QStringLiteral("Sns")},
                      {1}, category_, columns_, table);
    grid_->horizontalHeaderItem(2)->setToolTip(QStringLiteral("Seasons played"));

    auto fillRow = [&](int row, const PlayerFigures& f, int seasons, bool totals) {
        setNumberAndName(grid_, row, f, totals);
        grid_->setItem(row, 2,
                       reportCell(totals ? QString() : QString::number(seasons), true, totals));
        setFigureCells(grid_, row, kLead, category_, columns_, f, totals);
    };
    if (report_.players.empty()) {
        showEmptyReport(grid_, d.emptyText);
    } else {
        const int players = static_cast<int>(report_.players.size());
        grid_->setRowCount(players + 1);
        for (int row = 0; row < players; ++row) {
            const CareerLine& line = report_.players[static_cast<std::size_t>(row)];
            fillRow(row, line.figures, line.seasons, false);
        }
        fillRow(players, report_.totals, 0, true);
    }

    const auto at = std::find(columns_.begin(), columns_.end(), int(sort_.column));
    fitReportColumns(grid_,
                     at == columns_.end() ? -1 : kLead + static_cast<int>(at - columns_.begin()),
                     sort_.direction);
    // The number and name stay in view while the figures scroll sideways.
    grid_->freezeColumns(report_.players.empty() ? 0 : 2);

    const bool usable = report_.overflows.empty();
    print_->setEnabled(usable);
    export_->setEnabled(usable);
    player_->setEnabled(!report_.players.empty());
}

void CareerReportDialog::headingClicked(int section) {
    const int index = section - kLead;
    if (index < 0 || index >= static_cast<int>(columns_.size()))
        return;
    sort_ = clickedSort(sort_, columns_[static_cast<std::size_t>(index)]);
    applySort();
    showReport();
}

void CareerReportDialog::setCategory(char category) {
    const int k = categoryIndex(category);
    if (k >= 0)
        categories_->setCurrentIndex(k); // computes through categoryChosen when it changes
}

void CareerReportDialog::setMinimumGames(int games) {
    minimumGames_ = games;
    compute();
}

void CareerReportDialog::categoryChosen() {
    category_ = categories_->currentData().toChar().toLatin1();
    format_ = careerFormat(category_);
    columns_ = shownColumns(format_);
    sort_ = SortSetting{format_.sortColumn, 'D'};
    compute();
}

void CareerReportDialog::openCompute() {
    // The Special Select list shows the games of the latest season ticked that can be read (game
    // numbers start again every season); the marks chosen there count for that season, the
    // others keep the marks of their game files.
    std::vector<GameRecord> games;
    std::string season;
    const std::vector<SeasonEntry> chosen = chosenSeasons();
    for (auto entry = chosen.rbegin(); entry != chosen.rend() && season.empty(); ++entry) {
        SeasonSet one = openMarkedSeasons({*entry}, {}, marks_);
        if (one.seasons.empty())
            continue;
        season = one.seasons.front().label;
        games = std::move(one.seasons.front().team.games);
    }
    ComputeDialog dialog(selection_, context_.session.config, games, context_.prompter, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    selection_ = dialog.selection();
    marks_ = ScreenMarks{season, dialog.markedGames()};
    compute();
}

void CareerReportDialog::openFormat() {
    ReportFormatRecord shown = format_;
    shown.sortColumn = sort_.column;
    shown.sortDirection = sort_.direction;
    FormatDialog dialog(shown, context_.session.columns, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    format_ = dialog.format();
    columns_ = shownColumns(format_);
    sort_ = SortSetting{format_.sortColumn, format_.sortDirection == 'A' ? 'A' : 'D'};
    applySort();
    showReport();
    grid_->horizontalScrollBar()->setValue(0);
}

void CareerReportDialog::openSort() {
    SortDialog dialog(category_, context_.session.columns, sort_, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    sort_ = dialog.sort();
    applySort();
    showReport();
}

void CareerReportDialog::openMinimum() {
    MinimumDialog dialog(minimumGames_, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    setMinimumGames(dialog.minimum());
}

bool CareerReportDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            openCurrentPlayer();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void CareerReportDialog::openCurrentPlayer() {
    const int row = grid_->currentRow();
    if (row < 0 || row >= static_cast<int>(report_.players.size())) {
        context_.prompter.ask(Message{"Choose a player's line first.", "Career", Buttons::Ok,
                                      Icon::Information, Answer::Ok});
        return;
    }
    openPlayer(row);
}

void CareerReportDialog::openPlayer(int line) {
    if (line < 0 || line >= static_cast<int>(report_.players.size()))
        return; // the totals line, or no players
    const CareerLine& player = report_.players[static_cast<std::size_t>(line)];
    PlayerCareerDialog dialog(context_, chosenSeasons(), seasons_.links, category_, selection_,
                              marks_, player.name, columns_, this);
    dialog.exec();
}

void CareerReportDialog::print() {
    const CareerDocument d = document();
    const ColumnTable& table = context_.session.columns;
    context_.printer.print(
        this, fromUtf8(careerTitle(category_)), fromFileText(d.heading.title),
        [&](const PrintOptions& options) { return careerPages(d, table, options); });
}

bool CareerReportDialog::exportTo(const QString& path, ExportKind kind) {
    const CareerDocument d = document();
    const ColumnTable& table = context_.session.columns;
    // The print dialog's lines per page and top players; the title is this report's.
    PrintOptions options = context_.printer.settings().options;
    options.title = d.heading.title;
    if (kind == ExportKind::Text) {
        TextFileOutput output(toUtf8(path), false);
        return printLines(output, careerPages(d, table, options), &context_.prompter).isOk();
    }
    const std::string contents = kind == ExportKind::Html ? careerHtml(d, table, options.topPlayers)
                                                          : careerCsv(d.report, d.columns, table);
    return saveReportFile(toUtf8(path), contents, &context_.prompter).isOk();
}

void CareerReportDialog::exportReport() {
    QString path;
    ExportKind kind = ExportKind::Csv;
    if (chooseSeasonsExportFile(this, fromFileText(document().heading.title), true, path, kind))
        exportTo(path, kind);
}

void openCareerReport(ReportContext& context, const std::string& seasonsFile, QWidget* parent) {
    SeasonsList list;
    if (!readSeasonsForReport(context.prompter, seasonsFile, list, "Careers"))
        return;
    CareerReportDialog dialog(context, std::move(list), 'P', parent);
    dialog.exec();
}

} // namespace scorvane
