#include "DialogParts.h"

#include <QFontDatabase>
#include <QListWidget>
#include <QPushButton>

namespace scorvane {

std::pair<QPushButton*, QPushButton*> okCancelButtons(QWidget* dialog) {
    auto* ok = new QPushButton(QStringLiteral("OK"), dialog);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), dialog);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAutoDefault(false);
    return {ok, cancel};
}

QListWidget* gameLineList(QWidget* parent, int columns) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QStringLiteral("lstGameMenu"));
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setUniformItemSizes(true);
    list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    list->setMinimumWidth(
        list->fontMetrics().horizontalAdvance(QString(columns, QLatin1Char('0'))) + 40);
    return list;
}

} // namespace scorvane
