#pragma once

#include "reports/Statistics.h"
#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"

#include <QString>

#include <string>
#include <vector>

class QComboBox;
class QDialog;
class QLabel;
class QLayout;
class QTableWidget;
class QTableWidgetItem;
class QVBoxLayout;
class QWidget;

namespace scorvane {

class FrozenColumnsGrid;

// What the screens that show players' figures in a grid share (the statistics screen, the career
// report, a player's career): the grid's look and items, the category box and the title above it,
// the widths of its columns and the sort a click on a heading gives.

// A read-only item: figures right-aligned, text left-aligned, a totals line bold.
QTableWidgetItem* reportCell(const QString& text, bool number = false, bool bold = false);

// The category box (cboCategory): every category's report title, with the category's letter.
QComboBox* categoryBox(QWidget* parent);

// The report's title above the grid (lblTitle): bold, a fifth larger than the dialog's font.
QLabel* reportTitleLabel(QWidget* parent);

// A read-only grid of rows one line of its font high, without row numbers, one whole row chosen
// at a time.
void setUpRowsGrid(QTableWidget* grid);

// The grid's look: the report font, rows one line high without numbers, read-only, one whole row
// chosen at a time, no word wrap. With `sortableHeadings` the headings take clicks (the caller
// connects them) and say so.
void setUpReportGrid(QTableWidget* grid, bool sortableHeadings);

// Empties the grid and gives it its headings: `headings` (the player's columns), then the
// captions of `columns`. Those of `textColumns` are left-aligned, the figures' right-aligned.
void setReportHeadings(QTableWidget* grid, QStringList headings,
                       const std::vector<int>& textColumns, char category,
                       const std::vector<int>& columns, const ColumnTable& table);

// The player's number and name in a row's first two cells; "Totals" on the totals line.
void setNumberAndName(QTableWidget* grid, int row, const PlayerFigures& figures, bool totals);

// The figures of `columns` in a row, from `firstColumn` on.
void setFigureCells(QTableWidget* grid, int row, int firstColumn, char category,
                    const std::vector<int>& columns, const PlayerFigures& figures, bool bold);

// A report without a line: `text` in one row, from the second cell across the grid.
void showEmptyReport(QTableWidget* grid, const std::string& text);

// Each column as wide as its heading or its widest figure, whichever is wider. The header leaves
// room for a sort arrow beside every heading while the arrow is shown, so the headings are
// measured without it and only the sorted column (`sorted`, -1 for none) gets that room.
void fitReportColumns(FrozenColumnsGrid* grid, int sorted, char direction);

// The sort after a click on the heading of column `code`: the sorted column again turns the order
// round; another column sorts greatest first.
SortSetting clickedSort(SortSetting sort, int code);

// A report screen from top to bottom: the choices, the title and the selection, the grid taking
// the height left, the buttons.
QVBoxLayout* reportScreenLayout(QDialog* dialog, QLayout* top, QLabel* title, QLabel* selection,
                                QTableWidget* grid, QLayout* buttons);

// Sizes a report screen wide enough for the grid's columns and a scroll bar beside them, as far
// as the screen allows, and `height` high.
void fitScreenToGrid(QDialog* dialog, const QLayout* layout, const QTableWidget* grid, int height);

} // namespace scorvane
