#include "DataDirectoryDialog.h"

#include "MainWindow.h"
#include "shell/DataDirectory.h"
#include "shell/TeamSelection.h"
#include "storage/Platform.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

DataDirectoryDialog::DataDirectoryDialog(Session& session, DataFiles& files, Prompter& prompter,
                                         TeamSelection& teams, MainWindow& window, Environment env)
    : QDialog(&window), session_(session), files_(files), prompter_(prompter), teams_(teams),
      window_(window), env_(std::move(env)) {
    setObjectName(QStringLiteral("frmDataDirectory"));
    setWindowTitle(QStringLiteral("Data Directory"));
    setModal(true);

    auto* explanation = new QLabel(QStringLiteral("Choose the folder that holds your teams. A "
                                                  "folder without teams becomes a new, empty data "
                                                  "directory."),
                                   this);
    explanation->setObjectName(QStringLiteral("lblExplanation"));
    explanation->setWordWrap(true);

    // The first start: no folder chosen yet. A new data directory in the user's own data folder is
    // proposed, and so is a copy of the sample season when the program brings one.
    const bool firstStart = session_.paths.dataDirectory.empty();
    const std::string proposed = firstStart ? newDataDirectory(env_) : session_.paths.dataDirectory;
    // Shown with the system's separators; what the user leaves or types there is read back as it
    // is, either separator being taken.
    directory_ = new QLineEdit(fromUtf8(platform::shownPath(proposed)), this);
    directory_->setObjectName(QStringLiteral("txtDataDirectory"));
    directory_->setMinimumWidth(fontMetrics().averageCharWidth() * 72);
    selectAllOnFocus(directory_);
    auto* browseButton = new QPushButton(QStringLiteral("Browse..."), this);
    browseButton->setObjectName(QStringLiteral("cmdBrowse"));

    auto [ok, cancel] = okCancelButtons(this);

    connect(browseButton, &QPushButton::clicked, this, &DataDirectoryDialog::browse);
    connect(ok, &QPushButton::clicked, this, &DataDirectoryDialog::use);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* row = new QHBoxLayout;
    row->addWidget(directory_, 1);
    row->addWidget(browseButton);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    const std::string sample = sampleSeasonDirectory(session_.installDirectory);
    if (firstStart && !sample.empty() && !sampleCopyDirectory(env_).empty()) {
        auto* welcome = new QLabel(
            QStringLiteral("Welcome to Scorvane for Football. To look around first, start with a "
                           "copy of the sample season (four teams with rosters, games and player "
                           "statistics) in %1. Or enter your own teams in a new, empty data "
                           "directory: OK makes the folder below.")
                .arg(fromUtf8(platform::shownPath(sampleCopyDirectory(env_)))),
            this);
        welcome->setObjectName(QStringLiteral("lblWelcome"));
        welcome->setWordWrap(true);
        auto* sampleButton = new QPushButton(QStringLiteral("Copy the &Sample Season"), this);
        sampleButton->setObjectName(QStringLiteral("cmdSampleSeason"));
        connect(sampleButton, &QPushButton::clicked, this, &DataDirectoryDialog::useSampleCopy);
        auto* sampleRow = new QHBoxLayout;
        sampleRow->addWidget(sampleButton);
        sampleRow->addStretch(1);
        layout->addWidget(welcome);
        layout->addLayout(sampleRow);
        layout->addSpacing(12);
    }
    layout->addWidget(explanation);
    layout->addSpacing(6);
    layout->addLayout(row);
    layout->addSpacing(10);
    layout->addLayout(buttons);
    directory_->setFocus();
}

void DataDirectoryDialog::browse() {
    // The folder dialog can make a new folder too, for a new season.
    const QString chosen = QFileDialog::getExistingDirectory(this, QStringLiteral("Data Directory"),
                                                             directory_->text());
    if (!chosen.isEmpty())
        directory_->setText(QDir::toNativeSeparators(chosen));
}

void DataDirectoryDialog::use() {
    if (useFolder(toUtf8(directory_->text())))
        accept();
}

bool DataDirectoryDialog::useFolder(const std::string& directory) {
    if (!useDataDirectory(session_, files_, prompter_, directory))
        return false;
    window_.setDataDirectory(session_.paths.dataDirectory);
    teams_.setResetMark();
    (void)teams_.load(files_); // a disk error was shown; a short list reads as unnamed teams
    return true;
}

void DataDirectoryDialog::useSampleCopy() {
    const std::string copy = sampleCopyDirectory(env_);
    // A copy made earlier is used as it is, with whatever was changed in it since.
    if (!copySampleSeason(prompter_, sampleSeasonDirectory(session_.installDirectory), copy))
        return;
    if (useFolder(copy))
        accept();
}

} // namespace scorvane
