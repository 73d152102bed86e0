#include "DataDirectory.h"

#include "shell/Backup.h"
#include "shell/TeamSelection.h"
#include "storage/ConfigFile.h"
#include "storage/DiskError.h"
#include "storage/RecordFile.h"

namespace scorvane {

Message unusableDirectoryMessage(DirectoryFit fit) {
    std::string text;
    switch (fit) {
    case DirectoryFit::Empty:
        text = "Choose a folder first.";
        break;
    case DirectoryFit::Unrepresentable:
        text = "The folder name has characters that cannot be kept.  Choose another folder.";
        break;
    default:
        text = "The folder name is too long.  Choose a folder whose full name has at most 145 "
               "characters.";
        break;
    }
    return {text, "Data Directory", Buttons::Ok, Icon::Warning, Answer::Ok};
}

Status useDataDirectory(Session& session, DataFiles& files, Prompter& prompter,
                        const std::string& directory) {
    const std::string dir = normalizeDirectory(directory);
    std::string stored;
    if (const DirectoryFit fit = directoryForConfig(dir, stored); fit != DirectoryFit::Fits) {
        const Message refusal = unusableDirectoryMessage(fit);
        prompter.ask(refusal);
        return Status::error(ErrorKind::BadLength, refusal.text);
    }
    if (Status s = withDiskErrors(prompter, [&] { return createDirectories(dir); }); !s)
        return s;
    // A restore or deletion a crash interrupted there is finished before the folder is read.
    if (Status s = withDiskErrors(prompter,
                                  [&] {
                                      return finishInterruptedChanges(DataPaths{"", dir, dir});
                                  });
        !s)
        return s;

    DataPaths paths = session.paths;
    const bool reportFollows =
        paths.reportDirectory.empty() || paths.reportDirectory == paths.dataDirectory;
    paths.dataDirectory = dir;
    if (reportFollows)
        paths.reportDirectory = dir;
    files.setPaths(paths);
    // Until the configuration is saved the program keeps working in the old directory.
    if (Status s = TeamSelection::createTeamList(files); !s) {
        files.setPaths(session.paths);
        return s;
    }

    ConfigRecord config = session.config;
    config.dataDirectory = fit(stored, ConfigRecord::DirectoryWidth);
    if (reportFollows)
        config.reportDirectory = config.dataDirectory;
    if (Status s = saveConfiguration(prompter, session.configPath, config); !s) {
        files.setPaths(session.paths);
        return s;
    }
    session.config = config;
    session.paths = paths;
    session.startupMark = StartupMark::Ready;
    return Status::ok();
}

} // namespace scorvane
