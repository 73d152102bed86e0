#include "ImportGameDialog.h"

#include "games/GameScreen.h"
#include "storage/Bytes.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

ImportGameDialog::ImportGameDialog(TeamFiles opponent, const ConfigRecord& config,
                                   const QString& opponentName, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmImportGame"));
    setWindowTitle(QStringLiteral("Import Game Information - ") +
                   fromUtf8(trimRight(toUtf8(opponentName))));
    setModal(true);

    list_ = gameLineList(this, 64);
    auto* listLabel = new QLabel(QStringLiteral("Game List:"), this);
    listLabel->setBuddy(list_);

    // A file that cannot be read was reported by the storage layer; what was read is offered.
    std::vector<ImportChoice> choices;
    (void)listOpponentGames(opponent, config, choices);
    for (const ImportChoice& choice : choices) {
        list_->addItem(fromFileText(choice.line));
        positions_.push_back(choice.position);
    }

    comment_ = new QCheckBox(QStringLiteral("Import Game Comment"), this);
    comment_->setObjectName(QStringLiteral("chkGameComment"));

    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &ImportGameDialog::pick);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::itemDoubleClicked, this, &ImportGameDialog::pick);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(comment_);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(listLabel);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
    resize(sizeHint().width(), 360);
    list_->setFocus();
}

ImportGameDialog::~ImportGameDialog() = default;

void ImportGameDialog::pick() {
    const int row =
        list_->currentItem() && list_->currentItem()->isSelected() ? list_->currentRow() : -1;
    if (row < 0 || row >= static_cast<int>(positions_.size())) {
        reject();
        return;
    }
    picked_ = true;
    position_ = positions_[static_cast<std::size_t>(row)];
    importComment_ = comment_->isChecked();
    accept();
}

} // namespace scorvane
