#pragma once

#include <QString>

#include <string>

namespace scorvane {

// Where text crosses between the program's logic and the screen.
//
// The data files keep their texts as Windows-1252 bytes; everything else the logic hands out
// (messages, captions, run-time paths) is UTF-8. Screens convert with these functions only, so
// that a team name typed on screen comes back to disk as the same bytes it was read from.

// Windows-1252 bytes from a file, as shown on screen.
QString fromFileText(const std::string& cp1252);
// Screen text as it is stored in a file. Characters Windows-1252 cannot hold become '?'.
std::string toFileText(const QString& text);

// UTF-8 text of the logic (messages, captions, paths) and back.
QString fromUtf8(const std::string& utf8);
std::string toUtf8(const QString& text);

} // namespace scorvane
