#include "Startup.h"

#include "shell/Backup.h"
#include "storage/ConfigFile.h"
#include "storage/Cp1252.h"
#include "storage/DiskError.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"

namespace scorvane {

DataPaths pathsFromConfig(const ConfigRecord& config, const std::string& configDirectory) {
    DataPaths paths;
    paths.configDirectory = configDirectory;
    paths.dataDirectory = cp1252ToUtf8(normalizeDirectory(config.dataDirectory));
    paths.reportDirectory = cp1252ToUtf8(normalizeDirectory(config.reportDirectory));
    if (paths.reportDirectory.empty())
        paths.reportDirectory = paths.dataDirectory;
    return paths;
}

DirectoryFit directoryForConfig(const std::string& directory, std::string& stored) {
    stored = utf8ToCp1252(directory);
    if (directory.empty())
        return DirectoryFit::Empty;
    if (stored.size() > ConfigRecord::DirectoryWidth)
        return DirectoryFit::TooLong;
    if (cp1252ToUtf8(stored) != directory)
        return DirectoryFit::Unrepresentable;
    return DirectoryFit::Fits;
}

bool isUsableDataDirectory(const std::string& dataDirectory) {
    return !dataDirectory.empty() && directoryExists(dataDirectory) &&
           fileExists(fileName(FileKind::TeamList, DataPaths{"", dataDirectory, ""}, 0));
}

std::string mainCaption(const std::string& dataDirectory) {
    return "Scorvane for Football v2.1 (Data Directory: " + platform::shownPath(dataDirectory) +
           ")";
}

StartupOutcome runStartup(Prompter& prompter, const std::string& installDirectory,
                          Session& session) {
    return runStartup(prompter, installDirectory, systemEnvironment(), session);
}

StartupOutcome runStartup(Prompter& prompter, const std::string& installDirectory,
                          const Environment& env, Session& session) {
    session.installDirectory = normalizeDirectory(installDirectory);
    const ConfigLocation location = locateConfiguration(session.installDirectory, env);
    session.configPath = fileName(FileKind::Config, DataPaths{location.directory, "", ""}, 0);
    Status s = seedConfiguration(prompter, location);
    if (s)
        s = loadConfiguration(prompter, session.configPath, session.config, session.configUpgraded);
    if (s.kind() == ErrorKind::ProgramEnded)
        return StartupOutcome::Ended;
    if (!s) {
        prompter.ask(corruptConfigurationMessage());
        prompter.endProgram(1);
        return StartupOutcome::Ended;
    }
    session.columns.build(session.config);
    session.paths = pathsFromConfig(session.config, location.directory);
    session.options.optionWords = session.config.optionWords;
    session.options.optionWord636 = session.config.optionWord636;
    session.options.sort = session.config.sort;
    // What a crash interrupted is finished before any file of the directory is read. A journal that
    // cannot be read is reported and left for the user to look at.
    const Status settled =
        withDiskErrors(prompter, [&] { return finishInterruptedChanges(session.paths); });
    if (settled.kind() == ErrorKind::ProgramEnded)
        return StartupOutcome::Ended;
    if (!settled)
        prompter.ask({settled.message(), "Data Directory", Buttons::Ok, Icon::Warning, Answer::Ok});
    session.startupMark = isUsableDataDirectory(session.paths.dataDirectory)
                              ? StartupMark::Ready
                              : StartupMark::NoDataDirectory;
    return session.startupMark == StartupMark::NoDataDirectory ? StartupOutcome::NeedDataDirectory
                                                               : StartupOutcome::Ready;
}

} // namespace scorvane
