#pragma once

#include <QTableWidget>

class QTableView;

namespace scorvane {

// The report grid. Its first columns (the player's number and name, and the team on a report
// over several teams) stay in view while the figures scroll sideways: a second view over the same
// items and the same selection lies over the grid's left edge, shows only those columns and
// scrolls up and down with the grid. The grid keeps the keyboard; the cell it moves to is scrolled
// clear of the frozen columns.
class FrozenColumnsGrid : public QTableWidget {
public:
    // `frozenName` is the object name of the view over the frozen columns.
    FrozenColumnsGrid(QWidget* parent, const char* frozenName);

    // How many columns from the left stay in view; 0 lets every column scroll.
    void freezeColumns(int count);

    // The width of a column's widest item.
    int contentsWidth(int column) const { return sizeHintForColumn(column); }

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    void updateGeometries() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int frozenWidth() const;
    void layoutFrozen();

    QTableView* frozen_ = nullptr;
    int frozenCount_ = 0;
};

} // namespace scorvane
