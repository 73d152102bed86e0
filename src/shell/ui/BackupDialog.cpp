#include "BackupDialog.h"

#include "shell/Backup.h"
#include "shell/TeamSelection.h"
#include "storage/DataFiles.h"
#include "storage/Platform.h"
#include "storage/Prompter.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {
namespace {

// The folder backups were last written to or restored from in this run.
QString g_lastFolder;

// Where backups go and are looked for: the folder last used, else the user's documents folder.
// Written with the system's separators, as the folder box shows it.
QString startFolder() {
    if (!g_lastFolder.isEmpty() && QFileInfo(g_lastFolder).isDir())
        return QDir::toNativeSeparators(g_lastFolder);
    const QString documents = fromUtf8(platform::documentsFolder());
    return QDir::toNativeSeparators(documents.isEmpty() ? QDir::homePath() : documents);
}

QLabel* valueLabel(QWidget* parent, const char* name) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

void fillTeams(QListWidget* list, const BackupArchive& archive) {
    list->clear();
    for (const std::string& name : archive.teamNames())
        list->addItem(fromFileText(name));
}

} // namespace

BackupDialog::BackupDialog(char backupMode, DataFiles& files, Prompter& prompter,
                           TeamSelection& teams, QWidget* parent)
    : QDialog(parent), restoring_(backupMode == 'N'), files_(files), prompter_(prompter),
      teams_(teams) {
    setObjectName(restoring_ ? QStringLiteral("frmRestore") : QStringLiteral("frmBackUp"));
    setWindowTitle(restoring_ ? QStringLiteral("Restore Files") : QStringLiteral("Back Up Files"));
    setModal(true);

    auto* body = new QWidget(this);
    if (restoring_)
        buildRestore(body);
    else
        buildBackUp(body);

    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    run_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(run_);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(body, 1);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    resize(600, restoring_ ? 440 : 400);
}

void BackupDialog::buildBackUp(QWidget* body) {
    auto* explanation = new QLabel(
        QStringLiteral("Everything the data directory holds is written into one backup file: "
                       "the team list, each team's roster, player information, games and "
                       "statistics, and the report formats. Keep it on another disk or a memory "
                       "stick."),
        body);
    explanation->setObjectName(QStringLiteral("lblExplanation"));
    explanation->setWordWrap(true);

    BackupArchive current;
    const Status read = collectDataFiles(files_.paths(), current);
    auto* directory = valueLabel(body, "lblDataDirectory");
    directory->setText(fromUtf8(platform::shownPath(files_.paths().dataDirectory)));
    contents_ = valueLabel(body, "lblContents");
    contents_->setText(read ? fromUtf8(describeBackup(current))
                            : fromUtf8("Cannot be read: " + read.message()));
    teamNames_ = new QListWidget(body);
    teamNames_->setObjectName(QStringLiteral("lstTeams"));
    teamNames_->setFocusPolicy(Qt::NoFocus);
    fillTeams(teamNames_, current);

    folder_ = new QLineEdit(startFolder(), body);
    folder_->setObjectName(QStringLiteral("txtFolder"));
    selectAllOnFocus(folder_);
    auto* browse = new QPushButton(QStringLiteral("Bro&wse..."), body);
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    connect(browse, &QPushButton::clicked, this, &BackupDialog::browse);
    const std::string team = toUtf8(fromFileText(teams_.teamName(teams_.currentTeam())));
    fileName_ = new QLineEdit(fromUtf8(defaultBackupName(timestampNow(), team)), body);
    fileName_->setObjectName(QStringLiteral("txtFileName"));
    selectAllOnFocus(fileName_);

    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Data directory:"), directory);
    form->addRow(QStringLiteral("It holds:"), contents_);
    form->addRow(QStringLiteral("Teams:"), teamNames_);
    auto* folderLabel = new QLabel(QStringLiteral("&Save in:"), body);
    folderLabel->setBuddy(folder_);
    form->addRow(folderLabel, folderRow);
    auto* nameLabel = new QLabel(QStringLiteral("File &name:"), body);
    nameLabel->setBuddy(fileName_);
    form->addRow(nameLabel, fileName_);

    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(explanation);
    layout->addSpacing(8);
    layout->addLayout(form, 1);

    run_ = new QPushButton(QStringLiteral("&Back Up"), this);
    run_->setObjectName(QStringLiteral("cmdBackUp"));
    connect(run_, &QPushButton::clicked, this, &BackupDialog::backUp);
    folder_->setFocus();
}

void BackupDialog::buildRestore(QWidget* body) {
    auto* explanation = new QLabel(
        QStringLiteral("Choose a backup file. What it holds is shown here before anything is "
                       "replaced. The files the restore replaces are first saved in a backup of "
                       "their own in the data directory, so a restore can be undone."),
        body);
    explanation->setObjectName(QStringLiteral("lblExplanation"));
    explanation->setWordWrap(true);

    // The newest backup where backups are kept is the likeliest one.
    const std::string newest = newestBackup(toUtf8(startFolder()));
    backupFile_ = new QLineEdit(QDir::toNativeSeparators(fromUtf8(newest)), body);
    backupFile_->setObjectName(QStringLiteral("txtBackupFile"));
    selectAllOnFocus(backupFile_);
    connect(backupFile_, &QLineEdit::editingFinished, this, &BackupDialog::inspect);
    auto* browse = new QPushButton(QStringLiteral("Bro&wse..."), body);
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    connect(browse, &QPushButton::clicked, this, &BackupDialog::browse);

    madeOn_ = valueLabel(body, "lblMadeOn");
    contents_ = valueLabel(body, "lblContents");
    teamNames_ = new QListWidget(body);
    teamNames_->setObjectName(QStringLiteral("lstTeams"));
    teamNames_->setFocusPolicy(Qt::NoFocus);
    auto* directory = valueLabel(body, "lblDataDirectory");
    directory->setText(fromUtf8(platform::shownPath(files_.paths().dataDirectory)));

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(backupFile_, 1);
    fileRow->addWidget(browse);

    auto* form = new QFormLayout;
    auto* fileLabel = new QLabel(QStringLiteral("Backup &file:"), body);
    fileLabel->setBuddy(backupFile_);
    form->addRow(fileLabel, fileRow);
    form->addRow(QStringLiteral("Made on:"), madeOn_);
    form->addRow(QStringLiteral("It holds:"), contents_);
    form->addRow(QStringLiteral("Teams:"), teamNames_);
    form->addRow(QStringLiteral("Restore into:"), directory);

    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(explanation);
    layout->addSpacing(8);
    layout->addLayout(form, 1);

    run_ = new QPushButton(QStringLiteral("&Restore"), this);
    run_->setObjectName(QStringLiteral("cmdRestore"));
    connect(run_, &QPushButton::clicked, this, &BackupDialog::restore);
    inspect();
    backupFile_->setFocus();
}

void BackupDialog::browse() {
    if (restoring_) {
        const QString start = backupFile_->text().isEmpty()
                                  ? startFolder()
                                  : QFileInfo(backupFile_->text()).absolutePath();
        const QString chosen =
            QFileDialog::getOpenFileName(this, QStringLiteral("Restore Files"), start,
                                         QStringLiteral("Scorvane backups (*%1);;All files (*)")
                                             .arg(QString::fromLatin1(kBackupExtension)));
        if (!chosen.isEmpty()) {
            backupFile_->setText(QDir::toNativeSeparators(chosen));
            inspect();
        }
        return;
    }
    const QString chosen =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Back Up Files"), folder_->text());
    if (!chosen.isEmpty())
        folder_->setText(QDir::toNativeSeparators(chosen));
}

void BackupDialog::inspect() {
    if (!restoring_)
        return;
    const QString path = backupFile_->text().trimmed();
    teamNames_->clear();
    madeOn_->clear();
    if (path.isEmpty()) {
        contents_->setText(QStringLiteral("Choose a backup file."));
        return;
    }
    BackupArchive archive;
    std::string refusal;
    if (!inspectBackupFile(toUtf8(path), archive, refusal)) {
        contents_->setText(fromUtf8(refusal));
        return;
    }
    madeOn_->setText(fromUtf8(archive.madeOn));
    contents_->setText(fromUtf8(describeBackup(archive)));
    fillTeams(teamNames_, archive);
}

void BackupDialog::backUp() {
    const QString folder = folder_->text().trimmed();
    const QString name = fileName_->text().trimmed();
    if (folder.isEmpty() || name.isEmpty()) {
        prompter_.ask({"Choose the folder and the name of the backup file first.", "Back Up Files",
                       Buttons::Ok, Icon::Warning, Answer::Ok});
        (folder.isEmpty() ? folder_ : fileName_)->setFocus();
        return;
    }
    const QString path = QDir(folder).filePath(name);
    if (backUpDataFiles(files_, prompter_, toUtf8(path), timestampNow()) != BackupResult::Written)
        return;
    g_lastFolder = folder;
    prompter_.ask({"The backup was written to " + toUtf8(QDir::toNativeSeparators(path)) + ".",
                   "Back Up Files", Buttons::Ok, Icon::Information, Answer::Ok});
    accept();
}

void BackupDialog::restore() {
    const QString path = backupFile_->text().trimmed();
    if (path.isEmpty()) {
        prompter_.ask({"Choose the backup file to restore first.", "Restore Files", Buttons::Ok,
                       Icon::Warning, Answer::Ok});
        backupFile_->setFocus();
        return;
    }
    std::string undoPath;
    const RestoreResult result =
        restoreDataFiles(files_, prompter_, toUtf8(path), timestampNow(), undoPath);
    if (result != RestoreResult::Restored)
        return;
    g_lastFolder = QFileInfo(path).absolutePath();
    // Other teams, other names: the list starts over with no team marked.
    teams_.setResetMark();
    (void)teams_.load(files_); // a disk error was shown; a short list reads as unnamed teams
    std::string text = "The backup was restored.";
    if (!undoPath.empty())
        text += "  The files it replaced are saved in " + platform::shownPath(undoPath) +
                "; restoring that file undoes this restore.";
    prompter_.ask({text, "Restore Files", Buttons::Ok, Icon::Information, Answer::Ok});
    accept();
}

} // namespace scorvane
