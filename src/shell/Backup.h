#pragma once

#include "shell/BackupArchive.h"
#include "storage/DataFiles.h"
#include "storage/Prompter.h"

#include <string>

namespace scorvane {

// Backing up a data directory into one file and restoring it from one (docs/backup.md).
//
// A backup holds the team list, every team's roster, player information, game and statistics
// files, and the saved report formats of the report directory. Making one only reads the data
// directory; a destination that cannot be written (full, read-only, missing) is reported and no
// half-written backup is left behind.
//
// A restore reads and checks the whole backup first: a file that is no backup of ours, or a
// damaged one, is refused before anything is touched. Then it asks, saves what is there now as a
// backup of its own in the data directory ("Before restore <date time>.sfb", so a wrong restore
// can be undone by restoring that), and replaces every data file together: a crash, a killed
// process or a full disk leaves the data directory as it was or as in the backup, never a mix.

// "2026-11-23 21:05:13", local time.
std::string timestampNow();
// "Tigers Backup 2026-11-23.sfb" for a backup made at that moment while the user works on the
// Tigers (the team's name in UTF-8); "Scorvane Backup 2026-11-23.sfb" with no team name.
std::string defaultBackupName(const std::string& madeOn, const std::string& teamName = {});
// The backup to offer for a restore: the ".sfb" file of the folder changed last (of two changed
// in the same second, the one named later); empty when the folder holds none.
std::string newestBackup(const std::string& folder);
// "Before restore 2026-11-23 21.05.13.sfb": where a restore keeps the files it replaces.
std::string undoBackupName(const std::string& madeOn);

// Finishes a restore or a deletion of files that a crash interrupted, and removes the half-written
// files of one that was stopped before it was decided. Start-up runs it before any data file is
// opened; so do the screens that change files together.
Status finishInterruptedChanges(const DataPaths& paths);
std::string changeJournalPath(const DataPaths& paths);

// Every data file of the directories that exists, read whole, in a fixed order: the team list,
// then each team's roster, player information, games and statistics, then the report formats.
Status collectDataFiles(const DataPaths& paths, BackupArchive& archive);
// Where a file of a backup belongs.
std::string restoredPath(const DataPaths& paths, const ArchivedFile& file);

enum class BackupResult { Written, Declined, Failed };
// Writes a backup of the data files to `archivePath`. An existing file there is replaced only
// after a Yes ("... already exists.  Replace it?", No the default). The backup is read back and
// checked after writing. Failures are shown (titled "Back Up Files"); the data is never changed.
BackupResult backUpDataFiles(DataFiles& files, Prompter& prompter, const std::string& archivePath,
                             const std::string& madeOn);

// Reads and checks a backup without changing anything; shows why it is refused when it is.
bool readBackupFile(Prompter& prompter, const std::string& archivePath, BackupArchive& archive);
// The same without a message: why the file is refused comes back in `refusal`.
bool inspectBackupFile(const std::string& archivePath, BackupArchive& archive,
                       std::string& refusal);
// "4 teams, 18 files, 45 KB"
std::string describeBackup(const BackupArchive& archive);

enum class RestoreResult { Restored, Refused, Declined, Failed };
// Restores the backup at `archivePath` over the data directory, as described above. `now` names
// the backup of the replaced files, whose path comes back in `undoPath` (empty when there was
// nothing to keep). The data files are closed before and after, and open again when next used.
RestoreResult restoreDataFiles(DataFiles& files, Prompter& prompter, const std::string& archivePath,
                               const std::string& now, std::string& undoPath);

Message restoreQuestion(const std::string& dataDirectory, const std::string& madeOn,
                        const std::string& undoName);

} // namespace scorvane
