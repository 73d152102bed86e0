#include "Installation.h"

#include "storage/ConfigFile.h"
#include "storage/ConfigRecord.h"
#include "storage/DiskError.h"
#include "storage/FileNames.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/Records.h"

namespace scorvane {

namespace {

// The folders joined, normalised, ending in "/".
std::string folder(std::initializer_list<std::string> parts) {
    std::string joined;
    for (const std::string& part : parts) {
        if (!joined.empty() && !platform::isSeparator(joined.back()))
            joined += '/';
        joined += part;
    }
    std::string text = platform::normalPath(joined);
    if (text.empty())
        return text;
    if (text.back() != '/')
        text += '/';
    return text;
}

std::string variable(const Environment& env, const char* name) {
    const std::optional<std::string> value = env(name);
    return value ? *value : std::string();
}

// A folder of the user's named by a variable (used when absolute, as the XDG rules say), else
// the home folder's fallback.
std::string userFolder(const Environment& env, const char* variableName, const char* homeFallback) {
    const std::string named = variable(env, variableName);
    if (!named.empty() && platform::isAbsolute(named))
        return folder({named, "scorvane"});
    const std::string home = variable(env, "HOME");
    if (home.empty())
        return {};
    return folder({home, homeFallback, "scorvane"});
}

} // namespace

Environment systemEnvironment() {
    return [](const std::string& name) { return platform::environmentVariable(name); };
}

std::string userConfigDirectory(const Environment& env) {
    if (platform::isWindows()) {
        const std::string appData = variable(env, "APPDATA");
        return appData.empty() ? std::string() : folder({appData, "Scorvane"});
    }
    return userFolder(env, "XDG_CONFIG_HOME", ".config");
}

std::string userDataDirectory(const Environment& env) {
    if (platform::isWindows()) {
        std::string base = variable(env, "LOCALAPPDATA");
        if (base.empty())
            base = variable(env, "APPDATA");
        return base.empty() ? std::string() : folder({base, "Scorvane"});
    }
    return userFolder(env, "XDG_DATA_HOME", ".local/share");
}

std::string sharedDirectory(const std::string& installDirectory) {
    return folder({installDirectory, "..", "share", "scorvane"});
}

ConfigLocation locateConfiguration(const std::string& installDirectory, const Environment& env) {
    const std::string program = normalizeDirectory(installDirectory);
    if (fileExists(program + kConfigFileName))
        return {program, {}};
    const std::string installedDefault = sharedDirectory(program) + kConfigFileName;
    const std::string user = userConfigDirectory(env);
    if (!fileExists(installedDefault) || user.empty())
        return {program, {}}; // no installation: a missing file is reported as ever
    if (fileExists(user + kConfigFileName))
        return {user, {}};
    return {user, installedDefault};
}

Status seedConfiguration(Prompter& prompter, const ConfigLocation& location) {
    if (location.seedFrom.empty())
        return Status::ok();
    Bytes bytes;
    bool exists = false;
    if (Status s = withDiskErrors(prompter,
                                  [&] { return readWholeFile(location.seedFrom, bytes, exists); });
        !s)
        return s;
    ConfigRecord config;
    if (exists && bytes.size() == ConfigRecord::Length)
        config = ConfigRecord::decode(bytes);
    else if (exists && bytes.size() == ConfigRecord::LegacyLength)
        config = ConfigRecord::upgradeLegacy(bytes);
    else
        return Status::error(ErrorKind::BadLength,
                             platform::shownPath(location.seedFrom) + " is no configuration.");
    // The default's folders are those of the machine it was made on; the user chooses anew.
    config.dataDirectory = std::string(ConfigRecord::DirectoryWidth, ' ');
    config.reportDirectory = std::string(ConfigRecord::DirectoryWidth, ' ');
    if (Status s = withDiskErrors(prompter, [&] { return createDirectories(location.directory); });
        !s)
        return s;
    return saveConfiguration(prompter, location.directory + kConfigFileName, config);
}

std::string findHelpDirectory(const std::string& installDirectory) {
    const std::string program = normalizeDirectory(installDirectory);
    const std::string beside = program + "help/";
    if (directoryExists(beside))
        return beside;
    const std::string shared = sharedDirectory(program) + "help/";
    return directoryExists(shared) ? shared : beside;
}

std::string sampleSeasonDirectory(const std::string& installDirectory) {
    const std::string program = normalizeDirectory(installDirectory);
    for (const std::string& candidate :
         {sharedDirectory(program) + "sample-season/", program + "sample-season/"})
        if (fileExists(fileName(FileKind::TeamList, DataPaths{"", candidate, ""}, 0)))
            return candidate;
    return {};
}

std::string sampleCopyDirectory(const Environment& env) {
    const std::string base = userDataDirectory(env);
    return base.empty() ? base : base + "Sample Season/";
}

std::string newDataDirectory(const Environment& env) {
    const std::string base = userDataDirectory(env);
    return base.empty() ? base : base + "My Teams/";
}

Status copySampleSeason(Prompter& prompter, const std::string& from, const std::string& to) {
    const DataPaths source{"", normalizeDirectory(from), normalizeDirectory(from)};
    const DataPaths target{"", normalizeDirectory(to), normalizeDirectory(to)};
    return withDiskErrors(prompter, [&]() -> Status {
        if (Status s = createDirectories(target.dataDirectory); !s)
            return s;
        if (fileExists(fileName(FileKind::TeamList, target, 0)))
            return Status::ok();
        std::vector<FileKind> kinds = {FileKind::Roster, FileKind::PlayerInfo, FileKind::Games,
                                       FileKind::Stats};
        // The team list last: a folder with a team list is a finished copy.
        std::vector<std::pair<std::string, std::string>> copies;
        for (int team = 1; team <= kMaxTeams; ++team)
            for (FileKind kind : kinds)
                copies.emplace_back(fileName(kind, source, team), fileName(kind, target, team));
        copies.emplace_back(fileName(FileKind::ReportFormats, source, 0),
                            fileName(FileKind::ReportFormats, target, 0));
        copies.emplace_back(fileName(FileKind::TeamList, source, 0),
                            fileName(FileKind::TeamList, target, 0));
        for (const auto& [src, dst] : copies) {
            Bytes contents;
            bool exists = false;
            if (Status s = readWholeFile(src, contents, exists); !s)
                return s;
            if (!exists)
                continue;
            if (Status s = writeFileAtomically(dst, contents); !s)
                return s;
        }
        return Status::ok();
    });
}

} // namespace scorvane
