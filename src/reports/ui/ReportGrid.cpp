#include "ReportGrid.h"

#include "FormatDialogs.h"
#include "FrozenColumnsGrid.h"
#include "ReportPrinter.h"
#include "reports/ReportColumns.h"
#include "storage/Bytes.h"
#include "storage/Category.h"
#include "ui/TextCodec.h"

#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace scorvane {

QTableWidgetItem* reportCell(const QString& text, bool number, bool bold) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setTextAlignment(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
    if (bold) {
        QFont font = item->font();
        font.setBold(true);
        item->setFont(font);
    }
    return item;
}

QComboBox* categoryBox(QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QStringLiteral("cboCategory"));
    for (char letter : kCategoryLetters)
        box->addItem(fromUtf8(std::string(reportTitle(letter))), QChar::fromLatin1(letter));
    return box;
}

QLabel* reportTitleLabel(QWidget* parent) {
    auto* title = new QLabel(parent);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    title->setFont(bold);
    return title;
}

void setUpRowsGrid(QTableWidget* grid) {
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultSectionSize(QFontMetrics(grid->font()).height() + 6);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
}

void setUpReportGrid(QTableWidget* grid, bool sortableHeadings) {
    grid->setFont(reportScreenFont());
    grid->horizontalHeader()->setFont(reportScreenFont());
    setUpRowsGrid(grid);
    grid->setWordWrap(false);
    if (sortableHeadings) {
        grid->horizontalHeader()->setSectionsClickable(true);
        grid->horizontalHeader()->setHighlightSections(false);
        grid->horizontalHeader()->setToolTip(QStringLiteral("Click a column to sort by it"));
    }
}

void setReportHeadings(QTableWidget* grid, QStringList headings,
                       const std::vector<int>& textColumns, char category,
                       const std::vector<int>& columns, const ColumnTable& table) {
    for (int code : columns)
        headings << columnCaption(category, code, table);
    grid->clear();
    grid->clearSpans();
    grid->setColumnCount(static_cast<int>(headings.size()));
    grid->setHorizontalHeaderLabels(headings);
    for (int c = 0; c < grid->columnCount(); ++c) {
        const bool text = std::find(textColumns.begin(), textColumns.end(), c) != textColumns.end();
        grid->horizontalHeaderItem(c)->setTextAlignment(Qt::AlignVCenter |
                                                        (text ? Qt::AlignLeft : Qt::AlignRight));
    }
}

void setNumberAndName(QTableWidget* grid, int row, const PlayerFigures& figures, bool totals) {
    grid->setItem(row, 0,
                  reportCell(totals ? QString() : QString::number(figures.number), true, totals));
    grid->setItem(
        row, 1,
        reportCell(totals ? QStringLiteral("Totals") : fromFileText(trimRight(figures.name)), false,
                   totals));
}

void setFigureCells(QTableWidget* grid, int row, int firstColumn, char category,
                    const std::vector<int>& columns, const PlayerFigures& figures, bool bold) {
    int c = firstColumn;
    for (int code : columns)
        grid->setItem(
            row, c++,
            reportCell(fromFileText(trim(figureText(category, code, figures[code]))), true, bold));
}

void showEmptyReport(QTableWidget* grid, const std::string& text) {
    grid->setRowCount(1);
    grid->setItem(0, 0, reportCell(QString(), true));
    grid->setItem(0, 1, reportCell(fromUtf8(text), false));
    grid->setSpan(0, 1, 1, grid->columnCount() - 1);
}

void fitReportColumns(FrozenColumnsGrid* grid, int sorted, char direction) {
    QHeaderView* header = grid->horizontalHeader();
    header->setSortIndicatorShown(false);
    std::vector<int> widths;
    for (int c = 0; c < grid->columnCount(); ++c)
        widths.push_back(std::max(header->sectionSizeHint(c), grid->contentsWidth(c)));
    if (sorted >= 0 && sorted < grid->columnCount()) {
        // The order itself is handed over; the style draws the arrow its own way for it.
        header->setSortIndicator(sorted,
                                 direction == 'D' ? Qt::DescendingOrder : Qt::AscendingOrder);
        header->setSortIndicatorShown(true);
        auto& width = widths[static_cast<std::size_t>(sorted)];
        width = std::max(width, header->sectionSizeHint(sorted));
    }
    for (int c = 0; c < grid->columnCount(); ++c)
        grid->setColumnWidth(c, widths[static_cast<std::size_t>(c)]);
}

SortSetting clickedSort(SortSetting sort, int code) {
    sort.direction = sort.column == code && sort.direction == 'D' ? 'A' : 'D';
    sort.column = static_cast<std::int16_t>(code);
    return sort;
}

QVBoxLayout* reportScreenLayout(QDialog* dialog, QLayout* top, QLabel* title, QLabel* selection,
                                QTableWidget* grid, QLayout* buttons) {
    auto* layout = new QVBoxLayout(dialog);
    layout->addLayout(top);
    layout->addSpacing(6);
    layout->addWidget(title);
    layout->addWidget(selection);
    layout->addWidget(grid, 1);
    layout->addLayout(buttons);
    return layout;
}

void fitScreenToGrid(QDialog* dialog, const QLayout* layout, const QTableWidget* grid, int height) {
    const QMargins margins = layout->contentsMargins();
    int width = margins.left() + margins.right() + 2 * grid->frameWidth() +
                grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, grid) + 4;
    for (int c = 0; c < grid->columnCount(); ++c)
        width += grid->columnWidth(c);
    const QScreen* screen = dialog->screen();
    const int widest = screen ? screen->availableGeometry().width() - 40 : 1200;
    dialog->resize(std::clamp(width, dialog->sizeHint().width(), std::max(widest, 640)), height);
}

} // namespace scorvane
