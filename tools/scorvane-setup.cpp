// scorvane-setup <programFolder> [<sampleFolder>]
//
// Prepares a program folder the way a fresh installation looks: a BXFB.INI with every default
// setting pointing at the sample folder, and the sample season in that folder. Files already
// there are left alone, so the build can run this every time.

#include "sample/SampleSeason.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace scorvane;

// Messages go to the console and are answered with their default answer. A disk that stays not
// ready is retried a few times, then given up.
class ConsolePrompter : public Prompter {
public:
    Answer ask(const Message& message) override {
        std::cerr << message.title << ": " << message.text << '\n';
        if (message.defaultAnswer == Answer::Retry && ++retries_ > 3)
            return Answer::Cancel;
        return message.defaultAnswer;
    }
    [[noreturn]] void endProgram(int exitCode) override { std::exit(exitCode); }

private:
    int retries_ = 0;
};

// An absolute folder ending in "/": the folder is written into BXFB.INI and must not depend on
// where the program is started from.
std::string absoluteFolder(const std::string& text) {
    std::string folder = platform::absolutePath(text);
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    return folder;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args = platform::commandLineArguments(argc, argv);
    if (args.empty() || args.size() > 2) {
        std::cerr << "usage: scorvane-setup <programFolder> [<sampleFolder>]\n";
        return 2;
    }
    const std::string programFolder = absoluteFolder(args[0]);
    const std::string sampleFolder =
        args.size() == 2 ? absoluteFolder(args[1]) : programFolder + "sample-season/";
    const std::string shownConfig = platform::shownPath(programFolder + "BXFB.INI");
    const std::string shownSample = platform::shownPath(sampleFolder);

    if (const Status s = createDirectories(programFolder); !s) {
        std::cerr << "scorvane-setup: cannot create " << platform::shownPath(programFolder) << ": "
                  << s.message() << '\n';
        return 1;
    }

    ConsolePrompter prompter;
    InstallResult result;
    const Status s = installDefaults(prompter, programFolder, sampleFolder, result);
    if (!s) {
        std::cerr << "scorvane-setup: " << s.message() << '\n';
        return 1;
    }
    if (result.wroteConfig && result.wroteSample)
        std::cout << "Wrote " << shownConfig << " and the sample season in " << shownSample << '\n';
    else if (result.wroteConfig)
        std::cout << "Wrote " << shownConfig << " (the sample season in " << shownSample
                  << " was already there)\n";
    else if (result.wroteSample)
        std::cout << "Wrote the sample season in " << shownSample
                  << " (BXFB.INI was already there)\n";
    else
        std::cout << "Nothing to write: " << shownConfig << " and "
                  << platform::shownPath(sampleFolder + "FBTEAMS.DAT") << " are already there\n";
    return 0;
}
