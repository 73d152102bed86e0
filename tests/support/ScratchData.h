#pragma once

#include "storage/DataFiles.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

namespace scorvane::testing {

// A fresh data directory (also the report directory) with the program's files over it; their
// messages go to a scripted prompter.
struct ScratchData {
    TempDir dir;
    FakePrompter prompter;
    DataFiles files{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
};

} // namespace scorvane::testing
