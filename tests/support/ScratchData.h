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
    DataFiles data{DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter};
    TeamFiles files = data.team(1); // the team most tests work on
};

} // namespace scorvane::testing
