#pragma once

#include "shell/Startup.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <string>

namespace scorvane {

// Making a folder the data directory.
//
// The folder is created when it does not exist. A folder without a team list becomes a new, empty
// data directory: a team list of 100 unnamed slots is written into it. The directory is then
// stored in the configuration (the report directory moves along when it was the data directory
// too), the configuration is saved, and the session and the data files switch to it.
//
// A folder name the configuration cannot keep (empty, too long, or with characters Windows-1252
// lacks) is refused with a message and nothing changes. Disk errors go to the disk error handler.
Status useDataDirectory(Session& session, DataFiles& files, Prompter& prompter,
                        const std::string& directory);

// The message for a folder name the configuration cannot keep.
Message unusableDirectoryMessage(DirectoryFit fit);

} // namespace scorvane
