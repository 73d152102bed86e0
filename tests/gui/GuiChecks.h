#pragma once

#include <QAbstractButton>
#include <QKeySequence>
#include <QMap>
#include <QStringList>
#include <QWidget>

namespace scorvane::testing {

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
