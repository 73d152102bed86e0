#include "DataDirectoryDialog.h"

#include "MainWindow.h"
#include "shell/DataDirectory.h"
#include "shell/TeamSelection.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

DataDirectoryDialog::DataDirectoryDialog(Session& session, DataFiles& files, Prompter& prompter,
                                         TeamSelection& teams, MainWindow& window)
    : QDialog(&window), session_(session), files_(files), prompter_(prompter), teams_(teams),
      window_(window) {
    setObjectName(QStringLiteral("frmDataDirectory"));
    setWindowTitle(QStringLiteral("Data Directory"));
    setModal(true);

    auto* explanation = new QLabel(QStringLiteral("Choose the folder that holds your teams. A "
                                                  "folder without teams becomes a new, empty data "
                                                  "directory."),
                                   this);
    explanation->setObjectName(QStringLiteral("lblExplanation"));
    explanation->setWordWrap(true);

    directory_ = new QLineEdit(fromUtf8(session_.paths.dataDirectory), this);
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
        directory_->setText(chosen);
}

void DataDirectoryDialog::use() {
    if (!useDataDirectory(session_, files_, prompter_, toUtf8(directory_->text())))
        return;
    window_.setDataDirectory(session_.paths.dataDirectory);
    teams_.setResetMark();
    (void)teams_.load(files_); // a disk error was shown; a short list reads as unnamed teams
    accept();
}

} // namespace scorvane
