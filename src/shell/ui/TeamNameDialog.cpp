#include "TeamNameDialog.h"

#include "shell/TeamSelection.h"
#include "storage/Bytes.h"
#include "storage/DataFiles.h"
#include "storage/SiteId.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

TeamNameDialog::TeamNameDialog(TeamSelection& teams, DataFiles& files, int teamNumber,
                               QWidget* parent)
    : QDialog(parent), teams_(teams), files_(files), team_(teamNumber) {
    setObjectName(QStringLiteral("frmTeamName"));
    setWindowTitle(QStringLiteral("Team Name"));
    setModal(true);

    const TeamRecord& record = teams_.team(team_);
    longName_ = new QLineEdit(fromFileText(trimRight(record.teamName)), this);
    longName_->setObjectName(QStringLiteral("txtTeamName"));
    longName_->setMaxLength(width::teamName);
    shortName_ = new QLineEdit(fromFileText(trimRight(record.shortName)), this);
    shortName_->setObjectName(QStringLiteral("TxtShortTeamName"));
    shortName_->setMaxLength(width::shortName);
    // A file that cannot be read shows as no id; the id is written only when the user changes it.
    if (!readSiteId(files_.paths(), team_, storedSiteId_))
        storedSiteId_.clear();
    siteId_ = new QLineEdit(QString::fromUtf8(storedSiteId_), this);
    siteId_->setObjectName(QStringLiteral("txtSiteId"));
    siteId_->setMaxLength(64);
    for (QLineEdit* box : {longName_, shortName_, siteId_})
        selectAllOnFocus(box);
    // Each box about as wide as the characters it holds.
    const int charWidth = fontMetrics().averageCharWidth();
    longName_->setMinimumWidth(charWidth * 30);
    shortName_->setMaximumWidth(charWidth * 14);
    siteId_->setMinimumWidth(charWidth * 34);

    auto [ok, cancel] = okCancelButtons(this);
    auto* defaults = new QPushButton(QStringLiteral("&Default"), this);
    defaults->setObjectName(QStringLiteral("cmdDefault"));

    connect(ok, &QPushButton::clicked, this, &TeamNameDialog::store);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(defaults, &QPushButton::clicked, this, [this] {
        longName_->clear();
        shortName_->clear();
        store();
    });

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Long Name:"), longName_);
    form->addRow(QStringLiteral("Short Name:"), shortName_);
    form->addRow(QStringLiteral("High-school site ID:"), siteId_);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    buttons->addWidget(defaults);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    setTabOrder(longName_, shortName_);
    setTabOrder(shortName_, siteId_);
    setTabOrder(siteId_, ok);
    setTabOrder(ok, cancel);
    setTabOrder(cancel, defaults);
    longName_->setFocus();
}

void TeamNameDialog::store() {
    const std::string siteId = trimmedSiteId(siteId_->text().toStdString());
    if (const auto problem = siteIdProblem(siteId)) {
        (void)files_.prompter().ask(
            Message{*problem, "Team Name", Buttons::Ok, Icon::Warning, Answer::Ok});
        siteId_->setFocus();
        siteId_->selectAll();
        return;
    }
    // A disk error was shown by the storage layer; the dialog stays so the user can try again
    // or cancel.
    if (!teams_.storeNames(files_, team_, toFileText(longName_->text()),
                           toFileText(shortName_->text())))
        return;
    if (siteId != storedSiteId_) {
        if (!files_.guarded([&] { return writeSiteId(files_.paths(), team_, siteId); }))
            return;
        storedSiteId_ = siteId;
    }
    accept();
}

} // namespace scorvane
