#include "DataFiles.h"

#include "DiskError.h"

namespace scorvane {

namespace {

constexpr std::array<FileKind, 5> kPerTeamKinds = {FileKind::Roster, FileKind::Games,
                                                   FileKind::Stats,  FileKind::GamesAlt,
                                                   FileKind::PlayerInfo};

// Earlier roster layouts kept the player number and name first, as the current one does, in a
// shorter or longer record. The layout is recognised when one record length divides the file and
// gives every record a player number 1..99 in strictly ascending order, as the roster is written.
bool findLegacyRosterLength(const Bytes& contents, std::size_t& length) {
    for (std::size_t len = 19; len <= 1000; ++len) {
        if (len == RosterRecord::Length || contents.size() % len != 0)
            continue;
        int previous = 0;
        bool good = true;
        for (std::size_t off = 0; good && off < contents.size(); off += len) {
            const int number = static_cast<std::int16_t>(contents[off] | (contents[off + 1] << 8));
            good = isPlayerNumber(number) && number > previous;
            previous = number;
        }
        if (good) {
            length = len;
            return true;
        }
    }
    return false;
}

} // namespace

DataFiles::DataFiles(DataPaths paths, Prompter& prompter)
    : paths_(std::move(paths)), prompter_(prompter) {}

void DataFiles::setPaths(DataPaths paths) {
    closeAll();
    paths_ = std::move(paths);
    journalChecked_ = false;
}

void DataFiles::setTeam(int teamNumber) {
    if (teamNumber == team_)
        return;
    for (FileKind k : kPerTeamKinds)
        closeFile(k);
    team_ = teamNumber;
}

std::string DataFiles::fileName(FileKind kind) const { return scorvane::fileName(kind, paths_, team_); }

Status DataFiles::guarded(const std::function<Status()>& op) {
    Status s = withDiskErrors(prompter_, op);
    if (s.kind() == ErrorKind::ProgramEnded)
        closeAll();
    return s;
}

Status DataFiles::finishInterruptedReplacement() {
    if (journalChecked_ || paths_.dataDirectory.empty())
        return Status::ok();
    Status s = guarded([&] { return completePendingReplacement(journalPath()); });
    journalChecked_ = s.isOk();
    return s;
}

Status DataFiles::openFile(FileKind kind) {
    if (Status s = finishInterruptedReplacement(); !s)
        return s;
    Status s = guarded([&] { return slot(kind).open(fileName(kind), recordLength(kind)); });
    if (s && kind == FileKind::Roster)
        s = convertRoster();
    return s;
}

Status DataFiles::convertRoster() {
    RecordFile& file = slot(FileKind::Roster);
    long long bytes = 0;
    if (Status s = guarded([&] { return file.length(bytes); }); !s)
        return s;
    if (bytes == 0 || bytes % static_cast<long long>(RosterRecord::Length) == 0)
        return Status::ok();
    Bytes contents;
    bool exists = false;
    if (Status s = guarded([&] { return readWholeFile(file.path(), contents, exists); }); !s)
        return s;
    std::size_t length = 0;
    if (!findLegacyRosterLength(contents, length))
        return Status::error(ErrorKind::Unreadable,
                             "The roster file " + file.path() + " cannot be read.");
    std::vector<Bytes> records;
    for (std::size_t off = 0; off < contents.size(); off += length) {
        Bytes old(contents.begin() + static_cast<std::ptrdiff_t>(off),
                  contents.begin() + static_cast<std::ptrdiff_t>(off + length));
        old.resize(std::max<std::size_t>(length, 19), ' ');
        RosterRecord r;
        r.playerNumber = field::getInt16(old, 0);
        r.playerName = field::getText(old, 2, 17);
        records.push_back(r.encode());
    }
    return guarded([&] { return file.replaceAll(records); });
}

void DataFiles::closeFile(FileKind kind) { slot(kind).close(); }

void DataFiles::closeAll() {
    for (auto& f : slots_)
        f.close();
}

Status DataFiles::killFile(FileKind kind) {
    closeFile(kind);
    if (kind == FileKind::GamesAlt)
        return Status::ok();
    if (kind == FileKind::Games)
        closeFile(FileKind::GamesAlt);
    return guarded([&] { return removeFile(fileName(kind)); });
}

Status DataFiles::ensureOpen(FileKind kind) {
    return slot(kind).isOpen() ? Status::ok() : openFile(kind);
}

int DataFiles::recordCount(FileKind kind) {
    if (!ensureOpen(kind))
        return 0;
    return slot(kind).count();
}

Status DataFiles::access(FileKind kind, char mode, int recordNumber, Bytes& bytes) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    RecordFile& file = slot(kind);
    if (mode == 'G')
        return guarded([&] { return file.read(recordNumber, bytes); });
    return guarded([&] { return file.write(recordNumber, bytes); });
}

template <class R> Status DataFiles::typed(FileKind kind, char mode, int recordNumber, R& record) {
    Bytes bytes;
    if (mode != 'G')
        bytes = record.encode();
    Status s = access(kind, mode, recordNumber, bytes);
    if (s && mode == 'G')
        record = R::decode(bytes);
    return s;
}

Status DataFiles::teamRecord(char mode, int recordNumber, TeamRecord& record) {
    return typed(FileKind::TeamList, mode, recordNumber, record);
}
Status DataFiles::rosterRecord(char mode, int recordNumber, RosterRecord& record) {
    return typed(FileKind::Roster, mode, recordNumber, record);
}
Status DataFiles::playerInfoRecord(char mode, int recordNumber, PlayerInfoRecord& record) {
    return typed(FileKind::PlayerInfo, mode, recordNumber, record);
}
Status DataFiles::statRecord(char mode, int recordNumber, StatRecord& record) {
    return typed(FileKind::Stats, mode, recordNumber, record);
}
Status DataFiles::statListRecord(char mode, int recordNumber, StatListRecord& record) {
    return typed(FileKind::Stats, mode, recordNumber, record);
}
Status DataFiles::reportFormatRecord(char mode, int recordNumber, ReportFormatRecord& record) {
    return typed(FileKind::ReportFormats, mode, recordNumber, record);
}

namespace {
Status checkSums(const GameRecord& game) {
    return game.pointSums() ? Status::ok() : Status::error(ErrorKind::Overflow, "Overflow");
}
} // namespace

Status DataFiles::gameRecord(char mode, int recordNumber, GameRecord& record) {
    Status s = typed(FileKind::Games, mode, recordNumber, record);
    return s && mode == 'G' ? checkSums(record) : s;
}

Status DataFiles::gameRecordAlt(int recordNumber, GameRecord& record) {
    Status s = typed(FileKind::GamesAlt, 'G', recordNumber, record);
    return s ? checkSums(record) : s;
}

Status DataFiles::readAll(FileKind kind, std::vector<Bytes>& records) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    return guarded([&] { return slot(kind).readAll(records); });
}

Status DataFiles::replaceAll(FileKind kind, const std::vector<Bytes>& records) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    Status s = guarded([&] { return slot(kind).replaceAll(records); });
    // The second handle on the game file must see the new file too.
    if (s && kind == FileKind::Games)
        closeFile(FileKind::GamesAlt);
    if (s && kind == FileKind::GamesAlt)
        closeFile(FileKind::Games);
    return s;
}

Status DataFiles::replaceTogether(
    const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files) {
    std::vector<std::pair<std::string, Bytes>> contents;
    for (const auto& [kind, records] : files) {
        if (Status s = ensureOpen(kind); !s)  // also finishes an earlier interrupted change
            return s;
        contents.emplace_back(fileName(kind), RecordFile::joinRecords(records, recordLength(kind)));
    }
    for (const auto& entry : files) {
        closeFile(entry.first);
        if (entry.first == FileKind::Games)
            closeFile(FileKind::GamesAlt);
    }
    // The files are opened again, on the new contents, when next used.
    return guarded([&] { return replaceFilesTogether(contents, journalPath()); });
}

Status DataFiles::indexGameStats(const GameRecord& game, GameStatsIndex& index) {
    std::vector<Bytes> raw;
    if (Status s = readAll(FileKind::Stats, raw); !s)
        return s;
    std::vector<StatHeader> headers;
    headers.reserve(raw.size());
    for (const auto& b : raw)
        headers.push_back(StatHeader::decode(b));
    std::vector<int> changed;
    index = scorvane::indexGameStats(headers, game, changed);
    if (changed.empty())
        return Status::ok();
    for (int n : changed) {
        Bytes& rec = raw[static_cast<std::size_t>(n - 1)];
        headers[static_cast<std::size_t>(n - 1)].encodeInto(rec);
    }
    return replaceAll(FileKind::Stats, raw);
}

} // namespace scorvane
