#pragma once

#include "PressBox.h"

#include <pugixml.hpp>

namespace scorvane {

// The line of a place in the text, counted from 1; 0 for no place.
int lineAt(std::string_view text, std::ptrdiff_t offset);

// The kicks and returns of a press-box file, one by one, onto its players' per-play lists:
// - field goals from the `fgas` list (`fga`: kicker, vh, distance, result) and extra-point kicks
//   from the scoring summary (`score` with pattype "KICK": patby, patres), in the order of the
//   game (quarter, then the clock running down);
// - or, where the play by play has them, the per-play elements `p_fg`, `p_pat`, `p_pu` (punt),
//   `p_pr` and `p_kr` (returns), which also carry our own exact marks ("sv:marks").
// Returns whether the file had any kick or return one by one; `error` names the line of a play
// whose yards are no whole number of 16 bits.
bool readPlays(std::string_view xml, const pugi::xml_node& root, PressBoxGame& game,
               std::string& error);

// The marks of a kick or return from the press box's result letters: kicks "G" good, "B"
// blocked, "F" fair catch, "I" inside the 20, "T" touchback; returns "F" fumble, "C" fair catch,
// "D" touchdown. An "sv:marks" attribute, where present, is taken as it is.
std::int16_t kickMarks(char type, std::string_view result);
std::int16_t returnMarks(std::string_view result);
std::string kickResult(const ListEntry& kick);
std::string returnResult(const ListEntry& ret);

} // namespace scorvane
