// Disk errors injected under the file layer (see storage/Platform.h): a write that stops halfway,
// a file removed while it is written, a rename or a flush that fails. The user sees the disk error
// handler's message, and the files on disk stay whole.

#include "faults/FaultInjector.h"
#include "storage/ByteHelpers.h"
#include "storage/DataFiles.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

// Designated initializers name only the fields a test cares about.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

using namespace scorvane;
using namespace scorvane::testing;
using platform::Call;
using platform::Fault;

namespace {

struct Faults : ::testing::Test, ScratchData {
    std::vector<Bytes> before = records(40, 1), after = records(55, 2);

    static std::vector<Bytes> records(int count, std::uint8_t fill) {
        std::vector<Bytes> out;
        for (int i = 0; i < count; ++i)
            out.push_back(StatRecord{
                .header = {static_cast<std::int16_t>(1 + i / 10),
                           static_cast<std::int16_t>(1 + i % 10), 'P', 'A', '1', '1'},
                .values = {
                    fill}}.encode());
        return out;
    }
    void SetUp() override { ASSERT_TRUE(files.replaceAll(FileKind::Stats, before)); }

    // The statistics file holds exactly these records, read from disk and through the handle.
    void holds(const std::vector<Bytes>& expected) {
        EXPECT_EQ(dir.read("FBPS1.DAT"), join(expected));
        std::vector<Bytes> read;
        ASSERT_TRUE(files.readAll(FileKind::Stats, read));
        EXPECT_EQ(read, expected);
        EXPECT_FALSE(dir.exists("FBPS1.DAT.tmp"));
    }
    // The one message shown, as "text / title"; on Windows, whose words for a system error vary,
    // only the title.
    std::string shown() const {
        if (prompter.shown.size() != 1)
            return std::to_string(prompter.shown.size()) + " messages";
        return (platform::isWindows() ? "" : prompter.shown[0].text) + " / " +
               prompter.shown[0].title;
    }
    std::string expected(const std::string& posix) const {
        return platform::isWindows() ? posix.substr(posix.rfind(" / ")) : posix;
    }
};

const std::string kNoSpace = "Unrecoverable Error - No space left on device / Error",
                  kProtected = "Disk write-protected / Disk Error",
                  kGone = "Unrecoverable Error - No such file or directory / Error";

// Removes the file while it is written.
FaultInjector::Decide removedOnWrite(const std::string& name) {
    return [name](const platform::CallInfo& call, int) {
        if (call.call == Call::Write && FaultInjector::nameOf(call.path) == name)
            std::filesystem::remove(call.path);
        return platform::Injection{};
    };
}

} // namespace

// Each fault ends the program with the disk error handler's message and the file as it was.
TEST_F(Faults, AStoppedWriteLeavesTheOldFileAndEndsTheProgram) {
    const struct {
        const char* what;
        FaultInjector::Decide decide;
        Answer answer;
        std::string shown;
        bool inPlace = false; // the first record written again in place, else the file replaced
    } cases[] = {
        {"full disk", faultOn(Call::Write, "FBPS1.DAT.tmp", Fault::NoSpace), Answer::Ok, kNoSpace},
        {"write-protected", faultOn(Call::Write, "FBPS1.DAT.tmp", Fault::ReadOnly), Answer::Ok,
         kProtected},
        // The file layer reports a disk not ready with the system's words for ENXIO.
        {"not ready, cancelled", faultOn(Call::Write, "FBPS1.DAT.tmp", Fault::NotReady),
         Answer::Cancel, std::string(std::strerror(ENXIO)) + " / Error"},
        // The temporary file vanishes while it is written: the rename finds nothing to rename.
        {"removed", removedOnWrite("FBPS1.DAT.tmp"), Answer::Ok, kGone},
        {"rename", faultOn(Call::Rename, "FBPS1.DAT.tmp", Fault::ReadOnly), Answer::Ok, kProtected},
        // Space is often found missing only when the data goes to the disk.
        {"flush", faultOn(Call::Flush, "FBPS1.DAT.tmp", Fault::NoSpace), Answer::Ok, kNoSpace},
        {"flush in place", faultOn(Call::Flush, "FBPS1.DAT", Fault::NoSpace), Answer::Ok, kNoSpace,
         true},
    };
    int ended = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        prompter.shown.clear();
        prompter.answers = {c.answer};
        FaultInjector faults(c.decide);
        StatRecord r = StatRecord::decode(before[0]);
        EXPECT_EQ((c.inPlace ? files.statRecord(Access::Write, 1, r)
                             : files.replaceAll(FileKind::Stats, after))
                      .kind(),
                  ErrorKind::ProgramEnded);
        EXPECT_EQ(prompter.endCalls, ++ended);
        EXPECT_EQ(shown(), expected(c.shown));
        holds(before);
    }
}

TEST_F(Faults, RetryAfterADiskNotReadyFinishesTheWrite) {
    FaultInjector faults(faultOn(Call::Write, "FBPS1.DAT.tmp", Fault::NotReady, 2));
    prompter.answers = {Answer::Retry, Answer::Retry};
    ASSERT_TRUE(files.replaceAll(FileKind::Stats, after));
    ASSERT_EQ(prompter.shown.size(), 2u);
    EXPECT_EQ(std::tie(prompter.shown[1].buttons, prompter.shown[1].title, prompter.endCalls),
              std::tuple(Buttons::RetryCancel, "Error", 0));
    holds(after);

    // A record written in place: the half-written record is written whole again.
    faults.decide(faultOn(Call::Write, "FBPS1.DAT", Fault::NotReady));
    StatRecord r = StatRecord::decode(after[3]);
    r.values[0] = 77;
    ASSERT_TRUE(files.statRecord(Access::Write, 4, r));
    std::vector<Bytes> expected = after;
    expected[3] = r.encode();
    holds(expected);
    EXPECT_EQ(prompter.shown.size(), 3u);
}

TEST_F(Faults, ARecordWrittenIntoARemovedFileIsReportedNotLost) {
    // The team list vanishes under a record written in place: the record would go into a file
    // nobody can open again, so the write is refused.
    TeamRecord t{"Ravens", "RAV", ""};
    ASSERT_TRUE(data.teamRecord(Access::Write, 1, t));
    bool removedAtOnce = true;
    FaultInjector faults([&](const platform::CallInfo& call, int) {
        if (call.call == Call::Write && FaultInjector::nameOf(call.path) == "FBTEAMS.DAT") {
            std::filesystem::remove(call.path);
            removedAtOnce = !std::filesystem::exists(call.path);
        }
        return platform::Injection{};
    });
    const Status s = data.teamRecord(Access::Write, 2, t);
    if (!removedAtOnce)
        GTEST_SKIP() << "this system removes an open file only once it is closed";
    EXPECT_EQ(s.kind(), ErrorKind::ProgramEnded);
    EXPECT_EQ(shown(), expected(kGone));
}

// Files replaced together: a failure before the journal exists leaves every file as before; one
// after it is finished by the next opening of the data directory.
TEST_F(Faults, FilesReplacedTogetherComeOutAllOldOrAllNew) {
    const std::vector<Bytes> oldGames(3, GameRecord{.gameNumber = 1}.encode()),
        newGames(4, GameRecord{.gameNumber = 2}.encode());
    ASSERT_TRUE(files.replaceAll(FileKind::Games, oldGames));
    const auto replace = [&] {
        return files.replaceTogether({{FileKind::Stats, after}, {FileKind::Games, newGames}});
    };
    const auto filesAre = [&](const std::vector<Bytes>& stats, const std::vector<Bytes>& games) {
        DataFiles reopened(data.paths(), prompter);
        EXPECT_TRUE(reopened.team(1).openFile(FileKind::Stats));
        EXPECT_EQ(dir.read("FBPS1.DAT"), join(stats));
        EXPECT_EQ(dir.read("FBGS1.DAT"), join(games));
        EXPECT_FALSE(dir.exists(kJournalFileName));
        EXPECT_FALSE(dir.exists("FBPS1.DAT.tmp"));
        EXPECT_FALSE(dir.exists("FBGS1.DAT.tmp"));
    };
    {
        FaultInjector faults(faultOn(Call::Rename, "FBJOURNL.TMP.tmp", Fault::NoSpace));
        EXPECT_EQ(replace().kind(), ErrorKind::ProgramEnded);
        EXPECT_EQ(shown(), expected(kNoSpace));
    }
    filesAre(before, oldGames);
    {
        prompter.shown.clear();
        FaultInjector faults(faultOn(Call::Rename, "FBGS1.DAT.tmp", Fault::ReadOnly));
        EXPECT_EQ(replace().kind(), ErrorKind::ProgramEnded);
        EXPECT_EQ(shown(), expected(kProtected));
        // Decided but not finished: the statistics are new, the games not yet.
        EXPECT_EQ(dir.read("FBPS1.DAT"), join(after));
        EXPECT_TRUE(dir.exists(kJournalFileName));
    }
    filesAre(after, newGames);
}

// A record file handed on keeps its file; in a folder that may not be written (the first opening
// refused) a missing file reads as empty; folders are made down to the last one.
TEST(RecordFiles, AHandedOnFileAMissingOneInAReadOnlyFolderAndNewFolders) {
    TempDir dir;
    RecordFile first, moved;
    ASSERT_TRUE(first.open(dir.file("A.DAT"), 10));
    moved = std::move(first);
    ASSERT_TRUE(moved.replaceAll({Bytes(10, 'b')}));
    EXPECT_EQ(dir.read("A.DAT"), Bytes(10, 'b'));
    {
        FaultInjector readOnly([](const platform::CallInfo&, int n) {
            return platform::Injection{n == 1 ? Fault::ReadOnly : Fault::None};
        });
        RecordFile missing;
        ASSERT_TRUE(missing.open(dir.file("NONE.DAT"), 10));
        std::vector<Bytes> all{Bytes(1)};
        EXPECT_TRUE(missing.readAll(all));
        EXPECT_EQ(std::pair(missing.count(), all.size()), std::pair(0, std::size_t{0}));
    }
    ASSERT_TRUE(createDirectories(dir.dir() + "one/two"));
    EXPECT_TRUE(directoryExists(dir.dir() + "one/two"));
}
