#include "SeasonsDialog.h"

#include "storage/Bytes.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QColor>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace scorvane {
namespace {

QTableWidget* readOnlyTable(QWidget* parent, const char* name, const QStringList& headings) {
    auto* t = new QTableWidget(parent);
    t->setObjectName(QString::fromLatin1(name));
    t->setColumnCount(static_cast<int>(headings.size()));
    t->setHorizontalHeaderLabels(headings);
    t->verticalHeader()->hide();
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setSelectionMode(QAbstractItemView::SingleSelection);
    t->setTabKeyNavigation(false);
    t->horizontalHeader()->setStretchLastSection(true);
    t->verticalHeader()->setDefaultSectionSize(QFontMetrics(t->font()).height() + 8);
    return t;
}

QTableWidgetItem* cell(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

// "12 Chris Vale": a player as the lists show him.
QString playerText(int number, const std::string& name) {
    return QString::number(number) + QLatin1Char(' ') + fromFileText(trimRight(name));
}

// The teams named in a folder's team list, read without creating or changing anything.
std::vector<std::pair<int, std::string>> teamsIn(const std::string& folder) {
    std::vector<std::pair<int, std::string>> teams;
    const std::string directory = normalizeDirectory(folder);
    if (folder.empty() || !platform::isFolder(directory))
        return teams;
    const DataPaths paths{directory, directory, directory};
    std::vector<Bytes> raw;
    bool exists = false;
    if (!readRecordsReadOnly(fileName(FileKind::TeamList, paths, 1), TeamRecord::Length, raw,
                             exists))
        return teams;
    for (std::size_t i = 0; i < raw.size() && i < static_cast<std::size_t>(kMaxTeams); ++i) {
        const std::string name = trimRight(TeamRecord::decode(raw[i]).teamName);
        if (!trim(name).empty())
            teams.emplace_back(static_cast<int>(i) + 1, name);
    }
    return teams;
}

std::string linkText(const PlayerLink& link) {
    const auto player = [](const SeasonPlayer& p) {
        return p.season + " " + toUtf8(fromFileText(trimRight(p.name)));
    };
    return std::string(link.unlink ? "Kept apart: " : "Linked: ") + player(link.first) + " and " +
           player(link.second);
}

} // namespace

std::pair<std::string, std::string> seasonState(const SeasonEntry& season) {
    const SeasonSet one = openSeasons({season}, {});
    if (one.messages.empty())
        return {};
    const std::string& message = one.messages.front();
    if (!platform::isFolder(normalizeDirectory(season.dataDirectory)))
        return {"missing", message};
    if (message.find("damaged") != std::string::npos)
        return {"damaged", message};
    return {"cannot be read", message};
}

// --- the list of seasons ---------------------------------------------------------------------

SeasonsDialog::SeasonsDialog(std::string path, Prompter& prompter, QWidget* parent)
    : QDialog(parent), path_(std::move(path)), prompter_(prompter) {
    setObjectName(QStringLiteral("frmSeasons"));
    setWindowTitle(QStringLiteral("Seasons"));
    setModal(true);

    std::vector<std::string> problems;
    if (Status s = readSeasonsFile(path_, saved_, problems); !s)
        problems.insert(problems.begin(), s.message());
    list_ = saved_;

    seasons_ = readOnlyTable(this, "tblSeasons",
                             {QStringLiteral("Season"), QStringLiteral("Team"),
                              QStringLiteral("Data Directory"), QStringLiteral("State")});
    auto* add = namedButton(this, "cmdAdd", QStringLiteral("&Add..."));
    rename_ = namedButton(this, "cmdRename", QStringLiteral("Re&name..."));
    up_ = namedButton(this, "cmdMoveUp", QStringLiteral("Move &Up"));
    down_ = namedButton(this, "cmdMoveDown", QStringLiteral("Move &Down"));
    remove_ = namedButton(this, "cmdRemove", QStringLiteral("&Remove"));
    connect(add, &QPushButton::clicked, this, &SeasonsDialog::openAdd);
    connect(rename_, &QPushButton::clicked, this, &SeasonsDialog::rename);
    connect(up_, &QPushButton::clicked, this, [this] { move(-1); });
    connect(down_, &QPushButton::clicked, this, [this] { move(1); });
    connect(remove_, &QPushButton::clicked, this, &SeasonsDialog::remove);
    connect(seasons_, &QTableWidget::itemSelectionChanged, this, &SeasonsDialog::updateButtons);

    players_ = readOnlyTable(this, "tblPlayers", {});
    link_ = namedButton(this, "cmdLink", QStringLiteral("&Link Names..."));
    unlink_ = namedButton(this, "cmdUnlink", QStringLiteral("&Keep Apart..."));
    connect(link_, &QPushButton::clicked, this, [this] { openLink(false); });
    connect(unlink_, &QPushButton::clicked, this, [this] { openLink(true); });

    links_ = new QListWidget(this);
    links_->setObjectName(QStringLiteral("lstLinks"));
    removeLink_ = namedButton(this, "cmdRemoveLink", QStringLiteral("Remo&ve Link"));
    connect(removeLink_, &QPushButton::clicked, this, &SeasonsDialog::removeLink);
    connect(links_, &QListWidget::currentRowChanged, this, &SeasonsDialog::updateButtons);

    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &SeasonsDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &SeasonsDialog::reject);
    ok->setAutoDefault(true);

    auto* seasonButtons = new QVBoxLayout;
    for (QPushButton* b : {add, rename_, up_, down_, remove_})
        seasonButtons->addWidget(b);
    seasonButtons->addStretch(1);
    auto* seasonRow = new QHBoxLayout;
    seasonRow->addWidget(seasons_, 1);
    seasonRow->addLayout(seasonButtons);

    auto* playerButtons = new QVBoxLayout;
    playerButtons->addWidget(link_);
    playerButtons->addWidget(unlink_);
    playerButtons->addStretch(1);
    auto* playerRow = new QHBoxLayout;
    playerRow->addWidget(players_, 1);
    playerRow->addLayout(playerButtons);

    auto* linkButtons = new QVBoxLayout;
    linkButtons->addWidget(removeLink_);
    linkButtons->addStretch(1);
    auto* linkRow = new QHBoxLayout;
    linkRow->addWidget(links_, 1);
    linkRow->addLayout(linkButtons);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(labelFor(seasons_, QStringLiteral("&Seasons, oldest first:")));
    layout->addLayout(seasonRow, 3);
    layout->addWidget(
        labelFor(players_, QStringLiteral("&Players who are one person in two or more seasons:")));
    layout->addLayout(playerRow, 3);
    layout->addWidget(labelFor(links_, QStringLiteral("L&inks and names kept apart:")));
    layout->addLayout(linkRow, 1);
    layout->addLayout(buttonRow({ok, cancel}, ok));

    chainTabOrder({seasons_, add, rename_, up_, down_, remove_, players_, link_, unlink_, links_,
                   removeLink_, ok, cancel});

    resize(860, 600);
    showSeasons(list_.seasons.empty() ? -1 : 0);
    seasons_->setFocus();

    if (!problems.empty()) {
        std::string text = "Some lines of " + platform::shownPath(path_) + " were left out:";
        for (const std::string& p : problems)
            text += "\n" + p;
        tell(text);
    }
}

void SeasonsDialog::tell(const std::string& text) {
    prompter_.ask({text, "Seasons", Buttons::Ok, Icon::Warning, Answer::Ok});
}

int SeasonsDialog::currentSeason() const {
    const int row = seasons_->currentRow();
    return row >= 0 && row < static_cast<int>(list_.seasons.size()) ? row : -1;
}

void SeasonsDialog::showSeasons(int select) {
    seasons_->setRowCount(static_cast<int>(list_.seasons.size()));
    for (int r = 0; r < seasons_->rowCount(); ++r) {
        const SeasonEntry& s = list_.seasons[static_cast<std::size_t>(r)];
        const auto [state, message] = seasonState(s);
        QString team = QString::number(s.team);
        for (const auto& [number, name] : teamsIn(s.dataDirectory))
            if (number == s.team)
                team += QLatin1Char(' ') + fromFileText(name);
        seasons_->setItem(r, 0, cell(fromUtf8(s.label)));
        seasons_->setItem(r, 1, cell(team));
        seasons_->setItem(r, 2, cell(fromUtf8(platform::shownPath(s.dataDirectory))));
        auto* stateItem = cell(state.empty() ? QStringLiteral("OK") : fromUtf8(state));
        if (!message.empty()) {
            stateItem->setToolTip(fromUtf8(message));
            stateItem->setForeground(QColor(0xB0, 0x20, 0x20));
            QFont font = stateItem->font();
            font.setBold(true);
            stateItem->setFont(font);
        }
        seasons_->setItem(r, 3, stateItem);
    }
    seasons_->resizeColumnsToContents();
    if (select >= 0 && select < seasons_->rowCount())
        seasons_->selectRow(select);
    showPlayers();
    showLinks();
    updateButtons();
}

void SeasonsDialog::showPlayers() {
    set_ = openSeasons(list_.seasons, list_.links);
    const std::size_t count = set_.seasons.size();
    QStringList headings{QStringLiteral("Player")};
    for (const OpenSeason& s : set_.seasons)
        headings << fromUtf8(s.label);
    players_->clear();
    players_->setColumnCount(static_cast<int>(headings.size()));
    players_->setHorizontalHeaderLabels(headings);

    // Each person's numbers season by season.
    std::vector<std::vector<std::vector<int>>> numbers(static_cast<std::size_t>(set_.people.count),
                                                       std::vector<std::vector<int>>(count));
    for (std::size_t s = 0; s < count; ++s)
        for (int n = 1; n <= kMaxPlayers; ++n)
            if (!trim(set_.seasons[s].team.players[static_cast<std::size_t>(n)]).empty())
                numbers[static_cast<std::size_t>(set_.people.of(s, n))][s].push_back(n);
    int rows = 0;
    players_->setRowCount(0);
    for (const auto& person : numbers) {
        const auto seasonsPlayed =
            std::count_if(person.begin(), person.end(), [](const auto& n) { return !n.empty(); });
        if (seasonsPlayed < 2)
            continue;
        players_->setRowCount(rows + 1);
        QString latest;
        for (std::size_t s = 0; s < count; ++s) {
            QStringList shown;
            for (int n : person[s])
                shown << playerText(n, set_.seasons[s].team.players[static_cast<std::size_t>(n)]);
            if (!shown.isEmpty())
                latest = fromFileText(trimRight(
                    set_.seasons[s].team.players[static_cast<std::size_t>(person[s].front())]));
            players_->setItem(rows, static_cast<int>(s) + 1,
                              cell(shown.join(QStringLiteral("; "))));
        }
        players_->setItem(rows, 0, cell(latest));
        ++rows;
    }
    players_->sortItems(0);
    players_->resizeColumnsToContents();
}

void SeasonsDialog::showLinks() {
    const int row = links_->currentRow();
    links_->clear();
    for (const PlayerLink& l : list_.links)
        links_->addItem(fromUtf8(linkText(l)));
    if (links_->count())
        links_->setCurrentRow(std::clamp(row, 0, links_->count() - 1));
}

void SeasonsDialog::updateButtons() {
    const int row = currentSeason();
    const int last = static_cast<int>(list_.seasons.size()) - 1;
    rename_->setEnabled(row >= 0);
    remove_->setEnabled(row >= 0);
    up_->setEnabled(row > 0);
    down_->setEnabled(row >= 0 && row < last);
    link_->setEnabled(set_.seasons.size() >= 2);
    unlink_->setEnabled(set_.seasons.size() >= 2);
    removeLink_->setEnabled(links_->currentRow() >= 0);
}

bool SeasonsDialog::addEntry(const SeasonEntry& entry) {
    if (std::optional<std::string> refused = addSeason(list_, entry)) {
        tell(*refused);
        return false;
    }
    showSeasons(static_cast<int>(list_.seasons.size()) - 1);
    return true;
}

bool SeasonsDialog::addPlayerLink(const PlayerLink& link) {
    if (std::optional<std::string> refused = addLink(list_, link)) {
        tell(*refused);
        return false;
    }
    showSeasons(currentSeason());
    links_->setCurrentRow(links_->count() - 1);
    return true;
}

void SeasonsDialog::openAdd() {
    AddSeasonDialog dialog(this);
    while (dialog.exec() == QDialog::Accepted)
        if (addEntry(dialog.entry()))
            return;
}

void SeasonsDialog::rename() {
    const int row = currentSeason();
    if (row < 0)
        return;
    SeasonEntry& season = list_.seasons[static_cast<std::size_t>(row)];
    QInputDialog ask(this);
    ask.setObjectName(QStringLiteral("dlgRename"));
    ask.setWindowTitle(QStringLiteral("Rename Season"));
    ask.setLabelText(QStringLiteral("&Label of the season:"));
    ask.setTextValue(fromUtf8(season.label));
    while (ask.exec() == QDialog::Accepted) {
        const std::string label = toUtf8(ask.textValue().trimmed());
        if (label == season.label)
            return;
        // The new label is checked as a new season's would be, against the other seasons.
        SeasonsList others;
        for (std::size_t i = 0; i < list_.seasons.size(); ++i)
            if (i != static_cast<std::size_t>(row))
                others.seasons.push_back(list_.seasons[i]);
        SeasonEntry renamed = season;
        renamed.label = label;
        if (std::optional<std::string> refused = addSeason(others, renamed)) {
            tell(*refused);
            continue;
        }
        // The links name the season by its label.
        for (PlayerLink& l : list_.links)
            for (SeasonPlayer* p : {&l.first, &l.second})
                if (p->season == season.label)
                    p->season = label;
        season.label = label;
        showSeasons(row);
        return;
    }
}

void SeasonsDialog::move(int by) {
    const int row = currentSeason();
    const int to = row + by;
    if (row < 0 || to < 0 || to >= static_cast<int>(list_.seasons.size()))
        return;
    std::swap(list_.seasons[static_cast<std::size_t>(row)],
              list_.seasons[static_cast<std::size_t>(to)]);
    showSeasons(to);
}

void SeasonsDialog::remove() {
    const int row = currentSeason();
    if (row < 0)
        return;
    const std::string label = list_.seasons[static_cast<std::size_t>(row)].label;
    const auto names = [&](const PlayerLink& l) {
        return l.first.season == label || l.second.season == label;
    };
    const bool withLinks = std::any_of(list_.links.begin(), list_.links.end(), names);
    std::string text = "Remove the season " + label + " from the list?";
    if (withLinks)
        text += " Its links and names kept apart go with it.";
    text += " Its data directory is not changed.";
    if (prompter_.ask({text, "Remove Season", Buttons::YesNo, Icon::Question, Answer::No}) !=
        Answer::Yes)
        return;
    list_.seasons.erase(list_.seasons.begin() + row);
    std::erase_if(list_.links, names);
    showSeasons(std::min(row, static_cast<int>(list_.seasons.size()) - 1));
}

void SeasonsDialog::openLink(bool unlink) {
    LinkPlayersDialog dialog(set_, unlink, this);
    // Keeping apart starts on the chosen person's first two seasons.
    const int row = players_->currentRow();
    if (unlink && row >= 0) {
        std::vector<std::pair<std::size_t, int>> chosen;
        for (std::size_t s = 0; s < set_.seasons.size(); ++s) {
            const QTableWidgetItem* item = players_->item(row, static_cast<int>(s) + 1);
            if (item && !item->text().isEmpty())
                chosen.emplace_back(s, item->text().section(QLatin1Char(' '), 0, 0).toInt());
        }
        if (chosen.size() >= 2)
            dialog.choose(chosen[0], chosen[1]);
    }
    while (dialog.exec() == QDialog::Accepted)
        if (addPlayerLink(dialog.link()))
            return;
}

void SeasonsDialog::removeLink() {
    const int row = links_->currentRow();
    if (row < 0 || row >= static_cast<int>(list_.links.size()))
        return;
    list_.links.erase(list_.links.begin() + row);
    showSeasons(currentSeason());
}

void SeasonsDialog::accept() {
    if (changed()) {
        if (Status s = writeSeasonsFile(path_, list_); !s) {
            prompter_.ask({"The seasons could not be saved in " + platform::shownPath(path_) +
                               ": " + s.message(),
                           "Seasons", Buttons::Ok, Icon::Critical, Answer::Ok});
            return;
        }
        saved_ = list_;
    }
    QDialog::accept();
}

void SeasonsDialog::reject() {
    if (changed() && prompter_.ask({"Forget the changes to the seasons?", "Seasons", Buttons::YesNo,
                                    Icon::Question, Answer::No}) != Answer::Yes)
        return;
    QDialog::reject();
}

// --- adding a season -------------------------------------------------------------------------

AddSeasonDialog::AddSeasonDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAddSeason"));
    setWindowTitle(QStringLiteral("Add Season"));
    label_ = new QLineEdit(this);
    label_->setObjectName(QStringLiteral("txtLabel"));
    label_->setPlaceholderText(QStringLiteral("2025"));
    folder_ = new QLineEdit(this);
    folder_->setObjectName(QStringLiteral("txtFolder"));
    auto* browse = namedButton(this, "cmdBrowse", QStringLiteral("&Browse..."));
    team_ = new QComboBox(this);
    team_->setObjectName(QStringLiteral("cboTeam"));
    teamNote_ = new QLabel(this);
    teamNote_->setObjectName(QStringLiteral("lblTeamNote"));
    auto [ok, cancel] = okCancelButtons(this);
    ok_ = ok;
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(browse, &QPushButton::clicked, this, &AddSeasonDialog::browse);
    connect(folder_, &QLineEdit::textChanged, this, &AddSeasonDialog::readTeams);

    auto* grid = new QGridLayout;
    grid->addWidget(labelFor(label_, QStringLiteral("&Label:")), 0, 0);
    grid->addWidget(label_, 0, 1, 1, 2);
    grid->addWidget(labelFor(folder_, QStringLiteral("&Data directory:")), 1, 0);
    grid->addWidget(folder_, 1, 1);
    grid->addWidget(browse, 1, 2);
    grid->addWidget(labelFor(team_, QStringLiteral("&Team:")), 2, 0);
    grid->addWidget(team_, 2, 1, 1, 2);
    grid->addWidget(teamNote_, 3, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addStretch(1);
    layout->addLayout(buttonRow({ok, cancel}, ok));
    chainTabOrder({label_, folder_, browse, team_, ok, cancel});
    resize(560, sizeHint().height());
    readTeams();
}

SeasonEntry AddSeasonDialog::entry() const {
    SeasonEntry e;
    e.label = toUtf8(label_->text().trimmed());
    e.dataDirectory = normalizeDirectory(toUtf8(folder_->text().trimmed()));
    e.team = team_->currentData().isValid() ? team_->currentData().toInt() : 0;
    return e;
}

void AddSeasonDialog::browse() {
    const QString start = folder_->text().trimmed().isEmpty()
                              ? fromUtf8(platform::documentsFolder())
                              : folder_->text().trimmed();
    const QString chosen =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Season's Data Directory"), start);
    if (chosen.isEmpty())
        return;
    folder_->setText(chosen);
    // A new season is most often named after its folder ("2025").
    if (label_->text().trimmed().isEmpty())
        label_->setText(QFileInfo(chosen).fileName());
    team_->setFocus();
}

void AddSeasonDialog::readTeams() {
    const std::string folder = toUtf8(folder_->text().trimmed());
    const int kept = team_->currentData().isValid() ? team_->currentData().toInt() : 1;
    team_->clear();
    for (const auto& [number, name] : teamsIn(folder)) {
        team_->addItem(QString::number(number) + QLatin1Char(' ') + fromFileText(name), number);
        if (number == kept)
            team_->setCurrentIndex(team_->count() - 1);
    }
    if (folder.empty())
        teamNote_->setText(QStringLiteral("Type or choose the folder that holds the season."));
    else if (team_->count() == 0)
        teamNote_->setText(QStringLiteral("There is no team list in this folder."));
    else
        teamNote_->clear();
    ok_->setEnabled(team_->count() > 0);
}

// --- linking two players ---------------------------------------------------------------------

LinkPlayersDialog::LinkPlayersDialog(const SeasonSet& set, bool unlink, QWidget* parent)
    : QDialog(parent), set_(set), unlink_(unlink) {
    setObjectName(QStringLiteral("frmLinkPlayers"));
    setWindowTitle(unlink ? QStringLiteral("Keep Players Apart")
                          : QStringLiteral("Link Two Names"));
    auto* note = new QLabel(
        unlink ? QStringLiteral("Two players of the same name who are not the same person:")
               : QStringLiteral("Two names of the same person (a misspelt name):"),
        this);
    auto* grid = new QGridLayout;
    const char* seasonNames[2] = {"cboSeason1", "cboSeason2"};
    const char* playerNames[2] = {"cboPlayer1", "cboPlayer2"};
    const QString seasonLabels[2] = {QStringLiteral("&First season:"),
                                     QStringLiteral("S&econd season:")};
    const QString playerLabels[2] = {QStringLiteral("&Player:"), QStringLiteral("P&layer:")};
    for (int i = 0; i < 2; ++i) {
        season_[i] = new QComboBox(this);
        season_[i]->setObjectName(QString::fromLatin1(seasonNames[i]));
        player_[i] = new QComboBox(this);
        player_[i]->setObjectName(QString::fromLatin1(playerNames[i]));
        for (const OpenSeason& s : set_.seasons)
            season_[i]->addItem(fromUtf8(s.label));
        grid->addWidget(labelFor(season_[i], seasonLabels[i]), i, 0);
        grid->addWidget(season_[i], i, 1);
        grid->addWidget(labelFor(player_[i], playerLabels[i]), i, 2);
        grid->addWidget(player_[i], i, 3);
        connect(season_[i], &QComboBox::currentIndexChanged, this, [this, i] { fillPlayers(i); });
    }
    grid->setColumnStretch(3, 1);
    if (set_.seasons.size() >= 2)
        season_[1]->setCurrentIndex(1);
    fillPlayers(0);
    fillPlayers(1);
    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addLayout(grid);
    layout->addLayout(buttonRow({ok, cancel}, ok));
    chainTabOrder({season_[0], player_[0], season_[1], player_[1], ok, cancel});
    resize(620, sizeHint().height());
}

void LinkPlayersDialog::fillPlayers(int which) {
    QComboBox* players = player_[which];
    players->clear();
    const int s = season_[which]->currentIndex();
    if (s < 0 || s >= static_cast<int>(set_.seasons.size()))
        return;
    const TeamSeason& team = set_.seasons[static_cast<std::size_t>(s)].team;
    for (int n = 1; n <= kMaxPlayers; ++n) {
        const std::string& name = team.players[static_cast<std::size_t>(n)];
        if (!trim(name).empty())
            players->addItem(playerText(n, name), n);
    }
}

void LinkPlayersDialog::choose(std::pair<std::size_t, int> first,
                               std::pair<std::size_t, int> second) {
    const std::pair<std::size_t, int> both[2] = {first, second};
    for (int i = 0; i < 2; ++i) {
        season_[i]->setCurrentIndex(static_cast<int>(both[i].first));
        const int at = player_[i]->findData(both[i].second);
        if (at >= 0)
            player_[i]->setCurrentIndex(at);
    }
}

PlayerLink LinkPlayersDialog::link() const {
    PlayerLink l;
    l.unlink = unlink_;
    SeasonPlayer* players[2] = {&l.first, &l.second};
    for (int i = 0; i < 2; ++i) {
        const int s = season_[i]->currentIndex();
        if (s < 0 || s >= static_cast<int>(set_.seasons.size()))
            continue;
        const OpenSeason& season = set_.seasons[static_cast<std::size_t>(s)];
        players[i]->season = season.label;
        const int n = player_[i]->currentData().toInt();
        if (n >= 1 && n <= kMaxPlayers)
            players[i]->name = trimRight(season.team.players[static_cast<std::size_t>(n)]);
    }
    return l;
}

void openSeasonsList(const std::string& configDirectory, Prompter& prompter, QWidget* parent) {
    SeasonsDialog dialog(seasonsFilePath(configDirectory), prompter, parent);
    dialog.exec();
}

} // namespace scorvane
