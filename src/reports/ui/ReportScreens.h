#pragma once

#include "ReportPrinter.h"

#include "games/Roster.h"
#include "reports/ReportDocument.h"
#include "reports/RosterListing.h"
#include "reports/Selection.h"
#include "storage/Category.h"
#include "storage/ConfigRecord.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Records.h"
#include "storage/Session.h"

#include <QWidget>

#include <array>
#include <optional>
#include <string>
#include <vector>

class QString;
class QWidget;

namespace scorvane {

// What the report screens share and keep while the program runs: the selection of games and
// player, the print dialog's options and the printer, and per category the report chosen in the
// report list and the sort chosen on the screen.
struct ReportContext {
    ReportContext(Session& session, DataFiles& files, Prompter& prompter)
        : session(session), files(files), prompter(prompter), printer(prompter) {}

    Session& session;
    DataFiles& files;
    Prompter& prompter;
    Selection selection;
    ReportPrinter printer;
    // The record number of the saved report in use per category; 0: the category's first.
    std::array<int, kCategoryCount> chosenReport{};
    // The sort chosen with the sort dialog or a column heading; empty: the report's own sort.
    std::array<std::optional<SortSetting>, kCategoryCount> sort{};
};

// The statistics screen of a category over the marked teams; `currentTeam` is the team whose games
// the selection lists.
void openStatisticsReport(ReportContext& context, char category, const std::vector<int>& teams,
                          int currentTeam, QWidget* parent);

// The saved report a category's screens use: the one chosen on the statistics screen, else the
// category's current one.
ReportFormatRecord chosenFormat(ReportContext& context, char category);

// One player's game log, from the roster: in the category he has results in, or the one the user
// chooses when he has results in several; a message when he has none.
void openPlayerGameLog(ReportContext& context, int team, int playerNumber, QWidget* parent);

// The team record of one team.
void openTeamRecord(ReportContext& context, int team, QWidget* parent);

// Prints the roster as the roster screen holds it: the print dialog, then the listing to the
// printer or a text file. `teamName` is the stored (Windows-1252) name.
void printRoster(ReportContext& context, const std::string& teamName, const Roster& roster,
                 const ContactLookup& contact, QWidget* parent);

// The kinds of file a report is exported to.
enum class ExportKind { Csv, Html, Text };

// Asks where to export a report: a file of one of `kinds` (offered CSV, HTML, text, in that
// order), `fileName` ("Career Passing.csv") suggested in the user's documents folder. Choosing
// another kind of file changes the suggested name's ending with it. The kind follows the name's
// ending, else the filter chosen. False when the user cancelled.
bool chooseExportFile(QWidget* parent, const QString& fileName,
                      const std::vector<ExportKind>& kinds, QString& path, ExportKind& kind);

// Asks where to export a report: a CSV or HTML file, the kind by the filter chosen or the name's
// extension. The dialog offers the team, the report and today's date as the name
// ("Tigers Rushing Statistics 2026-11-24.csv") in the user's documents folder. False when the
// user cancelled.
bool chooseExportFile(QWidget* parent, const ReportHeading& heading, QString& path, bool& html);

} // namespace scorvane
