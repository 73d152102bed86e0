#include "FolderCopy.h"

#include "Platform.h"
#include "RecordFile.h"

#include <set>

namespace scorvane {

namespace {

constexpr const char* kHeader = "SCORVANE CHANGE 1";
constexpr const char* kEnd = "END";
constexpr const char* kStaged = ".new";

std::string stagedName(const std::string& path) {
    return path + kStaged;
}

void removeStaged(const std::vector<FileChange>& changes) {
    for (const FileChange& c : changes)
        if (c.contents) {
            (void)removeFile(stagedName(c.path));
            (void)removeFile(stagedName(c.path) + ".tmp");
        }
}

struct JournalLine {
    char action = ' '; // 'W' the staged file replaces the file, 'D' the file is removed
    std::string path;
};

bool parseJournal(const Bytes& bytes, std::vector<JournalLine>& lines) {
    const std::string text(bytes.begin(), bytes.end());
    std::vector<std::string> rows;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            return false; // every line, the last one too, ends in a line feed
        rows.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (rows.size() < 2 || rows.front() != kHeader || rows.back() != kEnd)
        return false;
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        const std::string& row = rows[i];
        if (row.size() < 3 || (row[0] != 'W' && row[0] != 'D') || row[1] != ' ')
            return false;
        lines.push_back({row[0], row.substr(2)});
    }
    return true;
}

} // namespace

Status applyChangesTogether(const std::vector<FileChange>& changes, const std::string& journalPath,
                            bool& committed) {
    committed = false;
    if (Status s = completePendingChanges(journalPath); !s)
        return s;
    std::string journal = std::string(kHeader) + "\n";
    for (const FileChange& c : changes) {
        if (c.path.empty() || c.path.find('\n') != std::string::npos)
            return Status::error(ErrorKind::Unreadable, "A file name the journal cannot hold.");
        journal += (c.contents ? "W " : "D ") + c.path + "\n";
    }
    journal += std::string(kEnd) + "\n";

    for (const FileChange& c : changes) {
        if (!c.contents)
            continue;
        if (Status s = writeFileAtomically(stagedName(c.path), *c.contents); !s) {
            removeStaged(changes);
            return s;
        }
    }
    if (Status s = writeFileAtomically(journalPath, Bytes(journal.begin(), journal.end())); !s) {
        removeStaged(changes);
        return s;
    }
    committed = true;
    return completePendingChanges(journalPath);
}

Status completePendingChanges(const std::string& journalPath) {
    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(journalPath, bytes, exists); !s || !exists)
        return s;
    std::vector<JournalLine> lines;
    if (!parseJournal(bytes, lines))
        return Status::error(ErrorKind::Unreadable, "The journal " +
                                                        platform::shownPath(journalPath) +
                                                        " cannot be read.  Nothing was changed.");
    std::set<std::string> folders;
    for (const JournalLine& line : lines) {
        bool missing = false;
        if (line.action == 'W') {
            // Renamed already when a crash came after this line's rename.
            if (Status s = platform::replaceFile(stagedName(line.path), line.path, &missing);
                !s && !missing)
                return s;
        } else if (Status s = platform::removeFile(line.path, &missing); !s && !missing) {
            return s;
        }
        folders.insert(platform::folderOf(line.path));
    }
    // The renames and removals are on the disk before the journal that would redo them goes.
    for (const std::string& folder : folders)
        platform::syncFolder(folder);
    if (Status s = removeFile(journalPath); !s)
        return s;
    platform::syncFolder(platform::folderOf(journalPath));
    return Status::ok();
}

Status discardUnfinishedChanges(const std::string& folder) {
    if (folder.empty() || !platform::isFolder(folder))
        return Status::ok();
    std::vector<platform::FolderEntry> entries;
    if (Status s = platform::listFolder(folder, entries); !s)
        return s;
    const std::string prefix = platform::isSeparator(folder.back()) ? folder : folder + "/";
    for (const platform::FolderEntry& e : entries) {
        const std::string& name = e.name;
        const bool staged =
            name.ends_with(kStaged) || name.ends_with(std::string(kStaged) + ".tmp");
        const bool journal = name == std::string(kChangeJournalFileName) + ".tmp";
        if (!e.isFolder && ((staged && name.starts_with("FB")) || journal))
            if (Status s = removeFile(prefix + name); !s)
                return s;
    }
    return Status::ok();
}

} // namespace scorvane
