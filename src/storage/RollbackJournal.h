#pragma once

#include "Bytes.h"
#include "RecordFile.h"
#include "Status.h"

#include <map>
#include <string>
#include <vector>

namespace scorvane {

// One file's part of a change made in place (see changeInPlace): either bytes written over the
// file at their offsets, or the file's records from one on rewritten in one pass.
struct InPlaceChange {
    std::string path;
    // The bytes to write, by offset. A run may reach past the end of the file and so lengthen it;
    // runs do not overlap.
    std::map<long long, Bytes> writes;
    // When given, the whole records from record `rewriteFrom` on (0-based) are replaced by what
    // `rewrite` makes of them, called as a RecordRewrite with record numbers counted from the start
    // of the file; the file ends where the rewrite's output ends.
    const RecordRewrite* rewrite = nullptr;
    long long rewriteFrom = 0;
    std::size_t recordLength = 1;
};

// Changes files in place so that a crash at any moment leaves every one of them as before or all
// of them as after. The journal (in the files' folder) gets the original bytes of every place to
// be changed and each file's original length, and is flushed; then the files are changed and
// flushed, and the journal is removed. Until it is removed, rollBackInterruptedChange puts every
// file back as it was. The files must be in the journal's folder, and none of them open for
// writing elsewhere.
[[nodiscard]] Status changeInPlace(const std::vector<InPlaceChange>& changes,
                                   const std::string& journalPath);

// What rollBackInterruptedChange found.
struct JournalFinding {
    enum class Kind {
        None,       // no journal
        RolledBack, // a change was interrupted: the files are back as before it
        Incomplete, // the journal was cut short while it was written, before any file was touched:
                    // removed, nothing applied
        Refused,    // not a journal of ours, or one that does not fit the files: never applied
    };
    Kind kind = Kind::None;
    std::string message; // for Refused: what is wrong, naming the journal and the file
};

// Puts the files of an interrupted change back as they were, if the journal says there is one,
// and removes the journal. A refused journal is left where it is, untouched, for the caller to
// deal with; no file is changed then. Every step may be repeated, so a crash during a rollback is
// harmless.
[[nodiscard]] Status rollBackInterruptedChange(const std::string& journalPath,
                                               JournalFinding& finding);

} // namespace scorvane
