#pragma once

#include <utility>

class QListWidget;
class QPushButton;
class QWidget;

namespace scorvane {

// The "OK" (default) and "Cancel" buttons of a dialog, named cmdOK and cmdCancel.
std::pair<QPushButton*, QPushButton*> okCancelButtons(QWidget* dialog);

// A single-selection list of game summary lines, named lstGameMenu: fixed-pitch, since the lines
// are laid out in columns of characters, and wide enough for `columns` characters.
QListWidget* gameLineList(QWidget* parent, int columns);

} // namespace scorvane
