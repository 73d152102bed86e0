#pragma once

#include "storage/Prompter.h"

#include <string>

namespace scorvane {

// Help is a set of HTML pages, one per topic number: help/topic10.html, help/topic240.html and so
// on, in the "help" folder beside the program or, for an installed program, in
// <prefix>/share/scorvane/help.
std::string helpDirectory(const std::string& installDirectory);
std::string helpPagePath(const std::string& installDirectory, int topic);
// The page of a topic when it can be shown, or empty text after showing the "Help Error" box.
std::string findHelpPage(Prompter& prompter, const std::string& installDirectory, int topic);
Message helpErrorMessage();

} // namespace scorvane
