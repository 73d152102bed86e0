#pragma once

#include "FileNames.h"
#include "Prompter.h"
#include "RecordFile.h"
#include "Records.h"
#include "RollbackJournal.h"
#include "StatIndex.h"
#include "Status.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace scorvane {

// Record access: read a record, or write one. In the files' own terms a read is mode "G" and a
// write any other letter; inside the program the two are named.
enum class Access { Read, Write };

class TeamFiles;

// What the user is told when the files of a data directory were put back as they were before a
// change the program did not finish (a crash, a power cut).
Message unfinishedChangeMessage(const std::string& dataDirectory);

namespace detail {
// The open files of one team, shared by every handle on that team.
struct TeamSlots {
    int team = 0;
    std::array<RecordFile, 4> files; // roster, games, statistics, player information
};

// Whole-file passes in terms of records: `Files` reads and replaces a file as raw records.
template <class Files> class TypedPasses {
public:
    template <class R> [[nodiscard]] Status readAllAs(FileKind kind, std::vector<R>& out) {
        std::vector<Bytes> raw;
        Status s = static_cast<Files&>(*this).readAll(kind, raw);
        out.clear();
        out.reserve(raw.size());
        for (const auto& b : raw)
            out.push_back(R::decode(b));
        return s;
    }
    template <class R>
    [[nodiscard]] Status replaceAllWith(FileKind kind, const std::vector<R>& records) {
        std::vector<Bytes> raw;
        raw.reserve(records.size());
        for (const auto& r : records)
            raw.push_back(r.encode());
        return static_cast<Files&>(*this).replaceAll(kind, raw);
    }
};
} // namespace detail

// The one way the program reaches its data files. This object stands for one data directory (and
// its report directory): it holds the team list and the report formats, and hands out a TeamFiles
// handle per team for the team's roster, player information, game and statistics files. Every
// operation runs under the disk error handler: a refused read or write shows its message, a disk
// that is not ready may be retried, and anything else ends the program (the status then says
// ProgramEnded).
//
// Files are opened on first use. The team list and report formats stay open until the directories
// change; a team's files stay open while a handle on the team exists. Handles on the same team
// share their files, so one handle sees what another wrote. A handle must not outlive its
// DataFiles.
class DataFiles : public detail::TypedPasses<DataFiles> {
public:
    DataFiles(DataPaths paths, Prompter& prompter);
    ~DataFiles();
    DataFiles(const DataFiles&) = delete;
    DataFiles& operator=(const DataFiles&) = delete;

    const DataPaths& paths() const { return paths_; }
    // Another data directory: every open file is closed (handles on teams stay usable and open
    // their files again, in the new directory, when next used).
    void setPaths(DataPaths paths);
    Prompter& prompter() { return prompter_; }

    // The files of team `number` (1..100), whose number is part of every per-team file name.
    TeamFiles team(int number);

    // Directory files: the team list and the report formats (kinds TeamList, ReportFormats).
    std::string fileName(FileKind kind) const;
    [[nodiscard]] Status openFile(FileKind kind);
    void closeFile(FileKind kind);
    void closeAll();
    [[nodiscard]] Status killFile(FileKind kind);
    int recordCount(FileKind kind);
    [[nodiscard]] Status teamRecord(Access mode, int recordNumber, TeamRecord& record);
    [[nodiscard]] Status reportFormatRecord(Access mode, int recordNumber,
                                            ReportFormatRecord& record);
    [[nodiscard]] Status readAll(FileKind kind, std::vector<Bytes>& records);
    [[nodiscard]] Status replaceAll(FileKind kind, const std::vector<Bytes>& records);

    // Runs a file operation under the disk error handler.
    [[nodiscard]] Status guarded(const std::function<Status()>& op);
    // A journal left by a crash is dealt with before the first file of the directory is opened: a
    // change made in place is rolled back (and the user told, unfinishedChangeMessage), a
    // replacement of whole files is completed. A rollback
    // journal that does not fit the files is never applied: it is set aside
    // (kRefusedJournalFileName) and the user is told.
    [[nodiscard]] Status finishInterruptedReplacement();
    // Changes files of the directory in place through the rollback journal (see changeInPlace in
    // RollbackJournal.h): a crash at any moment leaves all of them as before or all as after. A
    // retry after a disk error puts them back as before and makes the change again. The files'
    // slots are closed first and opened again when next used.
    [[nodiscard]] Status changeInPlace(const std::vector<InPlaceChange>& changes);
    // Replaces several files of the directory at once (see replaceFilesTogether): a crash at any
    // moment leaves all of them as before or all of them as after. The files' slots are closed
    // first and opened again, on the new contents, when next used.
    [[nodiscard]] Status replaceTogether(const std::vector<std::pair<std::string, Bytes>>& files);
    [[nodiscard]] Status
    replaceTogether(const std::vector<std::pair<std::string, FileContents>>& files);

private:
    friend class TeamFiles;
    RecordFile& slot(FileKind kind);
    void closeTeamFiles(const std::string& path);
    std::string journalPath() const { return paths_.dataDirectory + kJournalFileName; }
    std::string rollbackPath() const { return paths_.dataDirectory + kRollbackJournalFileName; }
    [[nodiscard]] Status rollBackInterruptedChange();

    DataPaths paths_;
    Prompter& prompter_;
    bool journalChecked_ = false;
    RecordFile teamList_;
    RecordFile reportFormats_;
    std::map<int, std::weak_ptr<detail::TeamSlots>> teams_;
};

// The rewrite that changes each statistics record's header with `change` (which returns whether
// it changed the header) and keeps every other byte.
RecordRewrite statHeaderRewrite(const std::function<bool(StatHeader&)>& change);

// The files of one team: roster, player information, games and player statistics. Record access
// follows the files' numbering from 1; whole-file passes read or replace a file at once.
class TeamFiles : public detail::TypedPasses<TeamFiles> {
public:
    int number() const { return slots_->team; }
    DataFiles& directory() { return *dir_; }

    // Kinds Roster, Games, Stats and PlayerInfo.
    std::string fileName(FileKind kind) const;
    // Opens a file, creating it empty when it does not exist. Opening a roster written in an older
    // record layout converts it to the current one.
    [[nodiscard]] Status openFile(FileKind kind);
    void closeFile(FileKind kind);
    void closeAll();
    [[nodiscard]] Status killFile(FileKind kind);
    int recordCount(FileKind kind);

    [[nodiscard]] Status rosterRecord(Access mode, int recordNumber, RosterRecord& record);
    [[nodiscard]] Status playerInfoRecord(Access mode, int recordNumber, PlayerInfoRecord& record);
    // Reading a game fails with Overflow when a point sum leaves the 16-bit range; the record is
    // still filled in then.
    [[nodiscard]] Status gameRecord(Access mode, int recordNumber, GameRecord& record);
    [[nodiscard]] Status statRecord(Access mode, int recordNumber, StatRecord& record);
    [[nodiscard]] Status statListRecord(Access mode, int recordNumber, StatListRecord& record);

    // Whole-file passes: every record read at once, or the file replaced at once (crash-safe).
    [[nodiscard]] Status readAll(FileKind kind, std::vector<Bytes>& records);
    [[nodiscard]] Status replaceAll(FileKind kind, const std::vector<Bytes>& records);

    // Replaces several files of this team so that a crash at any moment leaves all of them as
    // before or all of them as after: each new file is written beside its old one, a journal
    // naming them is written, the new files are renamed over the old ones and the journal is
    // removed. A journal left by a crash is completed the next time a file of the directory is
    // opened.
    [[nodiscard]] Status
    replaceTogether(const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files);
    // The same with one more file of the team rewritten in one pass (see RecordRewrite), never
    // held whole: a statistics file of a million records renumbered with the games, for instance.
    [[nodiscard]] Status
    replaceTogether(const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files,
                    FileKind rewritten, const RecordRewrite& rewrite);

    // Replaces a file with its records rewritten in one pass (see RecordRewrite), crash-safe as
    // replaceAll.
    [[nodiscard]] Status rewriteAll(FileKind kind, const RecordRewrite& rewrite);
    // Calls visit(record) for every whole record of a file, read a piece at a time.
    [[nodiscard]] Status forEachRecord(FileKind kind, const std::function<void(ByteView)>& visit);
    // Changes the statistics records' headers: `change` returns whether it changed the header it
    // was given. The file is first read to learn which headers change; nothing is written when none
    // does, the changed records are written in place when they are few, and the file is rewritten
    // in one pass when they are many.
    [[nodiscard]] Status changeStatHeaders(const std::function<bool(StatHeader&)>& change);

    // Indexes the statistics of a game (see StatIndex.h) and writes back the records whose copied
    // game type or Special Select mark it corrected, in one pass over the file that ends at the
    // first record of a later game. `records`, when given, gets the game's records (as
    // corrected) by record number.
    [[nodiscard]] Status indexGameStats(const GameRecord& game, GameStatsIndex& index,
                                        GameStatRecords* records = nullptr);

    // Records changed in place, through the directory's rollback journal, in one or more files of
    // the team together: each file's records by number (the record after the last appends), or its
    // records from `rewriteFrom` (a record number) on rewritten in one pass, as RecordRewrite says
    // with records counted from the start of the file.
    struct RecordChanges {
        FileKind kind = FileKind::Stats;
        std::map<int, Bytes> records;
        int rewriteFrom = 0;
        const RecordRewrite* rewrite = nullptr;
    };
    [[nodiscard]] Status changeInPlace(const std::vector<RecordChanges>& changes);

    // Where the statistics records of a game lie: records first..last (first > last when it has
    // none; first is then where they would go). The file is in game order, so the records are
    // found by a binary search over their headers; when what the search saw shows the file out of
    // order, the file is read from the start instead, up to the first record of a later game, as
    // the order of an old or damaged file has it.
    [[nodiscard]] Status findGameStats(int gameNumber, int& first, int& last);
    // Statistics records first..last, by number, read in pieces.
    [[nodiscard]] Status statRecords(int first, int last, GameStatRecords& records);

private:
    friend class DataFiles;
    TeamFiles(DataFiles& dir, std::shared_ptr<detail::TeamSlots> shared)
        : dir_(&dir), slots_(std::move(shared)) {}
    RecordFile& slot(FileKind kind);
    [[nodiscard]] Status ensureOpen(FileKind kind);
    // Calls visit(record, number) for statistics records first..last, read about 1 MiB at a
    // time, until it returns false.
    [[nodiscard]] Status forEachStatRecord(int first, int last,
                                           const std::function<bool(ByteView, int)>& visit);
    [[nodiscard]] Status access(FileKind kind, Access mode, int recordNumber, Bytes& bytes);
    template <class R>
    [[nodiscard]] Status typed(FileKind kind, Access mode, int recordNumber, R& record);
    [[nodiscard]] Status convertRoster();

    DataFiles* dir_;
    std::shared_ptr<detail::TeamSlots> slots_;
};

} // namespace scorvane
