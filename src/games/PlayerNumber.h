#pragma once

#include "games/Roster.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <string>

namespace scorvane {

// The new number box holds three digits, so that a number past 99 can be typed and refused with
// its message instead of being cut to two digits.
inline constexpr int kNewNumberDigits = 3;

// Moves a player, with every result recorded for him, from one number to another.
//
// Checks in order, each shown titled "New Player Number Invalid": "Must be 1 to 99!", "Same as old
// player number!", "Games already recorded for new number!" (an active statistics record already
// has the new number). Then every statistics record of the old number (deleted ones too) gets the
// new number, the roster slot moves ("Player <n>" is the name left in a vacated slot) and the
// player's contact details move with him. The statistics, roster and player information files are
// replaced together. `changed` tells whether the move happened.
[[nodiscard]] Status changePlayerNumber(TeamFiles& files, Roster& roster, Prompter& prompter,
                                        int oldNumber, const std::string& newNumberText,
                                        bool& changed);

} // namespace scorvane
