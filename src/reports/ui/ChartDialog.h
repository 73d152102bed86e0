#pragma once

#include "reports/ChartData.h"

#include <QDialog>

#include <string>
#include <vector>

class QChart;

namespace scorvane {

// Both teams' points by quarter and overtime over the games of a report, as grouped bars.
QChart* quarterPointsChart(const QuarterPoints& points, const QString& teamName);
// One figure game by game: a line over the games, each labelled with its date and opponent.
QChart* gameByGameChart(const std::vector<double>& values, const std::vector<std::string>& labels,
                        const QString& column);

// A chart in a window of its own, which can be saved as a PNG picture.
class ChartDialog : public QDialog {
    Q_OBJECT

public:
    // Takes the chart over.
    ChartDialog(QChart* chart, const QString& title, QWidget* parent = nullptr);

    // The chart as a picture of its window's size; false when the file could not be written.
    bool saveTo(const QString& path);

private:
    void save();

    QWidget* view_ = nullptr;
};

} // namespace scorvane
