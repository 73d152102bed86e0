#include "HelpWindow.h"

#include <QAction>
#include <QFileInfo>
#include <QKeySequence>
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
    show();
    raise();
    activateWindow();
}

} // namespace scorvane
