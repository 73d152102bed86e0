#include "PlayerScreenDialog.h"

#include "entry/EntryFields.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace scorvane {

namespace {

constexpr int kNumberColumn = kCategoryCount;
constexpr int kNameColumn = kCategoryCount + 1;
constexpr int kFieldColumns = 5; // category fields per row of the panel
constexpr int kBall = 22;        // size of a ball mark

// The ball marks of the player table, drawn here: a football where the player has results in the
// category, a faint outline where he has none; each on the row highlight when the row is selected.
QPixmap ballPicture(bool withResults, bool highlighted, const QPalette& palette) {
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    QPixmap picture(QSize(kBall, kBall) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(highlighted ? palette.color(QPalette::Highlight) : Qt::transparent);
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(kBall / 2.0, kBall / 2.0);
    p.rotate(-30);
    const QRectF body(-9, -5.5, 18, 11);
    if (withResults) {
        p.setPen(QPen(QColor(0x4a, 0x25, 0x10), 1.2));
        p.setBrush(QColor(0x8b, 0x45, 0x13));
        p.drawEllipse(body);
        p.setPen(QPen(Qt::white, 1.2));
        p.drawLine(QPointF(-4, 0), QPointF(4, 0));
        for (qreal x : {-2.5, 0.0, 2.5})
            p.drawLine(QPointF(x, -1.6), QPointF(x, 1.6));
    } else {
        QColor faint =
            highlighted ? palette.color(QPalette::HighlightedText) : palette.color(QPalette::Mid);
        faint.setAlpha(150);
        p.setPen(QPen(faint, 1.0, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(body);
    }
    return picture;
}

QLabel* plainLabel(const QString& text, QWidget* parent, const char* name = nullptr) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    if (name)
        label->setObjectName(QString::fromLatin1(name));
    return label;
}

QLabel* boldLabel(const QString& text, QWidget* parent, const char* name) {
    QLabel* label = plainLabel(text, parent, name);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

template <class W> W* named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

void setTextIfDifferent(QLineEdit* box, const QString& text) {
    if (box->text() != text)
        box->setText(text);
}

void setItems(QListWidget* list, const std::vector<std::string>& items, int selected) {
    const QSignalBlocker block(list);
    list->clear();
    for (const std::string& item : items)
        list->addItem(fromUtf8(item));
    list->setCurrentRow(selected);
    if (selected < 0)
        list->clearSelection();
}

constexpr std::array<const char*, kCategoryCount> kCounterNames = {
    "lblPasserCount",  "lblReceiverCount", "lblRusherCount",
    "lblDefenseCount", "lblKickingCount",  "lblReturnCount"};
constexpr std::array<const char*, kCategoryCount> kColumnHeads = {"Pass", "Rec",  "Rush",
                                                                  "Def",  "Kick", "Ret"};

} // namespace

PlayerScreenDialog::PlayerScreenDialog(TeamFiles files, int gameNumber, const ColumnTable& columns,
                                       Prompter& prompter, const QString& teamName,
                                       std::function<void()> openRoster, QWidget* parent)
    : QDialog(parent), files_(std::move(files)), prompter_(prompter),
      openRoster_(std::move(openRoster)) {
    setObjectName(QStringLiteral("frmPScreen"));
    setWindowTitle(QStringLiteral("Player Statistics"));
    setModal(true);

    // --- the game heading
    auto* heading = new QGridLayout;
    heading->setHorizontalSpacing(10);
    buildHeading(this, heading);

    // --- the player table and the counters under it
    table_ = named(new QTableWidget(this), "tblPlayerList");
    table_->setColumnCount(kNameColumn + 1);
    QStringList heads;
    for (const char* head : kColumnHeads)
        heads << QString::fromLatin1(head);
    heads << QStringLiteral("No.") << QStringLiteral("Name");
    table_->setHorizontalHeaderLabels(heads);
    table_->verticalHeader()->setVisible(false);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setIconSize(QSize(kBall, kBall));
    table_->setToolTip(QStringLiteral("Click Table to Select"));
    // Arrow keys move in the table; Tab goes on to the panel.
    table_->setTabKeyNavigation(false);
    for (int c = 0; c < kCategoryCount; ++c)
        table_->setColumnWidth(c, kBall + 20);
    table_->setColumnWidth(kNumberColumn, 36);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->setMinimumWidth(6 * (kBall + 20) + 36 + 150);
    table_->installEventFilter(this);
    table_->viewport()->installEventFilter(this);
    connect(table_, &QTableWidget::currentCellChanged, this,
            [this](int row, int column) { cellClicked(row, column); });
    // The highlight is where the model says, whatever the table did with a key or a click the
    // model refused.
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!showing_)
            selectModelCell();
    });
    auto* tablePrompt = plainLabel(QStringLiteral("Click Table to Select"), this);
    tablePrompt->setBuddy(table_);

    auto* counters = new QHBoxLayout;
    counters->setSpacing(0);
    for (int c = 0; c < kCategoryCount; ++c) {
        counters_[static_cast<std::size_t>(c)] =
            boldLabel(QStringLiteral("0"), this, kCounterNames[static_cast<std::size_t>(c)]);
        counters_[static_cast<std::size_t>(c)]->setAlignment(Qt::AlignCenter);
        counters_[static_cast<std::size_t>(c)]->setFixedWidth(kBall + 20);
        counters->addWidget(counters_[static_cast<std::size_t>(c)]);
    }
    counters->addStretch(1);

    auto* left = new QVBoxLayout;
    left->addWidget(tablePrompt);
    left->addWidget(table_, 1);
    left->addLayout(counters);

    // --- the panel of the selected player and category
    auto* playerLabel =
        named(plainLabel(QStringLiteral("Player Number or Name:"), this), "lblPlayer");
    playerName_ = boldLabel(QString(), this, "lblPlayerName");
    auto* typeLabel = plainLabel(QStringLiteral("Type Of Statistics"), this);
    statType_ = boldLabel(QString(), this, "lblStatType");
    played_ = named(new QCheckBox(QStringLiteral("Played in Game"), this), "chkPlayed");
    played_->installEventFilter(this);
    connect(played_, &QCheckBox::clicked, this, [this] {
        model_.clickPlayed();
        showAll();
        applyFocus();
    });

    auto* who = new QGridLayout;
    who->addWidget(playerLabel, 0, 0);
    who->addWidget(playerName_, 0, 1);
    who->addWidget(typeLabel, 1, 0);
    who->addWidget(statType_, 1, 1);
    who->addWidget(played_, 2, 0, 1, 2);
    who->setColumnStretch(1, 1);

    kicking_ = buildKicks();
    returns_ = buildReturns();
    sack_ = named(plainLabel(QStringLiteral("(use .5 for half sack)"), this), "lblSack");

    auto* right = new QVBoxLayout;
    right->addLayout(who);
    right->addWidget(buildFields());
    right->addWidget(sack_);
    right->addWidget(kicking_);
    right->addWidget(returns_);
    right->addStretch(1);

    // --- the status line and the buttons
    message_ = named(plainLabel(QString(), this), "lblMsg");
    message_->setFrameShape(QFrame::StyledPanel);
    message_->setMinimumHeight(message_->sizeHint().height() + 6);

    auto button = [this](const QString& text, const char* name) {
        auto* b = named(new QPushButton(text, this), name);
        b->installEventFilter(this);
        return b;
    };
    ok_ = button(QStringLiteral("OK"), "cmdOK");
    cancel_ = button(QStringLiteral("Cancel"), "cmdCancel");
    team_ = button(QStringLiteral("&Team Totals"), "cmdTeam");
    gameScreen_ = button(QStringLiteral("&Game Screen"), "cmdGameScreen");
    roster_ = button(QStringLiteral("&Roster"), "cmdRoster");
    connect(ok_, &QPushButton::clicked, this, [this] { leave(model_.ok()); });
    connect(cancel_, &QPushButton::clicked, this, &PlayerScreenDialog::reject);
    connect(gameScreen_, &QPushButton::clicked, this, [this] { leave(model_.toGameScreen()); });
    connect(team_, &QPushButton::clicked, this, [this] {
        model_.toggleTeamTotals();
        showAll();
        applyFocus();
    });
    connect(roster_, &QPushButton::clicked, this, &PlayerScreenDialog::openRoster);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(team_);
    buttons->addWidget(roster_);
    buttons->addWidget(gameScreen_);
    buttons->addStretch(1);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);

    auto* middle = new QHBoxLayout;
    middle->setSpacing(16);
    middle->addLayout(left, 1);
    middle->addLayout(right, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(heading);
    layout->addLayout(middle, 1);
    layout->addWidget(message_);
    layout->addLayout(buttons);
    resize(980, 640);
    setTabOrderByReading();

    // A disk error was shown by the storage layer; the screen shows what could be read.
    (void)model_.open(files_, gameNumber, columns, prompter_, toFileText(teamName));
    showAll();
    applyFocus();
}

// Tab follows the screen as it is read: the table, the player's panel with its fields, the kick
// and return controls (entry controls, then the list and its Delete), then the buttons.
void PlayerScreenDialog::setTabOrderByReading() {
    std::vector<QWidget*> chain = {table_, played_};
    chain.insert(chain.end(), fields_.begin(), fields_.end());
    chain.insert(chain.end(), kickTypes_.begin(), kickTypes_.end());
    chain.push_back(kickYards_);
    chain.insert(chain.end(), kickMarks_.begin(), kickMarks_.end());
    chain.insert(chain.end(), {addKick_, kicks_, deleteKick_});
    chain.insert(chain.end(), returnTypes_.begin(), returnTypes_.end());
    chain.push_back(returnYards_);
    chain.insert(chain.end(), returnMarks_.begin(), returnMarks_.end());
    chain.insert(chain.end(), {addReturn_, returnList_, deleteReturn_});
    chain.insert(chain.end(), {team_, roster_, gameScreen_, ok_, cancel_});
    for (std::size_t i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

void PlayerScreenDialog::buildHeading(QWidget* parent, QGridLayout* grid) {
    gameNumber_ = boldLabel(QString(), parent, "lblGameNumber");
    gameDate_ = plainLabel(QString(), parent, "lblGameDate");
    gameLocation_ = plainLabel(QString(), parent, "lblGameLocation");
    homeName_ = boldLabel(QString(), parent, "lblHomeName");
    homeScore_ = boldLabel(QString(), parent, "lblHomeScore");
    visitorName_ = boldLabel(QString(), parent, "lblVisitorName");
    visitorScore_ = boldLabel(QString(), parent, "lblVisitorScore");
    for (QLabel* score : {homeScore_, visitorScore_})
        score->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(gameNumber_, 0, 0);
    grid->addWidget(plainLabel(QStringLiteral("Date:"), parent), 0, 1);
    grid->addWidget(gameDate_, 0, 2);
    grid->addWidget(plainLabel(QStringLiteral("Location:"), parent), 1, 1);
    grid->addWidget(gameLocation_, 1, 2);
    grid->addWidget(homeName_, 0, 4);
    grid->addWidget(homeScore_, 0, 5);
    grid->addWidget(visitorName_, 1, 4);
    grid->addWidget(visitorScore_, 1, 5);
    grid->setColumnStretch(3, 1);
}

QWidget* PlayerScreenDialog::buildFields() {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 6, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    const int digitWidth = fontMetrics().horizontalAdvance(QStringLiteral("-32768")) + 14;
    for (int n = 0; n < kEntryFieldCount; ++n) {
        const auto i = static_cast<std::size_t>(n);
        auto* box = new QLineEdit(panel);
        box->setObjectName(QStringLiteral("txtCat%1").arg(n));
        box->setMaxLength(6);
        box->setFixedWidth(digitWidth);
        box->setAlignment(Qt::AlignRight);
        box->setContextMenuPolicy(Qt::NoContextMenu);
        box->installEventFilter(this);
        selectAllOnFocus(box);
        connect(box, &QLineEdit::textEdited, this,
                [this, n](const QString& text) { fieldEdited(n, text); });
        auto* caption = new QLabel(panel);
        caption->setObjectName(QStringLiteral("lblCat%1").arg(n));
        caption->setTextFormat(Qt::PlainText);
        caption->setBuddy(box);
        fields_[i] = box;
        captions_[i] = caption;
        // Own fields 0..12 fill the first rows, the user fields 22..26 the row after them;
        // fields 13..21 are never shown.
        const int place = n <= 12 ? n : (n >= kFirstUserField ? 15 + n - kFirstUserField : -1);
        if (place < 0) {
            box->hide();
            caption->hide();
            continue;
        }
        const int row = place / kFieldColumns * 2;
        const int column = place % kFieldColumns;
        grid->addWidget(caption, row, column);
        grid->addWidget(box, row + 1, column);
    }
    grid->setColumnStretch(kFieldColumns, 1);
    return panel;
}

QGroupBox* PlayerScreenDialog::buildKicks() {
    auto* box = named(new QGroupBox(QStringLiteral("Kicks"), this), "fraKicking");
    kickTypes_ = {named(new QRadioButton(QStringLiteral("FG"), box), "optFG"),
                  named(new QRadioButton(QStringLiteral("Xpt"), box), "optXpt"),
                  named(new QRadioButton(QStringLiteral("Punt"), box), "optPunt")};
    const std::array<KickType, 3> types = {KickType::FieldGoal, KickType::ExtraPoint,
                                           KickType::Punt};
    // The model keeps one type chosen; options that are not exclusive by themselves each take
    // the focus on Tab.
    for (std::size_t i = 0; i < types.size(); ++i) {
        kickTypes_[i]->setAutoExclusive(false);
        connect(kickTypes_[i], &QRadioButton::clicked, this, [this, type = types[i]] {
            model_.selectKickType(type);
            showAll();
        });
    }
    kickYards_ = named(new QLineEdit(box), "txtKYards");
    kickYards_->setMaxLength(4);
    kickYards_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("-100")) + 16);
    kickYards_->setContextMenuPolicy(Qt::NoContextMenu);
    selectAllOnFocus(kickYards_);
    connect(kickYards_, &QLineEdit::textEdited, this, [this](const QString& text) {
        const QString kept = fromUtf8(model_.setKickYards(toUtf8(text)));
        if (kept != text)
            kickYards_->setText(kept);
    });
    kickYardsLabel_ = named(plainLabel(QStringLiteral("Yards"), box), "lblKYards");
    kickYardsLabel_->setBuddy(kickYards_);
    const std::array<const char*, kKickMarkCount> captions = {"Good", "Blocked", "Fair Catch",
                                                              "Inside 20", "Touchback"};
    const std::array<const char*, kKickMarkCount> names = {
        "chkKGood", "chkKBlocked", "chkKFairCatch", "chkKInside20", "chkKTouchback"};
    for (std::size_t i = 0; i < kKickMarkCount; ++i) {
        kickMarks_[i] = named(new QCheckBox(QString::fromLatin1(captions[i]), box), names[i]);
        connect(kickMarks_[i], &QCheckBox::clicked, this, [this, i](bool on) {
            model_.setKickMark(static_cast<KickMark>(i), on);
            showAll();
        });
    }
    addKick_ = named(new QPushButton(QStringLiteral("Add &Kick"), box), "cmdAddKick");
    deleteKick_ = named(new QPushButton(QStringLiteral("Delete"), box), "cmdDeleteKick");
    connect(addKick_, &QPushButton::clicked, this, [this] {
        model_.addKick();
        showAll();
        applyFocus();
    });
    connect(deleteKick_, &QPushButton::clicked, this, [this] {
        model_.deleteKick(kicks_->currentRow());
        showAll();
    });
    kicks_ = named(new QListWidget(box), "lstKicks");
    connect(kicks_, &QListWidget::currentRowChanged, this,
            [this](int row) { model_.selectKickItem(row); });
    fieldGoalCount_ = plainLabel(QString(), box, "lblFGCnt");
    extraPointCount_ = plainLabel(QString(), box, "lblXptCnt");
    puntCount_ = plainLabel(QString(), box, "lblPuntCnt");

    auto* grid = new QGridLayout(box);
    auto* types_ = new QHBoxLayout;
    for (QRadioButton* option : kickTypes_)
        types_->addWidget(option);
    types_->addSpacing(12);
    types_->addWidget(kickYardsLabel_);
    types_->addWidget(kickYards_);
    types_->addStretch(1);
    grid->addLayout(types_, 0, 0, 1, 2);
    auto* marks = new QVBoxLayout;
    for (QCheckBox* mark : kickMarks_)
        marks->addWidget(mark);
    marks->addStretch(1);
    grid->addLayout(marks, 1, 0);
    auto* list = new QVBoxLayout;
    list->addWidget(kicks_, 1);
    auto* listButtons = new QHBoxLayout;
    listButtons->addWidget(addKick_);
    listButtons->addWidget(deleteKick_);
    list->addLayout(listButtons);
    grid->addLayout(list, 1, 1);
    auto* counts = new QHBoxLayout;
    for (QLabel* count : {fieldGoalCount_, extraPointCount_, puntCount_})
        counts->addWidget(count);
    grid->addLayout(counts, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return box;
}

QGroupBox* PlayerScreenDialog::buildReturns() {
    auto* box = named(new QGroupBox(QStringLiteral("Returns"), this), "fraReturns");
    returnTypes_ = {named(new QRadioButton(QStringLiteral("Punt Return"), box), "optPuntReturn"),
                    named(new QRadioButton(QStringLiteral("Kick Return"), box), "optKickReturn")};
    const std::array<ReturnType, 2> types = {ReturnType::Punt, ReturnType::Kick};
    for (std::size_t i = 0; i < types.size(); ++i) {
        returnTypes_[i]->setAutoExclusive(false); // one chosen by the model, as for the kicks
        connect(returnTypes_[i], &QRadioButton::clicked, this, [this, type = types[i]] {
            model_.selectReturnType(type);
            showAll();
        });
    }
    returnYards_ = named(new QLineEdit(box), "txtYards");
    returnYards_->setMaxLength(4);
    returnYards_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("-120")) + 16);
    returnYards_->setContextMenuPolicy(Qt::NoContextMenu);
    selectAllOnFocus(returnYards_);
    connect(returnYards_, &QLineEdit::textEdited, this, [this](const QString& text) {
        const QString kept = fromUtf8(model_.setReturnYards(toUtf8(text)));
        if (kept != text)
            returnYards_->setText(kept);
    });
    returnYardsLabel_ = named(plainLabel(QStringLiteral("Yards"), box), "lblReturnYards");
    returnYardsLabel_->setBuddy(returnYards_);
    const std::array<const char*, kReturnMarkCount> captions = {"Fair Catch", "Fumble", "TD"};
    const std::array<const char*, kReturnMarkCount> names = {"chkFairCatch", "chkFumble", "chkTD"};
    for (std::size_t i = 0; i < kReturnMarkCount; ++i) {
        returnMarks_[i] = named(new QCheckBox(QString::fromLatin1(captions[i]), box), names[i]);
        connect(returnMarks_[i], &QCheckBox::clicked, this, [this, i](bool on) {
            model_.setReturnMark(static_cast<ReturnMark>(i), on);
            showAll();
        });
    }
    addReturn_ = named(new QPushButton(QStringLiteral("Add R&eturn"), box), "cmdAddReturn");
    deleteReturn_ = named(new QPushButton(QStringLiteral("Delete"), box), "cmdDeleteReturn");
    connect(addReturn_, &QPushButton::clicked, this, [this] {
        model_.addReturn();
        showAll();
        applyFocus();
    });
    connect(deleteReturn_, &QPushButton::clicked, this, [this] {
        model_.deleteReturn(returnList_->currentRow());
        showAll();
    });
    returnList_ = named(new QListWidget(box), "lstReturns");
    connect(returnList_, &QListWidget::currentRowChanged, this,
            [this](int row) { model_.selectReturnItem(row); });
    kickReturnCount_ = plainLabel(QString(), box, "lblKickReturnCnt");
    puntReturnCount_ = plainLabel(QString(), box, "lblPuntReturnCnt");

    auto* grid = new QGridLayout(box);
    auto* types_ = new QHBoxLayout;
    for (QRadioButton* option : returnTypes_)
        types_->addWidget(option);
    types_->addSpacing(12);
    types_->addWidget(returnYardsLabel_);
    types_->addWidget(returnYards_);
    types_->addStretch(1);
    grid->addLayout(types_, 0, 0, 1, 2);
    auto* marks = new QVBoxLayout;
    for (QCheckBox* mark : returnMarks_)
        marks->addWidget(mark);
    marks->addStretch(1);
    grid->addLayout(marks, 1, 0);
    auto* list = new QVBoxLayout;
    list->addWidget(returnList_, 1);
    auto* listButtons = new QHBoxLayout;
    listButtons->addWidget(addReturn_);
    listButtons->addWidget(deleteReturn_);
    list->addLayout(listButtons);
    grid->addLayout(list, 1, 1);
    auto* counts = new QHBoxLayout;
    for (QLabel* count : {kickReturnCount_, puntReturnCount_})
        counts->addWidget(count);
    grid->addLayout(counts, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return box;
}

void PlayerScreenDialog::showAll() {
    showing_ = true;
    const PlayerScreen::Filling filling(model_);
    const PlayerScreen::Heading& h = model_.heading();
    gameNumber_->setText(fromUtf8(h.gameNumber));
    gameDate_->setText(fromUtf8(h.date));
    gameLocation_->setText(fromFileText(h.location));
    homeName_->setText(fromFileText(h.homeName));
    homeScore_->setText(fromUtf8(h.homeScore));
    visitorName_->setText(fromFileText(h.visitorName));
    visitorScore_->setText(fromUtf8(h.visitorScore));
    showTable();
    showPanel();
    showLists();
    message_->setText(fromUtf8(model_.statusText()));
    showing_ = false;
}

void PlayerScreenDialog::showTable() {
    const auto& rows = model_.rows();
    const QSignalBlocker block(table_);
    if (table_->rowCount() != static_cast<int>(rows.size()))
        table_->setRowCount(static_cast<int>(rows.size()));
    const PlayerScreen::Cell cell = model_.selectedCell();
    const QPalette palette = table_->palette();
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        const bool selectedRow = r == cell.row;
        for (int c = 0; c < kCategoryCount; ++c) {
            QTableWidgetItem* item = table_->item(r, c);
            if (!item) {
                item = new QTableWidgetItem;
                table_->setItem(r, c, item);
            }
            const bool ball = model_.ballMark(r, c);
            const QString key = QStringLiteral("%1%2").arg(ball).arg(selectedRow);
            if (item->data(Qt::UserRole).toString() != key) {
                item->setData(Qt::UserRole, key);
                item->setIcon(QIcon(ballPicture(ball, selectedRow, palette)));
            }
        }
        const auto& row = rows[static_cast<std::size_t>(r)];
        const std::array<QString, 2> texts = {QString::number(row.number), fromFileText(row.name)};
        for (int c = kNumberColumn; c <= kNameColumn; ++c) {
            QTableWidgetItem* item = table_->item(r, c);
            if (!item) {
                item = new QTableWidgetItem;
                table_->setItem(r, c, item);
            }
            item->setText(texts[static_cast<std::size_t>(c - kNumberColumn)]);
            if (c == kNumberColumn)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        }
    }
    if (cell.row >= 0 && cell.column >= 0) {
        selectModelCell();
        table_->scrollToItem(table_->item(cell.row, cell.column));
    }
    for (int c = 0; c < kCategoryCount; ++c)
        counters_[static_cast<std::size_t>(c)]->setText(fromUtf8(model_.counterText(c)));
}

// Puts the table's current cell and its selection on the model's cell.
void PlayerScreenDialog::selectModelCell() {
    const PlayerScreen::Cell cell = model_.selectedCell();
    if (cell.row < 0 || cell.column < 0)
        return;
    const bool was = std::exchange(showing_, true);
    const QSignalBlocker block(table_);
    table_->setCurrentCell(cell.row, cell.column,
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    showing_ = was;
}

void PlayerScreenDialog::showPanel() {
    playerName_->setText(model_.teamTotalsShown() ? fromUtf8(model_.playerNameText())
                                                  : fromFileText(model_.playerNameText()));
    statType_->setText(fromUtf8(model_.statTypeText()));
    {
        const QSignalBlocker block(played_);
        played_->setChecked(model_.played());
    }
    played_->setEnabled(model_.playedEnabled());
    roster_->setEnabled(model_.rosterEnabled());
    team_->setText(fromUtf8(model_.teamButtonCaption()));
    for (int n = 0; n < kEntryFieldCount; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const bool shown = model_.fieldShown(n);
        fields_[i]->setVisible(shown);
        captions_[i]->setVisible(shown);
        captions_[i]->setText(fromUtf8(model_.fieldCaption(n)));
        setTextIfDifferent(fields_[i], fromUtf8(model_.fieldText(n)));
        fields_[i]->setReadOnly(!model_.fieldsEditable());
    }
    sack_->setVisible(model_.sackNoteShown());
}

void PlayerScreenDialog::showLists() {
    kicking_->setVisible(model_.kicksShown());
    returns_->setVisible(model_.returnsShown());
    const bool entry = model_.entryControlsEnabled();
    const bool totals = model_.summaryShown();

    const KickEntry& kick = model_.kickEntry();
    const std::array<KickType, 3> kickTypes = {KickType::FieldGoal, KickType::ExtraPoint,
                                               KickType::Punt};
    for (std::size_t i = 0; i < kickTypes_.size(); ++i) {
        const QSignalBlocker block(kickTypes_[i]);
        kickTypes_[i]->setChecked(kick.type == kickTypes[i]);
        kickTypes_[i]->setEnabled(entry);
    }
    setTextIfDifferent(kickYards_, fromUtf8(kick.yards));
    kickYards_->setEnabled(model_.kickYardsEnabled());
    kickYardsLabel_->setEnabled(model_.kickYardsEnabled());
    kickYardsLabel_->setVisible(!totals);
    for (std::size_t i = 0; i < kKickMarkCount; ++i) {
        const QSignalBlocker block(kickMarks_[i]);
        kickMarks_[i]->setChecked(kick.mark(static_cast<KickMark>(i)));
        kickMarks_[i]->setEnabled(model_.kickMarkEnabled(static_cast<KickMark>(i)));
    }
    addKick_->setEnabled(entry);
    deleteKick_->setEnabled(entry);
    setItems(kicks_, totals ? model_.totals().items : model_.kickItems(),
             totals ? -1 : model_.kickSelection());
    fieldGoalCount_->setText(fromUtf8(model_.totals().fieldGoals));
    extraPointCount_->setText(fromUtf8(model_.totals().extraPoints));
    puntCount_->setText(fromUtf8(model_.totals().punts));
    for (QLabel* count : {fieldGoalCount_, extraPointCount_, puntCount_})
        count->setVisible(totals);

    const ReturnEntry& ret = model_.returnEntry();
    const std::array<ReturnType, 2> returnTypes = {ReturnType::Punt, ReturnType::Kick};
    for (std::size_t i = 0; i < returnTypes_.size(); ++i) {
        const QSignalBlocker block(returnTypes_[i]);
        returnTypes_[i]->setChecked(ret.type == returnTypes[i]);
        returnTypes_[i]->setEnabled(entry);
    }
    setTextIfDifferent(returnYards_, fromUtf8(ret.yards));
    returnYards_->setEnabled(entry);
    returnYardsLabel_->setVisible(!totals);
    for (std::size_t i = 0; i < kReturnMarkCount; ++i) {
        const QSignalBlocker block(returnMarks_[i]);
        returnMarks_[i]->setChecked(ret.mark(static_cast<ReturnMark>(i)));
        returnMarks_[i]->setEnabled(entry);
    }
    addReturn_->setEnabled(entry);
    deleteReturn_->setEnabled(entry);
    setItems(returnList_, totals ? model_.totals().items : model_.returnItems(),
             totals ? -1 : model_.returnSelection());
    kickReturnCount_->setText(fromUtf8(model_.totals().kickReturns));
    puntReturnCount_->setText(fromUtf8(model_.totals().puntReturns));
    for (QLabel* count : {kickReturnCount_, puntReturnCount_})
        count->setVisible(totals);
}

void PlayerScreenDialog::applyFocus() {
    const PlayerScreen::Focus focus = model_.focus();
    using Target = PlayerScreen::Focus::Target;
    switch (focus.target) {
    case Target::Field:
        if (focus.field >= 0 && focus.field < kEntryFieldCount)
            fields_[static_cast<std::size_t>(focus.field)]->setFocus();
        break;
    case Target::KickYards:
        kickYards_->setFocus();
        break;
    case Target::ReturnYards:
        returnYards_->setFocus();
        break;
    case Target::None:
        break;
    }
}

void PlayerScreenDialog::cellClicked(int row, int column) {
    if (showing_ || row < 0)
        return;
    model_.clickCell(row, column);
    showAll();
    applyFocus();
}

// A press on another cell of the table goes to the model before the table sees it. When the
// current entries fail their check the press is swallowed, so neither the table's current cell
// nor its selection ever leaves the player being edited.
bool PlayerScreenDialog::tablePressed(const QPoint& position) {
    const QModelIndex index = table_->indexAt(position);
    if (!index.isValid() ||
        (index.row() == table_->currentRow() && index.column() == table_->currentColumn()))
        return false;
    const bool moved = model_.clickCell(index.row(), index.column());
    showAll();
    applyFocus();
    return !moved;
}

void PlayerScreenDialog::fieldEdited(int field, const QString& text) {
    QLineEdit* box = fields_[static_cast<std::size_t>(field)];
    const int cursor = box->cursorPosition();
    const QString kept = fromUtf8(model_.editField(field, toUtf8(text)));
    if (kept != text) {
        // A refused character is taken out again where it was typed or pasted.
        box->setText(kept);
        box->setCursorPosition(std::min<int>(cursor - (text.size() - kept.size()), kept.size()));
    }
    showAll();
}

void PlayerScreenDialog::leave(PlayerScreen::Leave to) {
    if (to == PlayerScreen::Leave::Stay) {
        showAll();
        applyFocus();
        return;
    }
    leftTo_ = to;
    QDialog::accept();
}

void PlayerScreenDialog::reject() {
    const PlayerScreen::Leave to = model_.cancel();
    if (to == PlayerScreen::Leave::Stay) {
        showAll();
        applyFocus();
        return;
    }
    leftTo_ = to;
    QDialog::reject();
}

void PlayerScreenDialog::openRoster() {
    if (!model_.prepareRoster()) {
        showAll();
        applyFocus();
        return;
    }
    if (openRoster_)
        openRoster_();
    Roster roster;
    // A roster that cannot be read was reported by the storage layer; its numbers show empty.
    (void)roster.load(files_);
    model_.rosterClosed(roster);
    showAll();
    applyFocus();
}

bool PlayerScreenDialog::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == table_->viewport() &&
        (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick))
        return tablePressed(static_cast<QMouseEvent*>(event)->position().toPoint());
    for (int n = 0; n < kEntryFieldCount; ++n) {
        if (watched != fields_[static_cast<std::size_t>(n)])
            continue;
        if (type == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                const int next = model_.nextFieldAfterEnter(n);
                fields_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
                return true;
            }
        } else if (type == QEvent::FocusIn) {
            model_.fieldFocused(n);
            message_->setText(fromUtf8(model_.statusText()));
        } else if (type == QEvent::FocusOut) {
            model_.fieldLeft();
            message_->setText(fromUtf8(model_.statusText()));
        }
        return QDialog::eventFilter(watched, event);
    }
    if (type == QEvent::FocusIn) {
        if (watched == table_)
            model_.tableFocused();
        else if (watched == played_)
            model_.playedFocused();
        else if (watched == ok_)
            model_.buttonFocused(PlayerScreen::Button::Ok);
        else if (watched == cancel_)
            model_.buttonFocused(PlayerScreen::Button::Cancel);
        else if (watched == team_)
            model_.buttonFocused(PlayerScreen::Button::TeamTotals);
        else if (watched == gameScreen_)
            model_.buttonFocused(PlayerScreen::Button::GameScreen);
        else if (watched == roster_)
            model_.buttonFocused(PlayerScreen::Button::Roster);
        message_->setText(fromUtf8(model_.statusText()));
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace scorvane
