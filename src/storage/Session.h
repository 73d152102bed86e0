#pragma once

#include "ColumnTable.h"
#include "ConfigRecord.h"
#include "FileNames.h"

#include <array>
#include <string>

namespace scorvane {

// The start-up mark: whether start-up found a usable data directory. (The configuration calls the
// second state "E".)
enum class StartupMark { Ready, NoDataDirectory };

// The options the report screens work with, copied from the configuration at start-up.
struct RunningOptions {
    std::array<std::int16_t, 5> optionWords{};
    std::int16_t optionWord636 = 0;
    std::array<SortSetting, kCategoryCount> sort{};
};

// What start-up establishes and the whole program shares.
struct Session {
    std::string installDirectory; // the program's folder, ending in "/"
    std::string configPath;       // installDirectory + "BXFB.INI"
    ConfigRecord config;
    ColumnTable columns;
    DataPaths paths;
    RunningOptions options;
    bool configUpgraded = false;
    StartupMark startupMark = StartupMark::Ready;
};

} // namespace scorvane
