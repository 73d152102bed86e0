// A restore killed at random moments, or ended at each of its file operations in turn: afterwards,
// once start-up has finished what the journal says, the data directory holds exactly the files it
// held before or exactly those of the backup. Runs where processes can be forked and killed.

#include "faults/FaultInjector.h"
#include "shell/Backup.h"
#include "shell/FolderSnapshot.h"
#include "support/ChildProcess.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#if defined(__unix__) || defined(__APPLE__)

#include <map>
#include <memory>

namespace scorvane {
namespace {

using testing::filler;
using testing::FolderSnapshot;

// Before: teams 1 to 3. The backup: teams 1, 2 and 4 with other contents, and report formats.
struct Scenario {
    testing::TempDir data, elsewhere;
    FolderSnapshot before, after;
    std::string archivePath = elsewhere.file("backup.sfb");

    Scenario() {
        before["FBTEAMS.DAT"] = filler(3 * 40, 1);
        for (int team = 1; team <= 3; ++team)
            for (const char* prefix : {"FBPN", "FBPI", "FBGS", "FBPS"})
                before[prefix + std::to_string(team) + ".DAT"] = filler(4000, team * 7 + prefix[3]);
        BackupArchive archive;
        archive.madeOn = "2026-11-23 21:05:13";
        archive.files.push_back({Folder::Data, "FBTEAMS.DAT", filler(4 * 40, 2)});
        for (int team : {1, 2, 4})
            for (const char* prefix : {"FBPN", "FBPI", "FBGS", "FBPS"})
                archive.files.push_back({Folder::Data, prefix + std::to_string(team) + ".DAT",
                                         filler(6000, team * 11 + prefix[3])});
        archive.files.push_back({Folder::Report, "FBRPTFMT.DAT", filler(167, 3)});
        elsewhere.write("backup.sfb", encodeBackup(archive));
        for (const ArchivedFile& f : archive.files)
            after[f.name] = f.contents;
    }
    // A restore over the files as before, in a child process under `decide` when given: the
    // child's work for runInChild, which exits with 0 when the restore went through.
    std::function<int(const std::function<void()>&)>
    restore(testing::FaultInjector::Decide decide = {}) const {
        return [this, decide](const std::function<void()>& started) {
            testing::restoreSnapshot(data.path(), before);
            std::unique_ptr<testing::FaultInjector> faults;
            if (decide)
                faults = std::make_unique<testing::FaultInjector>(decide);
            testing::FakePrompter prompter;
            prompter.answers = {Answer::Yes};
            DataFiles files(DataPaths{"", data.dir(), data.dir()}, prompter);
            started();
            std::string undo;
            return restoreDataFiles(files, prompter, archivePath, "2026-11-24 08:00:00", undo) ==
                           RestoreResult::Restored
                       ? 0
                       : 1;
        };
    }
    // Start-up's part, then what the data directory holds: "before", "after" or the file names.
    // The backup of the replaced files a restore writes first is a file of its own, beside them,
    // and no part of what is compared.
    std::string settle() const {
        if (!finishInterruptedChanges(DataPaths{"", data.dir(), data.dir()}))
            return "an unfinished change";
        FolderSnapshot now = testing::snapshot(data.path());
        std::erase_if(now, [](const auto& kv) {
            return kv.first.starts_with("Before restore") && kv.first.ends_with(".sfb");
        });
        if (now == before || now == after)
            return now == before ? "before" : "after";
        std::string names = "a mix:";
        for (const auto& [name, bytes] : now)
            names += " " + name;
        return names;
    }
};

TEST(RestoreCrash, AKilledRestoreLeavesTheDataAsBeforeOrAsAfter) {
    Scenario s;
    // One restore left alone tells how long a restore takes here.
    const long long took =
        testing::microsecondsFor([&] { ASSERT_EQ(testing::runInChild(s.restore()), 0); });
    ASSERT_EQ(s.settle(), "after");
    const testing::KillTally t =
        testing::killAtRandomMoments(80, 20261123, took + took / 4, s.restore(), [&] {
            const std::string outcome = s.settle();
            EXPECT_TRUE(outcome == "before" || outcome == "after") << outcome;
            return outcome == "after"    ? testing::Held::New
                   : outcome == "before" ? testing::Held::Old
                                         : testing::Held::Neither;
        });
    // The moments were spread over the whole restore: both endings came up.
    EXPECT_GT(t.old, 0);
    EXPECT_GT(t.fresh, 0);
}

TEST(RestoreCrash, StoppedAtEachOfItsFileOperationsTheDataIsAsBeforeOrAsAfter) {
    Scenario s;
    std::map<std::string, int> outcomes;
    for (int stopAt = 1;; ++stopAt) {
        ASSERT_LT(stopAt, 2000) << "the restore never finished";
        const int code = testing::runInChild(
            s.restore(testing::faultOnCall(stopAt, platform::Fault::Crash, false)));
        const std::string outcome = s.settle();
        ASSERT_TRUE(outcome == "before" || outcome == "after")
            << "stopped at call " << stopAt << ": " << outcome;
        ++outcomes[outcome];
        if (code != platform::kCrashExitCode) {
            EXPECT_EQ(code, 0);
            EXPECT_EQ(outcome, "after");
            break;
        }
    }
    EXPECT_GT(outcomes["before"], 10);
    EXPECT_GT(outcomes["after"], 5);
}

} // namespace
} // namespace scorvane

#endif
