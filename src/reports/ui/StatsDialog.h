#pragma once

#include "ReportScreens.h"

#include "reports/ReportDocument.h"
#include "reports/Season.h"
#include "reports/Statistics.h"
#include "storage/Records.h"

#include <QDialog>

#include <map>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace scorvane {

// The statistics screen: one category's report over the chosen team or teams, as a grid of the
// report's columns with its totals line, and the buttons that change what it counts (Compute,
// Minimum, Player, Team), how it looks (Format, Sort, a click on a column heading) and where it
// goes (Print, Export).
//
// A change of category, teams, games or players computes the report again at once, so what is
// printed always matches what is shown; a change of format or sort only lays the computed figures
// out again. Nothing is written while the screen is looked at: the teams' files are read without
// being created, and the report-format file changes only when a format is saved.
class StatsDialog : public QDialog {
    Q_OBJECT

public:
    StatsDialog(ReportContext& context, char category, std::vector<int> teams, int currentTeam,
                QWidget* parent = nullptr);

    char category() const { return category_; }
    void setCategory(char category);
    const StatReport& report() const { return report_; }
    // The report as printed and exported: the figures, the columns and the heading.
    StatisticsDocument document() const;
    // Writes the report as CSV or HTML; a failure is offered Retry or Cancel. True when written.
    bool exportTo(const QString& path, bool html);

private:
    std::vector<TeamSeason> chosenSeasons() const;
    int listTeam() const;
    void loadFormat();
    SortSetting currentSort() const;
    void compute();
    void applySort();
    void showReport();
    void showHeadings();
    void headingClicked(int section);
    void teamsChosen();
    void categoryChosen();

    void openCompute();
    void openFormat();
    void openSort();
    void openMinimum();
    void openPlayers();
    void wholeTeam();
    void openGameLog();
    void print();
    void exportReport();

    ReportContext& context_;
    char category_;
    std::vector<int> teams_;
    int currentTeam_;
    std::map<int, TeamSeason> seasons_;
    PlayerFilter filter_;
    StatReport report_;
    std::vector<PlayerFigures> rosterOrder_; // the listed players before sorting
    ReportFormatRecord format_;
    std::vector<int> columns_;

    QComboBox* categories_ = nullptr;
    QComboBox* teamBox_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* selection_ = nullptr;
    QTableWidget* grid_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

} // namespace scorvane
