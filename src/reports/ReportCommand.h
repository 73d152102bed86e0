#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace scorvane {

// Exit codes of the report command.
inline constexpr int kCommandOk = 0;
inline constexpr int kCommandFailed = 1;   // unreadable or damaged files, overflow, output error
inline constexpr int kCommandBadUsage = 2; // bad arguments, unknown team, category or report

// The report command line tool: computes one report of one or more teams and writes it as text
// (the lines a report printed to a text file has), CSV or HTML, to `out` or to a file.
//
// `args` are the arguments after the program's name. `programDirectory` is where BXFB.INI is
// looked for unless --config names another folder (the tool hands in the folder the program's
// own configuration is in). Problems go to `err`, one line each. Nothing
// is ever written into the data or report directory: every file there is read without being
// created or changed.
int runReportCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                     const std::string& programDirectory);

// The usage text printed by --help.
std::string reportCommandUsage();

} // namespace scorvane
