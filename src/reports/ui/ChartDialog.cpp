#include "ChartDialog.h"

#include "ui/DialogParts.h"
#include "ui/TextCodec.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace scorvane {
namespace {

const QColor teamColor(0x20, 0x9f, 0xdf);
const QColor opponentsColor(0x99, 0xca, 0x53);

// 1, 2 or 5 times a power of ten: the next one up from x when `ceiling`, else the nearest.
double niceNumber(double x, bool ceiling) {
    const double z = std::pow(10.0, std::floor(std::log10(x)));
    const double q = x / z;
    if (ceiling)
        return (q <= 1.0 ? 1.0 : q <= 2.0 ? 2.0 : q <= 5.0 ? 5.0 : 10.0) * z;
    return (q < 1.5 ? 1.0 : q < 3.0 ? 2.0 : q < 7.0 ? 5.0 : 10.0) * z;
}

// A value axis from 0 (or the lowest value, when below 0) to a little above the highest value,
// widened to round numbers with about five tick marks a round step apart.
void valueAxis(QCPAxis* axis, double low, double high) {
    double from = std::min(0.0, low);
    double to = high <= 0.0 ? 1.0 : high * 1.1;
    const double step = niceNumber(niceNumber(to - from, true) / 4.0, false);
    from = std::floor(from / step) * step;
    to = std::ceil(to / step) * step;
    auto ticker = QSharedPointer<QCPAxisTickerFixed>::create();
    ticker->setTickStep(step);
    ticker->setScaleStrategy(QCPAxisTickerFixed::ssNone);
    axis->setTicker(ticker);
    axis->setSubTicks(false);
    axis->setRange(from, to);
    axis->setNumberFormat(QStringLiteral("g"));
    axis->setNumberPrecision(6);
}

// A category axis: one tick a category at 0, 1, 2 ..., each named, with half a step either side.
void categoryAxis(QCPAxis* axis, const QVector<QString>& names) {
    auto ticker = QSharedPointer<QCPAxisTickerText>::create();
    for (int i = 0; i < names.size(); ++i)
        ticker->addTick(i, names[i]);
    axis->setTicker(ticker);
    axis->setSubTicks(false);
    axis->grid()->setVisible(false);
    axis->setRange(-0.5, std::max<qsizetype>(names.size(), 1) - 0.5);
}

// A plot with its title in bold above the axes.
QCustomPlot* titledPlot(const QString& title) {
    auto* plot = new QCustomPlot;
    QFont font = plot->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    plot->plotLayout()->insertRow(0);
    plot->plotLayout()->addElement(0, 0, new QCPTextElement(plot, title, font));
    return plot;
}

// The value written just above (below, when negative) its bar or point.
void valueLabel(QCustomPlot* plot, double key, double value) {
    auto* label = new QCPItemText(plot);
    label->position->setCoords(key, value);
    label->setPositionAlignment(Qt::AlignHCenter | (value < 0 ? Qt::AlignTop : Qt::AlignBottom));
    label->setPadding(QMargins(0, 2, 0, 2));
    label->setText(QString::number(value));
}

// One team's bars, beside the other team's at `offset` from each quarter's middle.
void quarterBars(QCustomPlot* plot, const QString& name, const QColor& color, double offset,
                 const std::array<long long, 5>& points) {
    auto* bars = new QCPBars(plot->xAxis, plot->yAxis);
    bars->setName(name);
    bars->setWidth(0.3);
    bars->setPen(QPen(color.darker(120)));
    bars->setBrush(color);
    for (std::size_t q = 0; q < points.size(); ++q) {
        const double key = static_cast<double>(q) + offset;
        bars->addData(key, static_cast<double>(points[q]));
        valueLabel(plot, key, static_cast<double>(points[q]));
    }
}

} // namespace

QCustomPlot* quarterPointsChart(const QuarterPoints& points, const QString& teamName) {
    QCustomPlot* plot = titledPlot(QStringLiteral("Points by Quarter"));
    quarterBars(plot, teamName.isEmpty() ? QStringLiteral("Team") : teamName, teamColor, -0.15,
                points.team);
    quarterBars(plot, QStringLiteral("Opponents"), opponentsColor, 0.15, points.opponents);
    double high = 0.0;
    for (std::size_t q = 0; q < 5; ++q)
        high = std::max(
            {high, static_cast<double>(points.team[q]), static_cast<double>(points.opponents[q])});
    categoryAxis(plot->xAxis, {QStringLiteral("1st"), QStringLiteral("2nd"), QStringLiteral("3rd"),
                               QStringLiteral("4th"), QStringLiteral("OT")});
    valueAxis(plot->yAxis, 0.0, high);
    // The legend in a row of its own under the axes, its entries side by side in the middle.
    plot->legend->setVisible(true);
    plot->legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    plot->legend->setBorderPen(Qt::NoPen);
    auto* row = new QCPLayoutGrid;
    plot->plotLayout()->addElement(2, 0, row);
    plot->plotLayout()->setRowStretchFactor(2, 0.001);
    row->addElement(0, 0, new QCPLayoutElement(plot));
    row->addElement(0, 1, plot->legend);
    row->addElement(0, 2, new QCPLayoutElement(plot));
    row->setColumnStretchFactors({1.0, 0.001, 1.0});
    return plot;
}

QCustomPlot* gameByGameChart(const std::vector<double>& values,
                             const std::vector<std::string>& labels, const QString& column,
                             const QString& over) {
    QCustomPlot* plot = titledPlot(column + QStringLiteral(" by ") + over);
    QCPGraph* line = plot->addGraph();
    line->setName(column);
    line->setPen(QPen(teamColor, 2));
    line->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, 7));
    QVector<QString> games;
    double low = 0.0, high = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        line->addData(static_cast<double>(i), values[i]);
        valueLabel(plot, static_cast<double>(i), values[i]);
        games.append(fromFileText(i < labels.size() ? labels[i] : std::string()));
        low = std::min(low, values[i]);
        high = std::max(high, values[i]);
    }
    categoryAxis(plot->xAxis, games);
    plot->xAxis->setTickLabelRotation(-45);
    valueAxis(plot->yAxis, low, high);
    plot->legend->setVisible(false);
    return plot;
}

ChartDialog::ChartDialog(QCustomPlot* chart, const QString& title, QWidget* parent)
    : QDialog(parent), plot_(chart) {
    setObjectName(QStringLiteral("frmChart"));
    setWindowTitle(title);
    setModal(true);
    plot_->setParent(this);
    plot_->setObjectName(QStringLiteral("chvChart"));
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setAntialiasedElements(QCP::aeAll);
    auto* save = new QPushButton(QStringLiteral("&Save As..."), this);
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
    layout->addWidget(plot_, 1);
    layout->addLayout(buttons);
    resize(760, 480);
    close->setFocus();
}

bool ChartDialog::saveTo(const QString& path) {
    if (path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        return plot_->savePdf(path, 0, 0, QCP::epNoCosmetic, QString(), windowTitle());
    return plot_->savePng(path);
}

void ChartDialog::save() {
    const QString png = QStringLiteral("PNG pictures (*.png)");
    const QString pdf = QStringLiteral("PDF documents (*.pdf)");
    QString type = png;
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Chart As"), QString(),
                                                png + QStringLiteral(";;") + pdf, &type);
    if (path.isEmpty())
        return;
    // A name without either ending gets the one of the type chosen.
    if (!path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive) &&
        !path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        path += type == pdf ? QStringLiteral(".pdf") : QStringLiteral(".png");
    if (!saveTo(path)) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Chart Not Saved"),
                        QStringLiteral("The chart could not be written to ") +
                            QDir::toNativeSeparators(path) + QStringLiteral("."),
                        QMessageBox::Ok, this);
        box.setTextFormat(Qt::PlainText);
        fitTitle(box);
        box.exec();
    }
}

} // namespace scorvane
