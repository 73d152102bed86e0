#pragma once

#include "storage/Bytes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scorvane {

// A backup of a data directory in one file: the team list, every team's roster, player
// information, game and statistics files, and the saved report formats. The layout is the
// program's own (docs/backup.md); every integer is little-endian:
//
//   "SCVBACKUP" and byte 0x1A    10 bytes   marks the file as a backup of this program
//   format version               2 bytes    1
//   made on                      19 bytes   "2026-11-23 21:05:13"
//   number of files              2 bytes
//   per file: folder             1 byte     'D' data directory, 'R' report directory
//             name length        1 byte
//             name               ...        "FBPN3.DAT"
//             size               4 bytes
//             CRC-32 of contents 4 bytes
//   the contents of every file, in the same order
//   CRC-32 of every byte before  4 bytes
//
// Only the program's own file names are accepted, so a backup can never write anywhere else.

enum class Folder : char { Data = 'D', Report = 'R' };

struct ArchivedFile {
    Folder folder = Folder::Data;
    std::string name; // "FBTEAMS.DAT"
    Bytes contents;

    bool operator==(const ArchivedFile&) const = default;
};

struct BackupArchive {
    std::string madeOn; // "YYYY-MM-DD HH:MM:SS"
    std::vector<ArchivedFile> files;

    const ArchivedFile* find(Folder folder, std::string_view name) const;
    // The names of the named teams of the backed-up team list, trimmed (Windows-1252).
    std::vector<std::string> teamNames() const;
    std::uint64_t totalBytes() const;
};

inline constexpr const char* kBackupExtension = ".sfb";

Bytes encodeBackup(const BackupArchive& archive);

// Why a file cannot be restored; Good when it can.
enum class ArchiveProblem { Good, Foreign, NewerVersion, Damaged, StrangeFile, NoTeamList };
struct ArchiveCheck {
    ArchiveProblem problem = ArchiveProblem::Good;
    std::string detail; // the file that is damaged or strange, when there is one
};
// Reads a backup; every check runs before anything is returned, so a refused file leaves
// `archive` empty.
ArchiveCheck decodeBackup(const Bytes& bytes, BackupArchive& archive);
// The message text for a refused backup.
std::string archiveRefusal(const ArchiveCheck& check);

// Whether a name is one of the data files of a data directory ('D': "FBTEAMS.DAT" and the four
// files of teams 1 to 100) or of the report directory ('R': "FBRPTFMT.DAT").
bool isDataFileName(Folder folder, std::string_view name);

std::uint32_t crc32(const std::uint8_t* data, std::size_t size);

} // namespace scorvane
