// Coverage-guided fuzzing of the record decoders and of the configuration file check.
// Every input is decoded as each record type; the result must write back to exactly the record
// length and read back to the same bytes. The input is also written as BXFB.INI: only the two
// known lengths may be accepted, and a refused file must stay byte for byte as it was.

#include "storage/ConfigFile.h"
#include "storage/RecordFile.h"
#include "storage/Records.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace scorvane;

namespace {

struct SilentPrompter : Prompter {
    Answer ask(const Message& message) override { return message.defaultAnswer; }
    void endProgram(int) override {}
};

// One scratch folder per run, in memory where the system offers it, removed when the run ends.
struct ScratchFolder {
    std::string path;
    ScratchFolder() {
        const std::filesystem::path base = std::filesystem::is_directory("/dev/shm")
                                               ? std::filesystem::path("/dev/shm")
                                               : std::filesystem::temp_directory_path();
        std::string pattern = (base / "scorvane-fuzz-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            std::abort();
        path = pattern;
    }
    ~ScratchFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path, ec);
    }
};

void require(bool condition) {
    if (!condition)
        __builtin_trap();
}

template <class R> void roundTrip(const Bytes& input) {
    const Bytes once = R::decode(input).encode();
    require(once.size() == R::Length);
    require(R::decode(once).encode() == once);
}

void checkConfigurationFile(const Bytes& input) {
    static ScratchFolder folder;
    const std::string path = folder.path + "/BXFB.INI";
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(input.data()),
                  static_cast<std::streamsize>(input.size()));
    }
    SilentPrompter prompter;
    ConfigRecord config;
    bool upgraded = false;
    const Status s = loadConfiguration(prompter, path, config, upgraded);
    Bytes after;
    bool exists = false;
    require(readWholeFile(path, after, exists).isOk() && exists);
    if (input.size() == ConfigRecord::Length || input.size() == ConfigRecord::LegacyLength) {
        require(s.isOk());
        require(upgraded == (input.size() == ConfigRecord::LegacyLength));
        require(after.size() == ConfigRecord::Length);
        require(ConfigRecord::decode(after).encode() == after);
    } else {
        require(s.kind() == ErrorKind::BadLength);
        require(after == input);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes input(data, data + size);
    roundTrip<TeamRecord>(input);
    roundTrip<RosterRecord>(input);
    roundTrip<PlayerInfoRecord>(input);
    roundTrip<GameRecord>(input);
    roundTrip<StatRecord>(input);
    roundTrip<StatListRecord>(input);
    roundTrip<ReportFormatRecord>(input);
    roundTrip<ConfigRecord>(input);

    require(ConfigRecord::upgradeLegacy(input).encode().size() == ConfigRecord::Length);
    Bytes header(8, ' ');
    StatHeader::decode(input).encodeInto(header);
    (void)GameRecord::decode(input).pointSums();

    if (size <= 4096)
        checkConfigurationFile(input);
    return 0;
}
