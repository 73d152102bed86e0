#pragma once

#include "ReportOutput.h"

#include "games/Roster.h"

#include <functional>
#include <string>
#include <vector>

namespace scorvane {

// A player's contact detail as the roster screen holds it (Windows-1252, any padding).
using ContactLookup = std::function<std::string(int playerNumber, ContactField field)>;

// One player's entry of the printed roster: the number right-justified in 2, " - " and the name,
// then one line for each contact detail that is not blank, indented under the name: the phone, the
// two address lines, city and state joined by ", " (only when both are there) with the zip two
// spaces after them, and the other information.
std::vector<std::string> rosterEntry(int playerNumber, const std::string& name,
                                     const ContactLookup& contact);

// The printed roster: one entry per number in use, in number order, a blank line between entries,
// each entry kept on one page. The page heading is the title ("Roster" unless the print dialog
// gives another), the team's name and a rule as wide as the widest entry line.
std::vector<std::string> rosterPages(const std::string& teamName, const Roster& roster,
                                     const ContactLookup& contact, const PrintOptions& options);

} // namespace scorvane
