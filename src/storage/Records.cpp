#include "Records.h"

#include <algorithm>
#include <stdexcept>

namespace scorvane {

using field::getInt16;
using field::getText;
using field::putInt16;
using field::putText;
using field::sized;

namespace {

// The record at its full length: the bytes themselves when they are long enough, otherwise a
// zero-filled copy in `spare`. Records are decoded by the million, so the usual case copies
// nothing.
ByteView atLeast(ByteView bytes, std::size_t n, Bytes& spare) {
    if (bytes.size() >= n)
        return bytes;
    spare = sized(bytes, n);
    return spare;
}

Bytes blank(std::size_t n) {
    return Bytes(n, ' ');
}

char getFlag(ByteView rec, std::size_t offset) {
    if (offset >= rec.size())
        throw std::out_of_range("getFlag: the field lies past the end of the record");
    return static_cast<char>(rec[offset]);
}
void putFlag(Bytes& rec, std::size_t offset, char c) {
    rec.at(offset) = static_cast<std::uint8_t>(c);
}

std::optional<std::int16_t> sum16(const std::array<std::int16_t, 5>& v) {
    int total = 0;
    for (auto x : v) {
        total += x;
        if (total > 32767 || total < -32768)
            return std::nullopt;
    }
    return static_cast<std::int16_t>(total);
}

} // namespace

Bytes TeamRecord::encode() const {
    Bytes rec = blank(Length);
    putText(rec, 0, width::teamName, teamName);
    putText(rec, 25, width::shortName, shortName);
    putText(rec, 35, width::teamTag, teamTag);
    return rec;
}

TeamRecord TeamRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    return {getText(rec, 0, width::teamName), getText(rec, 25, width::shortName),
            getText(rec, 35, width::teamTag)};
}

Bytes RosterRecord::encode() const {
    Bytes rec = blank(Length);
    putInt16(rec, 0, playerNumber);
    putText(rec, 2, width::playerName, playerName);
    putText(rec, 19, width::rosterExtra, rosterExtra);
    return rec;
}

RosterRecord RosterRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    return {getInt16(rec, 0), getText(rec, 2, width::playerName),
            getText(rec, 19, width::rosterExtra)};
}

Bytes PlayerInfoRecord::encode() const {
    Bytes rec = blank(Length);
    putInt16(rec, 0, playerNumber);
    putText(rec, 2, width::phone, phone);
    putText(rec, 22, width::address, address1);
    putText(rec, 62, width::address, address2);
    putText(rec, 102, width::city, city);
    putText(rec, 142, width::state, state);
    putText(rec, 167, width::zip, zip);
    putText(rec, 197, width::other, other);
    return rec;
}

PlayerInfoRecord PlayerInfoRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    PlayerInfoRecord r;
    r.playerNumber = getInt16(rec, 0);
    r.phone = getText(rec, 2, width::phone);
    r.address1 = getText(rec, 22, width::address);
    r.address2 = getText(rec, 62, width::address);
    r.city = getText(rec, 102, width::city);
    r.state = getText(rec, 142, width::state);
    r.zip = getText(rec, 167, width::zip);
    r.other = getText(rec, 197, width::other);
    return r;
}

std::optional<PointSums> GameRecord::pointSums() const {
    auto opp = sum16(opponentScore);
    auto team = sum16(teamScore);
    if (!opp || !team)
        return std::nullopt;
    return PointSums{*team, *opp};
}

int GameRecord::gameTypeNumber() const {
    return gameType >= '1' && gameType <= '7' ? gameType - '0' : 0;
}

Bytes GameRecord::encode() const {
    Bytes rec = blank(Length);
    putInt16(rec, 0, gameNumber);
    putFlag(rec, 2, gameStatus);
    putText(rec, 3, width::gameDate, gameDate);
    putText(rec, 9, width::gameLocation, gameLocation);
    putText(rec, 29, width::opponent, opponent);
    for (std::size_t i = 0; i < 5; ++i) {
        putInt16(rec, 54 + 2 * i, opponentScore[i]);
        putInt16(rec, 64 + 2 * i, teamScore[i]);
    }
    putText(rec, 74, width::gameComment, gameComment);
    putFlag(rec, 132, gameType);
    putFlag(rec, 133, homeFlag);
    putFlag(rec, 134, specialSelect);
    putInt16(rec, 135, overtimeFlag);
    putText(rec, 137, width::gameTail, tail);
    return rec;
}

GameRecord GameRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    GameRecord g;
    g.gameNumber = getInt16(rec, 0);
    g.gameStatus = getFlag(rec, 2);
    g.gameDate = getText(rec, 3, width::gameDate);
    g.gameLocation = getText(rec, 9, width::gameLocation);
    g.opponent = getText(rec, 29, width::opponent);
    for (std::size_t i = 0; i < 5; ++i) {
        g.opponentScore[i] = getInt16(rec, 54 + 2 * i);
        g.teamScore[i] = getInt16(rec, 64 + 2 * i);
    }
    g.gameComment = getText(rec, 74, width::gameComment);
    g.gameType = getFlag(rec, 132);
    g.homeFlag = getFlag(rec, 133);
    g.specialSelect = getFlag(rec, 134);
    g.overtimeFlag = getInt16(rec, 135);
    g.tail = getText(rec, 137, width::gameTail);
    return g;
}

void StatHeader::encodeInto(std::span<std::uint8_t> rec) const {
    if (rec.size() < 8)
        field::throwPastTheEnd("StatHeader::encodeInto");
    const auto put16 = [&](std::size_t at, std::int16_t v) {
        const auto u = static_cast<std::uint16_t>(v);
        rec[at] = static_cast<std::uint8_t>(u & 0xFF);
        rec[at + 1] = static_cast<std::uint8_t>(u >> 8);
    };
    put16(0, gameNumber);
    put16(2, playerNumber);
    rec[4] = static_cast<std::uint8_t>(category);
    rec[5] = static_cast<std::uint8_t>(statStatus);
    rec[6] = static_cast<std::uint8_t>(statGameType);
    rec[7] = static_cast<std::uint8_t>(statSpecialSelect);
}

StatHeader StatHeader::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = bytes.size() >= 8 ? bytes : atLeast(bytes, 8, spare);
    return {getInt16(rec, 0),          getInt16(rec, 2),          static_cast<char>(rec[4]),
            static_cast<char>(rec[5]), static_cast<char>(rec[6]), static_cast<char>(rec[7])};
}

StatHeader StatHeader::decodeAt(ByteView buffer, std::size_t offset) {
    return decode(buffer.subspan(std::min(offset, buffer.size())));
}

Bytes StatRecord::encode() const {
    Bytes rec = blank(Length);
    header.encodeInto(rec);
    for (std::size_t i = 0; i < ValueCount; ++i)
        putInt16(rec, 8 + 2 * i, values[i]);
    putText(rec, 68, 42, tail);
    return rec;
}

StatRecord StatRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    StatRecord r;
    r.header = StatHeader::decode(rec);
    r.values = decodeValues(rec);
    r.tail = getText(rec, 68, 42);
    return r;
}

std::array<std::int16_t, StatRecord::ValueCount> StatRecord::decodeValues(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    std::array<std::int16_t, ValueCount> values{};
    for (std::size_t i = 0; i < ValueCount; ++i)
        values[i] = getInt16(rec, 8 + 2 * i);
    return values;
}

Bytes StatListRecord::encode() const {
    Bytes rec = blank(Length);
    header.encodeInto(rec);
    for (std::size_t i = 0; i < 5; ++i)
        putInt16(rec, 8 + 2 * i, summary[i]);
    for (std::size_t i = 0; i < EntryCount; ++i) {
        putFlag(rec, 18 + i, entries[i].type);
        putInt16(rec, 36 + 4 * i, entries[i].yards);
        putInt16(rec, 38 + 4 * i, entries[i].marks);
    }
    putText(rec, 108, 2, tail);
    return rec;
}

StatListRecord StatListRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    StatListRecord r;
    r.header = StatHeader::decode(rec);
    for (std::size_t i = 0; i < 5; ++i)
        r.summary[i] = getInt16(rec, 8 + 2 * i);
    for (std::size_t i = 0; i < EntryCount; ++i) {
        r.entries[i].type = getFlag(rec, 18 + i);
        r.entries[i].yards = getInt16(rec, 36 + 4 * i);
        r.entries[i].marks = getInt16(rec, 38 + 4 * i);
    }
    r.tail = getText(rec, 108, 2);
    return r;
}

Bytes ReportFormatRecord::encode() const {
    Bytes rec = blank(Length);
    putFlag(rec, 0, category);
    putFlag(rec, 1, deletionMark);
    putText(rec, 2, width::reportName, reportName);
    putInt16(rec, 22, sortColumn);
    putFlag(rec, 24, sortDirection);
    for (std::size_t i = 0; i < ColumnSlots; ++i)
        putInt16(rec, 25 + 2 * i, columns[i]);
    return rec;
}

ReportFormatRecord ReportFormatRecord::decode(ByteView bytes) {
    Bytes spare;
    const ByteView rec = atLeast(bytes, Length, spare);
    ReportFormatRecord r;
    r.category = getFlag(rec, 0);
    r.deletionMark = getFlag(rec, 1);
    r.reportName = getText(rec, 2, width::reportName);
    r.sortColumn = getInt16(rec, 22);
    r.sortDirection = getFlag(rec, 24);
    for (std::size_t i = 0; i < ColumnSlots; ++i)
        r.columns[i] = getInt16(rec, 25 + 2 * i);
    return r;
}

} // namespace scorvane
