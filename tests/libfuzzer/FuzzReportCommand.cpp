// The report command's whole run for any arguments, over the sample season: arguments are the
// input split at zero bytes. Output files go to a scratch folder and the folders named by
// --config and --data are the sample's, an empty one or a missing one, so that a run never
// reads or writes anything else. The data directory must come out unchanged.

#include "FuzzInput.h"
#include "reports/ReportCommand.h"
#include "sample/SampleSeason.h"
#include "support/FakePrompter.h"

#include <map>
#include <sstream>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

struct Program {
    TempDir dir;
    std::string program = dir.dir() + "program/";
    std::string season = dir.dir() + "season/";
    std::string empty = dir.dir() + "empty/";
    std::map<std::string, Bytes> before;

    Program() {
        std::filesystem::create_directories(program);
        std::filesystem::create_directories(empty);
        std::filesystem::create_directories(dir.path() / "out");
        FakePrompter prompter;
        InstallResult installed;
        FUZZ_CHECK(installDefaults(prompter, program, season, installed).isOk());
        before = files();
    }
    std::map<std::string, Bytes> files() const {
        std::map<std::string, Bytes> out;
        for (const auto& e : std::filesystem::directory_iterator(season))
            out[e.path().filename().string()] = dir.read("season/" + e.path().filename().string());
        return out;
    }
    std::string folder(const std::string& value) const {
        const std::string choices[] = {program, season, empty, dir.dir() + "missing/", ""};
        return choices[(value.empty() ? 0 : static_cast<unsigned char>(value[0])) % 5];
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Program p;
    if (size > 2048)
        return 0;
    std::vector<std::string> args(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0)
            args.emplace_back();
        else
            args.back() += static_cast<char>(data[i]);
    }
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string& a = args[i];
        for (const std::string option : {"--config", "--data", "--output"}) {
            const bool joined = a.rfind(option + "=", 0) == 0;
            if (!joined && (a != option || i + 1 >= args.size()))
                continue;
            std::string& value = joined ? a : args[i + 1];
            const std::string given = joined ? a.substr(option.size() + 1) : value;
            const std::string safe =
                option == "--output" ? p.dir.dir() + "out/report.txt" : p.folder(given);
            value = joined ? option + "=" + safe : safe;
        }
    }
    std::ostringstream out, err;
    const int code = runReportCommand(args, out, err, p.program);
    FUZZ_CHECK(code == kCommandOk || code == kCommandFailed || code == kCommandBadUsage);
    FUZZ_CHECK(code == kCommandOk || !err.str().empty());
    FUZZ_CHECK(p.files() == p.before);
    return 0;
}
