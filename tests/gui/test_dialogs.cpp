// The message boxes of QtPrompter, the About box and the help window on their own.

#include "shell/ui/AboutDialog.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/QtPrompter.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace scorvane;

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
};

// Records the first message box that comes up and closes it with `close`. Gives up after five
// seconds by closing whatever is modal, so a box that never shows fails the test quickly.
void answerNextBox(SeenBox& seen, std::function<void(QMessageBox*)> close) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [=, &seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) {
            if (++*tries > 500) {
                timer->stop();
                timer->deleteLater();
                if (QWidget* modal = QApplication::activeModalWidget())
                    modal->close();
            }
            return;
        }
        timer->stop();
        timer->deleteLater();
        seen.seen = true;
        seen.text = box->text();
        seen.title = box->windowTitle();
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
        seen.defaultButton = box->standardButton(box->defaultButton());
        seen.format = box->textFormat();
        seen.parent = box->parentWidget();
        close(box);
    });
    timer->start(10);
}

auto clickButton(QMessageBox::StandardButton which) {
    return [which](QMessageBox* box) { box->button(which)->click(); };
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(content);
}

} // namespace

class TestDialogs : public QObject {
    Q_OBJECT

private slots:
    void promptShowsTheMessageExactly();
    void promptButtonsAndAnswers_data();
    void promptButtonsAndAnswers();
    void promptClosedWithEscapeGivesTheCautiousAnswer();
    void promptWithoutAnyWindow();
    void aboutBoxShowsNameVersionAndPurpose();
    void helpWindowFollowsLinksBetweenPages();
};

void TestDialogs::promptShowsTheMessageExactly() {
    QWidget owner;
    QtPrompter prompter;
    prompter.setParentWidget(&owner);
    QCOMPARE(prompter.parentWidget(), &owner);

    // Markup-like text and ampersands appear as typed; the text is UTF-8.
    const Message message{"Delete <b>all</b> files of Caf\xC3\xA9 & Sons?\nThis cannot be undone.",
                          "Delete Files", Buttons::YesNo, Icon::Warning, Answer::No};
    SeenBox seen;
    answerNextBox(seen, clickButton(QMessageBox::Yes));
    const Answer answer = prompter.ask(message);

    QVERIFY(seen.seen);
    QCOMPARE(answer, Answer::Yes);
    QCOMPARE(seen.text, QString::fromUtf8("Delete <b>all</b> files of Caf\xC3\xA9 & Sons?\n"
                                          "This cannot be undone."));
    QCOMPARE(seen.format, Qt::PlainText);
    QCOMPARE(seen.title, QStringLiteral("Delete Files"));
    QCOMPARE(seen.icon, QMessageBox::Warning);
    QCOMPARE(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(seen.defaultButton, QMessageBox::No);
    QCOMPARE(seen.parent, &owner);
}

void TestDialogs::promptButtonsAndAnswers_data() {
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("defaultAnswer");
    QTest::addColumn<int>("click");
    QTest::addColumn<int>("expectedButtons");
    QTest::addColumn<int>("expectedIcon");
    QTest::addColumn<int>("expectedDefault");
    QTest::addColumn<int>("expectedAnswer");

    QTest::newRow("ok") << int(Buttons::Ok) << int(Icon::Information) << int(Answer::Ok)
                        << int(QMessageBox::Ok) << int(QMessageBox::Ok)
                        << int(QMessageBox::Information) << int(QMessageBox::Ok) << int(Answer::Ok);
    QTest::newRow("ok-cancel, cancel chosen")
        << int(Buttons::OkCancel) << int(Icon::Question) << int(Answer::Ok)
        << int(QMessageBox::Cancel) << int(QMessageBox::Ok | QMessageBox::Cancel)
        << int(QMessageBox::Question) << int(QMessageBox::Ok) << int(Answer::Cancel);
    QTest::newRow("ok-cancel, cancel is default")
        << int(Buttons::OkCancel) << int(Icon::None) << int(Answer::Cancel) << int(QMessageBox::Ok)
        << int(QMessageBox::Ok | QMessageBox::Cancel) << int(QMessageBox::NoIcon)
        << int(QMessageBox::Cancel) << int(Answer::Ok);
    QTest::newRow("yes-no, no chosen")
        << int(Buttons::YesNo) << int(Icon::Question) << int(Answer::Yes) << int(QMessageBox::No)
        << int(QMessageBox::Yes | QMessageBox::No) << int(QMessageBox::Question)
        << int(QMessageBox::Yes) << int(Answer::No);
    QTest::newRow("retry-cancel, retry chosen")
        << int(Buttons::RetryCancel) << int(Icon::Critical) << int(Answer::Retry)
        << int(QMessageBox::Retry) << int(QMessageBox::Retry | QMessageBox::Cancel)
        << int(QMessageBox::Critical) << int(QMessageBox::Retry) << int(Answer::Retry);
}

void TestDialogs::promptButtonsAndAnswers() {
    QFETCH(int, buttons);
    QFETCH(int, icon);
    QFETCH(int, defaultAnswer);
    QFETCH(int, click);
    QFETCH(int, expectedButtons);
    QFETCH(int, expectedIcon);
    QFETCH(int, expectedDefault);
    QFETCH(int, expectedAnswer);

    QtPrompter prompter;
    SeenBox seen;
    answerNextBox(seen, clickButton(QMessageBox::StandardButton(click)));
    const Answer answer =
        prompter.ask({"Text", "Title", Buttons(buttons), Icon(icon), Answer(defaultAnswer)});
    QVERIFY(seen.seen);
    QCOMPARE(int(seen.buttons), expectedButtons);
    QCOMPARE(int(seen.icon), expectedIcon);
    QCOMPARE(int(seen.defaultButton), expectedDefault);
    QCOMPARE(int(answer), expectedAnswer);
}

void TestDialogs::promptClosedWithEscapeGivesTheCautiousAnswer() {
    QtPrompter prompter;
    auto escape = [](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); };

    SeenBox seen;
    answerNextBox(seen, escape);
    QCOMPARE(prompter.ask(
                 {"Try again?", "Disk Error", Buttons::RetryCancel, Icon::Critical, Answer::Retry}),
             Answer::Cancel);
    QVERIFY(seen.seen);

    SeenBox seen2;
    answerNextBox(seen2, escape);
    QCOMPARE(prompter.ask({"Save?", "Save", Buttons::YesNo, Icon::Question, Answer::Yes}),
             Answer::No);
    QVERIFY(seen2.seen);
}

void TestDialogs::promptWithoutAnyWindow() {
    // At start-up no window exists yet; the box must come up on its own.
    QtPrompter prompter;
    SeenBox seen;
    answerNextBox(seen, clickButton(QMessageBox::Ok));
    QCOMPARE(prompter.ask({"BXFB.INI File Corrupt or Not Found", "Error", Buttons::Ok,
                           Icon::Critical, Answer::Ok}),
             Answer::Ok);
    QVERIFY(seen.seen);
    QCOMPARE(seen.parent, nullptr);
    QCOMPARE(seen.text, QStringLiteral("BXFB.INI File Corrupt or Not Found"));

    // A parent that goes away is forgotten rather than left dangling.
    auto owner = std::make_unique<QWidget>();
    prompter.setParentWidget(owner.get());
    owner.reset();
    QCOMPARE(prompter.parentWidget(), nullptr);
}

void TestDialogs::aboutBoxShowsNameVersionAndPurpose() {
    AboutDialog about;
    QVERIFY(about.isModal());
    QCOMPARE(about.windowTitle(), QStringLiteral("About"));
    QStringList texts;
    for (QLabel* l : about.findChildren<QLabel*>())
        texts << l->text();
    QVERIFY(texts.contains(QStringLiteral("Scorvane for Football")));
    QVERIFY(texts.contains(QStringLiteral("Version 2.1")));
    QVERIFY(std::any_of(texts.begin(), texts.end(), [](const QString& t) {
        return t.contains(QStringLiteral("American football"));
    }));

    auto* ok = about.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    QVERIFY(ok);
    QCOMPARE(ok->text(), QStringLiteral("OK"));
    QVERIFY(ok->isDefault());
    about.show();
    QVERIFY(about.isVisible());
    ok->click();
    QVERIFY(!about.isVisible());
    QCOMPARE(about.result(), int(QDialog::Accepted));
}

void TestDialogs::helpWindowFollowsLinksBetweenPages() {
    QTemporaryDir install;
    const QString help = install.filePath(QStringLiteral("help"));
    QDir().mkpath(help);
    writeFile(help + QStringLiteral("/topic240.html"),
              "<html><body><h1>Passing</h1><a href=\"topic250.html\">Receiving</a></body></html>");
    writeFile(help + QStringLiteral("/topic250.html"),
              "<html><body><h1>Receiving Statistics</h1><p>Catches.</p></body></html>");

    HelpWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Scorvane for Football Help"));
    window.showPage(help + QStringLiteral("/topic240.html"));
    QVERIFY(window.isVisible());
    QVERIFY(window.browser()->toPlainText().contains(QStringLiteral("Passing")));

    auto* back = window.findChild<QAction*>(QStringLiteral("helpBack"));
    QVERIFY(back);
    QVERIFY(!back->isEnabled());

    // Click the link, which names the other page relative to this one.
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTextBrowser* browser = window.browser();
    QTextCursor link = browser->document()->find(QStringLiteral("Receiving"));
    QVERIFY(!link.isNull());
    link.setPosition(link.selectionStart() + 2);
    const QPoint onLink = browser->cursorRect(link).center();
    QSignalSpy clicked(browser, &QTextBrowser::anchorClicked);
    QTest::mouseClick(browser->viewport(), Qt::LeftButton, {}, onLink);
    QCOMPARE(clicked.size(), 1);
    QVERIFY(window.browser()->source().toLocalFile().endsWith(QStringLiteral("/topic250.html")));
    QVERIFY(window.browser()->toPlainText().contains(QStringLiteral("Catches.")));
    QVERIFY(window.browser()->searchPaths().contains(QFileInfo(help).absoluteFilePath()));
    QVERIFY(back->isEnabled());
    back->trigger();
    QVERIFY(window.browser()->source().toLocalFile().endsWith(QStringLiteral("/topic240.html")));

    // The same window shows the next topic.
    window.close();
    window.showPage(help + QStringLiteral("/topic250.html"));
    QVERIFY(window.isVisible());
    QVERIFY(window.browser()->toPlainText().contains(QStringLiteral("Receiving Statistics")));
}

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
