#include "PlayerNumberDialog.h"

#include "GameScreenDialog.h"
#include "games/PlayerNumber.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

PlayerNumberDialog::PlayerNumberDialog(TeamFiles files, Roster& roster, Prompter& prompter,
                                       const QString& teamName, QWidget* parent)
    : QDialog(parent), files_(std::move(files)), roster_(roster), prompter_(prompter) {
    setObjectName(QStringLiteral("frmPlayerNumber"));
    setWindowTitle(QStringLiteral("Change Player Number - ") + teamName);
    setModal(true);

    list_ = rosterLineList(this, "lstPlayer");
    auto* listLabel = new QLabel(QStringLiteral("Player:"), this);
    listLabel->setBuddy(list_);

    number_ = new QLineEdit(this);
    number_->setObjectName(QStringLiteral("txtNewNumber"));
    number_->setMaxLength(kNewNumberDigits);
    number_->setFixedWidth(fontMetrics().averageCharWidth() * 6);
    acceptScoreKeysOnly(number_);
    selectAllOnFocus(number_);
    auto* numberLabel = new QLabel(QStringLiteral("New Number:"), this);
    numberLabel->setBuddy(number_);

    auto [ok, close] = okCancelButtons(this, "Close", "cmdClose");
    connect(ok, &QPushButton::clicked, this, &PlayerNumberDialog::change);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* side = new QVBoxLayout;
    side->addWidget(numberLabel);
    side->addWidget(number_);
    side->addStretch(1);
    side->addWidget(ok);
    side->addWidget(close);

    auto* listColumn = new QVBoxLayout;
    listColumn->addWidget(listLabel);
    listColumn->addWidget(list_, 1);

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(16);
    layout->addLayout(listColumn, 1);
    layout->addLayout(side);
    setTabOrder(list_, number_);
    setTabOrder(number_, ok);
    setTabOrder(ok, close);
    resize(sizeHint().width(), 460);

    showPlayers();
    list_->setCurrentRow(0);
    list_->setFocus();
}

void PlayerNumberDialog::showPlayers() {
    const std::vector<std::string> lines = roster_.listLines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const QString text = fromFileText(lines[i]);
        if (QListWidgetItem* item = list_->item(static_cast<int>(i)))
            item->setText(text);
        else
            list_->addItem(text);
    }
}

void PlayerNumberDialog::change() {
    const int row = list_->currentRow();
    if (row < 0) {
        list_->setFocus();
        return;
    }
    bool changed = false;
    // Refusals and disk errors were shown to the user; `changed` says whether the move happened.
    (void)changePlayerNumber(files_, roster_, prompter_, row + 1, toFileText(number_->text()),
                             changed);
    if (!changed) {
        number_->setFocus();
        number_->selectAll();
        return;
    }
    // The player is shown at his new number.
    showPlayers();
    list_->setCurrentRow(number_->text().toInt() - 1);
    number_->clear();
    list_->setFocus();
}

} // namespace scorvane
