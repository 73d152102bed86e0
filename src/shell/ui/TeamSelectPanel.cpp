#include "TeamSelectPanel.h"

#include "shell/TeamSelection.h"
#include "ui/TextCodec.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace scorvane {
namespace {

const char* kPanelStyle = R"(
#frmSelectTeam {
    background: rgba(255, 255, 255, 0.78);
    border: 1px solid #cdd9cc;
    border-radius: 8px;
}
#lblSelectTeamCaption { color: #6a7b6f; }
#lblTeamsSelected { color: #55665a; }
#lblNumberOfTeams { color: #1d3a28; }
#lblCurrentTeam { color: #1d3a28; }
)";

} // namespace

TeamSelectPanel::TeamSelectPanel(TeamSelection& teams, QWidget* parent)
    : QFrame(parent), teams_(teams) {
    setObjectName(QStringLiteral("frmSelectTeam"));
    setStyleSheet(QString::fromLatin1(kPanelStyle));

    // One caption over both halves of the screen: the list on the left, the menu bar above.
    auto* caption = new QLabel(QStringLiteral("Select Team(s)          Choose Menu Option"), this);
    caption->setObjectName(QStringLiteral("lblSelectTeamCaption"));
    caption->setTextFormat(Qt::PlainText);
    QFont captionFont = caption->font();
    captionFont.setBold(true);
    caption->setFont(captionFont);

    auto* selectedLabel = new QLabel(QStringLiteral("Teams Selected:"), this);
    selectedLabel->setObjectName(QStringLiteral("lblTeamsSelected"));
    count_ = new QLabel(QStringLiteral("0"), this);
    count_->setObjectName(QStringLiteral("lblNumberOfTeams"));
    QFont countFont = count_->font();
    countFont.setBold(true);
    count_->setFont(countFont);

    // The team that Games, Roster and Team Name open when several are marked.
    current_ = new QLabel(this);
    current_->setObjectName(QStringLiteral("lblCurrentTeam"));
    current_->setTextFormat(Qt::PlainText);

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstSelectTeam"));
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    list_->setUniformItemSizes(true);
    list_->setAlternatingRowColors(true);
    setFocusProxy(list_);

    connect(list_, &QListWidget::itemSelectionChanged, this, [this] {
        if (!filling_)
            selectionChanged();
    });
    // A click on a marked line that is not the current team makes it current and leaves the marks
    // as they are; any other click marks or unmarks the line.
    list_->viewport()->installEventFilter(this);
    // A double-click toggles the line once on its way; the line always ends up marked and
    // current, and its team's names come up.
    connect(list_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        list_->setCurrentItem(item, QItemSelectionModel::Select);
        selectionChanged();
        emit teamActivated(teams_.currentTeam());
    });

    auto* countRow = new QHBoxLayout;
    countRow->setSpacing(6);
    countRow->addWidget(selectedLabel);
    countRow->addWidget(count_);
    countRow->addSpacing(18);
    countRow->addWidget(current_, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 12, 18, 14);
    layout->setSpacing(6);
    layout->addWidget(caption);
    layout->addLayout(countRow);
    layout->addWidget(list_, 1);
}

void TeamSelectPanel::refresh() {
    filling_ = true;
    const std::vector<std::string> lines = teams_.lines();
    if (list_->count() != static_cast<int>(lines.size())) {
        list_->clear();
        for (const std::string& line : lines)
            list_->addItem(fromFileText(line));
    } else {
        for (int i = 0; i < list_->count(); ++i)
            list_->item(i)->setText(fromFileText(lines[static_cast<std::size_t>(i)]));
    }
    const std::vector<bool> selected = teams_.open();
    list_->setCurrentRow(teams_.currentTeam() - 1, QItemSelectionModel::NoUpdate);
    for (int i = 0; i < list_->count() && i < static_cast<int>(selected.size()); ++i)
        list_->item(i)->setSelected(selected[static_cast<std::size_t>(i)]);
    filling_ = false;
    showCount();
}

void TeamSelectPanel::selectionChanged() {
    std::vector<bool> selected(static_cast<std::size_t>(list_->count()));
    for (int i = 0; i < list_->count(); ++i)
        selected[static_cast<std::size_t>(i)] = list_->item(i)->isSelected();
    teams_.click(selected, list_->currentRow());
    showCount();
}

bool TeamSelectPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_->viewport() && event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QListWidgetItem* item = list_->itemAt(mouse->position().toPoint());
        const int team = item ? list_->row(item) + 1 : 0;
        if (mouse->button() == Qt::LeftButton && mouse->modifiers() == Qt::NoModifier &&
            teams_.isMarked(team) && team != teams_.currentTeam()) {
            teams_.setCurrentTeam(team);
            list_->setCurrentRow(team - 1, QItemSelectionModel::NoUpdate);
            showCount();
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void TeamSelectPanel::showCount() {
    const int count = teams_.count();
    count_->setText(QString::number(count));
    const int current = teams_.currentTeam();
    current_->setText(count > 1 && teams_.isMarked(current)
                          ? QStringLiteral("Current Team: ") +
                                fromFileText(teams_.teamName(current))
                          : QString());
    for (int i = 0; i < list_->count(); ++i) {
        QFont font = list_->item(i)->font();
        font.setBold(count > 1 && i == current - 1 && teams_.isMarked(current));
        list_->item(i)->setFont(font);
    }
    emit countChanged(count);
}

} // namespace scorvane
