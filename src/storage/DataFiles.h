#pragma once

#include "FileNames.h"
#include "Prompter.h"
#include "RecordFile.h"
#include "Records.h"
#include "StatIndex.h"
#include "Status.h"

#include <array>
#include <functional>
#include <vector>

namespace scorvane {

// The one way the program reaches its data files. Each file kind has its own slot; record access
// follows the mode-letter convention: "G" reads, any other letter writes. Every operation runs
// under the disk error handler: a refused read or write shows its message, a disk that is not
// ready may be retried, and anything else ends the program (the status then says ProgramEnded).
//
// Files are opened on first use and stay open until the team or the directories change.
class DataFiles {
public:
    DataFiles(DataPaths paths, Prompter& prompter);

    const DataPaths& paths() const { return paths_; }
    void setPaths(DataPaths paths);
    int team() const { return team_; }
    // The current team's number (1..100) is part of every per-team file name.
    void setTeam(int teamNumber);

    std::string fileName(FileKind kind) const;
    // Opens a file, creating it empty when it does not exist. Opening a roster written in an older
    // record layout converts it to the current one.
    Status openFile(FileKind kind);
    void closeFile(FileKind kind);
    void closeAll();
    Status killFile(FileKind kind);
    int recordCount(FileKind kind);

    Status teamRecord(char mode, int recordNumber, TeamRecord& record);
    Status rosterRecord(char mode, int recordNumber, RosterRecord& record);
    Status playerInfoRecord(char mode, int recordNumber, PlayerInfoRecord& record);
    // Reading a game fails with Overflow when a point sum leaves the 16-bit range; the record is
    // still filled in then.
    Status gameRecord(char mode, int recordNumber, GameRecord& record);
    Status gameRecordAlt(int recordNumber, GameRecord& record);
    Status statRecord(char mode, int recordNumber, StatRecord& record);
    Status statListRecord(char mode, int recordNumber, StatListRecord& record);
    Status reportFormatRecord(char mode, int recordNumber, ReportFormatRecord& record);

    // Whole-file passes: every record read at once, or the file replaced at once (crash-safe).
    Status readAll(FileKind kind, std::vector<Bytes>& records);
    Status replaceAll(FileKind kind, const std::vector<Bytes>& records);

    // Replaces several files at once so that a crash at any moment leaves all of them as before
    // or all of them as after: each new file is written beside its old one, a journal naming
    // them is written, the new files are renamed over the old ones and the journal is removed.
    // A journal left by a crash is completed the next time a file of the directory is opened.
    Status replaceTogether(const std::vector<std::pair<FileKind, std::vector<Bytes>>>& files);

    template <class R> Status readAllAs(FileKind kind, std::vector<R>& out) {
        std::vector<Bytes> raw;
        Status s = readAll(kind, raw);
        out.clear();
        out.reserve(raw.size());
        for (const auto& b : raw)
            out.push_back(R::decode(b));
        return s;
    }
    template <class R> Status replaceAllWith(FileKind kind, const std::vector<R>& records) {
        std::vector<Bytes> raw;
        raw.reserve(records.size());
        for (const auto& r : records)
            raw.push_back(r.encode());
        return replaceAll(kind, raw);
    }

    // Indexes the statistics of a game (see StatIndex.h) and writes back the records whose copied
    // game type or Special Select mark it corrected, in one pass over the file.
    Status indexGameStats(const GameRecord& game, GameStatsIndex& index);

private:
    RecordFile& slot(FileKind kind) { return slots_[static_cast<std::size_t>(kind)]; }
    Status guarded(const std::function<Status()>& op);
    Status ensureOpen(FileKind kind);
    Status access(FileKind kind, char mode, int recordNumber, Bytes& bytes);
    template <class R> Status typed(FileKind kind, char mode, int recordNumber, R& record);
    Status convertRoster();
    Status finishInterruptedReplacement();
    std::string journalPath() const { return paths_.dataDirectory + "FBJOURNL.TMP"; }

    DataPaths paths_;
    Prompter& prompter_;
    int team_ = 1;
    bool journalChecked_ = false;
    std::array<RecordFile, 10> slots_;
};

} // namespace scorvane
