#pragma once

#include "reports/ChartData.h"

#include <QDialog>

#include <string>
#include <vector>

class QCustomPlot;

namespace scorvane {

// Both teams' points by quarter and overtime over the games of a report, as grouped bars.
QCustomPlot* quarterPointsChart(const QuarterPoints& points, const QString& teamName);
// One figure game by game: a line over the games, each labelled with its date (or "Game n").
// The same chart shows a figure season by season, `over` naming what the labels are ("Season").
QCustomPlot* gameByGameChart(const std::vector<double>& values,
                             const std::vector<std::string>& labels, const QString& column,
                             const QString& over = QStringLiteral("Game"));

// A chart in a window of its own, which can be saved as a PNG picture or a PDF page.
class ChartDialog : public QDialog {
    Q_OBJECT

public:
    // Takes the chart over.
    ChartDialog(QCustomPlot* chart, const QString& title, QWidget* parent = nullptr);

    // The chart at its window's size: a PDF page when the name ends in ".pdf", a PNG picture
    // otherwise; false when the file could not be written.
    bool saveTo(const QString& path);

private:
    void save();

    QCustomPlot* plot_ = nullptr;
};

} // namespace scorvane
