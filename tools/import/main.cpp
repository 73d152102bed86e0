// scorvane-import: a press-box XML game file taken over as a game of a team.
#include "../ProgramDirectory.h"
#include "exchange/ExchangeCommand.h"
#include "shell/Installation.h"

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string> args = scorvane::platform::commandLineArguments(argc, argv);
    scorvane::platform::useBinaryStandardOutput(); // our texts end their lines themselves
    // The configuration the program itself uses, found as scorvane-report finds it.
    const scorvane::ConfigLocation config = scorvane::locateConfiguration(
        scorvane::tools::programDirectory(argc > 0 ? argv[0] : nullptr),
        scorvane::systemEnvironment());
    return scorvane::runImportCommand(args, std::cout, std::cerr, config.directory);
}
