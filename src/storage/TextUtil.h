#pragma once

#include "ConfigRecord.h"
#include "Records.h"

#include <string>
#include <string_view>

namespace scorvane {

// "MMDDYY" as "MM/DD/YY", without checking the digits.
std::string ShortDate(std::string_view date);
// "MMDDYY" as month name, day and four-digit year ("Mar  5,  2003", "Feb  29,  1999": day and
// century each keep the blank of their sign position, so two spaces stand before each), or
// "ERROR" for a month outside 1..12, a day outside 1..31, a February day past 29 or the 31st of a
// 30-day month. February 29 passes in every year.
std::string LongDate(std::string_view date);
// The text trimmed and padded to the width: side "L" pads on the left, "R" on the right, "M" on
// both with the odd space on the right. Too long a text or another side letter gives "".
std::string AlignText(std::string_view text, int width, char side);
// The one-line summary of a game: number, date, game type name, opponent, score and result word.
// The point sums are those read with the record.
std::string GameLine(const GameRecord& game, const PointSums& points, const ConfigRecord& config);

} // namespace scorvane
