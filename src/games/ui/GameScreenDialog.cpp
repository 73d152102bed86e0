#include "GameScreenDialog.h"

#include "ImportGameDialog.h"
#include "games/GameList.h"
#include "storage/Bytes.h"
#include "storage/ConfigRecord.h"
#include "storage/TeamList.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {
namespace {

constexpr int kOpponentWidth = 25;

class ScoreKeyFilter : public QObject {
public:
    explicit ScoreKeyFilter(QObject* parent) : QObject(parent) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Paste))
            return true;
        int code = -1;
        if (key->key() == Qt::Key_Backspace)
            code = 8;
        else if (key->key() == Qt::Key_Delete)
            code = 127;
        else if (!key->text().isEmpty() && key->text().at(0).isPrint())
            code = key->text().at(0).unicode();
        // A key that types nothing moves the cursor or the focus, or belongs to the dialog.
        if (code < 0)
            return false;
        return !GameForm::acceptsScoreKey(code);
    }
};

QLabel* boldLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

void acceptScoreKeysOnly(QLineEdit* box) {
    box->installEventFilter(new ScoreKeyFilter(box));
    // The context menu would paste around the filter.
    box->setContextMenuPolicy(Qt::NoContextMenu);
}

GameScreenDialog::GameScreenDialog(DataFiles& data, TeamFiles files, GameList& games,
                                   Prompter& prompter, const ConfigRecord& config,
                                   const TeamList& teams, int teamNumber, EntryMode mode,
                                   int gameNumber, QWidget* parent)
    : QDialog(parent), data_(data), files_(std::move(files)), games_(games), prompter_(prompter),
      config_(config), teams_(teams), team_(teamNumber), form_(mode, gameNumber, games) {
    setObjectName(QStringLiteral("frmGameScreen"));
    const QString teamName = fromFileText(teams_.teamName(team_));
    setWindowTitle(QStringLiteral("Game Screen - ") + teamName);
    setModal(true);
    const int charWidth = fontMetrics().averageCharWidth();

    auto* teamLabel = boldLabel(teamName, this);
    teamLabel->setObjectName(QStringLiteral("lblTeamName"));
    teamLabel->setTextFormat(Qt::PlainText);
    auto* numberLabel = boldLabel(QString::number(form_.gameNumber()), this);
    numberLabel->setObjectName(QStringLiteral("lblGameNumber"));
    auto* modeLabel = boldLabel(fromUtf8(form_.modeCaption()), this);
    modeLabel->setObjectName(QStringLiteral("lblMode"));

    date_ = makeBox("txtGameDate", width::gameDate);
    date_->setFixedWidth(charWidth * 10);
    date_->installEventFilter(this);
    displayDate_ = new QLabel(this);
    displayDate_->setObjectName(QStringLiteral("lblDisplayDate"));
    displayDate_->setTextFormat(Qt::PlainText);
    location_ = makeBox("txtGameLoc", width::gameLocation);
    location_->setFixedWidth(charWidth * 26);

    opponents_ = new QComboBox(this);
    opponents_->setObjectName(QStringLiteral("cmbOpponents"));
    opponents_->setEditable(true);
    // The box keeps what is typed as it is: no completion, and Enter adds nothing to the list.
    opponents_->setCompleter(nullptr);
    opponents_->setInsertPolicy(QComboBox::NoInsert);
    opponents_->setMaxVisibleItems(15);
    opponents_->setMinimumWidth(charWidth * 32);
    const std::vector<std::string> names = teams_.lines();
    for (std::size_t i = 0; i < names.size() && i < static_cast<std::size_t>(kMaxTeams); ++i)
        if (!names[i].empty())
            opponents_->addItem(fromFileText(names[i]), static_cast<int>(i + 1));
    opponents_->lineEdit()->installEventFilter(this);
    selectAllOnFocus(opponents_->lineEdit());

    home_ = new QCheckBox(QStringLiteral("Home Team"), this);
    home_->setObjectName(QStringLiteral("chkHomeTeam"));
    special_ = new QCheckBox(QStringLiteral("Special Select"), this);
    special_->setObjectName(QStringLiteral("chkSpecialSelect"));

    gameTypes_ = new QListWidget(this);
    gameTypes_->setObjectName(QStringLiteral("lstGameTypes"));
    gameTypes_->setSelectionMode(QAbstractItemView::SingleSelection);
    gameTypes_->setUniformItemSizes(true);
    for (const std::string& name : config_.gameTypeNames)
        gameTypes_->addItem(fromFileText(trimRight(name)));
    // All seven lines in view.
    gameTypes_->setFixedSize(charWidth * 18,
                             gameTypes_->sizeHintForRow(0) * 7 + 2 * gameTypes_->frameWidth() + 2);

    comment_ = makeBox("txtGameComment", width::gameComment);
    comment_->setMinimumWidth(charWidth * 62);

    static const char* const kBoxNames[GameForm::BoxCount] = {
        "txtOpp1",   "txtOpp2",   "txtOpp3",   "txtOpp4",   "txtOppot",
        "txtScore1", "txtScore2", "txtScore3", "txtScore4", "txtScoreOT"};
    for (int b = 0; b < GameForm::BoxCount; ++b) {
        QLineEdit* box = makeBox(kBoxNames[b], GameForm::kScoreDigits);
        box->setFixedWidth(charWidth * 6);
        box->setAlignment(Qt::AlignRight);
        acceptScoreKeysOnly(box);
        scores_[static_cast<std::size_t>(b)] = box;
    }
    teamTotal_ = boldLabel(QString(), this);
    teamTotal_->setObjectName(QStringLiteral("lblTeamTot"));
    opponentTotal_ = boldLabel(QString(), this);
    opponentTotal_->setObjectName(QStringLiteral("lblOppTot"));
    for (QLabel* total : {teamTotal_, opponentTotal_}) {
        total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        total->setMinimumWidth(charWidth * 6);
    }

    auto* mustSave =
        new QLabel(QStringLiteral("Must  click OK (add game) before adding player results"), this);
    mustSave->setObjectName(QStringLiteral("lblAddGame"));
    mustSave->setTextFormat(Qt::PlainText);
    mustSave->setStyleSheet(QStringLiteral("color: #a12a1f;"));
    mustSave->setVisible(form_.mustSaveFirst());

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* players = new QPushButton(QStringLiteral("&Players"), this);
    players->setObjectName(QStringLiteral("cmdPlayers"));
    players_ = players;
    // A new game must be saved before its player results can be entered.
    players->setEnabled(false);
    connect(players, &QPushButton::clicked, this, &GameScreenDialog::players);
    auto* importButton = new QPushButton(QStringLiteral("&Import"), this);
    importButton->setObjectName(QStringLiteral("cmdImport"));
    connect(ok, &QPushButton::clicked, this, &GameScreenDialog::save);
    connect(cancel, &QPushButton::clicked, this, &GameScreenDialog::reject);
    connect(importButton, &QPushButton::clicked, this, &GameScreenDialog::import);

    // Every edit by the user goes to the form at once and marks the game changed; the screen's
    // own filling runs with filling_ set and is not an edit.
    GameForm::Fields& f = form_.fields();
    auto edited = [this](QLineEdit* box, std::string GameForm::Fields::*field) {
        connect(box, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            form_.fields().*field = toFileText(text);
            form_.markChanged();
        });
    };
    edited(date_, &GameForm::Fields::date);
    edited(location_, &GameForm::Fields::location);
    edited(comment_, &GameForm::Fields::comment);
    for (std::size_t b = 0; b < scores_.size(); ++b) {
        connect(scores_[b], &QLineEdit::textEdited, this, [this, b](const QString& text) {
            form_.fields().scores[b] = toFileText(text);
            form_.markChanged();
        });
        connect(scores_[b], &QLineEdit::textChanged, this, &GameScreenDialog::showTotals);
    }
    connect(opponents_->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        form_.fields().opponent = toFileText(text);
        form_.fields().opponentTeam = 0;
        form_.markChanged();
    });
    connect(opponents_, &QComboBox::activated, this, [this](int index) {
        form_.fields().opponent = toFileText(opponents_->itemText(index));
        form_.fields().opponentTeam = opponents_->itemData(index).toInt();
        form_.markChanged();
    });
    connect(home_, &QCheckBox::clicked, this, [this](bool checked) {
        form_.fields().home = checked;
        form_.markChanged();
    });
    connect(special_, &QCheckBox::clicked, this, [this](bool checked) {
        form_.fields().specialSelect = checked;
        form_.markChanged();
    });
    connect(gameTypes_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (filling_ || row < 0)
            return;
        form_.fields().gameType = row + 1;
        form_.markChanged();
    });

    // A stored opponent that is a team of the list counts as chosen from it, so the game's
    // information can be imported without choosing the opponent again.
    if (f.opponentTeam == 0 && !trimRight(f.opponent).empty()) {
        const int found = opponents_->findText(fromFileText(trimRight(f.opponent)),
                                               Qt::MatchFixedString | Qt::MatchCaseSensitive);
        if (found >= 0)
            f.opponentTeam = opponents_->itemData(found).toInt();
    }

    // Layout: the game's heading, its particulars, the score table, the comment, the buttons.
    auto* heading = new QHBoxLayout;
    heading->addWidget(teamLabel);
    heading->addSpacing(16);
    heading->addWidget(new QLabel(QStringLiteral("Game Number:"), this));
    heading->addWidget(numberLabel);
    heading->addStretch(1);
    heading->addWidget(modeLabel);

    auto* dateColumn = new QVBoxLayout;
    dateColumn->setSpacing(2);
    dateColumn->addWidget(date_);
    dateColumn->addWidget(displayDate_);
    auto* particulars = new QGridLayout;
    particulars->setHorizontalSpacing(8);
    particulars->setVerticalSpacing(6);
    auto buddy = [this](const QString& text, QWidget* widget) {
        auto* l = new QLabel(text, this);
        l->setBuddy(widget);
        return l;
    };
    particulars->addWidget(buddy(QStringLiteral("Date (MMDDYY):"), date_), 0, 0,
                           Qt::AlignTop | Qt::AlignLeft);
    particulars->addLayout(dateColumn, 0, 1);
    particulars->addWidget(buddy(QStringLiteral("Location:"), location_), 1, 0);
    particulars->addWidget(location_, 1, 1, Qt::AlignLeft);
    particulars->addWidget(buddy(QStringLiteral("Opponent:"), opponents_), 2, 0);
    particulars->addWidget(opponents_, 2, 1, Qt::AlignLeft);
    auto* checks = new QHBoxLayout;
    checks->addWidget(home_);
    checks->addSpacing(16);
    checks->addWidget(special_);
    checks->addStretch(1);
    particulars->addLayout(checks, 3, 1);
    particulars->setColumnStretch(1, 1);

    auto* typeColumn = new QVBoxLayout;
    typeColumn->setSpacing(2);
    typeColumn->addWidget(buddy(QStringLiteral("Game Type:"), gameTypes_));
    typeColumn->addWidget(gameTypes_);
    typeColumn->addStretch(1);
    auto* upper = new QHBoxLayout;
    upper->addLayout(particulars, 1);
    upper->addSpacing(16);
    upper->addLayout(typeColumn);

    auto* table = new QGridLayout;
    table->setHorizontalSpacing(8);
    const QStringList columns = {QStringLiteral("1st"), QStringLiteral("2nd"),
                                 QStringLiteral("3rd"), QStringLiteral("4th"),
                                 QStringLiteral("OT"),  QStringLiteral("Total")};
    for (int c = 0; c < columns.size(); ++c)
        table->addWidget(new QLabel(columns[c], this), 0, c + 1, Qt::AlignCenter);
    table->addWidget(new QLabel(QStringLiteral("Team:"), this), 1, 0);
    table->addWidget(new QLabel(QStringLiteral("Opponent:"), this), 2, 0);
    for (int q = 0; q < 5; ++q) {
        table->addWidget(scores_[static_cast<std::size_t>(GameForm::Team1 + q)], 1, q + 1);
        table->addWidget(scores_[static_cast<std::size_t>(GameForm::Opp1 + q)], 2, q + 1);
    }
    table->addWidget(teamTotal_, 1, 6);
    table->addWidget(opponentTotal_, 2, 6);
    table->setColumnStretch(7, 1);

    auto* commentRow = new QHBoxLayout;
    commentRow->addWidget(buddy(QStringLiteral("Comment:"), comment_));
    commentRow->addWidget(comment_, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    buttons->addWidget(players);
    buttons->addWidget(importButton);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(heading);
    layout->addSpacing(8);
    layout->addLayout(upper);
    layout->addSpacing(10);
    layout->addLayout(table);
    layout->addSpacing(10);
    layout->addLayout(commentRow);
    layout->addSpacing(6);
    layout->addWidget(mustSave);
    layout->addSpacing(6);
    layout->addLayout(buttons);

    // The team's points before the opponent's, as the table shows them.
    QList<QWidget*> order = {date_, location_, opponents_, home_, special_, gameTypes_};
    for (int q = 0; q < 5; ++q)
        order << scores_[static_cast<std::size_t>(GameForm::Team1 + q)];
    for (int q = 0; q < 5; ++q)
        order << scores_[static_cast<std::size_t>(GameForm::Opp1 + q)];
    order << comment_ << ok << cancel << importButton;
    for (qsizetype i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);

    fill();
    date_->setFocus();
    // A stored game whose points do not fit is shown as it is and stays unchanged unless edited.
    form_.reportOverflow(prompter_);
}

GameScreenDialog::~GameScreenDialog() {
    // The boxes may still lose the focus while the dialog is taken apart.
    date_->removeEventFilter(this);
    opponents_->lineEdit()->removeEventFilter(this);
}

QLineEdit* GameScreenDialog::makeBox(const char* name, int maxLength) {
    auto* box = new QLineEdit(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaxLength(maxLength);
    selectAllOnFocus(box);
    return box;
}

void GameScreenDialog::fill() {
    filling_ = true;
    const GameForm::Fields& f = form_.fields();
    date_->setText(fromFileText(f.date));
    location_->setText(fromFileText(trimRight(f.location)));
    const int chosen = f.opponentTeam > 0 ? opponents_->findData(f.opponentTeam) : -1;
    opponents_->setCurrentIndex(chosen);
    opponents_->setEditText(fromFileText(trimRight(f.opponent)));
    home_->setChecked(f.home);
    special_->setChecked(f.specialSelect);
    gameTypes_->setCurrentRow(f.gameType >= 1 && f.gameType <= 7 ? f.gameType - 1 : 0);
    comment_->setText(fromFileText(trimRight(f.comment)));
    for (std::size_t b = 0; b < scores_.size(); ++b)
        scores_[b]->setText(fromFileText(f.scores[b]));
    filling_ = false;

    std::string labelText;
    if (!f.date.empty())
        form_.checkDate(labelText);
    date_->setText(fromFileText(form_.fields().date));
    displayDate_->setText(fromUtf8(labelText));
    showTotals();
}

void GameScreenDialog::showTotals() {
    teamTotal_->setText(QString::number(form_.teamTotal()));
    opponentTotal_->setText(QString::number(form_.opponentTotal()));
}

bool GameScreenDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        if (watched == date_)
            dateEntered();
        else if (watched == opponents_->lineEdit())
            opponentEntered();
    }
    return QDialog::eventFilter(watched, event);
}

void GameScreenDialog::dateEntered() {
    std::string labelText;
    form_.checkDate(labelText);
    // The check writes the date back in its normal form (spaces become zeros).
    const QString normal = fromFileText(form_.fields().date);
    if (date_->text() != normal)
        date_->setText(normal);
    displayDate_->setText(fromUtf8(labelText));
}

void GameScreenDialog::opponentEntered() {
    QLineEdit* box = opponents_->lineEdit();
    if (box->text().size() <= kOpponentWidth)
        return;
    box->setText(box->text().left(kOpponentWidth));
    form_.fields().opponent = toFileText(box->text());
}

void GameScreenDialog::setPlayersAvailable(bool available) {
    playersAvailable_ = available;
    players_->setEnabled(available && !form_.mustSaveFirst());
}

void GameScreenDialog::players() {
    if (!playersAvailable_ || form_.mustSaveFirst())
        return;
    if (!form_.saveBeforePlayers(files_, games_, prompter_)) {
        date_->setFocus();
        return;
    }
    toPlayers_ = true;
    QDialog::accept();
}

void GameScreenDialog::save() {
    const bool newGame = form_.mustSaveFirst();
    switch (form_.save(files_, games_, prompter_)) {
    case GameForm::SaveResult::Saved:
        // A game just added or inserted goes straight on to its players' results.
        toPlayers_ = newGame && playersAvailable_;
        QDialog::accept();
        break;
    case GameForm::SaveResult::InvalidDate:
        date_->setFocus();
        break;
    case GameForm::SaveResult::Failed:
        // The message was shown; the game stays on screen for another try or Cancel.
        break;
    }
}

void GameScreenDialog::reject() {
    if (form_.confirmCancel(prompter_))
        QDialog::reject();
    else
        date_->setFocus();
}

void GameScreenDialog::import() {
    if (const auto check = form_.checkImport(team_, prompter_);
        check != GameForm::ImportCheck::Ok) {
        if (check == GameForm::ImportCheck::SameTeam)
            date_->setFocus();
        return;
    }
    const int opponent = form_.fields().opponentTeam;
    ImportGameDialog dialog(data_.team(opponent), config_, fromFileText(teams_.teamName(opponent)),
                            this);
    if (dialog.exec() != QDialog::Accepted || !dialog.picked())
        return;
    TeamFiles opponentFiles = data_.team(opponent);
    // A game that cannot be read, or whose points overflow, was reported; nothing is taken over.
    if (form_.importFrom(opponentFiles, dialog.position(), dialog.importComment(), prompter_))
        fill();
}

} // namespace scorvane
