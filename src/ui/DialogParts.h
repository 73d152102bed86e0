#pragma once

#include <utility>
#include <vector>

class QHBoxLayout;
class QLabel;
class QListWidget;
class QMessageBox;
class QPushButton;
class QString;
class QWidget;

namespace scorvane {

// A push button with its object name ("cmdPrint").
QPushButton* namedButton(QWidget* parent, const char* name, const QString& text);

// A label for `buddy`, beside it in the same parent: the label's mnemonic moves the focus there.
QLabel* labelFor(QWidget* buddy, const QString& text);

// A row of buttons (and whatever stands among them), left to right. A stretch before `gapBefore`
// pushes it and the widgets after it to the right edge.
QHBoxLayout* buttonRow(const std::vector<QWidget*>& widgets, const QWidget* gapBefore = nullptr);

// The Tab key goes through `widgets` in this order.
void chainTabOrder(const std::vector<QWidget*>& widgets);

// The "OK" (default) and "Cancel" buttons of a dialog, named cmdOK and cmdCancel. A dialog that
// stays open after OK gives its second button another caption and name ("Close", cmdClose).
std::pair<QPushButton*, QPushButton*> okCancelButtons(QWidget* dialog,
                                                      const char* cancelCaption = "Cancel",
                                                      const char* cancelName = "cmdCancel");

// A single-selection list of game summary lines, named lstGameMenu: fixed-pitch, since the lines
// are laid out in columns of characters, and wide enough for `columns` characters.
QListWidget* gameLineList(QWidget* parent, int columns);

// A single-selection list of the 99 roster lines, wide enough for a number and a vacant line.
// It keeps the ordinary proportional font: the lines pad numbers below 10 with two spaces, which
// take the width of one digit there, so the names line up.
QListWidget* rosterLineList(QWidget* parent, const char* objectName);

// The width a window needs for `title` to stand whole in its title bar: the title in the title
// bar's font, bold as most window managers draw it, plus room for the window's icon and its
// buttons.
int titleBarWidth(const QString& title);

// Keeps a message box at least titleBarWidth(its title) wide. A message box sizes itself to its
// text whenever it is shown, which cuts a title longer than the text; call this once the box
// has its title, text and buttons (setting the text or the icon later lays it out anew).
void fitTitle(QMessageBox& box);

} // namespace scorvane
