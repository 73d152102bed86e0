#include "FrozenColumnsGrid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace scorvane {

FrozenColumnsGrid::FrozenColumnsGrid(QWidget* parent, const char* frozenName)
    : QTableWidget(parent) {
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    frozen_ = new QTableView(this);
    frozen_->setObjectName(QString::fromLatin1(frozenName));
    frozen_->setModel(model());
    frozen_->setSelectionModel(selectionModel());
    frozen_->setFocusPolicy(Qt::NoFocus);
    frozen_->setFrameShape(QFrame::NoFrame);
    frozen_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    frozen_->setSelectionBehavior(QAbstractItemView::SelectRows);
    frozen_->setSelectionMode(QAbstractItemView::SingleSelection);
    frozen_->setWordWrap(false);
    frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->verticalHeader()->hide();
    frozen_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    frozen_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    frozen_->horizontalHeader()->setSectionsClickable(false);
    frozen_->horizontalHeader()->setHighlightSections(false);
    frozen_->hide();
    viewport()->stackUnder(frozen_);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { layoutFrozen(); });
    connect(verticalScrollBar(), &QAbstractSlider::valueChanged, frozen_->verticalScrollBar(),
            &QAbstractSlider::setValue);
    connect(frozen_->verticalScrollBar(), &QAbstractSlider::valueChanged, verticalScrollBar(),
            &QAbstractSlider::setValue);
}

void FrozenColumnsGrid::freezeColumns(int count) {
    frozenCount_ = count;
    layoutFrozen();
}

void FrozenColumnsGrid::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (frozenCount_ == 0 || !index.isValid()) {
        QTableWidget::scrollTo(index, hint);
        return;
    }
    QScrollBar* sideways = horizontalScrollBar();
    const int kept = sideways->value();
    QTableWidget::scrollTo(index, hint);
    if (index.column() < frozenCount_) {
        sideways->setValue(kept); // always in view: only the rows scroll
        return;
    }
    const int covered = frozenWidth() - visualRect(index).left();
    if (covered > 0)
        sideways->setValue(sideways->value() - covered);
}

void FrozenColumnsGrid::updateGeometries() {
    QTableWidget::updateGeometries();
    layoutFrozen();
}

void FrozenColumnsGrid::resizeEvent(QResizeEvent* event) {
    QTableWidget::resizeEvent(event);
    layoutFrozen();
}

int FrozenColumnsGrid::frozenWidth() const {
    int width = 0;
    for (int c = 0; c < std::min(frozenCount_, columnCount()); ++c)
        width += columnWidth(c);
    return width;
}

void FrozenColumnsGrid::layoutFrozen() {
    if (!frozen_)
        return; // the grid's own set-up, before the frozen view is there
    if (frozenCount_ == 0 || columnCount() == 0) {
        frozen_->hide();
        return;
    }
    for (int c = 0; c < columnCount(); ++c) {
        frozen_->setColumnHidden(c, c >= frozenCount_);
        if (c < frozenCount_)
            frozen_->setColumnWidth(c, columnWidth(c));
    }
    frozen_->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
    frozen_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    frozen_->setGeometry(viewport()->x(), horizontalHeader()->y(), frozenWidth(),
                         horizontalHeader()->height() + viewport()->height());
    frozen_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    frozen_->show();
}

} // namespace scorvane
