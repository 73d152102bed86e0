#pragma once

#include "GameResults.h"
#include "Validation.h"

#include <string>
#include <vector>

namespace scorvane {

// What the team totals view of a category shows: the sums of every recorded player's values (the
// longest-play fields summed like the others), and for kicking and returns every player's plays
// with their counts. Shown only, never stored.
struct TeamTotals {
    FieldTexts fields;              // the totals in the shown fields, "" elsewhere
    std::vector<std::string> items; // kicking and returns: the plays of all players
    std::string fieldGoals;         // "2 for 3 Field Goals"
    std::string extraPoints;        // "1 for 1 Extra Points"
    std::string punts;              // "1 Punt", "0 Punts"
    std::string kickReturns;        // "1 Kick Return", "3 Kick Returns"
    std::string puntReturns;        // "1 Punt Return", "0 Punt Returns"
};

TeamTotals teamTotals(char category, const GameResults& results);

// The status line of the totals view: "Players Recorded -" and the count with one leading blank.
std::string playersRecordedText(int count);

} // namespace scorvane
