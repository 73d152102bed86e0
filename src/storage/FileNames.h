#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// File kinds; each has its own slot, so several files are open at once. Kind 7 has no file.
enum class FileKind {
    Config = 1,
    TeamList = 2,
    Roster = 3,
    Games = 4,
    Stats = 5,
    ReportFormats = 6,
    GamesAlt = 8, // the game file opened a second time, for reading while Games is in use
    PlayerInfo = 9,
};

inline constexpr const char* kConfigFileName = "BXFB.INI";
// The journal of a change that replaces several files of a data directory together.
inline constexpr const char* kJournalFileName = "FBJOURNL.TMP";
// The journal of a change made in place: the original bytes of the places it changes.
inline constexpr const char* kRollbackJournalFileName = "FBUNDO.TMP";
// Where a rollback journal that does not fit the files is set aside, never applied.
inline constexpr const char* kRefusedJournalFileName = "FBUNDO.BAD";

std::size_t recordLength(FileKind kind);

// Where the files are. Every directory ends in a separator (see normalizeDirectory).
struct DataPaths {
    std::string configDirectory;
    std::string dataDirectory;
    std::string reportDirectory;
};

// A directory as the program keeps it at run time: spaces trimmed on both sides and a trailing
// separator appended when missing. The separator appended is "\" for a path written with
// backslashes only (a data directory carried over from another system) and "/" otherwise.
// Empty text stays empty.
std::string normalizeDirectory(std::string_view text);

// The file name of a kind: directory, prefix, team number, ".DAT", plainly concatenated.
std::string fileName(FileKind kind, const DataPaths& paths, int teamNumber);

// A name to offer when the user saves a file: the words and the date, one space apart, and the
// extension ("Tigers Rushing Statistics 2026-11-24.csv"). Characters a file name may not hold on
// Windows (< > : " / \ | ? * and control characters) are left out and runs of spaces made one;
// empty words are skipped.
std::string suggestedFileName(const std::vector<std::string>& words, const std::string& date,
                              const std::string& extension);

} // namespace scorvane
