#pragma once

#include "ReportScreens.h"

#include "reports/ReportDocument.h"
#include "reports/Season.h"
#include "reports/TeamRecord.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableWidget;

namespace scorvane {

// The team record: won, lost, tied, percentage and points for and against by game type, over the
// selected games, computed on opening and again after Compute. Print (and Export) are disabled
// while no game was counted.
class TeamRecordDialog : public QDialog {
    Q_OBJECT

public:
    TeamRecordDialog(ReportContext& context, int team, QWidget* parent = nullptr);

    const TeamRecordReport& record() const { return record_; }
    ReportHeading heading() const;
    bool exportTo(const QString& path, bool html);

private:
    void compute();
    void showRecord();
    void openCompute();
    void print();
    void exportRecord();

    ReportContext& context_;
    TeamSeason season_;
    TeamRecordReport record_;
    QTableWidget* table_ = nullptr;
    QLabel* selection_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

} // namespace scorvane
