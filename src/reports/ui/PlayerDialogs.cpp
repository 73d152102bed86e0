#include "PlayerDialogs.h"

#include "storage/Bytes.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace scorvane {

MinimumDialog::MinimumDialog(int minimum, QWidget* parent) : QDialog(parent), minimum_(minimum) {
    setObjectName(QStringLiteral("frmMinimum"));
    setWindowTitle(QStringLiteral("Minimum Games"));
    setModal(true);

    box_ = new QLineEdit(QString::number(minimum), this);
    box_->setObjectName(QStringLiteral("txtMin"));
    box_->setMaxLength(3);
    box_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,3}")), box_));
    box_->setMaximumWidth(box_->fontMetrics().horizontalAdvance(QStringLiteral("000000")));
    selectAllOnFocus(box_);
    auto* before = new QLabel(QStringLiteral("Less than"), this);
    before->setObjectName(QStringLiteral("lblLessThan"));
    before->setBuddy(box_);
    auto* after = new QLabel(QStringLiteral(" Games"), this);
    after->setObjectName(QStringLiteral("lblGames"));
    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &MinimumDialog::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* line = new QHBoxLayout;
    line->addWidget(new QLabel(QStringLiteral("Leave out players with"), this));
    line->addWidget(before);
    line->addWidget(box_);
    line->addWidget(after);
    line->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(line);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    box_->setFocus();
}

void MinimumDialog::confirm() {
    minimum_ = static_cast<int>(leadingNumber(toUtf8(box_->text())));
    accept();
}

IndividualDialog::IndividualDialog(const std::vector<PlayerChoice>& players,
                                   const std::set<std::pair<int, int>>& chosen, QWidget* parent)
    : QDialog(parent), players_(players), chosen_(chosen) {
    setObjectName(QStringLiteral("frmIndividual"));
    setWindowTitle(QStringLiteral("Individual Players"));
    setModal(true);

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstPlayers"));
    // A click or Space chooses a player or leaves him out again.
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    for (const PlayerChoice& p : players_) {
        auto* item = new QListWidgetItem(p.line, list_);
        item->setSelected(chosen.count({p.team, p.number}) != 0);
    }
    list_->setMinimumWidth(list_->fontMetrics().horizontalAdvance(QString(32, QLatin1Char('M'))));
    auto* label = new QLabel(QStringLiteral("&Players to report on:"), this);
    label->setBuddy(list_);

    auto* all = new QPushButton(QStringLiteral("Choose &All"), this);
    all->setObjectName(QStringLiteral("cmdAll"));
    auto* none = new QPushButton(QStringLiteral("C&lear"), this);
    none->setObjectName(QStringLiteral("cmdClear"));
    auto [ok, cancel] = okCancelButtons(this);
    connect(all, &QPushButton::clicked, list_, &QListWidget::selectAll);
    connect(none, &QPushButton::clicked, list_, &QListWidget::clearSelection);
    connect(ok, &QPushButton::clicked, this, &IndividualDialog::confirm);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(all);
    buttons->addWidget(none);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* left = new QVBoxLayout;
    left->addWidget(label);
    left->addWidget(list_, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(buttons);
    setTabOrder(list_, all);
    setTabOrder(all, none);
    setTabOrder(none, ok);
    setTabOrder(ok, cancel);
    resize(sizeHint().width(), 420);
    list_->setFocus();
}

void IndividualDialog::confirm() {
    chosen_.clear();
    for (int row = 0; row < list_->count(); ++row)
        if (list_->item(row)->isSelected())
            chosen_.insert({players_[static_cast<std::size_t>(row)].team,
                            players_[static_cast<std::size_t>(row)].number});
    // Every player chosen is the whole team.
    if (chosen_.size() == players_.size())
        chosen_.clear();
    accept();
}

} // namespace scorvane
