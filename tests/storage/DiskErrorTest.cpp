#include "storage/ByteHelpers.h"
#include "storage/ConfigFile.h"
#include "storage/DataFiles.h"
#include "storage/DiskError.h"
#include "support/FakePrompter.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace scorvane;
using namespace scorvane::testing;

TEST(DiskErrorHandler, WriteProtectionAndUnknownErrorsEndTheProgram) {
    const std::pair<int, std::string> cases[] = {
        {70, "Disk write-protected"}, {57, "Unrecoverable Error - Input/output error"},
        {5, "Unrecoverable Error - Input/output error"}};
    for (const auto& [code, text] : cases) {
        FakePrompter p;
        p.answers = {Answer::Retry};  // not offered, so not honoured
        EXPECT_EQ(DiskError(p, code, "Input/output error"), DiskErrorAction::EndProgram);
        ASSERT_EQ(p.shown.size(), 1u);
        EXPECT_EQ(p.shown[0].text, text);
        EXPECT_EQ(p.shown[0].title, code == 70 ? "Disk Error" : "Error");
        EXPECT_EQ(p.endCalls, 1);
    }
}

TEST(DiskErrorHandler, DiskNotReadyOffersRetryOrCancel) {
    for (int code : {25, 71}) {
        FakePrompter p;
        p.answers = {Answer::Retry, Answer::Cancel};
        EXPECT_EQ(DiskError(p, code, "No medium found"), DiskErrorAction::Retry);
        EXPECT_EQ(p.endCalls, 0);
        EXPECT_EQ(DiskError(p, code, "No medium found"), DiskErrorAction::EndProgram);
        EXPECT_EQ(p.endCalls, 1);
        ASSERT_EQ(p.shown.size(), 2u);
        EXPECT_EQ(p.shown[0].text, "No medium found");
        EXPECT_EQ(p.shown[0].title, "Error");
        EXPECT_EQ(p.shown[0].buttons, Buttons::RetryCancel);
    }
}

TEST(DiskErrorHandler, RetryRunsTheOperationAgain) {
    FakePrompter p;
    p.answers = {Answer::Retry, Answer::Retry};
    int calls = 0;
    auto flaky = [&] {
        return ++calls < 3 ? Status::error(ErrorKind::Disk, "Not ready", 71) : Status::ok();
    };
    EXPECT_TRUE(withDiskErrors(p, flaky));
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(p.shown.size(), 2u);
    EXPECT_EQ(p.endCalls, 0);

    calls = 0;
    p.answers = {Answer::Cancel};
    const Status s = withDiskErrors(p, flaky);
    EXPECT_EQ(s.kind(), ErrorKind::ProgramEnded);
    EXPECT_EQ(s.code(), 71);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(p.endCalls, 1);

    // Faults of the data are no disk errors: no message, returned as they are.
    const Status range = withDiskErrors(p, [] { return Status::error(ErrorKind::RecordRange, "r"); });
    EXPECT_EQ(range.kind(), ErrorKind::RecordRange);
    EXPECT_EQ(p.shown.size(), 3u);
}

namespace {

// Runs the checks where the folder's permissions are enforced. Root ignores them; as root the
// checks run in a child process that owns the folder but has given up root. Skipped when the
// write goes through and no such child can be made.
void withPermissionsEnforced(const TempDir& dir, const std::function<void()>& checks) {
    const std::string probe = dir.file("probe");
    const int fd = ::open(probe.c_str(), O_WRONLY | O_CREAT, 0644);
    if (fd < 0) {
        checks();
        return;
    }
    ::close(fd);
    ::unlink(probe.c_str());
    if (::geteuid() != 0)
        GTEST_SKIP() << "the read-only folder can be written";

    constexpr uid_t kNobody = 65534;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
        (void)::chown(entry.path().c_str(), kNobody, kNobody);
    (void)::chown(dir.path().c_str(), kNobody, kNobody);
    std::fflush(stdout);
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)
            ::_exit(77);
        checks();
        std::fflush(stdout);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "running as root and cannot give up root";
    EXPECT_EQ(WEXITSTATUS(status), 0) << "checks failed in the unprivileged child (see above)";
}

} // namespace

TEST(ReadOnlyFolder, WritesAreRefusedAsWriteProtectedAndFilesStayUnchanged) {
    TempDir dir;
    Bytes teams = blank(80);
    setText(teams, 0, "Ravens");
    setText(teams, 40, "Tigers");
    dir.write("FBTEAMS.DAT", teams);
    Bytes legacyConfig = ConfigRecord::defaults().encode();
    legacyConfig.resize(669);
    dir.write("BXFB.INI", legacyConfig);
    for (const char* name : {"FBTEAMS.DAT", "BXFB.INI"})
        std::filesystem::permissions(dir.file(name), std::filesystem::perms(0644));
    std::filesystem::permissions(dir.path(), std::filesystem::perms(0555));

    withPermissionsEnforced(dir, [&] {
        FakePrompter prompter;
        DataFiles files(DataPaths{dir.dir(), dir.dir(), dir.dir()}, prompter);
        TeamRecord t;
        ASSERT_TRUE(files.teamRecord('G', 2, t));  // reading still works
        EXPECT_EQ(trimRight(t.teamName), "Tigers");

        t.teamName = "Lions";
        EXPECT_EQ(files.teamRecord('P', 1, t).kind(), ErrorKind::ProgramEnded);
        EXPECT_EQ(files.replaceAll(FileKind::TeamList, {t.encode()}).kind(),
                  ErrorKind::ProgramEnded);
        GameRecord g;
        EXPECT_EQ(files.gameRecord('P', 1, g).kind(), ErrorKind::ProgramEnded);
        ConfigRecord config;
        bool upgraded = false;
        EXPECT_EQ(loadConfiguration(prompter, dir.file("BXFB.INI"), config, upgraded).kind(),
                  ErrorKind::ProgramEnded);

        ASSERT_EQ(prompter.shown.size(), 4u);
        for (const Message& m : prompter.shown) {
            EXPECT_EQ(m.text, "Disk write-protected");
            EXPECT_EQ(m.title, "Disk Error");
        }
        EXPECT_EQ(prompter.endCalls, 4);
        EXPECT_EQ(dir.read("FBTEAMS.DAT"), teams);
        EXPECT_EQ(dir.read("BXFB.INI"), legacyConfig);
        EXPECT_FALSE(dir.exists("FBGS1.DAT"));
    });
}
