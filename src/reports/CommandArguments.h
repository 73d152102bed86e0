#pragma once

#include "ReportCommand.h"
#include "Selection.h"

#include "storage/ConfigRecord.h"

#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace scorvane {

// Why a report command stops: the one line it writes and its exit status.
struct CommandFailure {
    std::string message;
    int code = kCommandFailed;
};

inline CommandFailure usageError(std::string message) {
    return CommandFailure{std::move(message), kCommandBadUsage};
}

// A whole number and nothing else (at most 9 digits); nothing when the text is anything but digits.
std::optional<long long> wholeNumber(const std::string& text);

// An option's number within low..high ("--from: "x" is not a game number from 1 to 999").
std::optional<CommandFailure> numberIn(const std::string& option, const std::string& text,
                                       long long low, long long high, int& out,
                                       const std::string& range);

// A comma-separated list of such numbers, none twice.
std::optional<CommandFailure> numberList(const std::string& option, const std::string& text,
                                         long long low, long long high, std::vector<int>& out,
                                         const std::string& range);

// The arguments taken apart: "--name value" and "--name=value" alike; an option with a value given
// once, a repeatable one any number of times, flags without a value.
struct CommandArguments {
    bool help = false;                                        // --help or -h
    std::vector<std::string> flags;                           // in the order given
    std::map<std::string, std::string> values;                // options given once
    std::map<std::string, std::vector<std::string>> repeated; // in the order given

    bool has(const std::string& flag) const;
    const std::string* value(const std::string& option) const;
};

std::optional<CommandFailure> splitArguments(const std::vector<std::string>& args,
                                             const std::set<std::string>& flags,
                                             const std::set<std::string>& valueOptions,
                                             const std::set<std::string>& repeatable,
                                             CommandArguments& out);

// "--asc" or "--desc" among the flags: 'A' or 'D'; both: a usage error.
std::optional<CommandFailure> sortDirection(const CommandArguments& args,
                                            std::optional<char>& direction);

// --from, --to and --types: the games a report counts.
std::optional<CommandFailure> gameOptions(const CommandArguments& args, int& fromGame, int& toGame,
                                          std::optional<std::vector<int>>& types);

// The selection those options make (the range in either order), with Special Select or not.
Selection commandSelection(int fromGame, int toGame, const std::optional<std::vector<int>>& types,
                           bool special);

// --lines, --format (text, csv, html), --output and the "--append" flag (text to a file only).
std::optional<CommandFailure> outputOptions(const CommandArguments& args, int& linesPerPage,
                                            std::string& format, std::optional<std::string>& output,
                                            bool& append);

// BXFB.INI in the folder --config names, else in the program's folder; a file of the old length
// is upgraded in memory only. A missing one gives the defaults when `missingGivesDefaults`.
std::optional<CommandFailure>
readCommandConfiguration(const std::optional<std::string>& configDirectory,
                         const std::string& programDirectory, bool missingGivesDefaults,
                         ConfigRecord& config);

// Whether a file would land in the folder.
bool insideFolder(const std::string& file, const std::string& folder);

// A whole report (CSV, HTML) to `out`, or saved whole as the file `output`.
std::optional<CommandFailure> writeReportText(const std::optional<std::string>& output,
                                              const std::string& text, std::ostream& out);
// Printed lines to `out`, or to the text file `output` (added to its end with `append`).
std::optional<CommandFailure> writeReportLines(const std::optional<std::string>& output,
                                               bool append, const std::vector<std::string>& lines,
                                               std::ostream& out);

} // namespace scorvane
