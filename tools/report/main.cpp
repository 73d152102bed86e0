// scorvane-report: a statistics report or the team record from the command line.
#include "reports/ReportCommand.h"
#include "shell/Installation.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

// The folder this program was started from: the folder of argv[0], or when it was found on the
// search path, the first folder of PATH that holds it.
std::string programDirectory(const char* argv0) {
    namespace fs = std::filesystem;
    const std::string name = argv0 ? argv0 : "";
    std::error_code ec;
    if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos)
        return fs::absolute(fs::path(name), ec).parent_path().string();
    if (const char* path = std::getenv("PATH")) {
        const std::string folders = path;
        const char separator = fs::path::preferred_separator == '\\' ? ';' : ':';
        std::size_t start = 0;
        for (;;) {
            const std::size_t end = folders.find(separator, start);
            const fs::path folder = folders.substr(start, end - start);
            if (!folder.empty() && fs::is_regular_file(folder / name, ec))
                return fs::absolute(folder, ec).string();
            if (end == std::string::npos)
                break;
            start = end + 1;
        }
    }
    return fs::current_path(ec).string();
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    // The configuration the program itself uses: BXFB.INI beside it (the build folder, a portable
    // copy), else, when it is installed, the user's own. The command never makes one.
    const scorvane::ConfigLocation config = scorvane::locateConfiguration(
        programDirectory(argc > 0 ? argv[0] : nullptr), scorvane::systemEnvironment());
    return scorvane::runReportCommand(args, std::cout, std::cerr, config.directory);
}
