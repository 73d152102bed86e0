#include "ChartDialog.h"

#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineSeries>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>

namespace scorvane {
namespace {

// A value axis from 0 (or the lowest value, when below 0) to a little above the highest value.
QValueAxis* valueAxis(double low, double high) {
    auto* axis = new QValueAxis;
    axis->setRange(std::min(0.0, low), high <= 0.0 ? 1.0 : high * 1.1);
    axis->applyNiceNumbers();
    axis->setLabelFormat(QStringLiteral("%g"));
    return axis;
}

} // namespace

QChart* quarterPointsChart(const QuarterPoints& points, const QString& teamName) {
    auto* team = new QBarSet(teamName.isEmpty() ? QStringLiteral("Team") : teamName);
    auto* opponents = new QBarSet(QStringLiteral("Opponents"));
    double high = 0.0;
    for (std::size_t q = 0; q < 5; ++q) {
        *team << static_cast<qreal>(points.team[q]);
        *opponents << static_cast<qreal>(points.opponents[q]);
        high = std::max(
            {high, static_cast<double>(points.team[q]), static_cast<double>(points.opponents[q])});
    }
    auto* series = new QBarSeries;
    series->append(team);
    series->append(opponents);
    series->setLabelsVisible(true);
    auto* chart = new QChart;
    chart->addSeries(series);
    chart->setTitle(QStringLiteral("Points by Quarter"));
    auto* quarters = new QBarCategoryAxis;
    quarters->append({QStringLiteral("1st"), QStringLiteral("2nd"), QStringLiteral("3rd"),
                      QStringLiteral("4th"), QStringLiteral("OT")});
    chart->addAxis(quarters, Qt::AlignBottom);
    series->attachAxis(quarters);
    QValueAxis* axis = valueAxis(0.0, high);
    chart->addAxis(axis, Qt::AlignLeft);
    series->attachAxis(axis);
    chart->legend()->setAlignment(Qt::AlignBottom);
    return chart;
}

QChart* gameByGameChart(const std::vector<double>& values, const std::vector<std::string>& labels,
                        const QString& column) {
    auto* series = new QLineSeries;
    series->setName(column);
    series->setPointsVisible(true);
    series->setPointLabelsVisible(true);
    series->setPointLabelsFormat(QStringLiteral("@yPoint"));
    auto* games = new QBarCategoryAxis;
    double low = 0.0, high = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        series->append(static_cast<qreal>(i), values[i]);
        games->append(fromFileText(i < labels.size() ? labels[i] : std::string()));
        low = std::min(low, values[i]);
        high = std::max(high, values[i]);
    }
    auto* chart = new QChart;
    chart->addSeries(series);
    chart->setTitle(column + QStringLiteral(" by Game"));
    games->setLabelsAngle(-45);
    chart->addAxis(games, Qt::AlignBottom);
    series->attachAxis(games);
    QValueAxis* axis = valueAxis(low, high);
    chart->addAxis(axis, Qt::AlignLeft);
    series->attachAxis(axis);
    chart->legend()->hide();
    return chart;
}

ChartDialog::ChartDialog(QChart* chart, const QString& title, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmChart"));
    setWindowTitle(title);
    setModal(true);
    auto* view = new QChartView(chart, this);
    view->setObjectName(QStringLiteral("chvChart"));
    view->setRenderHint(QPainter::Antialiasing);
    view_ = view;
    auto* save = new QPushButton(QStringLiteral("&Save as PNG..."), this);
    save->setObjectName(QStringLiteral("cmdSavePng"));
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(save, &QPushButton::clicked, this, &ChartDialog::save);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(view, 1);
    layout->addLayout(buttons);
    resize(760, 480);
    close->setFocus();
}

bool ChartDialog::saveTo(const QString& path) {
    return view_->grab().save(path, "PNG");
}

void ChartDialog::save() {
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Chart As"), QString(),
                                                QStringLiteral("PNG pictures (*.png)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive))
        path += QStringLiteral(".png");
    if (!saveTo(path)) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Chart Not Saved"),
                        QStringLiteral("The chart could not be written to ") + path +
                            QStringLiteral("."),
                        QMessageBox::Ok, this);
        box.setTextFormat(Qt::PlainText);
        fitTitle(box);
        box.exec();
    }
}

} // namespace scorvane
