#pragma once

// The folder a command line tool was started from, where it looks for BXFB.INI.
#include "storage/Platform.h"

#include <optional>
#include <string>

namespace scorvane::tools {

// Where the system says the running program is, else the folder of argv[0], or when it was found
// on the search path, the first folder of PATH that holds it.
inline std::string programDirectory(const char* argv0) {
    if (const std::string self = platform::programFile(); !self.empty())
        return platform::folderOf(self);
    const std::string name = argv0 ? argv0 : "";
    if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos)
        return platform::folderOf(platform::absolutePath(name));
    if (const std::optional<std::string> path = platform::environmentVariable("PATH")) {
        const std::string& folders = *path;
        const char separator = platform::isWindows() ? ';' : ':';
        std::size_t start = 0;
        for (;;) {
            const std::size_t end = folders.find(separator, start);
            const std::string folder = folders.substr(start, end - start);
            if (!folder.empty() && platform::isFile(folder + "/" + name))
                return platform::absolutePath(folder);
            if (end == std::string::npos)
                break;
            start = end + 1;
        }
    }
    return platform::absolutePath(".");
}

} // namespace scorvane::tools
