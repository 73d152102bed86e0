#pragma once

#include "storage/DataFiles.h"
#include "storage/FileNames.h"
#include "storage/RecordFile.h"
#include "storage/Records.h"
#include "storage/Status.h"

#include <array>
#include <string>
#include <vector>

namespace scorvane {

// A team's player statistics records in file order, each StatRecord::Length bytes. A season read
// from its files leaves them in the statistics file, and every pass reads the file again a piece
// at a time: an archive of a million records is never held whole. Records added with push_back
// (one game's records, a season made in memory) are kept in one buffer, after the file's.
class StatRecords {
public:
    static constexpr std::size_t Length = StatRecord::Length;

    // The records are those of this file (none when it does not exist), read at each pass.
    void readFrom(std::string path) { path_ = std::move(path); }
    // A record kept in memory, cut or zero-filled to the record length: a short record reads as
    // the decoders read it.
    void push_back(ByteView record);

    // Calls visit(ByteView record) for every record in order. A file that cannot be read to its end
    // ends the pass with the read's status; the records visited before stand.
    template <class Visit> [[nodiscard]] Status forEach(Visit&& visit) const {
        const auto visitPiece = [&](ByteView piece) {
            for (std::size_t at = 0; at + Length <= piece.size(); at += Length)
                visit(piece.subspan(at, Length));
        };
        if (!path_.empty()) {
            bool exists = false;
            if (Status s = readRecordPieces(path_, Length, visitPiece, exists); !s)
                return s;
        }
        visitPiece(ByteView(memory_));
        return Status::ok();
    }

private:
    std::string path_;
    Bytes memory_;
};

// Everything a report reads of one team, held in memory: its names, its roster, its games and
// its player statistics records. Texts are the stored Windows-1252 bytes.
struct TeamSeason {
    int number = 0;
    std::string name;      // long name, right-trimmed
    std::string shortName; // short name, right-trimmed
    // The roster by player number: the 17-character name, or empty for a number not in use.
    std::array<std::string, kMaxPlayers + 1> players;
    std::vector<GameRecord> games;
    StatRecords stats;

    // The name a line of the report shows for a player: the roster name, or spaces.
    std::string playerName(int number) const;
};

// Reads a team through the program's data files (the team list record, roster, games and
// statistics). Files the team does not have yet read as empty and are not created.
[[nodiscard]] Status loadTeamSeason(DataFiles& data, int team, TeamSeason& season);

// Reads a team for a report screen: without creating or changing anything when the files allow it
// (readTeamSeason), otherwise through the program's data files (loadTeamSeason), which finish an
// interrupted change, convert a roster of an older layout and report disk errors as the program
// always does.
[[nodiscard]] Status viewTeamSeason(DataFiles& data, int team, TeamSeason& season);

// Reads a team without creating or changing anything: missing files read as empty. Fails when the
// data directory holds no team list, the team is not named in it, the roster is not in the
// current layout or a file cannot be read.
[[nodiscard]] Status readTeamSeason(const DataPaths& paths, int team, TeamSeason& season);

// The whole contents of a file of fixed-length records, read without creating it; a trailing
// piece of a record is left out. A missing file gives no records.
[[nodiscard]] Status readRecordsReadOnly(const std::string& path, std::size_t recordLength,
                                         std::vector<Bytes>& records, bool& exists);

} // namespace scorvane
