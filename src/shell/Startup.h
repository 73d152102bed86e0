#pragma once

#include "shell/Installation.h"
#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"
#include "storage/FileNames.h"
#include "storage/Prompter.h"
#include "storage/Session.h"

#include <array>
#include <string>

namespace scorvane {

enum class StartupOutcome {
    Ready,             // the data directory holds a team list
    NeedDataDirectory, // start-up mark "E": the user must choose a data directory first
    Ended,             // the configuration was unusable; the program ends
};

// The configuration start-up, run before any window is shown: read (and if need be upgrade) the
// configuration, build the column table, set the data and report directories and decide whether
// the data directory is usable. An unusable configuration shows "BXFB.INI File Corrupt or Not
// Found" and ends the program without writing anything.
//
// BXFB.INI is looked for where locateConfiguration says (the program's folder, or for an installed
// program the user's configuration folder, made from the installed default on the first start).
// A restore or a deletion of files that a crash interrupted is finished before anything else reads
// the data directory.
StartupOutcome runStartup(Prompter& prompter, const std::string& installDirectory,
                          Session& session);
StartupOutcome runStartup(Prompter& prompter, const std::string& installDirectory,
                          const Environment& env, Session& session);

// The run-time directories from the texts stored in the configuration. The stored texts are
// Windows-1252; the run-time paths are the system's own (UTF-8). An empty report directory
// falls back to the data directory.
DataPaths pathsFromConfig(const ConfigRecord& config, const std::string& configDirectory);
// How a run-time directory is kept in the configuration: `stored` receives its Windows-1252 text.
// A directory longer than the 145 characters the configuration holds, or with characters
// Windows-1252 lacks, would read back as another folder and cannot be kept.
enum class DirectoryFit { Fits, Empty, TooLong, Unrepresentable };
DirectoryFit directoryForConfig(const std::string& directory, std::string& stored);
// A data directory is usable when it exists and holds a team list.
bool isUsableDataDirectory(const std::string& dataDirectory);

// "Scorvane for Football v2.1 (Data Directory: <dir>)"
std::string mainCaption(const std::string& dataDirectory);

} // namespace scorvane
