// scorvane-report: a statistics report or the team record from the command line, and the careers
// and record book over several seasons.
#include "reports/ReportCommand.h"
#include "seasons/SeasonsCommand.h"
#include "shell/Installation.h"
#include "storage/Platform.h"

#include <iostream>
#include <string>
#include <vector>

namespace {

namespace platform = scorvane::platform;

// The folder this program was started from: where the system says the running program is, else
// the folder of argv[0], or when it was found on the search path, the first folder of PATH that
// holds it.
std::string programDirectory(const char* argv0) {
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

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args = platform::commandLineArguments(argc, argv);
    // The configuration the program itself uses: BXFB.INI beside it (the build folder, a portable
    // copy), else, when it is installed, the user's own. The command never makes one.
    const scorvane::ConfigLocation config = scorvane::locateConfiguration(
        programDirectory(argc > 0 ? argv[0] : nullptr), scorvane::systemEnvironment());
    if (scorvane::isSeasonsCommand(args))
        return scorvane::runSeasonsCommand(args, std::cout, std::cerr, config.directory);
    return scorvane::runReportCommand(args, std::cout, std::cerr, config.directory);
}
