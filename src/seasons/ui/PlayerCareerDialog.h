#pragma once

#include "CareerReportDialog.h"

#include "reports/Selection.h"
#include "reports/ui/ReportScreens.h"
#include "seasons/Career.h"
#include "seasons/SeasonsDocument.h"
#include "seasons/SeasonsFile.h"

#include <QDialog>

#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace scorvane {

// One player's career: a line per season he played and the career line under it, in a category
// the user can change, with a chart of one column season by season, printed or exported as CSV.
// When his name is borne by more than one person over the seasons (two brothers told apart), a
// chooser picks whose career is shown. Nothing in any season's folder is written.
class PlayerCareerDialog : public QDialog {
    Q_OBJECT

public:
    // `marks` are the Special Select marks chosen on the career report. `name` is the stored
    // (Windows-1252) name. `category` 0 opens on the first category in which he has results.
    // `columns` are the category's columns to show; empty: its default ones.
    PlayerCareerDialog(ReportContext& context, std::vector<SeasonEntry> seasons,
                       std::vector<PlayerLink> links, char category, const Selection& selection,
                       ScreenMarks marks, std::string name, std::vector<int> columns = {},
                       QWidget* parent = nullptr);

    char category() const { return category_; }
    void setCategory(char category);
    // The careers of the persons of that name in the category; empty when he has no results.
    const std::vector<PlayerCareer>& careers() const { return careers_; }
    // The career shown (an index into careers()).
    int person() const;
    PlayerCareerDocument document() const;
    // Writes the shown career as CSV; a failure is offered Retry or Cancel.
    bool exportTo(const QString& path);
    // The chart of a column season by season, in a window of its own.
    void showChart();

private:
    void compute(bool tell);
    void showCareer();
    void categoryChosen();
    void print();
    void exportCareer();

    ReportContext& context_;
    std::vector<SeasonEntry> seasons_;
    std::vector<PlayerLink> links_;
    Selection selection_;
    ScreenMarks marks_;
    std::string name_;
    char category_;
    std::vector<int> columns_;
    std::vector<PlayerCareer> careers_;
    std::string teamLine_; // the team and the seasons computed (Windows-1252)

    QComboBox* categories_ = nullptr;
    QComboBox* persons_ = nullptr;
    QLabel* personsLabel_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* selectionLabel_ = nullptr;
    QTableWidget* table_ = nullptr;
    QComboBox* chartColumn_ = nullptr;
    QPushButton* chart_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

// A player's career over the seasons of the seasons file, from the roster: `name` is his stored
// (Windows-1252) name. A message says so when the seasons hold no results of his.
void openPlayerCareer(ReportContext& context, const std::string& seasonsFile,
                      const std::string& name, QWidget* parent);

} // namespace scorvane
