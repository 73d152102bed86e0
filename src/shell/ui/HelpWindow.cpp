#include "HelpWindow.h"

#include <QAction>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QScreen>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>
#include <QUrl>

namespace scorvane {

HelpWindow::HelpWindow(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Scorvane for Football Help"));
    // A window of its own even with the main window as parent (the parent only ties its
    // lifetime to the main window); with a parent it does not keep the program running.
    setWindowFlag(Qt::Window);
    resize(680, 560);

    browser_ = new QTextBrowser(this);
    browser_->setObjectName(QStringLiteral("helpBrowser"));
    browser_->setOpenExternalLinks(true);
    browser_->setFrameShape(QFrame::NoFrame);
    browser_->document()->setDocumentMargin(16);
    setCentralWidget(browser_);

    QToolBar* bar = addToolBar(QStringLiteral("Navigation"));
    bar->setObjectName(QStringLiteral("helpToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    back_ = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack), QStringLiteral("&Back"));
    back_->setObjectName(QStringLiteral("helpBack"));
    back_->setShortcut(QKeySequence::Back);
    back_->setEnabled(false);
    forward_ =
        bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward), QStringLiteral("&Forward"));
    forward_->setObjectName(QStringLiteral("helpForward"));
    forward_->setShortcut(QKeySequence::Forward);
    forward_->setEnabled(false);

    connect(back_, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward_, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back_, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward_, &QAction::setEnabled);
}

void HelpWindow::showPage(const QString& path) {
    const QFileInfo page(path);
    browser_->setSearchPaths({page.absolutePath()});
    browser_->setSource(QUrl::fromLocalFile(page.absoluteFilePath()));

    setWindowState(windowState() & ~Qt::WindowMinimized);
    // A window the user has open stays where it is; one that comes up afresh is put over the
    // main window.
    if (!isVisible())
        placeOver(parentWidget() ? parentWidget()->window() : nullptr);
    show();
    raise();
    activateWindow();
}

void HelpWindow::placeOver(const QWidget* anchor) {
    QScreen* screen = anchor ? anchor->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    // The window manager's frame is known once the window has been shown; before that a title
    // bar and thin borders are allowed for.
    QMargins frame(geometry().left() - frameGeometry().left(),
                   geometry().top() - frameGeometry().top(),
                   frameGeometry().right() - geometry().right(),
                   frameGeometry().bottom() - geometry().bottom());
    if (frame.isNull())
        frame = QMargins(kFrameGuess, kTitleBarGuess, kFrameGuess, kFrameGuess);
    const QRect room = screen->availableGeometry().marginsRemoved(frame);

    QRect placed(QPoint(), size().boundedTo(room.size()));
    placed.moveCenter(anchor ? anchor->geometry().center() : room.center());
    placed.moveRight(qMin(placed.right(), room.right()));
    placed.moveBottom(qMin(placed.bottom(), room.bottom()));
    placed.moveLeft(qMax(placed.left(), room.left()));
    placed.moveTop(qMax(placed.top(), room.top()));
    setGeometry(placed);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    // Escape puts the page away, as it closes the program's other windows.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        close();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

} // namespace scorvane
