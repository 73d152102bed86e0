#include "shell/Backup.h"
#include "shell/DeleteFiles.h"
#include "shell/FolderSnapshot.h"
#include "storage/Platform.h"
#include "storage/Records.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#if defined(__unix__) || defined(__APPLE__)
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace scorvane {
namespace {

using testing::filler;
using testing::FolderSnapshot;
using testing::snapshot;

Bytes teamList(std::initializer_list<const char*> names) {
    Bytes list;
    for (const char* name : names) {
        const Bytes r = TeamRecord{name, name, ""}.encode();
        list.insert(list.end(), r.begin(), r.end());
    }
    return list;
}

// A data directory with three teams' files (team 3 without statistics), a note of the user's
// that is no data file, and the report formats in a report directory of their own.
struct BackupRestore : ::testing::Test {
    testing::TempDir data, reports, elsewhere;
    testing::FakePrompter prompter;
    DataFiles files{DataPaths{"", data.dir(), reports.dir()}, prompter};

    BackupRestore() {
        data.write("FBTEAMS.DAT", teamList({"Bears", "Lions", "Hawks"}));
        int seed = 0;
        for (const char* name : {"FBPN1.DAT", "FBPI1.DAT", "FBGS1.DAT", "FBPS1.DAT", "FBPN2.DAT",
                                 "FBGS2.DAT", "FBPS2.DAT", "FBPN3.DAT", "FBSITE2.TXT"}) {
            ++seed;
            data.write(name, filler(200 + 37 * static_cast<std::size_t>(seed), seed));
        }
        data.write("notes.txt", Bytes{'m', 'i', 'n', 'e'});
        reports.write("FBRPTFMT.DAT", filler(167 * 2, 99));
    }
    std::string undo;

    // The data directory's files and the report directory's.
    std::pair<FolderSnapshot, FolderSnapshot> snapshots() const {
        return {snapshot(data.path()), snapshot(reports.path())};
    }
    std::string backupPath() const { return elsewhere.file("season.sfb"); }
    BackupResult backUp(const std::string& path) {
        return backUpDataFiles(files, prompter, path, "2026-11-23 21:05:13");
    }
    BackupResult backUp() { return backUp(backupPath()); }
    RestoreResult restore(const std::string& archive, const char* when = "2026-11-24 08:00:00") {
        return restoreDataFiles(files, prompter, archive, when, undo);
    }
    // Changes every kind of thing a restore must undo: a changed file, a removed one, a new team.
    void changeEverything() const {
        data.write("FBPN1.DAT", filler(201, 7));
        std::filesystem::remove(data.path() / "FBGS2.DAT");
        data.write("FBPN7.DAT", filler(201, 8));
        data.write("FBTEAMS.DAT", teamList({"Bears", "Lions", "Hawks", "", "", "", "Owls"}));
        reports.write("FBRPTFMT.DAT", filler(167, 9));
    }
};

#if defined(__unix__) || defined(__APPLE__)
// What `f` returns with no file allowed to grow past `limit` bytes, as on a full disk.
template <class F> auto underFileSizeLimit(rlim_t limit, F f) {
    rlimit before{};
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    auto* oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = before;
    limited.rlim_cur = limit;
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const auto result = f();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    return result;
}
#endif

FolderSnapshot without(FolderSnapshot files, const std::string& name) {
    files.erase(name);
    return files;
}

TEST(BackupArchive, EveryChangedOrMissingByteIsFound) {
    BackupArchive archive;
    archive.madeOn = "2026-11-23 21:05:13";
    archive.files = {{Folder::Data, "FBTEAMS.DAT", teamList({"Bears"})},
                     {Folder::Data, "FBPS12.DAT", filler(90, 1)},
                     {Folder::Report, "FBRPTFMT.DAT", {}}};
    const Bytes bytes = encodeBackup(archive);
    BackupArchive read;
    ASSERT_EQ(decodeBackup(bytes, read).problem, ArchiveProblem::Good);
    EXPECT_EQ(std::tie(read.madeOn, read.files), std::tie(archive.madeOn, archive.files));
    EXPECT_EQ(read.teamNames(), std::vector<std::string>{"Bears"});

    for (std::size_t i = 0; i < bytes.size(); ++i) {
        Bytes changed = bytes;
        changed[i] ^= 0x20;
        EXPECT_NE(decodeBackup(changed, read).problem, ArchiveProblem::Good) << "byte " << i;
        EXPECT_TRUE(read.files.empty());
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_NE(decodeBackup(cut, read).problem, ArchiveProblem::Good) << "length " << i;
    }
}

TEST(BackupArchive, ForeignFilesAndStrangeNamesAreRefusedWithTheirReason) {
    BackupArchive read;
    const Bytes zip = {'P', 'K', 3, 4, 20, 0, 0, 0, 8, 0};
    EXPECT_EQ(archiveRefusal(decodeBackup(zip, read)),
              "This file is not a backup made by Scorvane for Football.  Nothing was restored.");

    BackupArchive sneaky;
    sneaky.files = {{Folder::Data, "FBTEAMS.DAT", {}}, {Folder::Data, "../FBPN1.DAT", {}}};
    EXPECT_EQ(archiveRefusal(decodeBackup(encodeBackup(sneaky), read)),
              "This backup holds a file that does not belong in a data directory (../FBPN1.DAT) "
              "and cannot be restored.  Nothing was restored.");
    for (auto [folder, name] :
         {std::pair{Folder::Report, "FBPN1.DAT"}, {Folder::Data, "FBPN101.DAT"}}) {
        sneaky.files = {{Folder::Data, "FBTEAMS.DAT", {}}, {folder, name, {}}};
        EXPECT_EQ(decodeBackup(encodeBackup(sneaky), read).problem, ArchiveProblem::StrangeFile);
    }
    sneaky.files = {{Folder::Data, "FBPN1.DAT", {}}};
    EXPECT_EQ(archiveRefusal(decodeBackup(encodeBackup(sneaky), read)),
              "This backup holds no team list and cannot be restored.  Nothing was restored.");

    Bytes newer = encodeBackup(BackupArchive{"", {{Folder::Data, "FBTEAMS.DAT", {}}}});
    newer[10] = 2;
    EXPECT_EQ(decodeBackup(newer, read).problem, ArchiveProblem::NewerVersion);
}

TEST_F(BackupRestore, RoundTripGivesBackEveryFileByteForByte) {
    const auto before = snapshots();
    ASSERT_EQ(backUp(), BackupResult::Written);
    EXPECT_TRUE(prompter.shown.empty());
    // Making a backup changes nothing.
    EXPECT_EQ(snapshots(), before);

    BackupArchive archive;
    ASSERT_TRUE(readBackupFile(prompter, backupPath(), archive));
    EXPECT_EQ(archive.files.size(), 11u); // the note of the user's is no data file
    // 120 + 9 x 200 + 37 x (1 + ... + 9) + 334 bytes
    EXPECT_EQ(describeBackup(archive), "3 teams, 11 files, 4 KB");

    changeEverything();
    const auto changed = snapshots();
    prompter.answers = {Answer::Yes};
    ASSERT_EQ(restore(backupPath()), RestoreResult::Restored);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0],
              (Message{"Restoring the backup of 2026-11-23 21:05:13 replaces the teams, rosters, "
                       "games, statistics and report formats in " +
                           data.dir() +
                           ".  The files there now are first saved as \"Before restore 2026-11-24 "
                           "08.00.00.sfb\" in that folder, so the restore can be undone.\n\n"
                           "Restore the backup?",
                       "Restore Files", Buttons::YesNo, Icon::Question, Answer::No}));
    EXPECT_EQ(undo, data.file("Before restore 2026-11-24 08.00.00.sfb"));
    EXPECT_EQ(std::pair(without(snapshot(data.path()), "Before restore 2026-11-24 08.00.00.sfb"),
                        snapshot(reports.path())),
              before);

    // The backup of what was replaced undoes the restore.
    prompter.answers = {Answer::Yes};
    const std::string firstUndo = undo;
    ASSERT_EQ(restore(firstUndo, "2026-11-24 08:01:00"), RestoreResult::Restored);
    auto undone = snapshots();
    undone.first.erase("Before restore 2026-11-24 08.00.00.sfb");
    undone.first.erase("Before restore 2026-11-24 08.01.00.sfb");
    EXPECT_EQ(undone, changed);
}

// The program's names are UTF-8; the test makes its folders through wide names where the system
// has them, so a name taken in the wrong code page finds nothing.
std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

TEST(BackupRestoreAccents, FoldersWithAccentedNamesAreFoundListedAndWritten) {
    testing::TempDir base;
    const std::filesystem::path data =
        base.path() / u8"Jos\u00e9" / u8"\u00dcn\u00efc\u00f6d\u00e9";
    const std::filesystem::path backups = base.path() / u8"Jos\u00e9" / u8"Sauvegard\u00e9es";
    std::filesystem::create_directories(data);
    std::filesystem::create_directories(backups);
    const testing::FolderSnapshot season = {{"FBTEAMS.DAT", teamList({"Bears"})},
                                            {"FBPN1.DAT", filler(201 * 3, 1)},
                                            {"FBRPTFMT.DAT", filler(167, 2)}};
    testing::restoreSnapshot(data, season);
    testing::FakePrompter prompter;
    const std::string dir = utf8(data / "");
    DataFiles files{DataPaths{"", dir, dir}, prompter};
    EXPECT_EQ(countTeamFiles(files.paths(), 1).players, 3);

    const std::string archive = utf8(backups / "season.sfb");
    ASSERT_EQ(backUpDataFiles(files, prompter, archive, "2026-11-23 21:05:13"),
              BackupResult::Written);
    EXPECT_EQ(snapshot(backups).size(), 1u);
    EXPECT_EQ(newestBackup(utf8(backups / "")), utf8(backups / "season.sfb"));

    // A crash left a half-written undo backup; the restore clears it away and puts back every file.
    testing::restoreSnapshot(data, {{"FBTEAMS.DAT", teamList({"Owls"})},
                                    {"Before restore 2026-11-24 07.00.00.sfb.tmp", {}}});
    std::string undo;
    prompter.answers = {Answer::Yes};
    ASSERT_EQ(restoreDataFiles(files, prompter, archive, "2026-11-24 08:00:00", undo),
              RestoreResult::Restored);
    testing::FolderSnapshot restored = snapshot(data);
    EXPECT_EQ(restored.erase("Before restore 2026-11-24 08.00.00.sfb"), 1u);
    EXPECT_EQ(restored, season);
    EXPECT_EQ(undo, utf8(data / "Before restore 2026-11-24 08.00.00.sfb"));
}

TEST_F(BackupRestore, DamagedForeignOrDeclinedRestoresReplaceNothing) {
    ASSERT_EQ(backUp(), BackupResult::Written);
    changeEverything();
    const auto before = snapshots();

    Bytes damaged = elsewhere.read("season.sfb");
    damaged[damaged.size() / 2] ^= 1;
    elsewhere.write("damaged.sfb", damaged);
    elsewhere.write("letter.sfb", Bytes{'D', 'e', 'a', 'r', ' ', 'c', 'o', 'a', 'c', 'h'});
    for (const char* name : {"damaged.sfb", "letter.sfb", "missing.sfb"}) {
        SCOPED_TRACE(name);
        prompter = {};
        prompter.answers = {Answer::Yes, Answer::Yes};
        EXPECT_EQ(restore(elsewhere.file(name)), RestoreResult::Refused);
        ASSERT_EQ(prompter.shown.size(), 1u); // the refusal, and no question
        EXPECT_EQ(std::tie(prompter.shown[0].title, prompter.shown[0].buttons),
                  std::tuple("Restore Files", Buttons::Ok));
        EXPECT_EQ(snapshots(), before);
    }
    EXPECT_EQ(prompter.shown[0].text,
              elsewhere.file("missing.sfb") + " was not found.  Nothing was restored.");

    // No, the default answer, keeps everything.
    prompter = {};
    EXPECT_EQ(restore(backupPath()), RestoreResult::Declined);
    EXPECT_EQ(snapshots(), before);
    EXPECT_EQ(undo, "");
}

TEST_F(BackupRestore, AnExistingBackupIsReplacedOnlyAfterYes) {
    elsewhere.write("season.sfb", Bytes{'o', 'l', 'd'});
    EXPECT_EQ(backUp(), BackupResult::Declined);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0],
              (Message{"season.sfb already exists.  Replace it?", "Back Up Files", Buttons::YesNo,
                       Icon::Question, Answer::No}));
    EXPECT_EQ(elsewhere.read("season.sfb"), (Bytes{'o', 'l', 'd'}));
    prompter.answers = {Answer::Yes};
    EXPECT_EQ(backUp(), BackupResult::Written);
    BackupArchive archive;
    EXPECT_TRUE(readBackupFile(prompter, backupPath(), archive));
}

TEST_F(BackupRestore, ABackupThatCannotBeWrittenLeavesNothingBehind) {
    const FolderSnapshot dataBefore = snapshot(data.path());
    elsewhere.write("plain-file", Bytes{'x'});
    EXPECT_EQ(backUp(elsewhere.file("plain-file") + "/b.sfb"), BackupResult::Failed);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].title, "Back Up Files");
    // The file is named with the system's separators only, though it was given with a "/".
    const std::string shown =
        elsewhere.file("plain-file") + (platform::isWindows() ? "\\b.sfb" : "/b.sfb");
    EXPECT_TRUE(
        prompter.shown[0].text.starts_with("The backup could not be written to " + shown + ": "))
        << prompter.shown[0].text;
    EXPECT_TRUE(prompter.shown[0].text.ends_with(".  Your data files were not changed."));
    EXPECT_EQ(prompter.endCalls, 0);
    EXPECT_EQ(snapshot(data.path()), dataBefore);

#if defined(__unix__) || defined(__APPLE__)
    // A full disk: no file may grow past a few bytes while the backup is written.
    prompter = {};
    const BackupResult full = underFileSizeLimit(512, [&] { return backUp(); });
    EXPECT_EQ(full, BackupResult::Failed);
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_TRUE(prompter.shown[0].text.starts_with("The backup could not be written"));
    EXPECT_EQ(snapshot(elsewhere.path()), (FolderSnapshot{{"plain-file", Bytes{'x'}}}));
    EXPECT_EQ(snapshot(data.path()), dataBefore);

    // A folder that may not be written (only when the tests do not run as the superuser, whom
    // no permission stops).
    if (geteuid() != 0) {
        prompter = {};
        std::filesystem::permissions(elsewhere.path(), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::remove);
        EXPECT_EQ(backUp(), BackupResult::Failed);
        std::filesystem::permissions(elsewhere.path(), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        EXPECT_EQ(prompter.endCalls, 0);
        EXPECT_FALSE(elsewhere.exists("season.sfb"));
    }
#endif
}

#if defined(__unix__) || defined(__APPLE__)
TEST_F(BackupRestore, ARestoreOnAFullDiskLeavesTheDataAsItWas) {
    // The backup holds one big file; the data directory now holds small ones, so their own
    // backup fits under the limit and the big file does not.
    data.write("FBPS1.DAT", filler(40000, 5));
    ASSERT_EQ(backUp(), BackupResult::Written);
    data.write("FBPS1.DAT", filler(110, 6));
    const FolderSnapshot dataBefore = snapshot(data.path());
    prompter.answers = {Answer::Yes};

    const RestoreResult result = underFileSizeLimit(20000, [&] { return restore(backupPath()); });
    EXPECT_EQ(result, RestoreResult::Failed);
    ASSERT_EQ(prompter.shown.size(), 2u);
    EXPECT_TRUE(prompter.shown[1].text.starts_with("The backup could not be restored: "));
    EXPECT_TRUE(prompter.shown[1].text.ends_with(".  Your data files were not changed."));
    EXPECT_EQ(snapshot(data.path()), dataBefore);
}
#endif

TEST(BackupNames, DatedNames) {
    struct Case {
        std::vector<std::string> words;
        const char* extension;
        const char* name;
    };
    const Case cases[] = {
        {{"Tigers", "Rushing Statistics"}, ".csv", "Tigers Rushing Statistics 2026-11-23.csv"},
        // What Windows refuses in a name goes; the spaces around it become one.
        {{" A/B: \"Cats\" <2> | C\\D?* ", "Team Record"},
         ".html",
         "AB Cats 2 CD Team Record 2026-11-23.html"},
        {{"Multiple Teams: TIG, LIO", "Game Scores"},
         ".csv",
         "Multiple Teams TIG, LIO Game Scores 2026-11-23.csv"},
        {{"Jos\xC3\xA9\tFC", "", "Passing"},
         ".csv",
         "Jos\xC3\xA9"
         "FC Passing 2026-11-23.csv"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(suggestedFileName(c.words, "2026-11-23", c.extension), c.name);
    const std::string at = "2026-11-23 21:05:13";
    EXPECT_EQ((std::vector{defaultBackupName(at, "Tigers"), defaultBackupName(at, "?*"),
                           defaultBackupName(at), undoBackupName(at)}),
              (std::vector<std::string>{
                  "Tigers Backup 2026-11-23.sfb", "Scorvane Backup 2026-11-23.sfb",
                  "Scorvane Backup 2026-11-23.sfb", "Before restore 2026-11-23 21.05.13.sfb"}));
    const std::string now = timestampNow();
    ASSERT_EQ(now.size(), 19u);
    EXPECT_EQ(std::string({now[4], now[10], now[13]}), "- :");
}

TEST(BackupNames, TheNewestBackupIsOffered) {
    testing::TempDir folder;
    EXPECT_EQ(newestBackup(folder.dir()), "");
    const auto now = std::filesystem::file_time_type::clock::now();
    // Everything in the past, so the folder made now is the newest entry.
    const std::pair<const char*, int> files[] = {
        {"old.sfb", -3600}, {"b.SFB", -60}, {"a.sfb", -60},
        {"later.txt", -30}, {"sfb", -30},   {"Before restore.sfb.tmp", -30}};
    for (const auto& [name, age] : files) {
        folder.write(name, Bytes{1});
        std::filesystem::last_write_time(folder.path() / name, now + std::chrono::seconds(age));
    }
    std::filesystem::create_directory(folder.path() / "folder.sfb");
    // Of two made in the same second, the later name; the case of the extension does not matter.
    EXPECT_EQ(newestBackup(folder.dir()), folder.dir() + "b.SFB");
    EXPECT_EQ(newestBackup(folder.file("missing")), "");
}

} // namespace
} // namespace scorvane
