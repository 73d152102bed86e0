#pragma once

#include <QAbstractButton>
#include <QKeySequence>
#include <QMap>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <QtGlobal>

namespace scorvane::testing {

// The screen's widget of that object name; a test without it stops there.
template <class W = QWidget> W* child(const QWidget* parent, const char* name) {
    W* w = parent->findChild<W*>(QString::fromLatin1(name));
    if (!w)
        qFatal("No %s", name);
    return w;
}

// Clicks the screen's button of that object name.
inline void press(const QWidget* parent, const char* name) {
    child<QPushButton>(parent, name)->click();
}

// The access keys of a screen's buttons that more than one button claims ("C: &Change, &Close"),
// empty when every button has its own.
inline QStringList sharedAccessKeys(const QWidget* screen) {
    QMap<QString, QStringList> owners;
    for (const QAbstractButton* b : screen->findChildren<QAbstractButton*>()) {
        const QString key = QKeySequence::mnemonic(b->text()).toString();
        if (!key.isEmpty())
            owners[key] << b->text();
    }
    QStringList shared;
    for (auto it = owners.cbegin(); it != owners.cend(); ++it)
        if (it.value().size() > 1)
            shared << it.key() + ": " + it.value().join(QStringLiteral(", "));
    return shared;
}

} // namespace scorvane::testing
