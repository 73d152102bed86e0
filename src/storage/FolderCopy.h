#pragma once

#include "Bytes.h"
#include "Status.h"

#include <optional>
#include <string>
#include <vector>

namespace scorvane {

// Changes of whole files that must happen together: some files get new contents, others are
// removed. Restoring a backup and deleting a team's files are made of such changes; a crash, a
// killed process or a full disk at any moment leaves every file as before or every file as after.
//
// How: each new file is first written in full beside its old one ("<name>.new", flushed); then a
// journal naming every file and what becomes of it is written atomically (the moment the change
// is decided); then the new files are renamed over the old ones, the removed files are deleted and
// the journal is removed. Until the journal exists nothing of the old files has changed; once it
// exists, completePendingChanges finishes whatever a crash interrupted. The journal lives in the
// data directory as kChangeJournalFileName, beside the journal of DataFiles::replaceTogether.

inline constexpr const char* kChangeJournalFileName = "FBCHANGE.TMP";

struct FileChange {
    std::string path;
    std::optional<Bytes> contents; // no value: the file is removed
};

// `committed` tells whether the change was decided (the journal written): after a failure with
// committed false every file is as before; with committed true the change is finished by the next
// completePendingChanges.
Status applyChangesTogether(const std::vector<FileChange>& changes, const std::string& journalPath,
                            bool& committed);
// Finishes a change a crash interrupted, if the journal says there is one. A journal that cannot
// be read is left where it is and reported.
Status completePendingChanges(const std::string& journalPath);
// Removes the half-written files a change left behind when it was stopped before it was decided
// ("FB*.new", their temporary files and the journal's) from a folder. Run after
// completePendingChanges.
Status discardUnfinishedChanges(const std::string& folder);

} // namespace scorvane
