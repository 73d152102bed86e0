#include "ExportGamesDialog.h"

#include "exchange/GameExport.h"
#include "exchange/SiteText.h"
#include "games/GameList.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/SiteId.h"
#include "storage/TextUtil.h"
#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <set>

namespace scorvane {

namespace {

constexpr const char* kTitle = "Export Games";

// One file of the export: where it goes and what it holds.
struct ExportFile {
    std::string path;
    std::string text;
};

// "<stem>.xml" for a site file name "<stem>.txt".
std::string withExtension(const std::string& siteName, const char* extension) {
    const std::size_t dot = siteName.rfind('.');
    return siteName.substr(0, dot) + extension;
}

} // namespace

ExportGamesDialog::ExportGamesDialog(DataFiles& data, Prompter& prompter, const TeamList& teams,
                                     int team, const ConfigRecord& config, int selectedGame,
                                     QWidget* parent)
    : QDialog(parent), data_(data), prompter_(prompter), teams_(teams), team_(team) {
    setObjectName(QStringLiteral("frmExportGames"));
    setWindowTitle(QStringLiteral("Export Games - ") + fromFileText(teams_.teamName(team_)));
    setModal(true);

    games_ = new QListWidget(this);
    games_->setObjectName(QStringLiteral("lstGames"));
    games_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    games_->setMinimumWidth(games_->fontMetrics().horizontalAdvance(QString(72, QLatin1Char('0'))) +
                            60);
    games_->setMinimumHeight(220);
    // Read without creating or changing the file: looking writes nothing.
    std::vector<Bytes> records;
    bool exists = false;
    (void)data_.guarded([&] {
        return readRecords(fileName(FileKind::Games, data_.paths(), team_), GameRecord::Length,
                           records, exists);
    }); // a file that cannot be read was reported; the list stays empty
    for (const Bytes& b : records) {
        const GameRecord g = GameRecord::decode(b);
        if (!g.isLive())
            continue;
        auto* item = new QListWidgetItem(fromFileText(GameList::line(g, config)), games_);
        item->setData(Qt::UserRole, static_cast<int>(g.gameNumber));
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(g.gameNumber == selectedGame ? Qt::Checked : Qt::Unchecked);
        if (g.gameNumber == selectedGame)
            games_->setCurrentItem(item);
    }
    if (!games_->currentItem() && games_->count() > 0)
        games_->setCurrentRow(0);

    pressBox_ = new QRadioButton(QStringLiteral("Press-box &XML (.xml)"), this);
    pressBox_->setObjectName(QStringLiteral("optPressBox"));
    pressBox_->setChecked(true);
    siteText_ = new QRadioButton(QStringLiteral("&High-school site text (.txt)"), this);
    siteText_->setObjectName(QStringLiteral("optSiteText"));
    auto* format = new QGroupBox(QStringLiteral("Format"), this);
    auto* formatLayout = new QVBoxLayout(format);
    formatLayout->addWidget(pressBox_);
    formatLayout->addWidget(siteText_);

    folder_ = new QLineEdit(this);
    folder_->setObjectName(QStringLiteral("txtFolder"));
    std::string documents = platform::documentsFolder();
    if (documents.empty())
        documents = toUtf8(QDir::homePath());
    folder_->setText(fromUtf8(platform::shownPath(documents)));
    auto* browse = namedButton(this, "cmdBrowse", QStringLiteral("&Browse..."));
    connect(browse, &QPushButton::clicked, this, &ExportGamesDialog::browse);

    auto [ok, cancel] = okCancelButtons(this);
    ok_ = ok;
    ok_->setText(QStringLiteral("&Export"));
    connect(ok_, &QPushButton::clicked, this, &ExportGamesDialog::exportGames);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(games_, &QListWidget::itemChanged, this, &ExportGamesDialog::tickedChanged);

    auto* folderRow = new QGridLayout;
    folderRow->addWidget(labelFor(folder_, QStringLiteral("&Folder:")), 0, 0);
    folderRow->addWidget(folder_, 0, 1);
    folderRow->addWidget(browse, 0, 2);
    folderRow->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(labelFor(games_, QStringLiteral("&Games to export, each to its own file:")));
    layout->addWidget(games_, 1);
    layout->addWidget(format);
    layout->addLayout(folderRow);
    layout->addLayout(buttonRow({ok_, cancel}, ok_));
    chainTabOrder({games_, pressBox_, siteText_, folder_, browse, ok_, cancel});

    tickedChanged();
    games_->setFocus();
}

std::vector<int> ExportGamesDialog::tickedGames() const {
    std::vector<int> games;
    for (int i = 0; i < games_->count(); ++i)
        if (games_->item(i)->checkState() == Qt::Checked)
            games.push_back(games_->item(i)->data(Qt::UserRole).toInt());
    return games;
}

void ExportGamesDialog::tickedChanged() {
    ok_->setEnabled(!tickedGames().empty());
}

void ExportGamesDialog::browse() {
    const QString chosen = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Export Games to"), folder_->text().trimmed());
    if (!chosen.isEmpty())
        folder_->setText(fromUtf8(platform::shownPath(toUtf8(chosen))));
}

void ExportGamesDialog::exportGames() {
    const auto say = [this](const std::string& text, Icon icon = Icon::Warning) {
        prompter_.ask({text, kTitle, Buttons::Ok, icon, Answer::Ok});
    };
    const std::vector<int> games = tickedGames();
    if (games.empty())
        return;
    std::string folder = toUtf8(folder_->text().trimmed());
    // The folder as it is shown in the last message: no separator after it, but for a root.
    while (folder.size() > 1 && platform::isSeparator(folder.back()) &&
           folder[folder.size() - 2] != ':')
        folder.pop_back();
    if (folder.empty() || !platform::isFolder(folder)) {
        say(folder.empty() ? std::string("Choose the folder to export to.")
                           : "The folder " + platform::shownPath(folder) + " does not exist.");
        folder_->setFocus();
        return;
    }
    if (platform::samePlace(folder, data_.paths().dataDirectory)) {
        say("Games are not exported into the data directory, where they would be taken for the "
            "data files' own. Choose another folder.");
        folder_->setFocus();
        return;
    }

    const bool site = siteText_->isChecked();
    std::string siteId;
    if (site) {
        if (Status s = readSiteId(data_.paths(), team_, siteId); !s) {
            say("The team's high-school site ID cannot be read: " + s.message());
            return;
        }
        if (siteIdProblem(siteId))
            siteId.clear(); // an ID the site would refuse is left out, as a missing one is
    }

    // Every file is made before the first is written, so that a game that cannot be read stops
    // the export with nothing written.
    std::string base = platform::normalPath(folder);
    if (!platform::isSeparator(base.back()))
        base += '/';
    std::vector<ExportFile> files;
    std::set<std::string> names;
    int existing = 0;
    for (int game : games) {
        GameSide side;
        if (Status s = readGameSide(data_, teams_, team_, game, side); !s) {
            if (s.kind() != ErrorKind::Disk && s.kind() != ErrorKind::ProgramEnded)
                say(s.message());
            return;
        }
        std::string name = siteFileName(side);
        if (!names.insert(name).second) // two games of one day against one opponent
            name = withExtension(name, (" game " + digits(game) + ".txt").c_str());
        names.insert(name);
        ExportFile file;
        if (site) {
            file.text = siteText(side, siteId);
        } else {
            const std::optional<GameSide> opponent = findOpponentSide(data_, teams_, side);
            file.text = pressBoxXml(side, opponent ? &*opponent : nullptr);
            name = withExtension(name, ".xml");
        }
        file.path = base + name;
        existing += platform::isFile(file.path) ? 1 : 0;
        files.push_back(std::move(file));
    }
    if (existing > 0 &&
        prompter_.ask({existing == 1
                           ? std::string("1 file already exists in the folder. Replace it?")
                           : digits(existing) + " files already exist in the folder. Replace them?",
                       kTitle, Buttons::YesNo, Icon::Question, Answer::No}) != Answer::Yes)
        return;

    exported_ = 0;
    for (const ExportFile& file : files) {
        const Bytes bytes(file.text.begin(), file.text.end());
        if (Status s = writeFileAtomically(file.path, FileContents(bytes)); !s) {
            say("The export stopped after " + digits(exported_) + " of " +
                digits(static_cast<long long>(files.size())) +
                " files: " + platform::shownPath(file.path) + " cannot be written. " + s.message());
            return;
        }
        ++exported_;
    }
    std::string done = "Exported " + digits(exported_) + (exported_ == 1 ? " game" : " games") +
                       " to " + platform::shownPath(folder) + ".";
    if (site && siteId.empty())
        done += " The team has no high-school site ID, so the files have no ID line: set it in "
                "the Team Name screen.";
    say(done, Icon::Information);
    accept();
}

} // namespace scorvane
