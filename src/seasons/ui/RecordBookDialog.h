#pragma once

#include "reports/ui/ReportScreens.h"
#include "seasons/SeasonsDocument.h"
#include "seasons/SeasonsFile.h"

#include <QDialog>

#include <map>
#include <set>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace scorvane {

// The record book over the seasons (frmRecordBook). On the left what it counts: the seasons (all
// ticked at first; a season that cannot be read is unticked and greyed, with its message), the
// games (the report screens' selection), and for each category the columns ticked and, for a ratio
// or average column, the attempts a game, a season and a career need to count; the length of the
// lists. Compute works out the whole book, every category and the team's records, in one go; the
// category box chooses which category is shown beside the team's records. Print and Export give
// the whole book. Nothing is written to any season's data directory.
class RecordBookDialog : public QDialog {
    Q_OBJECT

public:
    RecordBookDialog(SeasonsList seasons, ReportContext& context, QWidget* parent = nullptr);

    const RecordBookDocument& document() const { return document_; }
    // Works the book out again over what the screen shows as chosen.
    void compute();
    // Writes the book as HTML or CSV; a failure is offered Retry or Cancel. True when written.
    bool exportTo(const QString& path, bool html);

private:
    char category() const;
    void categoryChosen();
    void showColumns();
    void keepColumns();
    void openSelection();
    void showBook();
    void showTeamRecords(int& row);
    void print();
    void exportBook();

    ReportContext& context_;
    SeasonsList list_;
    Selection selection_;
    // The Special Select marks chosen on the selection screen, for the season whose games it
    // listed (the others keep the marks of their game files).
    std::set<int> marks_;
    std::string marksSeason_;
    char shownCategory_ = 'P';
    std::map<char, std::vector<int>> ticked_;
    std::map<char, std::map<int, RecordMinimum>> minimums_;
    RecordBookDocument document_;
    bool computed_ = false;

    QListWidget* seasons_ = nullptr;
    QLabel* selectionText_ = nullptr;
    QComboBox* categories_ = nullptr;
    QTableWidget* columns_ = nullptr;
    QSpinBox* top_ = nullptr;
    QLabel* heading_ = nullptr;
    QTableWidget* records_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

// The record book over the seasons of the configuration folder's seasons file; a message instead
// when the file names no season.
void openRecordBook(const std::string& configDirectory, ReportContext& context, QWidget* parent);

} // namespace scorvane
