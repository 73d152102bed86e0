#include "GameMenuDialog.h"

#include "GameScreenDialog.h"
#include "storage/TeamList.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace scorvane {
namespace {

// A marked game's line ends in character 16, which most fonts draw as an empty box; the list
// draws it as a pointer instead. The line's text itself stays as the game list made it.
class MarkDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override {
        return QStyledItemDelegate::displayText(value, locale).replace(QChar(16), QChar(0x25BA));
    }
};

} // namespace

GameMenuDialog::GameMenuDialog(DataFiles& files, Prompter& prompter, const ConfigRecord& config,
                               const TeamList& teams, int teamNumber, int currentGame,
                               QWidget* parent)
    : QDialog(parent), data_(files), files_(files.team(teamNumber)), prompter_(prompter),
      config_(config), teams_(teams), team_(teamNumber), currentGame_(currentGame) {
    setObjectName(QStringLiteral("frmGameMenu"));
    setWindowTitle(QStringLiteral("Game Menu - ") + fromFileText(teams_.teamName(team_)));
    setModal(true);

    list_ = gameLineList(this, 72);
    list_->setItemDelegate(new MarkDelegate(list_));
    list_->installEventFilter(this);
    toggleMark_ = new QAction(QStringLiteral("Special Select"), list_);
    toggleMark_->setObjectName(QStringLiteral("mnuToggleMark"));
    list_->addAction(toggleMark_);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(toggleMark_, &QAction::triggered, this, &GameMenuDialog::toggleMark);

    auto button = [this](const char* name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    add_ = button("cmdAddGame", QStringLiteral("&Add Game"));
    insert_ = button("cmdInsert", QStringLiteral("&Insert"));
    modify_ = button("cmdModify", QStringLiteral("&Change"));
    players_ = button("cmdPlayers", QStringLiteral("&Players"));
    delete_ = button("cmdDelete", QStringLiteral("&Delete"));
    importButton_ = button("cmdImportFile", QStringLiteral("Import from &File..."));
    exportButton_ = button("cmdExport", QStringLiteral("E&xport..."));
    auto* close = button("cmdClose", QStringLiteral("C&lose"));
    // Shown once the application hands the list an import and an export.
    importButton_->hide();
    exportButton_->hide();
    connect(importButton_, &QPushButton::clicked, this, &GameMenuDialog::importFile);
    connect(exportButton_, &QPushButton::clicked, this, [this] {
        if (export_)
            export_(selectedGame());
    });
    // Enter on the list changes the selected game, as a double-click does.
    modify_->setDefault(true);
    // Players needs a player screen to open (see setPlayerScreen).
    players_->setEnabled(false);
    connect(players_, &QPushButton::clicked, this, &GameMenuDialog::openPlayers);

    connect(add_, &QPushButton::clicked, this, &GameMenuDialog::addGame);
    connect(insert_, &QPushButton::clicked, this, &GameMenuDialog::insertGame);
    connect(modify_, &QPushButton::clicked, this, &GameMenuDialog::changeGame);
    connect(delete_, &QPushButton::clicked, this, &GameMenuDialog::deleteGame);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(list_, &QListWidget::itemDoubleClicked, this, &GameMenuDialog::changeGame);

    auto* buttons = new QVBoxLayout;
    for (QPushButton* b : {add_, insert_, modify_, players_, delete_, importButton_, exportButton_})
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(close);

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
    resize(sizeHint().width(), 420);

    open();
    list_->setFocus();
}

GameMenuDialog::~GameMenuDialog() {
    list_->removeEventFilter(this);
}

void GameMenuDialog::open() {
    // A file that cannot be read was reported by the storage layer; what was read is shown.
    (void)games_.load(files_);
    const std::vector<std::string> lines = games_.openingLines(config_);
    const int count = static_cast<int>(lines.size());
    showLines(lines, count,
              currentGame_ >= 1 && currentGame_ <= count ? currentGame_ - 1 : count - 1);
}

void GameMenuDialog::showLines(const std::vector<std::string>& lines, int gameLines, int row) {
    list_->clear();
    for (const std::string& line : lines)
        list_->addItem(fromFileText(line));
    gameLines_ = gameLines;
    const bool any = gameLines_ > 0;
    list_->setEnabled(any);
    for (QPushButton* b : {insert_, modify_, delete_, exportButton_})
        b->setEnabled(any);
    players_->setEnabled(any && openPlayers_);
    toggleMark_->setEnabled(any);
    if (any && row >= 0 && row < list_->count())
        list_->setCurrentRow(row);
}

int GameMenuDialog::selectedGame() const {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (selected.isEmpty())
        return 0;
    const int row = list_->row(selected.first());
    return row < gameLines_ ? row + 1 : 0;
}

void GameMenuDialog::setPlayerScreen(PlayerScreenOpener open) {
    openPlayers_ = std::move(open);
    players_->setEnabled(openPlayers_ && gameLines_ > 0);
}

void GameMenuDialog::setFileImport(FileImporter import) {
    importFile_ = std::move(import);
    importButton_->setVisible(static_cast<bool>(importFile_));
}

void GameMenuDialog::setExport(GameExporter exporter) {
    export_ = std::move(exporter);
    exportButton_->setVisible(static_cast<bool>(export_));
}

void GameMenuDialog::importFile() {
    if (!importFile_ || !importFile_(selectedGame()))
        return;
    // The imported game is the last one (or the one whose results were replaced): the list is read
    // again with it selected.
    const int count = games_.activeCount();
    (void)games_.load(files_);
    const int selected = selectedGame();
    currentGame_ = games_.activeCount() > count ? games_.activeCount() : selected;
    open();
}

void GameMenuDialog::openPlayers() {
    if (const int game = selectedGame())
        openGame(EntryMode::Change, game, true);
}

void GameMenuDialog::openGame(EntryMode mode, int gameNumber, bool playersFirst) {
    const int row = list_->currentRow();
    bool saved = false;
    bool players = playersFirst;
    for (;;) {
        if (!players) {
            GameScreenDialog screen(data_, files_, games_, prompter_, config_, teams_, team_, mode,
                                    gameNumber, this);
            screen.setPlayersAvailable(static_cast<bool>(openPlayers_));
            saved = screen.exec() == QDialog::Accepted || saved;
            gameNumber = screen.form().gameNumber();
            if (!screen.toPlayers())
                break;
        }
        currentGame_ = gameNumber;
        // The player screen leads back to the list, or to the game screen of the same game.
        if (!openPlayers_ || !openPlayers_(gameNumber))
            break;
        mode = EntryMode::Change;
        players = false;
        (void)games_.load(files_); // the game screen reads the game as it is now
    }
    if (mode != EntryMode::Add)
        currentGame_ = gameNumber;

    // Back on the list: the marks are cleared and the list rebuilt with the "New Game" line.
    std::vector<std::string> lines;
    // A disk error was shown by the storage layer; the lines read so far are shown.
    (void)games_.refresh(files_, config_, lines);
    const int count = static_cast<int>(lines.size());
    int selected = row >= 0 && row < count ? row : count - 1;
    // A game added at the end is the line to go on with.
    if (mode == EntryMode::Add && saved) {
        currentGame_ = games_.activeCount();
        selected = currentGame_ - 1;
    }
    showLines(lines, games_.activeCount(), selected);
    list_->setFocus();
}

void GameMenuDialog::addGame() {
    openGame(EntryMode::Add, games_.activeCount() + 1);
}

void GameMenuDialog::insertGame() {
    if (const int game = selectedGame())
        openGame(EntryMode::Insert, game);
}

void GameMenuDialog::changeGame() {
    if (const int game = selectedGame()) {
        openGame(EntryMode::Change, game);
        return;
    }
    // The "New Game" line stands for a game to add.
    if (!list_->selectedItems().isEmpty())
        addGame();
}

void GameMenuDialog::deleteGame() {
    const int game = selectedGame();
    if (game == 0)
        return;
    bool deleted = false;
    // A failed deletion was shown by the storage layer and leaves `deleted` false.
    (void)games_.remove(files_, prompter_, game - 1, deleted);
    if (deleted)
        open();
    list_->setFocus();
}

void GameMenuDialog::toggleMark() {
    const int game = selectedGame();
    if (game == 0)
        return;
    std::string line;
    if (games_.toggleMark(files_, game - 1, config_, line) && !line.empty())
        list_->item(game - 1)->setText(fromFileText(line));
}

bool GameMenuDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        toggleMark();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace scorvane
