#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeySequence>
#include <QListWidget>
#include <QMap>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTableWidget>
#include <QTimer>
#include <QWidget>
#include <QtGlobal>
#include <QtTest>

#include <fstream>
#include <functional>
#include <memory>
#include <string>

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

// Shows a window and waits until it has the keyboard, as a user's window would.
inline void showActive(QWidget* w) {
    w->show();
    (void)QTest::qWaitForWindowActive(w);
}

// Runs `act` on the modal dialog of that object name (any modal dialog for nullptr) as soon as it
// is up, from inside its exec(), and closes it if `act` left it open. After five seconds without
// it, whatever is modal is closed, so a dialog that never comes fails the test instead of hanging.
inline void whenShown(const char* name, std::function<void(QDialog*)> act) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [=, act = std::move(act)] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        const bool found =
            dialog && dialog->isVisible() && (!name || dialog->objectName() == QLatin1String(name));
        if (!found && ++*tries <= 500)
            return;
        timer->stop();
        timer->deleteLater();
        if (found)
            act(dialog);
        if (QWidget* modal = QApplication::activeModalWidget();
            modal && (!found || modal == dialog))
            modal->close();
    });
    timer->start(10);
}

// A table cell's text, empty where the cell has no item.
inline QString cellText(const QTableWidget* t, int row, int col) {
    const QTableWidgetItem* item = t->item(row, col);
    return item ? item->text() : QString();
}

inline QStringList headings(const QTableWidget* t) {
    QStringList out;
    for (int c = 0; c < t->columnCount(); ++c)
        out << t->horizontalHeaderItem(c)->text();
    return out;
}

inline QStringList lines(const QListWidget* list) {
    QStringList out;
    for (int r = 0; r < list->count(); ++r)
        out << list->item(r)->text();
    return out;
}

// The lines of a text file as written.
inline QStringList readLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary); // the line ends as written, on every system
    QStringList out;
    for (std::string line; std::getline(in, line);)
        out << QString::fromStdString(line);
    return out;
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
