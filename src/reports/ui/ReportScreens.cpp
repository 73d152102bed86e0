#include "ReportScreens.h"

#include "StatsDialog.h"
#include "TableReportDialog.h"
#include "TeamRecordDialog.h"
#include "reports/GameLog.h"
#include "reports/ReportColumns.h"
#include "reports/ReportFormats.h"
#include "storage/DiskError.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "ui/TextCodec.h"

#include <QDate>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>

#include <algorithm>

namespace scorvane {

void openStatisticsReport(ReportContext& context, char category, const std::vector<int>& teams,
                          int currentTeam, QWidget* parent) {
    StatsDialog dialog(context, category, teams, currentTeam, parent);
    dialog.exec();
}

ReportFormatRecord chosenFormat(ReportContext& context, char category) {
    SavedReports saved;
    if (!saved.readOnly(context.files.paths().reportDirectory))
        (void)saved.load(context.files); // a file that cannot be read was reported; defaults hold
    const int k = categoryIndex(category);
    const int chosen = k < 0 ? 0 : context.chosenReport[static_cast<std::size_t>(k)];
    const std::vector<int> reports = saved.reportsOf(category);
    if (std::find(reports.begin(), reports.end(), chosen) != reports.end())
        return saved.record(chosen);
    return saved.current(category, context.session.config);
}

void openPlayerGameLog(ReportContext& context, int team, int playerNumber, QWidget* parent) {
    TeamSeason season;
    std::vector<char> categories;
    if (!viewTeamSeason(context.files, team, season) || !withDiskErrors(context.prompter, [&] {
            return categoriesRecorded(season, playerNumber, categories);
        }))
        return; // the storage layer has shown what went wrong
    if (categories.empty()) {
        context.prompter.ask(Message{"No results are recorded for this player.", "Game Log",
                                     Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }
    char category = categories.front();
    if (categories.size() > 1) {
        QStringList names;
        for (char c : categories)
            names << QString::fromUtf8(std::string(reportTitle(c)));
        QInputDialog choose(parent);
        choose.setObjectName(QStringLiteral("dlgGameLogCategory"));
        choose.setWindowTitle(QStringLiteral("Game Log"));
        choose.setLabelText(QStringLiteral("&Category:"));
        choose.setComboBoxItems(names);
        choose.setComboBoxEditable(false);
        if (choose.exec() != QDialog::Accepted)
            return;
        const qsizetype k = names.indexOf(choose.textValue());
        category = categories[static_cast<std::size_t>(std::max<qsizetype>(0, k))];
    }
    GameLogDialog log(context, team, category, playerNumber,
                      shownColumns(chosenFormat(context, category)), 0, parent);
    log.exec();
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

bool chooseExportFile(QWidget* parent, const QString& fileName,
                      const std::vector<ExportKind>& kinds, QString& path, ExportKind& kind) {
    const auto offers = [&](ExportKind k) {
        return std::find(kinds.begin(), kinds.end(), k) != kinds.end();
    };
    const bool withHtml = offers(ExportKind::Html);
    const bool withText = offers(ExportKind::Text);
    const QString csvFilter = QStringLiteral("CSV (*.csv)");
    const QString htmlFilter = QStringLiteral("HTML (*.html *.htm)");
    const QString textFilter = QStringLiteral("Text (*.txt)");
    QStringList filters = {csvFilter};
    if (withHtml)
        filters << htmlFilter;
    if (withText)
        filters << textFilter;
    QFileDialog dialog(parent, QStringLiteral("Export Report"));
    dialog.setObjectName(QStringLiteral("dlgExport"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    const QString documents = fromUtf8(platform::documentsFolder());
    if (!documents.isEmpty())
        dialog.setDirectory(documents);
    dialog.selectFile(fileName);
    const auto isHtml = [](const QString& ending) {
        return ending == QLatin1String("html") || ending == QLatin1String("htm");
    };
    // Choosing another kind of file changes the suggested name's ending with it.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        const QString suffix = filter == htmlFilter   ? QStringLiteral("html")
                               : filter == textFilter ? QStringLiteral("txt")
                                                      : QStringLiteral("csv");
        dialog.setDefaultSuffix(suffix);
        const QStringList chosen = dialog.selectedFiles();
        if (chosen.isEmpty())
            return;
        const QFileInfo file(chosen.first());
        const QString ending = file.suffix().toLower();
        if (ending == QLatin1String("csv") || isHtml(ending) ||
            (withText && ending == QLatin1String("txt")))
            dialog.selectFile(file.completeBaseName() + QLatin1Char('.') + suffix);
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    path = dialog.selectedFiles().first();
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == QLatin1String("csv"))
        kind = ExportKind::Csv;
    else if (withHtml && isHtml(ending))
        kind = ExportKind::Html;
    else if (withText && ending == QLatin1String("txt"))
        kind = ExportKind::Text;
    else
        kind = dialog.selectedNameFilter() == htmlFilter   ? ExportKind::Html
               : dialog.selectedNameFilter() == textFilter ? ExportKind::Text
                                                           : ExportKind::Csv;
    return true;
}

bool chooseExportFile(QWidget* parent, const ReportHeading& heading, QString& path, bool& html) {
    const std::string date = toUtf8(QDate::currentDate().toString(Qt::ISODate));
    const QString name = fromUtf8(suggestedFileName(
        {toUtf8(fromFileText(heading.team)), toUtf8(fromFileText(heading.title))}, date, ".csv"));
    ExportKind kind = ExportKind::Csv;
    if (!chooseExportFile(parent, name, {ExportKind::Csv, ExportKind::Html}, path, kind))
        return false;
    html = kind == ExportKind::Html;
    return true;
}

} // namespace scorvane
