#pragma once

#include <QMainWindow>

class QAction;
class QKeyEvent;
class QTextBrowser;

namespace scorvane {

// The help pages: local HTML files shown in a window of their own beside the main window.
// It is not modal, so the user can keep a page open while working; the main window keeps one
// instance and shows every topic in it.
class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // Shows the page at `path` (a local file) and brings the window to the front. Links from
    // that page to the other pages of its folder work, by relative path or by bare file name.
    void showPage(const QString& path);

    QTextBrowser* browser() const { return browser_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Puts the window over `anchor` (the main window), whole on that window's screen: moved in
    // from the edges, and made smaller where the screen is too small for it.
    void placeOver(const QWidget* anchor);

    static constexpr int kTitleBarGuess = 40;
    static constexpr int kFrameGuess = 8;

    QTextBrowser* browser_;
    QAction* back_;
    QAction* forward_;
};

} // namespace scorvane
