#pragma once

#include "ReportScreens.h"

#include "reports/GameLog.h"
#include "reports/GameScores.h"
#include "reports/Season.h"
#include "reports/Standings.h"
#include "reports/TableReport.h"

#include <QDialog>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace scorvane {

// A report that is a plain table on screen: the game scores, the standings and a player's game
// log. Compute opens the selection of games; Chart shows the report's chart (where it has one);
// Export writes CSV or HTML; Print goes through the print dialog; Exit closes.
class TableReportDialog : public QDialog {
    Q_OBJECT

public:
    const TableReport& report() const { return report_; }
    bool exportTo(const QString& path, bool html);

protected:
    TableReportDialog(ReportContext& context, const char* objectName, QWidget* parent);
    // Lays out the screen; called by the concrete dialog once its own controls exist.
    void finish(bool withChart);
    // Works the report out again and shows it.
    void refresh();

    virtual TableReport build() = 0;
    virtual std::vector<GameRecord>* selectionGames() { return nullptr; }
    virtual void showChart() {}
    virtual QString reportName() const = 0;

    ReportContext& context_;
    QHBoxLayout* options_ = nullptr; // the concrete dialog's own controls, above the table

private:
    void openCompute();
    void print();
    void exportReport();

    TableReport report_;
    QLabel* selection_ = nullptr;
    QTableWidget* table_ = nullptr;
    QPushButton* chart_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* export_ = nullptr;
};

// The game scores of one team, and the standings of several.
void openGameScores(ReportContext& context, int team, QWidget* parent);
void openStandings(ReportContext& context, const std::vector<int>& teams, QWidget* parent);

// The game scores of one team (frmScores), in the long or the short form, with a chart of both
// teams' points by quarter.
class GameScoresDialog : public TableReportDialog {
    Q_OBJECT

public:
    GameScoresDialog(ReportContext& context, int team, QWidget* parent = nullptr);
    const std::vector<GameScore>& games() const { return games_; }

protected:
    TableReport build() override;
    std::vector<GameRecord>* selectionGames() override { return &season_.games; }
    void showChart() override;
    QString reportName() const override { return QStringLiteral("Game Scores"); }

private:
    TeamSeason season_;
    std::vector<GameScore> games_;
    QRadioButton* longForm_ = nullptr;
};

// The standings of the marked teams (frmStandings).
class StandingsDialog : public TableReportDialog {
    Q_OBJECT

public:
    StandingsDialog(ReportContext& context, const std::vector<int>& teams,
                    QWidget* parent = nullptr);

protected:
    TableReport build() override;
    std::vector<GameRecord>* selectionGames() override;
    QString reportName() const override { return QStringLiteral("Team Standings"); }

private:
    std::vector<TeamSeason> seasons_;
};

// One player's line game by game in a category, with a chart of one column over the games.
class GameLogDialog : public TableReportDialog {
    Q_OBJECT

public:
    GameLogDialog(ReportContext& context, int team, char category, int playerNumber,
                  std::vector<int> columns, int chartColumn, QWidget* parent = nullptr);
    const GameLog& log() const { return log_; }

protected:
    TableReport build() override;
    std::vector<GameRecord>* selectionGames() override { return &season_.games; }
    void showChart() override;
    QString reportName() const override;

private:
    TeamSeason season_;
    char category_;
    int player_;
    std::vector<int> columns_;
    GameLog log_;
    QComboBox* chartColumn_ = nullptr;
};

} // namespace scorvane
