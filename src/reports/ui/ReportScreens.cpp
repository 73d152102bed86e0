#include "ReportScreens.h"

#include "StatsDialog.h"
#include "TeamRecordDialog.h"

#include <QFileDialog>

namespace scorvane {

void openStatisticsReport(ReportContext& context, char category, const std::vector<int>& teams,
                          int currentTeam, QWidget* parent) {
    StatsDialog dialog(context, category, teams, currentTeam, parent);
    dialog.exec();
}

void openTeamRecord(ReportContext& context, int team, QWidget* parent) {
    TeamRecordDialog dialog(context, team, parent);
    dialog.exec();
}

void printRoster(ReportContext& context, const std::string& teamName, const Roster& roster,
                 const ContactLookup& contact, QWidget* parent) {
    context.printer.print(parent, QStringLiteral("Roster"), QStringLiteral("Roster"),
                          [&](const PrintOptions& options) {
                              return rosterPages(teamName, roster, contact, options);
                          });
}

bool chooseExportFile(QWidget* parent, QString& path, bool& html) {
    const QString csvFilter = QStringLiteral("CSV (*.csv)");
    const QString htmlFilter = QStringLiteral("HTML (*.html *.htm)");
    QFileDialog dialog(parent, QStringLiteral("Export Report"));
    dialog.setObjectName(QStringLiteral("dlgExport"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({csvFilter, htmlFilter});
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(filter == htmlFilter ? QStringLiteral("html")
                                                     : QStringLiteral("csv"));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    path = dialog.selectedFiles().first();
    html = path.endsWith(QStringLiteral(".html"), Qt::CaseInsensitive) ||
           path.endsWith(QStringLiteral(".htm"), Qt::CaseInsensitive) ||
           (dialog.selectedNameFilter() == htmlFilter &&
            !path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive));
    return true;
}

} // namespace scorvane
