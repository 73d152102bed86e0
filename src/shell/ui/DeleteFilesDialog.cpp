#include "DeleteFilesDialog.h"

#include "shell/DeleteFiles.h"
#include "shell/TeamSelection.h"
#include "ui/TextCodec.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

DeleteFilesDialog::DeleteFilesDialog(TeamSelection& teams, DataFiles& files, Prompter& prompter,
                                     QWidget* parent)
    : QDialog(parent), teams_(teams), files_(files), prompter_(prompter) {
    setObjectName(QStringLiteral("frmDeleteFiles"));
    setWindowTitle(QStringLiteral("Delete Files"));
    setModal(true);

    auto* explanation = new QLabel(
        QStringLiteral("Choose one of the marked teams. Its roster, player information, games "
                       "and statistics are deleted, and its line in the team list becomes empty. "
                       "The other teams' files stay as they are."),
        this);
    explanation->setObjectName(QStringLiteral("lblExplanation"));
    explanation->setWordWrap(true);

    auto* listLabel = new QLabel(QStringLiteral("&Marked teams:"), this);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstTeams"));
    listLabel->setBuddy(list_);
    for (int team : teams_.markedTeams()) {
        const QString name = fromFileText(teams_.teamName(team));
        auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(team, 3).arg(
                                             name.isEmpty() ? QStringLiteral("(no name)") : name),
                                         list_);
        item->setData(Qt::UserRole, team);
        if (team == teams_.currentTeam())
            list_->setCurrentItem(item);
    }
    if (!list_->currentItem() && list_->count() > 0)
        list_->setCurrentRow(0);

    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("lblTeamFiles"));

    delete_ = new QPushButton(QStringLiteral("&Delete"), this);
    delete_->setObjectName(QStringLiteral("cmdDelete"));
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setDefault(true);
    connect(delete_, &QPushButton::clicked, this, &DeleteFilesDialog::deleteChosen);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::currentRowChanged, this, &DeleteFilesDialog::showCounts);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(delete_);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addSpacing(8);
    layout->addWidget(listLabel);
    layout->addWidget(list_, 1);
    layout->addWidget(counts_);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    resize(440, 340);

    showCounts();
    list_->setFocus();
}

int DeleteFilesDialog::chosenTeam() const {
    const QListWidgetItem* item = list_->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

void DeleteFilesDialog::showCounts() {
    const int team = chosenTeam();
    delete_->setEnabled(team > 0);
    counts_->setText(team > 0 ? fromUtf8(describeTeamFiles(countTeamFiles(files_.paths(), team)))
                              : QStringLiteral("No team is marked."));
}

void DeleteFilesDialog::deleteChosen() {
    const int team = chosenTeam();
    if (team > 0 && deleteTeamFiles(files_, teams_, prompter_, team) == DeleteResult::Deleted)
        accept();
}

} // namespace scorvane
