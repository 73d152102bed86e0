// The message boxes of QtPrompter and the About box on their own.

#include "shell/ui/AboutDialog.h"
#include "ui/DialogParts.h"
#include "ui/QtPrompter.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <memory>

using namespace scorvane;

Q_DECLARE_METATYPE(scorvane::Message)

namespace {

// What a message box looked like when it came up.
struct SeenBox {
    bool seen = false;
    QString text, title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    Qt::TextFormat format = Qt::AutoText;
    QWidget* parent = nullptr;
    int width = 0;
};

// Records the first message box that comes up and closes it with the button `click`, or with
// Escape for NoButton. Gives up after five seconds by closing whatever is modal, so a box that
// never shows fails the test quickly.
void answerNextBox(SeenBox& seen, QMessageBox::StandardButton click) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [=, &seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box && ++*tries <= 500)
            return;
        timer->stop();
        timer->deleteLater();
        if (!box) {
            if (QWidget* modal = QApplication::activeModalWidget())
                modal->close();
            return;
        }
        seen = {true,
                box->text(),
                box->windowTitle(),
                box->icon(),
                box->standardButtons(),
                box->standardButton(box->defaultButton()),
                box->textFormat(),
                box->parentWidget(),
                box->width()};
        if (click == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(click)->click();
    });
    timer->start(10);
}

} // namespace

class TestDialogs : public QObject {
    Q_OBJECT

private slots:
    void promptShowsTheMessageExactly_data();
    void promptShowsTheMessageExactly();
    void aboutBoxShowsNameAndVersion();
};

void TestDialogs::promptShowsTheMessageExactly_data() {
    QTest::addColumn<Message>("message");
    QTest::addColumn<bool>("withParent");
    QTest::addColumn<int>("click"); // NoButton: Escape
    QTest::addColumn<int>("expectedButtons");
    QTest::addColumn<int>("expectedIcon");
    QTest::addColumn<int>("expectedDefault");
    QTest::addColumn<Answer>("expectedAnswer");
    using B = QMessageBox;

    // Markup-like text and ampersands appear as typed; the text is UTF-8.
    QTest::newRow("yes-no over a window")
        << Message{"Delete <b>all</b> files of Café & Sons?\nThis cannot be undone.",
                   "Delete Files", Buttons::YesNo, Icon::Warning, Answer::No}
        << true << int(B::Yes) << int(B::Yes | B::No) << int(B::Warning) << int(B::No)
        << Answer::Yes;
    // At start-up no window exists yet; the box must come up on its own.
    QTest::newRow("ok without any window")
        << Message{"BXFB.INI File Corrupt or Not Found", "Error", Buttons::Ok, Icon::Critical,
                   Answer::Ok}
        << false << int(B::Ok) << int(B::Ok) << int(B::Critical) << int(B::Ok) << Answer::Ok;
    // A title far longer than its text is not cut.
    QTest::newRow("long title, short text")
        << Message{"Save changes?", "Player Statistics Changed!", Buttons::YesNo, Icon::Question,
                   Answer::No}
        << true << int(B::No) << int(B::Yes | B::No) << int(B::Question) << int(B::No)
        << Answer::No;
    QTest::newRow("ok-cancel, cancel chosen")
        << Message{"Text", "Title", Buttons::OkCancel, Icon::Question, Answer::Ok} << false
        << int(B::Cancel) << int(B::Ok | B::Cancel) << int(B::Question) << int(B::Ok)
        << Answer::Cancel;
    QTest::newRow("ok-cancel, cancel is default")
        << Message{"Text", "Title", Buttons::OkCancel, Icon::None, Answer::Cancel} << false
        << int(B::Ok) << int(B::Ok | B::Cancel) << int(B::NoIcon) << int(B::Cancel) << Answer::Ok;
    QTest::newRow("retry-cancel, retry chosen")
        << Message{"Text", "Title", Buttons::RetryCancel, Icon::Information, Answer::Retry} << false
        << int(B::Retry) << int(B::Retry | B::Cancel) << int(B::Information) << int(B::Retry)
        << Answer::Retry;
    // Escape gives the cautious answer.
    QTest::newRow("retry-cancel, escape")
        << Message{"Try again?", "Disk Error", Buttons::RetryCancel, Icon::Critical, Answer::Retry}
        << false << int(B::NoButton) << int(B::Retry | B::Cancel) << int(B::Critical)
        << int(B::Retry) << Answer::Cancel;
    QTest::newRow("yes-no, escape")
        << Message{"Save?", "Save", Buttons::YesNo, Icon::Question, Answer::Yes} << false
        << int(B::NoButton) << int(B::Yes | B::No) << int(B::Question) << int(B::Yes) << Answer::No;
}

void TestDialogs::promptShowsTheMessageExactly() {
    QFETCH(Message, message);
    QFETCH(bool, withParent);
    QFETCH(int, click);
    QWidget owner;
    QtPrompter prompter(withParent ? &owner : nullptr);
    SeenBox seen;
    answerNextBox(seen, QMessageBox::StandardButton(click));
    const Answer answer = prompter.ask(message);

    QVERIFY(seen.seen);
    QCOMPARE(seen.text, QString::fromStdString(message.text));
    QCOMPARE(seen.format, Qt::PlainText);
    QCOMPARE(seen.title, QString::fromStdString(message.title));
    QTEST(int(seen.buttons), "expectedButtons");
    QTEST(int(seen.icon), "expectedIcon");
    QTEST(int(seen.defaultButton), "expectedDefault");
    QTEST(answer, "expectedAnswer");
    QCOMPARE(seen.parent, withParent ? &owner : nullptr);
    // Wide enough for the title in the title bar's bold font with the window's buttons beside it.
    QFont titleFont = QApplication::font("QMdiSubWindowTitleBar");
    titleFont.setBold(true);
    const int titleText = QFontMetrics(titleFont).horizontalAdvance(seen.title);
    QVERIFY(titleBarWidth(seen.title) >= titleText + 100);
    QVERIFY2(seen.width >= titleBarWidth(seen.title),
             qPrintable(QStringLiteral("%1 < %2").arg(seen.width).arg(titleBarWidth(seen.title))));
}

void TestDialogs::aboutBoxShowsNameAndVersion() {
    AboutDialog about;
    QVERIFY(about.isModal());
    QCOMPARE(about.windowTitle(), QStringLiteral("About"));
    QStringList texts;
    for (QLabel* l : about.findChildren<QLabel*>())
        texts << l->text();
    QVERIFY(texts.contains(QStringLiteral("Scorvane for Football")));
    QVERIFY(texts.contains(QStringLiteral("Version 2.1")));
    auto* ok = about.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    QVERIFY(ok && ok->isDefault());
    about.show();
    ok->click();
    QVERIFY(!about.isVisible());
    QCOMPARE(about.result(), int(QDialog::Accepted));
}

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
