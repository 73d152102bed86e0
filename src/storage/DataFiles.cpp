#include "DataFiles.h"

#include "DiskError.h"

#include <algorithm>

namespace scorvane {

namespace {

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

// Where each per-team kind sits among a team's open files.
std::size_t teamSlotIndex(FileKind kind) {
    switch (kind) {
    case FileKind::Roster:
        return 0;
    case FileKind::Games:
    case FileKind::GamesAlt:
        return 1;
    case FileKind::Stats:
        return 2;
    case FileKind::PlayerInfo:
        return 3;
    default:
        return 4;
    }
}

Status checkSums(const GameRecord& game) {
    return game.pointSums() ? Status::ok() : Status::error(ErrorKind::Overflow, "Overflow");
}

Status notATeamFile() {
    return Status::error(ErrorKind::Unreadable, "That file belongs to no team.");
}

} // namespace

Message unfinishedChangeMessage(const std::string& dataDirectory) {
    return {"The last change to the files in " + platform::shownPath(dataDirectory) +
                " was not finished when the program stopped, and has been undone: the files "
                "are as they were before it. Please make that change again.",
            "Unfinished Change", Buttons::Ok, Icon::Information, Answer::Ok};
}

// --- the data directory -----------------------------------------------------------------------

DataFiles::DataFiles(DataPaths paths, Prompter& prompter)
    : paths_(std::move(paths)), prompter_(prompter) {}

DataFiles::~DataFiles() {
    closeAll();
}

void DataFiles::setPaths(DataPaths paths) {
    closeAll();
    paths_ = std::move(paths);
    journalChecked_ = false;
}

TeamFiles DataFiles::team(int number) {
    if (auto it = teams_.find(number); it != teams_.end())
        if (auto live = it->second.lock())
            return TeamFiles(*this, live);
    // Forget handles that are gone, so the map does not grow with every team ever opened.
    std::erase_if(teams_, [](const auto& kv) { return kv.second.expired(); });
    auto opened = std::make_shared<detail::TeamSlots>();
    opened->team = number;
    teams_[number] = opened;
    return TeamFiles(*this, opened);
}

std::string DataFiles::fileName(FileKind kind) const {
    return scorvane::fileName(kind, paths_, 0);
}

RecordFile& DataFiles::slot(FileKind kind) {
    return kind == FileKind::ReportFormats ? reportFormats_ : teamList_;
}

Status DataFiles::guarded(const std::function<Status()>& op) {
    Status s = withDiskErrors(prompter_, op);
    if (s.kind() == ErrorKind::ProgramEnded)
        closeAll();
    return s;
}

Status DataFiles::rollBackInterruptedChange() {
    JournalFinding finding;
    if (Status s =
            guarded([&] { return scorvane::rollBackInterruptedChange(rollbackPath(), finding); });
        !s)
        return s;
    if (finding.kind == JournalFinding::Kind::RolledBack ||
        finding.kind == JournalFinding::Kind::Incomplete) {
        // The user saw the change begin, perhaps end: he is told it did not happen.
        (void)prompter_.ask(unfinishedChangeMessage(paths_.dataDirectory));
        return Status::ok();
    }
    if (finding.kind != JournalFinding::Kind::Refused)
        return Status::ok();
    // Applying a journal that does not fit could only do harm: it is kept aside for a look.
    const std::string aside = paths_.dataDirectory + kRefusedJournalFileName;
    if (Status s = guarded([&] { return platform::replaceFile(rollbackPath(), aside); }); !s)
        return s;
    platform::syncFolder(platform::folderOf(aside));
    (void)prompter_.ask({finding.message + " It was not applied, and has been set aside as " +
                             platform::shownPath(aside) + ".",
                         "Unfinished Change", Buttons::Ok, Icon::Warning, Answer::Ok});
    return Status::ok();
}

Status DataFiles::finishInterruptedReplacement() {
    if (journalChecked_ || paths_.dataDirectory.empty())
        return Status::ok();
    Status s = rollBackInterruptedChange();
    if (s)
        s = guarded([&] { return completePendingReplacement(journalPath()); });
    journalChecked_ = s.isOk();
    return s;
}

Status DataFiles::changeInPlace(const std::vector<InPlaceChange>& changes) {
    if (Status s = finishInterruptedReplacement(); !s)
        return s;
    for (const auto& c : changes)
        closeTeamFiles(c.path);
    return guarded([&] {
        // A try of this change that a disk error stopped is put back first, then made again.
        JournalFinding earlier;
        if (Status s = scorvane::rollBackInterruptedChange(rollbackPath(), earlier); !s)
            return s;
        return scorvane::changeInPlace(changes, rollbackPath());
    });
}

Status DataFiles::openFile(FileKind kind) {
    if (kind != FileKind::TeamList && kind != FileKind::ReportFormats)
        return notATeamFile();
    if (Status s = finishInterruptedReplacement(); !s)
        return s;
    return guarded([&] { return slot(kind).open(fileName(kind), recordLength(kind)); });
}

void DataFiles::closeFile(FileKind kind) {
    slot(kind).close();
}

void DataFiles::closeAll() {
    teamList_.close();
    reportFormats_.close();
    for (auto& [number, weak] : teams_)
        if (auto live = weak.lock())
            for (auto& f : live->files)
                f.close();
}

void DataFiles::closeTeamFiles(const std::string& path) {
    for (auto& [number, weak] : teams_)
        if (auto live = weak.lock())
            for (auto& f : live->files)
                if (f.isOpen() && f.path() == path)
                    f.close();
    for (RecordFile* f : {&teamList_, &reportFormats_})
        if (f->isOpen() && f->path() == path)
            f->close();
}

Status DataFiles::killFile(FileKind kind) {
    if (kind != FileKind::TeamList && kind != FileKind::ReportFormats)
        return notATeamFile();
    closeFile(kind);
    return guarded([&] { return removeFile(fileName(kind)); });
}

int DataFiles::recordCount(FileKind kind) {
    if (!slot(kind).isOpen() && !openFile(kind))
        return 0;
    return slot(kind).count();
}

Status DataFiles::teamRecord(Access mode, int recordNumber, TeamRecord& record) {
    Bytes bytes;
    if (mode == Access::Write)
        bytes = record.encode();
    if (!teamList_.isOpen())
        if (Status s = openFile(FileKind::TeamList); !s)
            return s;
    Status s = mode == Access::Read ? guarded([&] { return teamList_.read(recordNumber, bytes); })
                                    : guarded([&] { return teamList_.write(recordNumber, bytes); });
    if (s && mode == Access::Read)
        record = TeamRecord::decode(bytes);
    return s;
}

Status DataFiles::reportFormatRecord(Access mode, int recordNumber, ReportFormatRecord& record) {
    Bytes bytes;
    if (mode == Access::Write)
        bytes = record.encode();
    if (!reportFormats_.isOpen())
        if (Status s = openFile(FileKind::ReportFormats); !s)
            return s;
    Status s = mode == Access::Read
                   ? guarded([&] { return reportFormats_.read(recordNumber, bytes); })
                   : guarded([&] { return reportFormats_.write(recordNumber, bytes); });
    if (s && mode == Access::Read)
        record = ReportFormatRecord::decode(bytes);
    return s;
}

Status DataFiles::readAll(FileKind kind, std::vector<Bytes>& records) {
    records.clear();
    if (!slot(kind).isOpen())
        if (Status s = openFile(kind); !s)
            return s;
    return guarded([&] { return slot(kind).readAll(records); });
}

Status DataFiles::replaceAll(FileKind kind, const std::vector<Bytes>& records) {
    if (!slot(kind).isOpen())
        if (Status s = openFile(kind); !s)
            return s;
    return guarded([&] { return slot(kind).replaceAll(records); });
}

Status DataFiles::replaceTogether(const std::vector<std::pair<std::string, Bytes>>& files) {
    std::vector<std::pair<std::string, FileContents>> contents;
    for (const auto& [path, bytes] : files)
        contents.emplace_back(path, bytes);
    return replaceTogether(contents);
}

Status DataFiles::replaceTogether(const std::vector<std::pair<std::string, FileContents>>& files) {
    if (Status s = finishInterruptedReplacement(); !s)
        return s;
    for (const auto& entry : files)
        closeTeamFiles(entry.first);
    // The files are opened again, on the new contents, when next used.
    // A retry after the change was decided finishes it rather than making it again.
    bool decided = false;
    return guarded([&] {
        return decided ? completePendingReplacement(journalPath())
                       : replaceFilesTogether(files, journalPath(), &decided);
    });
}

// --- one team's files ---------------------------------------------------------------------------

RecordFile& TeamFiles::slot(FileKind kind) {
    return slots_->files[std::min<std::size_t>(teamSlotIndex(kind), 3)];
}

std::string TeamFiles::fileName(FileKind kind) const {
    return scorvane::fileName(kind, dir_->paths(), slots_->team);
}

Status TeamFiles::openFile(FileKind kind) {
    if (teamSlotIndex(kind) > 3)
        return notATeamFile();
    if (Status s = dir_->finishInterruptedReplacement(); !s)
        return s;
    Status s = dir_->guarded([&] { return slot(kind).open(fileName(kind), recordLength(kind)); });
    if (s && kind == FileKind::Roster)
        s = convertRoster();
    return s;
}

Status TeamFiles::convertRoster() {
    RecordFile& file = slot(FileKind::Roster);
    long long bytes = 0;
    if (Status s = dir_->guarded([&] { return file.length(bytes); }); !s)
        return s;
    if (bytes == 0 || bytes % static_cast<long long>(RosterRecord::Length) == 0)
        return Status::ok();
    Bytes contents;
    bool exists = false;
    if (Status s = dir_->guarded([&] { return readWholeFile(file.path(), contents, exists); }); !s)
        return s;
    std::size_t length = 0;
    if (!findLegacyRosterLength(contents, length))
        return Status::error(ErrorKind::Unreadable, "The roster file " +
                                                        platform::shownPath(file.path()) +
                                                        " cannot be read.");
    std::vector<Bytes> records;
    for (std::size_t off = 0; off < contents.size(); off += length) {
        Bytes old(contents.begin() + static_cast<std::ptrdiff_t>(off),
                  contents.begin() + static_cast<std::ptrdiff_t>(off + length));
        old.resize(std::max<std::size_t>(length, 19), ' ');
        RosterRecord r;
        r.playerNumber = field::getInt16(old, 0);
        r.playerName = field::getText(old, 2, width::playerName);
        records.push_back(r.encode());
    }
    return dir_->guarded([&] { return file.replaceAll(records); });
}

void TeamFiles::closeFile(FileKind kind) {
    if (teamSlotIndex(kind) <= 3)
        slot(kind).close();
}

void TeamFiles::closeAll() {
    for (auto& f : slots_->files)
        f.close();
}

Status TeamFiles::killFile(FileKind kind) {
    if (teamSlotIndex(kind) > 3)
        return notATeamFile();
    closeFile(kind);
    return dir_->guarded([&] { return removeFile(fileName(kind)); });
}

Status TeamFiles::ensureOpen(FileKind kind) {
    if (teamSlotIndex(kind) > 3)
        return notATeamFile();
    return slot(kind).isOpen() ? Status::ok() : openFile(kind);
}

int TeamFiles::recordCount(FileKind kind) {
    if (!ensureOpen(kind))
        return 0;
    return slot(kind).count();
}

Status TeamFiles::access(FileKind kind, Access mode, int recordNumber, Bytes& bytes) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    RecordFile& file = slot(kind);
    if (mode == Access::Read)
        return dir_->guarded([&] { return file.read(recordNumber, bytes); });
    return dir_->guarded([&] { return file.write(recordNumber, bytes); });
}

template <class R>
Status TeamFiles::typed(FileKind kind, Access mode, int recordNumber, R& record) {
    Bytes bytes;
    if (mode == Access::Write)
        bytes = record.encode();
    Status s = access(kind, mode, recordNumber, bytes);
    if (s && mode == Access::Read)
        record = R::decode(bytes);
    return s;
}

Status TeamFiles::rosterRecord(Access mode, int recordNumber, RosterRecord& record) {
    return typed(FileKind::Roster, mode, recordNumber, record);
}
Status TeamFiles::playerInfoRecord(Access mode, int recordNumber, PlayerInfoRecord& record) {
    return typed(FileKind::PlayerInfo, mode, recordNumber, record);
}
Status TeamFiles::statRecord(Access mode, int recordNumber, StatRecord& record) {
    return typed(FileKind::Stats, mode, recordNumber, record);
}
Status TeamFiles::statListRecord(Access mode, int recordNumber, StatListRecord& record) {
    return typed(FileKind::Stats, mode, recordNumber, record);
}
Status TeamFiles::gameRecord(Access mode, int recordNumber, GameRecord& record) {
    Status s = typed(FileKind::Games, mode, recordNumber, record);
    return s && mode == Access::Read ? checkSums(record) : s;
}

Status TeamFiles::readAll(FileKind kind, std::vector<Bytes>& records) {
    records.clear();
    if (Status s = ensureOpen(kind); !s)
        return s;
    return dir_->guarded([&] { return slot(kind).readAll(records); });
}

Status TeamFiles::replaceAll(FileKind kind, const std::vector<Bytes>& records) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    return dir_->guarded([&] { return slot(kind).replaceAll(records); });
}

Status
TeamFiles::replaceTogether(const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files) {
    std::vector<std::pair<std::string, FileContents>> contents;
    for (const auto& [kind, records] : files) {
        if (Status s = ensureOpen(kind); !s) // also finishes an earlier interrupted change
            return s;
        contents.emplace_back(fileName(kind), FileContents(records, recordLength(kind)));
    }
    return dir_->replaceTogether(contents);
}

Status TeamFiles::replaceTogether(const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files,
                                  FileKind rewritten, const RecordRewrite& rewrite) {
    std::vector<std::pair<std::string, FileContents>> contents;
    for (const auto& [kind, records] : files) {
        if (Status s = ensureOpen(kind); !s)
            return s;
        contents.emplace_back(fileName(kind), FileContents(records, recordLength(kind)));
    }
    if (Status s = ensureOpen(rewritten); !s)
        return s;
    contents.emplace_back(fileName(rewritten),
                          FileContents(fileName(rewritten), recordLength(rewritten), rewrite));
    return dir_->replaceTogether(contents);
}

Status TeamFiles::changeInPlace(const std::vector<RecordChanges>& changes) {
    std::vector<InPlaceChange> files;
    for (const RecordChanges& c : changes) {
        if (Status s = ensureOpen(c.kind); !s)
            return s;
        InPlaceChange f;
        f.path = fileName(c.kind);
        f.recordLength = recordLength(c.kind);
        for (const auto& [n, bytes] : c.records) {
            Bytes record(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                            bytes.size(), f.recordLength)));
            record.resize(f.recordLength, ' ');
            f.writes.emplace(static_cast<long long>(n - 1) * static_cast<long long>(f.recordLength),
                             std::move(record));
        }
        if (c.rewrite != nullptr) {
            f.rewrite = c.rewrite;
            f.rewriteFrom = std::max(0, c.rewriteFrom - 1);
        }
        files.push_back(std::move(f));
    }
    return dir_->changeInPlace(files);
}

Status TeamFiles::rewriteAll(FileKind kind, const RecordRewrite& rewrite) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    // The old file is closed while the new one is made from it (Windows refuses to replace an open
    // file). Until the rename the old file is in place, so a retry makes the new one again from
    // it; after the rename only the opening is retried.
    RecordFile& file = slot(kind);
    const std::string path = fileName(kind);
    const std::size_t length = recordLength(kind);
    file.close();
    Status s = dir_->guarded(
        [&] { return writeFileAtomically(path, FileContents(path, length, rewrite)); });
    if (s.kind() == ErrorKind::ProgramEnded)
        return s;
    Status reopened = dir_->guarded([&] { return file.open(path, length); });
    return s ? reopened : s;
}

Status TeamFiles::forEachRecord(FileKind kind, const std::function<void(ByteView)>& visit) {
    if (Status s = ensureOpen(kind); !s)
        return s;
    const std::size_t length = recordLength(kind);
    return dir_->guarded([&] {
        bool exists = false;
        return readRecordPieces(
            fileName(kind), length,
            [&](ByteView piece) {
                for (std::size_t at = 0; at + length <= piece.size(); at += length)
                    visit(piece.subspan(at, length));
            },
            exists);
    });
}

Status TeamFiles::changeStatHeaders(const std::function<bool(StatHeader&)>& change) {
    // Up to this many changed records are written in place; more are written with the file.
    constexpr std::size_t kInPlace = 4096;
    RecordChanges stats;
    bool many = false;
    int n = 0;
    if (Status s = forEachRecord(FileKind::Stats,
                                 [&](ByteView rec) {
                                     ++n;
                                     StatHeader h = StatHeader::decode(rec);
                                     if (many || !change(h))
                                         return;
                                     many = stats.records.size() == kInPlace;
                                     if (many)
                                         return;
                                     Bytes changed(rec.begin(), rec.end());
                                     h.encodeInto(changed);
                                     stats.records.emplace(n, std::move(changed));
                                 });
        !s)
        return s;
    if (many)
        return rewriteAll(FileKind::Stats, statHeaderRewrite(change));
    return stats.records.empty() ? Status::ok() : changeInPlace({stats});
}

RecordRewrite statHeaderRewrite(const std::function<bool(StatHeader&)>& change) {
    return [change](ByteView piece, std::size_t, Bytes& out) {
        const std::size_t start = out.size();
        out.insert(out.end(), piece.begin(), piece.end());
        for (std::size_t at = start; at + StatRecord::Length <= out.size();
             at += StatRecord::Length) {
            const std::span<std::uint8_t> rec(out.data() + at, StatRecord::Length);
            StatHeader h = StatHeader::decode(rec);
            if (change(h))
                h.encodeInto(rec);
        }
    };
}

Status TeamFiles::findGameStats(int gameNumber, int& first, int& last) {
    if (Status s = ensureOpen(FileKind::Stats); !s)
        return s;
    RecordFile& file = slot(FileKind::Stats);
    const int count = file.count();
    // Each header the search looks at, by record number: in game order they never go down.
    std::map<int, int> seen;
    Status read = Status::ok();
    const auto gameAt = [&](int n) {
        if (const auto it = seen.find(n); it != seen.end())
            return it->second;
        Bytes bytes;
        if (read)
            read = dir_->guarded([&] { return file.read(n, bytes); });
        const int g = read ? StatHeader::decode(bytes).gameNumber : 0;
        seen.emplace(n, g);
        return g;
    };
    const auto firstWhere = [&](int lo, auto later) {
        for (int hi = count + 1; lo < hi;) {
            const int mid = lo + (hi - lo) / 2;
            if (later(gameAt(mid)))
                hi = mid;
            else
                lo = mid + 1;
        }
        return lo;
    };
    first = firstWhere(1, [&](int g) { return g >= gameNumber; });
    const int end = firstWhere(first, [&](int g) { return g > gameNumber; });
    last = end - 1;
    if (count > 0) {
        (void)gameAt(1);
        (void)gameAt(count);
    }
    if (!read)
        return read;
    bool ordered = true;
    int previous = 0;
    for (const auto& [n, g] : seen) {
        ordered = ordered && g >= previous;
        previous = g;
    }
    // The block found holds the game's records only.
    if (ordered)
        if (Status s = forEachStatRecord(first, last,
                                         [&](ByteView rec, int) {
                                             ordered =
                                                 StatHeader::decode(rec).gameNumber == gameNumber;
                                             return ordered;
                                         });
            !s)
            return s;
    if (ordered)
        return Status::ok();

    // Out of order: the records up to the first one of a later game, as read from the start.
    first = 1;
    last = count;
    return forEachStatRecord(1, count, [&](ByteView rec, int n) {
        if (StatHeader::decode(rec).gameNumber <= gameNumber)
            return true;
        last = n - 1;
        return false;
    });
}

Status TeamFiles::forEachStatRecord(int first, int last,
                                    const std::function<bool(ByteView, int)>& visit) {
    if (Status s = ensureOpen(FileKind::Stats); !s)
        return s;
    RecordFile& file = slot(FileKind::Stats);
    constexpr int kPerPiece = (1 << 20) / static_cast<int>(StatRecord::Length); // about 1 MiB
    Bytes piece;
    for (int from = std::max(first, 1); from <= last;) {
        const int n = std::min(kPerPiece, last - from + 1);
        if (Status s = dir_->guarded([&] { return file.readRun(from, n, piece); }); !s)
            return s;
        const int got = static_cast<int>(piece.size() / StatRecord::Length);
        for (int i = 0; i < got; ++i)
            if (!visit(ByteView(piece).subspan(static_cast<std::size_t>(i) * StatRecord::Length,
                                               StatRecord::Length),
                       from + i))
                return Status::ok();
        if (got < n)
            break;
        from += n;
    }
    return Status::ok();
}

Status TeamFiles::statRecords(int first, int last, GameStatRecords& records) {
    records.clear();
    return forEachStatRecord(first, last, [&](ByteView rec, int n) {
        records.emplace(n, Bytes(rec.begin(), rec.end()));
        return true;
    });
}

Status TeamFiles::indexGameStats(const GameRecord& game, GameStatsIndex& index,
                                 GameStatRecords* records) {
    int first = 1, last = 0;
    if (Status s = findGameStats(game.gameNumber, first, last); !s)
        return s;
    RecordFile& file = slot(FileKind::Stats);
    const int count = file.count();
    // Only the records found are read; the game's own are kept whole.
    std::vector<StatHeader> headers;
    GameStatRecords kept;
    if (Status s = forEachStatRecord(first, last,
                                     [&](ByteView rec, int n) {
                                         headers.push_back(StatHeader::decode(rec));
                                         if (headers.back().gameNumber == game.gameNumber)
                                             kept.emplace(n, Bytes(rec.begin(), rec.end()));
                                         return true;
                                     });
        !s)
        return s;
    std::vector<int> changed;
    index = scorvane::indexGameStats(headers, game, changed, first);
    index.recordCount = count;
    if (index.insertionPoint > count)
        index.insertionPoint = count + 1;
    RecordChanges fixes;
    for (int n : changed) {
        Bytes& rec = kept.at(n);
        headers[static_cast<std::size_t>(n - first)].encodeInto(rec);
        fixes.records.emplace(n, rec);
    }
    if (records)
        *records = kept;
    // Copies of the game's type and mark that went stale are corrected in place.
    return fixes.records.empty() ? Status::ok() : changeInPlace({fixes});
}

} // namespace scorvane
