#pragma once

#include "ConfigRecord.h"
#include "Prompter.h"
#include "Status.h"

#include <string>

namespace scorvane {

// The configuration file "BXFB.INI": read whole and written whole.
//
// loadConfiguration reads the file. A file of the older 669-byte layout is upgraded and written
// back in the current layout before it is used (`upgraded` tells). Any length other than 669 or
// 1018, a missing file included, gives a BadLength status and leaves the disk as it was.
Status loadConfiguration(Prompter& prompter, const std::string& path, ConfigRecord& config,
                         bool& upgraded);
Status saveConfiguration(Prompter& prompter, const std::string& path, const ConfigRecord& config);

// The message for a configuration file that cannot be used; the program ends after it.
Message corruptConfigurationMessage();

} // namespace scorvane
