#pragma once

#include "GameExport.h"

#include <string>

namespace scorvane {

// The high-school stats site's import file for one game of our team: pipe-delimited text, the
// team's site id on the first line when it has one, then the header naming every field our
// figures fill, then one line per player who is recorded in any category, in number order.
// A field the player has no record of is an empty cell, a recorded 0 is "0"; half sacks are
// written "0.5". Lines end in CR LF; the text is ASCII. docs/exchange.md lists the fields and
// where each comes from.
std::string siteText(const GameSide& side, const std::string& siteId);

// A name to offer for a game's file: "<team> <date> vs <opponent>.txt" ("Tigers 2019-09-21 vs
// Eagles.txt"), UTF-8, without the characters a file name may not hold and without quotes or
// parentheses, which the site refuses in a file name.
std::string siteFileName(const GameSide& side);

} // namespace scorvane
