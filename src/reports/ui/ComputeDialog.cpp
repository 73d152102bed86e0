#include "ComputeDialog.h"

#include "reports/ui/ReportPrinter.h"
#include "storage/Bytes.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace scorvane {
namespace {

QLineEdit* digitsBox(QWidget* parent, const char* name, int digits, const QString& text) {
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaxLength(digits);
    box->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9]{0,%1}").arg(digits)), box));
    box->setMaximumWidth(
        box->fontMetrics().horizontalAdvance(QString(digits + 3, QLatin1Char('0'))));
    selectAllOnFocus(box);
    return box;
}

} // namespace

void applyMarks(std::vector<GameRecord>& games, const std::set<int>& marked) {
    for (GameRecord& g : games)
        if (g.isLive())
            g.specialSelect = marked.count(g.gameNumber) != 0 ? '2' : '1';
}

ComputeDialog::ComputeDialog(const Selection& selection, const ConfigRecord& config,
                             const std::vector<GameRecord>& games, Prompter& prompter,
                             QWidget* parent)
    : QDialog(parent), prompter_(prompter), selection_(selection) {
    setObjectName(QStringLiteral("frmCompute"));
    setWindowTitle(QStringLiteral("Compute"));
    setModal(true);

    low_ = digitsBox(this, "txtLowGame", 4, QString::number(selection.fromGame));
    high_ = digitsBox(this, "txtHighGame", 4, QString::number(selection.toGame));

    auto* typeBox = new QGroupBox(QStringLiteral("Game Types"), this);
    auto* typeLayout = new QVBoxLayout(typeBox);
    for (int t = 0; t < kGameTypeCount; ++t) {
        const auto i = static_cast<std::size_t>(t);
        // A name is the user's text: an ampersand in it is shown, not taken as an access key.
        QString name = fromFileText(trim(config.gameTypeNames[i]));
        name.replace(QLatin1Char('&'), QStringLiteral("&&"));
        types_[i] = new QCheckBox(name, typeBox);
        types_[i]->setObjectName(QStringLiteral("chkGameType%1").arg(t + 1));
        types_[i]->setChecked(selection.gameTypes[i]);
        typeLayout->addWidget(types_[i]);
    }

    special_ = new QCheckBox(QStringLiteral("&Special Select"), this);
    special_->setObjectName(QStringLiteral("chkSpecialSelect"));
    special_->setChecked(selection.specialSelect);
    games_ = new QListWidget(this);
    games_->setObjectName(QStringLiteral("lstSpecialSelect"));
    games_->setFont(reportScreenFont());
    for (const GameRecord& g : games) {
        if (!g.isLive())
            continue;
        auto* item = new QListWidgetItem(fromFileText(specialSelectLine(g)), games_);
        item->setData(Qt::UserRole, int(g.gameNumber));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(g.specialSelect == '2' ? Qt::Checked : Qt::Unchecked);
    }
    games_->setMinimumWidth(games_->fontMetrics().horizontalAdvance(QString(52, QLatin1Char('0'))));
    selected_ = new QLabel(this);
    selected_->setObjectName(QStringLiteral("lblGamesSelected"));
    connect(games_, &QListWidget::itemChanged, this, &ComputeDialog::countMarks);
    countMarks();

    playerNumber_ = digitsBox(this, "txtPlayerNumber", 3, QString::number(selection.playerNumber));
    playerName_ = new QLineEdit(fromFileText(trim(selection.playerName)), this);
    playerName_->setObjectName(QStringLiteral("txtPlayerName"));
    playerName_->setMaxLength(static_cast<int>(width::playerName));
    selectAllOnFocus(playerName_);

    auto* all = namedButton(this, "cmdAll", QStringLiteral("&All"));
    auto* clearTypes = namedButton(this, "cmdClearGT", QStringLiteral("Clear &Types"));
    auto* clearList = namedButton(this, "cmdClearGameList", QStringLiteral("Clear &List"));
    auto* compute = namedButton(this, "cmdCompute", QStringLiteral("&Compute"));
    compute->setDefault(true);
    auto* cancel = namedButton(this, "cmdCancel", QStringLiteral("Cancel"));
    connect(all, &QPushButton::clicked, this, &ComputeDialog::chooseAll);
    connect(clearTypes, &QPushButton::clicked, this, &ComputeDialog::clearGameTypes);
    connect(clearList, &QPushButton::clicked, this, &ComputeDialog::clearGameList);
    connect(compute, &QPushButton::clicked, this, &ComputeDialog::compute);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto label = [this](const QString& text, QWidget* buddy) {
        auto* l = new QLabel(text, this);
        l->setBuddy(buddy);
        return l;
    };
    auto* range = new QGridLayout;
    range->addWidget(label(QStringLiteral("&From Game:"), low_), 0, 0);
    range->addWidget(low_, 0, 1);
    range->addWidget(label(QStringLiteral("T&o Game:"), high_), 1, 0);
    range->addWidget(high_, 1, 1);
    range->addWidget(label(QStringLiteral("Player &Number:"), playerNumber_), 2, 0);
    range->addWidget(playerNumber_, 2, 1);
    range->addWidget(label(QStringLiteral("Player Na&me:"), playerName_), 3, 0);
    range->addWidget(playerName_, 3, 1);
    range->setColumnStretch(1, 1);

    auto* left = new QVBoxLayout;
    left->addLayout(range);
    left->addWidget(typeBox);
    left->addWidget(clearTypes, 0, Qt::AlignLeft);
    left->addStretch(1);

    auto* count = new QHBoxLayout;
    count->addWidget(new QLabel(QStringLiteral("Games Selected:"), this));
    count->addWidget(selected_);
    count->addStretch(1);
    count->addWidget(clearList);
    auto* right = new QVBoxLayout;
    right->addWidget(special_);
    right->addWidget(games_, 1);
    right->addLayout(count);

    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addSpacing(12);
    columns->addLayout(right, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(all);
    buttons->addStretch(1);
    buttons->addWidget(compute);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addSpacing(6);
    layout->addLayout(buttons);

    setTabOrder(low_, high_);
    setTabOrder(high_, playerNumber_);
    setTabOrder(playerNumber_, playerName_);
    setTabOrder(playerName_, types_[0]);
    for (std::size_t t = 1; t < types_.size(); ++t)
        setTabOrder(types_[t - 1], types_[t]);
    setTabOrder(types_.back(), clearTypes);
    setTabOrder(clearTypes, special_);
    setTabOrder(special_, games_);
    setTabOrder(games_, clearList);
    setTabOrder(clearList, all);
    setTabOrder(all, compute);
    setTabOrder(compute, cancel);
    resize(sizeHint().width(), 440);
    low_->setFocus();
}

std::set<int> ComputeDialog::markedGames() const {
    std::set<int> marked;
    for (int row = 0; row < games_->count(); ++row)
        if (games_->item(row)->checkState() == Qt::Checked)
            marked.insert(games_->item(row)->data(Qt::UserRole).toInt());
    return marked;
}

void ComputeDialog::countMarks() {
    selected_->setText(QString::number(markedGames().size()));
}

void ComputeDialog::chooseAll() {
    low_->setText(QStringLiteral("1"));
    high_->setText(QStringLiteral("999"));
    for (QCheckBox* box : types_)
        box->setChecked(true);
    special_->setChecked(false);
    playerNumber_->setText(QStringLiteral("0"));
    playerName_->clear();
}

void ComputeDialog::clearGameTypes() {
    for (QCheckBox* box : types_)
        box->setChecked(false);
}

void ComputeDialog::clearGameList() {
    for (int row = 0; row < games_->count(); ++row)
        games_->item(row)->setCheckState(Qt::Unchecked);
}

void ComputeDialog::compute() {
    SelectionEntry entry;
    entry.fromGame = toUtf8(low_->text());
    entry.toGame = toUtf8(high_->text());
    for (std::size_t t = 0; t < types_.size(); ++t)
        entry.gameTypes[t] = types_[t]->isChecked();
    entry.specialSelect = special_->isChecked();
    entry.playerNumber = toUtf8(playerNumber_->text());
    entry.playerName = toFileText(playerName_->text());
    if (const auto error = storeSelection(entry, selection_)) {
        prompter_.ask(error->message);
        QLineEdit* box = error->focus == SelectionField::FromGame ? low_ : high_;
        box->setFocus();
        box->selectAll();
        return;
    }
    // The swapped range shows as it was stored.
    low_->setText(QString::number(selection_.fromGame));
    high_->setText(QString::number(selection_.toGame));
    accept();
}

} // namespace scorvane
