#include "DialogParts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>

namespace scorvane {

namespace {

QListWidget* singleSelectionList(QWidget* parent, const QString& objectName) {
    auto* list = new QListWidget(parent);
    list->setObjectName(objectName);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setUniformItemSizes(true);
    return list;
}

void fitWidthTo(QListWidget* list, const QString& widest) {
    list->setMinimumWidth(list->fontMetrics().horizontalAdvance(widest) + 40);
}

} // namespace

QPushButton* namedButton(QWidget* parent, const char* name, const QString& text) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QLabel* labelFor(QWidget* buddy, const QString& text) {
    auto* label = new QLabel(text, buddy->parentWidget());
    label->setBuddy(buddy);
    return label;
}

QHBoxLayout* buttonRow(const std::vector<QWidget*>& widgets, const QWidget* gapBefore) {
    auto* row = new QHBoxLayout;
    for (QWidget* w : widgets) {
        if (w == gapBefore)
            row->addStretch(1);
        row->addWidget(w);
    }
    return row;
}

void chainTabOrder(const std::vector<QWidget*>& widgets) {
    for (std::size_t i = 1; i < widgets.size(); ++i)
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
}

std::pair<QPushButton*, QPushButton*> okCancelButtons(QWidget* dialog, const char* cancelCaption,
                                                      const char* cancelName) {
    auto* ok = new QPushButton(QStringLiteral("OK"), dialog);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QString::fromLatin1(cancelCaption), dialog);
    cancel->setObjectName(QString::fromLatin1(cancelName));
    return {ok, cancel};
}

QListWidget* gameLineList(QWidget* parent, int columns) {
    auto* list = singleSelectionList(parent, QStringLiteral("lstGameMenu"));
    list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    fitWidthTo(list, QString(columns, QLatin1Char('0')));
    return list;
}

QListWidget* rosterLineList(QWidget* parent, const char* objectName) {
    auto* list = singleSelectionList(parent, QString::fromLatin1(objectName));
    fitWidthTo(list, QStringLiteral("99 ") + QString(20, QLatin1Char('_')));
    return list;
}

int titleBarWidth(const QString& title) {
    QFont font = QApplication::font("QMdiSubWindowTitleBar");
    font.setBold(true);
    const QFontMetrics metrics(font);
    // The window's icon and up to three buttons, each about two lines of the title high and wide,
    // and the frame's borders on either side.
    const int buttons = 8 * metrics.height();
    return metrics.horizontalAdvance(title) + buttons;
}

void fitTitle(QMessageBox& box) {
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    const int width = titleBarWidth(box.windowTitle());
    if (!grid) {
        box.setMinimumWidth(width);
        return;
    }
    // A row of its own under everything else, as wide as the title needs: the box's own sizing
    // then never goes below it.
    const QMargins margins = grid->contentsMargins();
    grid->addItem(new QSpacerItem(width - margins.left() - margins.right(), 0, QSizePolicy::Minimum,
                                  QSizePolicy::Fixed),
                  grid->rowCount(), 0, 1, qMax(1, grid->columnCount()));
}

} // namespace scorvane
