#pragma once

#include "Bytes.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace scorvane {

// The fixed-length records of the data files. Each type encodes to exactly Length bytes and
// decodes any buffer: a short buffer is read as if padded with zero bytes, so a damaged file can
// never make a decoder read out of bounds. Text members hold the stored Windows-1252 bytes; they
// are cut or padded to their width when encoded, and come back from decode at full width.

inline constexpr int kMaxPlayers = 99;
inline constexpr int kMaxTeams = 100;

inline bool isPlayerNumber(int n) {
    return n >= 1 && n <= kMaxPlayers;
}

// The widths of the text fields, used alike by the records, the logic and the screens.
namespace width {
inline constexpr std::size_t teamName = 25;
inline constexpr std::size_t shortName = 10;
inline constexpr std::size_t teamTag = 5;
inline constexpr std::size_t playerName = 17;
inline constexpr std::size_t rosterExtra = 182;
inline constexpr std::size_t phone = 20;
inline constexpr std::size_t address = 40;
inline constexpr std::size_t city = 20;
inline constexpr std::size_t state = 5;
inline constexpr std::size_t zip = 10;
inline constexpr std::size_t other = 70;
inline constexpr std::size_t gameDate = 6;
inline constexpr std::size_t gameLocation = 20;
inline constexpr std::size_t opponent = 25;
inline constexpr std::size_t gameComment = 58;
inline constexpr std::size_t gameTail = 63;
inline constexpr std::size_t reportName = 20;
inline constexpr std::size_t gameTypeName = 10;
inline constexpr std::size_t columnName = 3;
} // namespace width

// Team list "FBTEAMS.DAT": one record per team; the record number is the team number.
struct TeamRecord {
    static constexpr std::size_t Length = 40;
    std::string teamName;  // 25
    std::string shortName; // 10
    std::string teamTag;   // 5, written as spaces when a team's names are saved

    Bytes encode() const;
    static TeamRecord decode(ByteView bytes);
};

// Roster "FBPN<team>.DAT": one record per player in use, in player-number order.
struct RosterRecord {
    static constexpr std::size_t Length = 201;
    std::int16_t playerNumber = 0;
    std::string playerName;                                         // 17
    std::string rosterExtra = std::string(width::rosterExtra, ' '); // carried unchanged

    Bytes encode() const;
    static RosterRecord decode(ByteView bytes);
};

// Player information "FBPI<team>.DAT": one record per player with any contact details.
struct PlayerInfoRecord {
    static constexpr std::size_t Length = 500;
    std::int16_t playerNumber = 0;
    std::string phone;    // 20
    std::string address1; // 40
    std::string address2; // 40
    std::string city;     // 20
    std::string state;    // 5
    std::string zip;      // 10
    std::string other;    // 70
    // The reserved fields (20 after city, state and zip, 233 at the end) are always written blank.

    Bytes encode() const;
    static PlayerInfoRecord decode(ByteView bytes);
};

struct PointSums {
    std::int16_t team = 0;
    std::int16_t opponent = 0;
};

// Games "FBGS<team>.DAT".
struct GameRecord {
    static constexpr std::size_t Length = 200;
    std::int16_t gameNumber = 0;
    char gameStatus = 'A';           // "A" live, "D" deleted (the record stays as a tombstone)
    std::string gameDate = "000000"; // 6, "MMDDYY"
    std::string gameLocation;        // 20
    std::string opponent;            // 25
    std::array<std::int16_t, 5> opponentScore{}; // quarters 1-4 and overtime; stored first
    std::array<std::int16_t, 5> teamScore{};
    std::string gameComment;                              // 58
    char gameType = '1';                                  // "1".."7"
    char homeFlag = '2';                                  // "1" home, "2" away
    char specialSelect = '1';                             // "2" marked, "1" not
    std::int16_t overtimeFlag = 0;                        // -1 overtime, 0 not
    std::string tail = std::string(width::gameTail, ' '); // spaces in our files; kept as read

    bool isLive() const { return gameStatus == 'A'; }
    // The two point totals in 16-bit arithmetic; empty when either sum leaves -32768..32767.
    std::optional<PointSums> pointSums() const;
    // The game type as 1..7, or 0 when the stored letter is no game type digit.
    int gameTypeNumber() const;

    Bytes encode() const;
    static GameRecord decode(ByteView bytes);
};

// The eight bytes that start every player statistics record, whatever its layout.
struct StatHeader {
    std::int16_t gameNumber = 0;
    std::int16_t playerNumber = 0;
    char category = ' ';          // "P", "C", "R", "D" category layout; "K", "T" list layout
    char statStatus = 'A';        // "A" live, "D" deleted
    char statGameType = '1';      // copy of the game's type
    char statSpecialSelect = '1'; // copy of the game's Special Select mark

    bool isLive() const { return statStatus == 'A'; }
    // Writes the header over the first 8 bytes of a record (a whole Bytes, or one inside a buffer).
    void encodeInto(std::span<std::uint8_t> rec) const;
    static StatHeader decode(ByteView bytes);
    // The category letter alone, as decode reads it: a pass over one category passes the others'
    // records by without decoding them.
    static char categoryOf(ByteView bytes) {
        return bytes.size() > 4 ? static_cast<char>(bytes[4]) : decode(bytes).category;
    }
    // The header of the record that starts at `offset` of a buffer of many records.
    static StatHeader decodeAt(ByteView buffer, std::size_t offset);
};

// Player statistics "FBPS<team>.DAT", category layout (passing, receiving, rushing, defense).
struct StatRecord {
    static constexpr std::size_t Length = 110;
    static constexpr std::size_t ValueCount = 30;
    StatHeader header;
    std::array<std::int16_t, ValueCount> values{}; // entered columns in column-table order
    std::string tail = std::string(42, ' ');

    Bytes encode() const;
    static StatRecord decode(ByteView bytes);
    // Only the entered values, for passes over many records that need nothing else.
    static std::array<std::int16_t, ValueCount> decodeValues(ByteView bytes);
};

// One kick or return of a list record.
struct ListEntry {
    char type = ' '; // kicks "F", "X", "P"; returns "P", "K"; " " unused
    std::int16_t yards = 0;
    std::int16_t marks = 0; // sum of the entry's bit values

    bool operator==(const ListEntry&) const = default;
};

// Player statistics "FBPS<team>.DAT", list layout (kicking "K", returns "T").
struct StatListRecord {
    static constexpr std::size_t Length = 110;
    static constexpr std::size_t EntryCount = 18;
    StatHeader header;
    std::array<std::int16_t, 5> summary{}; // the five user columns
    std::array<ListEntry, EntryCount> entries{};
    std::string tail = std::string(2, ' ');

    Bytes encode() const;
    static StatListRecord decode(ByteView bytes);
};

// Saved report formats "FBRPTFMT.DAT" in the report directory.
struct ReportFormatRecord {
    static constexpr std::size_t Length = 167;
    static constexpr std::size_t ColumnSlots = 71;
    char category = 'P';
    char deletionMark = ' '; // "*" deleted
    std::string reportName;  // 20
    std::int16_t sortColumn = 0;
    char sortDirection = 'D';                        // "A" or "D"
    std::array<std::int16_t, ColumnSlots> columns{}; // entry 0 always 0; 1..31 in print order

    Bytes encode() const;
    static ReportFormatRecord decode(ByteView bytes);
};

} // namespace scorvane
