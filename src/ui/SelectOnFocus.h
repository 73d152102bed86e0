#pragma once

class QLineEdit;

namespace scorvane {

// Makes a text box select its whole text whenever it takes the focus, by mouse, Tab or Enter, so
// typing replaces what was there.
void selectAllOnFocus(QLineEdit* edit);

} // namespace scorvane
