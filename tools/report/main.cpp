// scorvane-report: a statistics report or the team record from the command line, the careers
// and record book over several seasons, and one game exported for another program or site.
#include "../ProgramDirectory.h"
#include "exchange/ExchangeCommand.h"
#include "reports/ReportCommand.h"
#include "seasons/SeasonsCommand.h"
#include "shell/Installation.h"

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string> args = scorvane::platform::commandLineArguments(argc, argv);
    scorvane::platform::useBinaryStandardOutput(); // our texts end their lines themselves
    // The configuration the program itself uses: BXFB.INI beside it (the build folder, a portable
    // copy), else, when it is installed, the user's own. The command never makes one.
    const scorvane::ConfigLocation config = scorvane::locateConfiguration(
        scorvane::tools::programDirectory(argc > 0 ? argv[0] : nullptr),
        scorvane::systemEnvironment());
    if (scorvane::isSeasonsCommand(args))
        return scorvane::runSeasonsCommand(args, std::cout, std::cerr, config.directory);
    if (scorvane::isExportCommand(args))
        return scorvane::runExportCommand(args, std::cout, std::cerr, config.directory);
    return scorvane::runReportCommand(args, std::cout, std::cerr, config.directory);
}
