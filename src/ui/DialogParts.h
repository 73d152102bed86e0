#pragma once

#include <utility>

class QListWidget;
class QPushButton;
class QWidget;

namespace scorvane {

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

} // namespace scorvane
