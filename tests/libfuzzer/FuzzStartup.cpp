// The configuration as start-up takes it: the length check and the upgrade of the older layout,
// the column table built from it, and the data and report directories it names.

#include "FuzzInput.h"
#include "shell/Startup.h"
#include "storage/ConfigFile.h"
#include "support/FakePrompter.h"

using namespace scorvane;
using namespace scorvane::testing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TempDir folder; // one per run, removed when the run ends
    if (size > 4096)
        return 0; // two lengths are known; longer files say nothing new
    const Bytes input(data, data + size);
    const std::string path = folder.file("BXFB.INI");
    folder.write("BXFB.INI", input);
    FakePrompter prompter;
    ConfigRecord config;
    bool upgraded = false;
    const Status loaded = loadConfiguration(prompter, path, config, upgraded);
    FUZZ_CHECK(prompter.shown.empty());
    if (size != ConfigRecord::Length && size != ConfigRecord::LegacyLength) {
        FUZZ_CHECK(loaded.kind() == ErrorKind::BadLength);
        FUZZ_CHECK(folder.read("BXFB.INI") == input); // a refused file is never written
        return 0;
    }
    FUZZ_CHECK(loaded.isOk());
    FUZZ_CHECK(upgraded == (size == ConfigRecord::LegacyLength));
    FUZZ_CHECK(config.encode() == folder.read("BXFB.INI"));

    // Every column of every category has a three-character name.
    const ColumnTable columns(config);
    for (char category : kCategoryLetters)
        for (int i = 0; i <= ColumnTable::Slots + 1; ++i)
            FUZZ_CHECK(columns.columnName(category, i).size() == 3);

    // The directories: a directory the configuration can keep reads back as itself.
    const DataPaths paths = pathsFromConfig(config, folder.dir());
    FUZZ_CHECK(!paths.reportDirectory.empty() || paths.dataDirectory.empty());
    for (const std::string& directory : {paths.dataDirectory, paths.reportDirectory}) {
        std::string stored;
        if (directoryForConfig(directory, stored) != DirectoryFit::Fits)
            continue;
        ConfigRecord again = config;
        again.dataDirectory = stored;
        FUZZ_CHECK(pathsFromConfig(again, folder.dir()).dataDirectory == directory);
    }
    (void)isUsableDataDirectory(paths.dataDirectory);
    (void)mainCaption(paths.dataDirectory);

    // Saved and read again, the configuration is the same.
    FUZZ_CHECK(saveConfiguration(prompter, path, config).isOk());
    ConfigRecord reread;
    FUZZ_CHECK(loadConfiguration(prompter, path, reread, upgraded).isOk() && !upgraded);
    FUZZ_CHECK(reread.encode() == config.encode());
    return 0;
}
