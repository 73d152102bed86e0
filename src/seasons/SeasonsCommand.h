#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace scorvane {

// The report command over several seasons: the career report, one player's career and the record
// book, chosen by --career or --record-book over the seasons of --season DIR[:TEAM] (repeatable)
// or --seasons FILE. Exit codes and messages are the report command's (ReportCommand.h): 0 done,
// 1 when a season was left out or a file could not be read (the report of the others is still
// written, the seasons left out named on `err`), 2 for bad arguments. Nothing is ever written to
// any season's data directory.
int runSeasonsCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                      const std::string& programDirectory);

// Whether the arguments ask for a report over seasons: any of --season, --seasons, --career,
// --record-book.
bool isSeasonsCommand(const std::vector<std::string>& args);

} // namespace scorvane
