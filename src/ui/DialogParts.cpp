#include "DialogParts.h"

#include <QFontDatabase>
#include <QListWidget>
#include <QPushButton>

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

} // namespace scorvane
