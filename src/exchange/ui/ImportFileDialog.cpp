#include "ImportFileDialog.h"

#include "storage/Cp1252.h"
#include "storage/RecordFile.h"
#include "storage/TextUtil.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace scorvane {

namespace {

constexpr const char* kTitle = "Import from File";

QString utf8(const std::string& text) {
    return QString::fromStdString(text);
}

QString sideText(const PressBoxTeam& team) {
    return utf8(trim(team.name)) +
           (team.vh == 'H' ? QStringLiteral(" (home)") : QStringLiteral(" (visitors)"));
}

// The team of the data directory whose name is the side's, or 0.
int teamNamed(const TeamList& teams, const PressBoxTeam& side, int except) {
    const std::string name = utf8ToCp1252(trim(side.name));
    for (int t = 1; t <= kMaxTeams; ++t) {
        if (t == except)
            continue;
        const std::string ours = teams.teamName(t);
        if (!name.empty() &&
            std::equal(ours.begin(), ours.end(), name.begin(), name.end(), [](char a, char b) {
                return std::tolower(static_cast<unsigned char>(a)) ==
                       std::tolower(static_cast<unsigned char>(b));
            }))
            return t;
    }
    return 0;
}

} // namespace

ImportFileDialog::ImportFileDialog(DataFiles& data, Prompter& prompter, const TeamList& teams,
                                   int team, PressBoxGame game, const QString& fileName,
                                   int selectedGame, QWidget* parent)
    : QDialog(parent), data_(data), prompter_(prompter), teams_(teams), team_(team),
      game_(std::move(game)) {
    setObjectName(QStringLiteral("frmImportFile"));
    setWindowTitle(QStringLiteral("Import from File - ") + fromFileText(teams_.teamName(team_)));
    setModal(true);

    TeamFiles files = data_.team(team_);
    (void)roster_.load(files); // a roster that cannot be read was reported; its numbers show free
    std::vector<GameRecord> games;
    (void)files.readAllAs(FileKind::Games, games);
    for (const GameRecord& g : games)
        liveGames_ += g.isLive() ? 1 : 0;

    auto* file = new QLabel(QDir::toNativeSeparators(fileName), this);
    file->setObjectName(QStringLiteral("lblFile"));
    side_ = new QComboBox(this);
    side_->setObjectName(QStringLiteral("cboSide"));
    side_->addItem(QStringLiteral("(choose our side)"), -1);
    for (std::size_t i = 0; i < game_.teams.size(); ++i)
        side_->addItem(sideText(game_.teams[i]), static_cast<int>(i));
    if (const std::optional<int> ours = matchSide(game_, teams_.teamName(team_)))
        side_->setCurrentIndex(*ours + 1);

    target_ = new QComboBox(this);
    target_->setObjectName(QStringLiteral("cboTarget"));
    // A new game unless the coach chooses otherwise; the game selected in the list comes next,
    // one key away, then every other game.
    target_->addItem(QStringLiteral("A new game (game %1)").arg(liveGames_ + 1), 0);
    const auto addGame = [this](const GameRecord& g) {
        target_->addItem(QStringLiteral("Replacing the results of game %1: ").arg(g.gameNumber) +
                             fromFileText(ShortDate(g.gameDate) + " " + trim(g.opponent)),
                         static_cast<int>(g.gameNumber));
    };
    for (const GameRecord& g : games)
        if (g.isLive() && g.gameNumber == selectedGame)
            addGame(g);
    for (const GameRecord& g : games)
        if (g.isLive() && g.gameNumber != selectedGame)
            addGame(g);

    gameLabel_ = new QLabel(this);
    gameLabel_->setObjectName(QStringLiteral("lblGame"));
    gameLabel_->setWordWrap(true);
    problem_ = new QLabel(this);
    problem_->setObjectName(QStringLiteral("lblProblem"));
    problem_->setWordWrap(true);
    problem_->setStyleSheet(QStringLiteral("color: #a00000"));

    players_ = new QTreeWidget(this);
    players_->setObjectName(QStringLiteral("tvwPlayers"));
    players_->setColumnCount(2);
    players_->setHeaderLabels(
        {QStringLiteral("Player in the file"), QStringLiteral("On our roster")});
    players_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    players_->setMinimumSize(620, 260);
    connect(players_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int column) {
        // Ticking or clearing an unknown number: whether it joins the roster.
        const int number = item->data(0, Qt::UserRole).toInt();
        if (!import_ || column != 1 || number == 0)
            return;
        for (ImportedPlayer& p : import_->players)
            if (p.number == number)
                p.add = item->checkState(1) == Qt::Checked;
    });
    byHand_ = new QListWidget(this);
    byHand_->setObjectName(QStringLiteral("lstByHand"));
    byHand_->setMaximumHeight(70);
    notImported_ = new QListWidget(this);
    notImported_->setObjectName(QStringLiteral("lstNotImported"));
    notImported_->setMaximumHeight(90);

    other_ = new QCheckBox(QStringLiteral("Also import the other side into team:"), this);
    other_->setObjectName(QStringLiteral("chkOtherSide"));
    otherTeam_ = new QComboBox(this);
    otherTeam_->setObjectName(QStringLiteral("cboOtherTeam"));
    for (int t = 1; t <= kMaxTeams; ++t)
        if (t != team_)
            otherTeam_->addItem(
                QString::number(t) + QStringLiteral("  ") + fromFileText(teams_.teamName(t)), t);
    otherTeam_->setEnabled(false);
    connect(other_, &QCheckBox::toggled, otherTeam_, &QWidget::setEnabled);

    auto [ok, cancel] = okCancelButtons(this);
    ok->setText(QStringLiteral("&Import"));
    connect(ok, &QPushButton::clicked, this, &ImportFileDialog::importGame);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(side_, &QComboBox::currentIndexChanged, this, &ImportFileDialog::sideChosen);

    auto* form = new QGridLayout;
    form->addWidget(labelFor(side_, QStringLiteral("Our &side in the file:")), 0, 0);
    form->addWidget(side_, 0, 1);
    form->addWidget(labelFor(target_, QStringLiteral("Import &as:")), 1, 0);
    form->addWidget(target_, 1, 1);
    form->setColumnStretch(1, 1);
    auto* otherRow = new QHBoxLayout;
    otherRow->addWidget(other_);
    otherRow->addWidget(otherTeam_, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(file);
    layout->addLayout(form);
    layout->addWidget(gameLabel_);
    layout->addWidget(problem_);
    layout->addWidget(
        labelFor(players_, QStringLiteral("&Players and what goes into each category:")));
    layout->addWidget(players_, 1);
    layout->addWidget(labelFor(byHand_, QStringLiteral("To enter &by hand:")));
    layout->addWidget(byHand_);
    layout->addWidget(labelFor(notImported_, QStringLiteral("&Not imported (no column of ours):")));
    layout->addWidget(notImported_);
    layout->addLayout(otherRow);
    layout->addLayout(buttonRow({ok, cancel}, ok));
    chainTabOrder(
        {side_, target_, players_, byHand_, notImported_, other_, otherTeam_, ok, cancel});

    sideChosen();
    side_->setFocus();
}

void ImportFileDialog::sideChosen() {
    const int side = side_->currentData().toInt();
    import_.reset();
    problem_->clear();
    if (side >= 0) {
        ImportBuild build = buildImport(game_, side, roster_);
        if (build.import)
            import_ = std::move(build.import);
        else
            problem_->setText(utf8(build.error));
        // The other side goes by default into the team of its name, when there is one.
        const std::size_t otherSide =
            game_.teams.size() == 2 ? 1 - static_cast<std::size_t>(side) : 0;
        const int other =
            game_.teams.size() == 2 ? teamNamed(teams_, game_.teams[otherSide], team_) : 0;
        if (other > 0)
            otherTeam_->setCurrentIndex(otherTeam_->findData(other));
        other_->setEnabled(game_.teams.size() == 2);
    } else {
        problem_->setText(QStringLiteral("Choose which side of the file is %1.")
                              .arg(fromFileText(teams_.teamName(team_))));
    }
    findChild<QPushButton*>(QStringLiteral("cmdOK"))->setEnabled(import_.has_value());
    showPreview();
}

void ImportFileDialog::showPreview() {
    players_->clear();
    byHand_->clear();
    notImported_->clear();
    if (!import_) {
        gameLabel_->clear();
        return;
    }
    gameLabel_->setText(QStringLiteral("Game: ") + fromFileText(gameLine(import_->game)));
    const QSignalBlocker quiet(players_);
    for (const ImportedPlayer& p : import_->players) {
        auto* item = new QTreeWidgetItem(players_);
        item->setText(0, QStringLiteral("#%1 ").arg(p.number) + fromFileText(trim(p.name)));
        if (p.onRoster) {
            item->setText(1, fromFileText(trim(p.rosterName)));
        } else {
            item->setText(1, QStringLiteral("Add to the roster"));
            item->setData(0, Qt::UserRole, p.number);
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(1, p.add ? Qt::Checked : Qt::Unchecked);
        }
        for (const std::string& line : categoryLines(*import_, p))
            (new QTreeWidgetItem(item, {fromFileText(line)}))->setFirstColumnSpanned(true);
        item->setExpanded(true);
    }
    for (const std::string& line : import_->byHand)
        byHand_->addItem(utf8(line));
    for (const std::string& line : import_->notImported)
        notImported_->addItem(utf8(line));
}

void ImportFileDialog::importGame() {
    if (!import_)
        return;
    const int replace = target_->currentData().toInt();
    if (replace > 0 &&
        prompter_.ask({"The player results of game " + digits(replace) +
                           " will be replaced by the file's. Do you want to go on?",
                       kTitle, Buttons::YesNo, Icon::Question, Answer::No}) != Answer::Yes)
        return;
    TeamFiles files = data_.team(team_);
    int written = 0;
    if (Status s = writeImport(files, *import_, {replace, true}, written); !s) {
        if (s.kind() != ErrorKind::Disk && s.kind() != ErrorKind::ProgramEnded)
            prompter_.ask({s.message(), kTitle, Buttons::Ok, Icon::Warning, Answer::Ok});
        return;
    }
    imported_ = written;
    if (other_->isChecked() && game_.teams.size() == 2) {
        const int otherTeam = otherTeam_->currentData().toInt();
        Roster roster;
        TeamFiles theirs = data_.team(otherTeam);
        (void)roster.load(theirs);
        const ImportBuild build = buildImport(game_, 1 - import_->side, roster);
        int theirGame = 0;
        const Status s = build.import ? writeImport(theirs, *build.import, {0, true}, theirGame)
                                      : Status::error(ErrorKind::Unreadable, build.error);
        if (!s && s.kind() != ErrorKind::Disk && s.kind() != ErrorKind::ProgramEnded)
            prompter_.ask({"The game was imported, but the other side was not: " + s.message(),
                           kTitle, Buttons::Ok, Icon::Warning, Answer::Ok});
    }
    accept();
}

bool importGameFromFile(DataFiles& data, Prompter& prompter, const TeamList& teams, int team,
                        int selectedGame, QWidget* parent) {
    const QString path =
        QFileDialog::getOpenFileName(parent, QString::fromLatin1(kTitle), QDir::homePath(),
                                     QStringLiteral("Press-box game files (*.xml);;All files (*)"));
    if (path.isEmpty())
        return false;
    Bytes bytes;
    bool exists = false;
    const Status s = readWholeFile(toUtf8(path), bytes, exists);
    const PressBoxRead read =
        s && exists ? readPressBox(std::string_view(reinterpret_cast<const char*>(bytes.data()),
                                                    bytes.size()))
                    : PressBoxRead{std::nullopt, s ? "The file does not exist." : s.message()};
    if (!read.game) {
        prompter.ask({"The file cannot be imported. " + read.error, kTitle, Buttons::Ok,
                      Icon::Warning, Answer::Ok});
        return false;
    }
    ImportFileDialog dialog(data, prompter, teams, team, *read.game, path, selectedGame, parent);
    dialog.exec();
    return dialog.importedGame() > 0;
}

} // namespace scorvane
