#include "Backup.h"

#include "storage/DiskError.h"
#include "storage/FolderCopy.h"
#include "storage/Platform.h"
#include "storage/RecordFile.h"
#include "storage/SiteId.h"

#include <algorithm>
#include <cctype>
#include <ctime>

namespace scorvane {

namespace {

constexpr const char* kBackUpTitle = "Back Up Files";
constexpr const char* kRestoreTitle = "Restore Files";

Message notice(const std::string& text, const char* title, Icon icon = Icon::Warning) {
    return {text, title, Buttons::Ok, icon, Answer::Ok};
}

// The file name part of a path.
std::string baseName(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Every data file a directory can hold, in the order a backup keeps them.
std::vector<std::pair<Folder, std::string>> candidateFiles(const DataPaths& paths) {
    std::vector<std::pair<Folder, std::string>> out;
    out.emplace_back(Folder::Data, fileName(FileKind::TeamList, paths, 0));
    for (int team = 1; team <= kMaxTeams; ++team) {
        for (FileKind kind :
             {FileKind::Roster, FileKind::PlayerInfo, FileKind::Games, FileKind::Stats})
            out.emplace_back(Folder::Data, fileName(kind, paths, team));
        out.emplace_back(Folder::Data, siteIdFileName(paths, team));
    }
    out.emplace_back(Folder::Report, fileName(FileKind::ReportFormats, paths, 0));
    return out;
}

// Finishes whatever a crash interrupted: the journal of the data files' own replacements and that
// of a restore or deletion.
bool settle(DataFiles& files, Prompter& prompter, const char* title) {
    if (!files.finishInterruptedReplacement())
        return false;
    const Status s =
        withDiskErrors(prompter, [&] { return finishInterruptedChanges(files.paths()); });
    if (!s && s.kind() != ErrorKind::ProgramEnded)
        prompter.ask(notice(s.message(), title));
    return s.isOk();
}

} // namespace

std::string timestampNow() {
    const std::tm local = platform::localTime(std::time(nullptr));
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

std::string defaultBackupName(const std::string& madeOn, const std::string& teamName) {
    const std::string date = madeOn.substr(0, 10);
    const std::string name = suggestedFileName({teamName, "Backup"}, date, kBackupExtension);
    // No name, or none a file name can hold: the program's.
    if (name == suggestedFileName({"Backup"}, date, kBackupExtension))
        return suggestedFileName({"Scorvane", "Backup"}, date, kBackupExtension);
    return name;
}

std::string newestBackup(const std::string& folder) {
    std::vector<platform::FolderEntry> entries;
    if (folder.empty() || !platform::listFolder(folder, entries))
        return {};
    const std::string extension = kBackupExtension;
    const platform::FolderEntry* newest = nullptr;
    for (const platform::FolderEntry& e : entries) {
        // "season.SFB" too: Windows keeps the case a name was typed in.
        const auto sameLetter = [](char x, char y) {
            return std::tolower(static_cast<unsigned char>(x)) ==
                   std::tolower(static_cast<unsigned char>(y));
        };
        if (e.isFolder || e.name.size() <= extension.size() ||
            !std::equal(extension.begin(), extension.end(),
                        e.name.end() - static_cast<std::ptrdiff_t>(extension.size()), sameLetter))
            continue;
        if (newest == nullptr || e.modified > newest->modified ||
            (e.modified == newest->modified && e.name > newest->name))
            newest = &e;
    }
    if (newest == nullptr)
        return {};
    return (platform::isSeparator(folder.back()) ? folder : folder + "/") + newest->name;
}

std::string undoBackupName(const std::string& madeOn) {
    std::string moment = madeOn;
    for (char& c : moment)
        if (c == ':')
            c = '.'; // a colon is no character of a file name everywhere
    return "Before restore " + moment + kBackupExtension;
}

std::string changeJournalPath(const DataPaths& paths) {
    return paths.dataDirectory + kChangeJournalFileName;
}

Status finishInterruptedChanges(const DataPaths& paths) {
    if (paths.dataDirectory.empty())
        return Status::ok();
    if (Status s = completePendingChanges(changeJournalPath(paths)); !s)
        return s;
    if (Status s = discardUnfinishedChanges(paths.dataDirectory); !s)
        return s;
    // The temporary file of a "Before restore" backup a crash stopped while it was written.
    // A folder that cannot be listed has none to remove.
    std::vector<platform::FolderEntry> entries;
    (void)platform::listFolder(paths.dataDirectory, entries);
    for (const platform::FolderEntry& e : entries)
        if (!e.isFolder && e.name.starts_with("Before restore ") &&
            e.name.ends_with(std::string(kBackupExtension) + ".tmp"))
            if (Status s = removeFile(paths.dataDirectory + e.name); !s)
                return s;
    if (paths.reportDirectory != paths.dataDirectory)
        return discardUnfinishedChanges(paths.reportDirectory);
    return Status::ok();
}

Status collectDataFiles(const DataPaths& paths, BackupArchive& archive) {
    archive.files.clear();
    for (const auto& [folder, path] : candidateFiles(paths)) {
        Bytes contents;
        bool exists = false;
        if (Status s = readWholeFile(path, contents, exists); !s)
            return Status::error(s.kind(), platform::shownPath(path) + ": " + s.message(),
                                 s.code());
        if (exists)
            archive.files.push_back({folder, baseName(path), std::move(contents)});
    }
    return Status::ok();
}

std::string restoredPath(const DataPaths& paths, const ArchivedFile& file) {
    return (file.folder == Folder::Report ? paths.reportDirectory : paths.dataDirectory) +
           file.name;
}

BackupResult backUpDataFiles(DataFiles& files, Prompter& prompter, const std::string& archivePath,
                             const std::string& madeOn) {
    if (!settle(files, prompter, kBackUpTitle))
        return BackupResult::Failed;
    BackupArchive archive;
    archive.madeOn = madeOn;
    if (Status s = collectDataFiles(files.paths(), archive); !s) {
        prompter.ask(
            notice("The backup could not be made: " + s.message() + ".  Nothing was written.",
                   kBackUpTitle));
        return BackupResult::Failed;
    }
    if (fileExists(archivePath)) {
        const Message replace{baseName(archivePath) + " already exists.  Replace it?", kBackUpTitle,
                              Buttons::YesNo, Icon::Question, Answer::No};
        if (prompter.ask(replace) != Answer::Yes)
            return BackupResult::Declined;
    }
    const Bytes bytes = encodeBackup(archive);
    Status s = writeFileAtomically(archivePath, bytes);
    if (s) {
        // What the medium holds now, not what was meant to be written.
        Bytes back;
        bool exists = false;
        s = readWholeFile(archivePath, back, exists);
        if (s && back != bytes)
            s = Status::error(ErrorKind::Unreadable, "the file reads back differently");
    }
    if (!s) {
        prompter.ask(notice("The backup could not be written to " +
                                platform::shownPath(archivePath) + ": " + s.message() +
                                ".  Your data files were not changed.",
                            kBackUpTitle));
        return BackupResult::Failed;
    }
    return BackupResult::Written;
}

bool inspectBackupFile(const std::string& archivePath, BackupArchive& archive,
                       std::string& refusal) {
    archive = {};
    refusal.clear();
    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(archivePath, bytes, exists); !s || !exists) {
        const std::string shown = platform::shownPath(archivePath);
        refusal = (exists ? shown + ": " + s.message() : shown + " was not found") +
                  ".  Nothing was restored.";
        return false;
    }
    const ArchiveCheck check = decodeBackup(bytes, archive);
    refusal = archiveRefusal(check);
    return check.problem == ArchiveProblem::Good;
}

bool readBackupFile(Prompter& prompter, const std::string& archivePath, BackupArchive& archive) {
    std::string refusal;
    if (inspectBackupFile(archivePath, archive, refusal))
        return true;
    prompter.ask(notice(refusal, kRestoreTitle));
    return false;
}

std::string describeBackup(const BackupArchive& archive) {
    const std::size_t teams = archive.teamNames().size();
    const std::size_t files = archive.files.size();
    const std::uint64_t kilobytes = (archive.totalBytes() + 1023) / 1024;
    return digits(static_cast<long long>(teams)) + (teams == 1 ? " team, " : " teams, ") +
           digits(static_cast<long long>(files)) + (files == 1 ? " file, " : " files, ") +
           digits(static_cast<long long>(kilobytes)) + " KB";
}

Message restoreQuestion(const std::string& dataDirectory, const std::string& madeOn,
                        const std::string& undoName) {
    std::string text = "Restoring the backup of " + madeOn +
                       " replaces the teams, rosters, games, statistics and report formats in " +
                       platform::shownPath(dataDirectory) + ".";
    if (!undoName.empty())
        text += "  The files there now are first saved as \"" + undoName +
                "\" in that folder, so the restore can be undone.";
    text += "\n\nRestore the backup?";
    return {text, kRestoreTitle, Buttons::YesNo, Icon::Question, Answer::No};
}

RestoreResult restoreDataFiles(DataFiles& files, Prompter& prompter, const std::string& archivePath,
                               const std::string& now, std::string& undoPath) {
    undoPath.clear();
    BackupArchive archive;
    if (!readBackupFile(prompter, archivePath, archive))
        return RestoreResult::Refused;
    if (!settle(files, prompter, kRestoreTitle))
        return RestoreResult::Failed;
    const DataPaths paths = files.paths();
    BackupArchive current;
    current.madeOn = now;
    if (Status s = collectDataFiles(paths, current); !s) {
        prompter.ask(
            notice("The data files could not be read: " + s.message() + ".  Nothing was restored.",
                   kRestoreTitle));
        return RestoreResult::Failed;
    }
    const std::string undoName = current.files.empty() ? std::string() : undoBackupName(now);
    if (prompter.ask(restoreQuestion(paths.dataDirectory, archive.madeOn, undoName)) != Answer::Yes)
        return RestoreResult::Declined;

    files.closeAll();
    if (!undoName.empty()) {
        if (Status s = writeFileAtomically(paths.dataDirectory + undoName, encodeBackup(current));
            !s) {
            prompter.ask(notice("The files now in the data directory could not be saved before "
                                "the restore: " +
                                    s.message() + ".  Nothing was restored.",
                                kRestoreTitle));
            return RestoreResult::Failed;
        }
    }

    std::vector<FileChange> changes;
    for (const ArchivedFile& f : archive.files)
        changes.push_back({restoredPath(paths, f), f.contents});
    for (const ArchivedFile& f : current.files)
        if (!archive.find(f.folder, f.name))
            changes.push_back({restoredPath(paths, f), std::nullopt});
    bool committed = false;
    const Status s = applyChangesTogether(changes, changeJournalPath(paths), committed);
    files.closeAll();
    if (!s && !committed && !undoName.empty())
        (void)removeFile(paths.dataDirectory + undoName); // nothing was replaced: nothing to undo
    if (!s) {
        prompter.ask(notice(committed ? "The restore could not be finished: " + s.message() +
                                            ".  It is finished the next time the program starts."
                                      : "The backup could not be restored: " + s.message() +
                                            ".  Your data files were not changed.",
                            kRestoreTitle));
        return RestoreResult::Failed;
    }
    if (!undoName.empty())
        undoPath = paths.dataDirectory + undoName;
    return RestoreResult::Restored;
}

} // namespace scorvane
