// A restore killed at random moments: afterwards, once start-up has finished what the journal
// says, the data directory holds exactly the files it held before or exactly those of the backup.
// Runs where processes can be forked and killed.

#include "shell/Backup.h"
#include "shell/FolderSnapshot.h"
#include "storage/Platform.h"
#include "storage/Records.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#if defined(__unix__) || defined(__APPLE__)

#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace scorvane {
namespace {

using testing::filler;
using testing::FolderSnapshot;
using testing::snapshot;

// The data files only: the backup of the replaced files a restore writes first is a file of its
// own, beside them, and no part of what is compared.
FolderSnapshot dataFiles(const std::filesystem::path& folder) {
    FolderSnapshot files = snapshot(folder);
    std::erase_if(files, [](const auto& kv) {
        return kv.first.starts_with("Before restore") && kv.first.ends_with(".sfb");
    });
    return files;
}

// Restores in a child process and returns the child's id at once; with `fork` false, restores in
// this process and returns 0 when the restore went through.
pid_t restoreInChild(const std::string& dataDir, const std::string& archive, bool fork = true) {
    if (fork)
        if (const pid_t pid = ::fork(); pid != 0)
            return pid;
    testing::FakePrompter prompter;
    prompter.answers = {Answer::Yes};
    DataFiles files(DataPaths{"", dataDir, dataDir}, prompter);
    std::string undo;
    const RestoreResult r = restoreDataFiles(files, prompter, archive, "2026-11-24 08:00:00", undo);
    _exit(r == RestoreResult::Restored ? 0 : 1);
}

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
    // Start-up's part, then what the data directory holds: "before", "after" or the file names.
    std::string settle() const {
        if (!finishInterruptedChanges(DataPaths{"", data.dir(), data.dir()}))
            return "an unfinished change";
        const FolderSnapshot now = dataFiles(data.path());
        if (now == before)
            return "before";
        if (now == after)
            return "after";
        std::string names = "a mix:";
        for (const auto& [name, bytes] : now)
            names += " " + name;
        return names;
    }
};

TEST(RestoreCrash, AKilledRestoreLeavesTheDataAsBeforeOrAsAfter) {
    Scenario s;
    // One restore left alone tells how long a restore takes here.
    testing::restoreSnapshot(s.data.path(), s.before);
    const auto start = std::chrono::steady_clock::now();
    int status = 0;
    waitpid(restoreInChild(s.data.dir(), s.archivePath), &status, 0);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(
                          std::chrono::steady_clock::now() - start)
                          .count();
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    ASSERT_EQ(dataFiles(s.data.path()), s.after);

    std::mt19937 random(20261123);
    std::uniform_int_distribution<long long> moment(0, took + took / 4);
    int asBefore = 0, asAfter = 0;
    const int runs = 80;
    for (int run = 0; run < runs; ++run) {
        testing::restoreSnapshot(s.data.path(), s.before);
        const pid_t child = restoreInChild(s.data.dir(), s.archivePath);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(child, SIGKILL);
        waitpid(child, &status, 0);

        const std::string outcome = s.settle();
        if (outcome == "before")
            ++asBefore;
        else if (outcome == "after")
            ++asAfter;
        else
            FAIL() << "run " << run << " left " << outcome;
    }
    std::cout << "[          ] " << asBefore << " runs as before, " << asAfter
              << " as after; a restore took " << took << " us\n";
    EXPECT_EQ(asBefore + asAfter, runs);
    // The moments were spread over the whole restore: both endings came up.
    EXPECT_GT(asBefore, 0);
    EXPECT_GT(asAfter, 0);
}

// Counts the calls to the system and ends the process, as a crash would, at the chosen one.
platform::Injection stopAtCall(void* context, const platform::CallInfo&) {
    int& left = *static_cast<int*>(context);
    return {--left == 0 ? platform::Fault::Crash : platform::Fault::None, 0};
}

TEST(RestoreCrash, StoppedAtEachOfItsFileOperationsTheDataIsAsBeforeOrAsAfter) {
    Scenario s;
    int asBefore = 0, asAfter = 0;
    for (int stopAt = 1;; ++stopAt) {
        ASSERT_LT(stopAt, 2000) << "the restore never finished";
        testing::restoreSnapshot(s.data.path(), s.before);
        const pid_t child = fork();
        if (child == 0) {
            int left = stopAt;
            const platform::Hooks hooks{&left, &stopAtCall};
            platform::setHooks(&hooks);
            _exit(restoreInChild(s.data.dir(), s.archivePath, false));
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        const bool stopped = WEXITSTATUS(status) == platform::kCrashExitCode;
        const std::string outcome = s.settle();
        ASSERT_TRUE(outcome == "before" || outcome == "after")
            << "stopped at call " << stopAt << ": " << outcome;
        (outcome == "before" ? asBefore : asAfter) += 1;
        if (!stopped) {
            EXPECT_EQ(WEXITSTATUS(status), 0);
            EXPECT_EQ(outcome, "after");
            break;
        }
    }
    std::cout << "[          ] stopped at each of " << asBefore + asAfter - 1
              << " calls: " << asBefore << " as before, " << asAfter << " as after\n";
    EXPECT_GT(asBefore, 10);
    EXPECT_GT(asAfter, 5);
}

} // namespace
} // namespace scorvane

#endif
