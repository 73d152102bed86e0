#pragma once

#include "reports/ReportFormats.h"
#include "reports/ui/ReportScreens.h"
#include "seasons/Career.h"
#include "seasons/SeasonsDocument.h"
#include "seasons/SeasonsFile.h"

#include <QDialog>

#include <set>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace scorvane {

class FrozenColumnsGrid;

// Reads the seasons file for a report over seasons. Lines that could not be used are named in
// one message box; false, after a message saying how to add seasons, when no season is listed.
bool readSeasonsForReport(Prompter& prompter, const std::string& path, SeasonsList& list,
                          const std::string& title);

// The Special Select marks chosen on screen for the games of one season, held in memory only.
struct ScreenMarks {
    std::string season; // empty: none chosen; every season keeps the marks of its game file
    std::set<int> games;
};
// Reads the chosen seasons (openSeasons) with the marks chosen on screen on their season's games.
SeasonSet openMarkedSeasons(const std::vector<SeasonEntry>& chosen,
                            const std::vector<PlayerLink>& links, const ScreenMarks& marks);

// Asks where to export a report over seasons: a CSV, HTML or text file in the user's documents
// folder, `name` and the kind's ending as the suggested name ("Career Passing.csv"). The kind
// follows the name's ending, else the filter chosen. False when the user cancelled.
bool chooseSeasonsExportFile(QWidget* parent, const QString& name, bool withHtml, QString& path,
                             ExportKind& kind);

// Names the seasons left out of a computation (their messages) in one message box; nothing when
// none was.
void tellSeasonsLeftOut(Prompter& prompter, const std::vector<std::string>& messages,
                        const std::string& title);

// The career report: one category's career lines over the seasons the user ticks, with the
// report screens' selection of games (Compute), columns and sort (Format, Sort, a click on a
// column heading) and minimum of games, printed, exported, and leading to a player's career.
//
// A season whose folder is missing or cannot be read is listed unticked and disabled, with what is
// wrong with it. Every change computes again at once; the seasons left out of a computation are
// named in one message box. Nothing in any season's folder is written.
class CareerReportDialog : public QDialog {
    Q_OBJECT

public:
    CareerReportDialog(ReportContext& context, SeasonsList seasons, char category = 'P',
                       QWidget* parent = nullptr);

    char category() const { return category_; }
    void setCategory(char category);
    void setMinimumGames(int games);
    const CareerReport& report() const { return report_; }
    const std::vector<int>& columns() const { return columns_; }
    // The seasons ticked, in the list's order.
    std::vector<SeasonEntry> chosenSeasons() const;
    // The report as printed and exported.
    CareerDocument document() const;
    // Writes the report as CSV, HTML or text; a failure is offered Retry or Cancel.
    bool exportTo(const QString& path, ExportKind kind);
    // The career of the player on a line of the report, over the same seasons and games.
    void openPlayer(int line);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void compute();
    void applySort();
    void showReport();
    void headingClicked(int section);
    void categoryChosen();
    void openCompute();
    void openFormat();
    void openSort();
    void openMinimum();
    void openCurrentPlayer();
    void print();
    void exportReport();

    ReportContext& context_;
    SeasonsList seasons_;
    Selection selection_;
    ScreenMarks marks_;
    char category_;
    ReportFormatRecord format_;
    std::vector<int> columns_;
    SortSetting sort_;
    int minimumGames_ = 0;
    CareerReport report_;
    std::vector<CareerLine> firstOrder_; // the lines before sorting
    std::string teamLine_;               // the team and the seasons computed (Windows-1252)

    QListWidget* seasonList_ = nullptr;
    QComboBox* categories_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* selectionLabel_ = nullptr;
    FrozenColumnsGrid* grid_ = nullptr;
    QPushButton* player_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

// The career report over the seasons of the seasons file (Reports, Careers).
void openCareerReport(ReportContext& context, const std::string& seasonsFile, QWidget* parent);

} // namespace scorvane
