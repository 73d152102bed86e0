#include "RosterImportDialog.h"

#include "ui/TextCodec.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace scorvane {
namespace {

QString whatHappens(const ImportRow& row) {
    switch (row.action) {
    case ImportAction::Add:
        return QStringLiteral("Added");
    case ImportAction::Same:
        return QStringLiteral("No change");
    case ImportAction::Change:
        break;
    }
    QStringList changes;
    for (const std::string& field : row.fields)
        changes << (field == "name" ? QStringLiteral("name (was %1)").arg(fromFileText(row.oldName))
                                    : fromUtf8(field));
    return QStringLiteral("Changes ") + changes.join(QStringLiteral(", "));
}

} // namespace

RosterImportDialog::RosterImportDialog(const QString& fileName, const RosterImportFile& file,
                                       const ImportPlan& plan, const QString& teamName,
                                       QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmRosterImport"));
    setWindowTitle(QStringLiteral("Import Roster - ") + teamName);
    setModal(true);

    auto* source = new QLabel(QStringLiteral("From: ") + fileName, this);
    source->setObjectName(QStringLiteral("lblFile"));
    source->setWordWrap(true);
    source->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* summary = new QLabel(this);
    summary->setObjectName(QStringLiteral("lblSummary"));
    summary->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(source);
    layout->addWidget(summary);

    auto* import = new QPushButton(QStringLiteral("&Import"), this);
    import->setObjectName(QStringLiteral("cmdImport"));
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(import, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    if (!file.ok()) {
        const int count = static_cast<int>(file.problems.size());
        summary->setText(
            QStringLiteral("Nothing can be imported: the file has %1 %2. Correct the file and "
                           "import it again; the roster stays as it is.")
                .arg(count)
                .arg(count == 1 ? QStringLiteral("problem") : QStringLiteral("problems")));
        problems_ = new QListWidget(this);
        problems_->setObjectName(QStringLiteral("lstProblems"));
        for (const ImportProblem& p : file.problems)
            problems_->addItem(fromUtf8(p.text));
        layout->addWidget(problems_, 1);
        import->setEnabled(false);
        cancel->setText(QStringLiteral("&Close"));
        cancel->setObjectName(QStringLiteral("cmdClose"));
        cancel->setDefault(true);
    } else {
        QString text = fromUtf8(describePlan(plan));
        if (!file.ignoredColumns.empty()) {
            QStringList ignored;
            for (const std::string& c : file.ignoredColumns)
                ignored << fromUtf8(c);
            text += QStringLiteral(" Columns left out: ") + ignored.join(QStringLiteral(", ")) +
                    QLatin1Char('.');
        }
        text += QStringLiteral(" The roster is saved when its screen is closed.");
        summary->setText(text);
        players_ = new QTreeWidget(this);
        players_->setObjectName(QStringLiteral("lstImport"));
        players_->setRootIsDecorated(false);
        players_->setHeaderLabels(
            {QStringLiteral("No."), QStringLiteral("Name"), QStringLiteral("What happens")});
        for (const ImportRow& row : plan.rows) {
            auto* item = new QTreeWidgetItem(
                players_, {QString::number(row.number), fromFileText(row.name), whatHappens(row)});
            item->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
        }
        players_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
        players_->setColumnWidth(1, fontMetrics().averageCharWidth() * 22);
        layout->addWidget(players_, 1);
        import->setDefault(true);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(import);
    buttons->addWidget(cancel);
    layout->addSpacing(6);
    layout->addLayout(buttons);
    resize(620, 420);
}

} // namespace scorvane
