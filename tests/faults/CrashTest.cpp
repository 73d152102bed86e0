// Every change that rewrites files, in a process that ends in the middle of it: at each
// file-system call in turn (before it, or halfway through a write), and at random moments by
// SIGKILL. Opened again, the data directory holds the old files or the new ones.

#include "faults/FaultInjector.h"
#include "faults/Operations.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

#ifndef _WIN32
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace scorvane;
using namespace scorvane::testing;

namespace {

class OperationCrashes : public ::testing::TestWithParam<Operation> {};
class RollbackCrashes : public ::testing::TestWithParam<Operation> {};

std::string nameOf(const ::testing::TestParamInfo<Operation>& info) {
    return info.param.name;
}

} // namespace

#ifdef _WIN32

TEST_P(OperationCrashes, AProcessEndingAtAnyCallLeavesTheOldFilesOrTheNewOnes) {
    GTEST_SKIP() << "ending a child process halfway needs fork()";
}

TEST_P(OperationCrashes, AKillAtARandomMomentLeavesTheOldFilesOrTheNewOnes) {
    GTEST_SKIP() << "killing a child process halfway needs fork()";
}

TEST_P(RollbackCrashes, AProcessEndingAtAnyCallOfTheRollbackLeavesItToTheNextOpening) {
    GTEST_SKIP() << "ending a child process halfway needs fork()";
}

#else

namespace {

// Runs the change in a child process that `prepare` may set up, and returns its exit code, or
// -signal when a signal ended it. `started` is told once the child is under way.
template <class Prepare, class Started>
int runInChild(const Operation& op, const Outcomes& o, Prepare prepare, Started started) {
    int ready[2];
    if (::pipe(ready) != 0)
        return -1000;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(ready[0]);
        [[maybe_unused]] auto hooks = prepare();
        FakePrompter prompter;
        DataFiles data(o.paths(), prompter);
        (void)!::write(ready[1], "s", 1);
        ::_exit(op.run(data, prompter) ? 0 : 1);
    }
    ::close(ready[1]);
    char c = 0;
    const bool running = ::read(ready[0], &c, 1) == 1;
    ::close(ready[0]);
    if (running)
        started(pid);
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid)
        return -1001;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

TEST_P(OperationCrashes, AProcessEndingAtAnyCallLeavesTheOldFilesOrTheNewOnes) {
    const Operation& op = GetParam();
    Outcomes o(op);
    std::vector<FaultInjector::Seen> calls;
    {
        FaultInjector counting;
        FakePrompter prompter;
        DataFiles data(o.paths(), prompter);
        ASSERT_TRUE(op.run(data, prompter));
        calls = counting.calls();
    }
    restore(o.dir, o.before);

    int sawOld = 0, sawNew = 0;
    for (int k = 1; k <= static_cast<int>(calls.size()); ++k) {
        // Before the call; and for a write, also with half of its bytes written.
        const bool write = calls[static_cast<std::size_t>(k - 1)].call == platform::Call::Write;
        for (bool halfway : write ? std::vector{false, true} : std::vector{false}) {
            const int code = runInChild(
                op, o,
                [&] {
                    return std::make_unique<FaultInjector>(
                        [k, halfway](const platform::CallInfo& call, int number) {
                            if (number != k)
                                return platform::Injection{};
                            return platform::Injection{platform::Fault::Crash,
                                                       halfway ? call.size / 2 : 0};
                        });
                },
                [](pid_t) {});
            ASSERT_EQ(code, platform::kCrashExitCode) << "call " << k << " was not reached";
            ASSERT_TRUE(holdsOldOrNew(op, o, Stopped::ByEnd))
                << "ended at call " << k << (halfway ? ", halfway through the write" : "");
            ++(snapshot(o.dir) == o.after ? sawNew : sawOld);
            restore(o.dir, o.before);
        }
    }
    EXPECT_GT(sawOld, 0);
    if (op.together && !op.inPlace) {
        EXPECT_GT(sawNew, 0) << "no stop came after the change was decided";
    }
}

TEST_P(OperationCrashes, AKillAtARandomMomentLeavesTheOldFilesOrTheNewOnes) {
    const Operation& op = GetParam();
    Outcomes o(op);
    // The kills land anywhere from the start of the change to well after its end.
    long long tookUs = 0;
    {
        FakePrompter prompter;
        DataFiles data(o.paths(), prompter);
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(op.run(data, prompter));
        tookUs = (std::chrono::steady_clock::now() - start) / std::chrono::microseconds(1);
    }
    restore(o.dir, o.before);
    const long long maxDelayUs = std::clamp<long long>(2 * tookUs, 1000, 50000);

    std::mt19937 rng(19870411);
    int killed = 0;
    for (int i = 0; i < 30; ++i) {
        const long long delay = static_cast<long long>(rng() % (maxDelayUs + 1));
        const int code = runInChild(
            op, o, [] { return 0; },
            [delay](pid_t pid) {
                std::this_thread::sleep_for(std::chrono::microseconds(delay));
                ::kill(pid, SIGKILL);
            });
        ASSERT_TRUE(code == 0 || code == -SIGKILL) << "kill " << i << ": " << code;
        killed += code == -SIGKILL;
        ASSERT_TRUE(holdsOldOrNew(op, o, Stopped::ByEnd)) << "killed after " << delay << " us";
        restore(o.dir, o.before);
    }
    EXPECT_GT(killed, 0);
}

// A change made in place that ended once its journal was made, then the opening that rolls it
// back ended at each of its calls in turn: the next opening rolls back again.
TEST_P(RollbackCrashes, AProcessEndingAtAnyCallOfTheRollbackLeavesItToTheNextOpening) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const auto crashAt = [](int k) {
        return [k] {
            return std::make_unique<FaultInjector>([k](const platform::CallInfo& call, int n) {
                return platform::Injection{n == k ? platform::Fault::Crash : platform::Fault::None,
                                           call.size / 2};
            });
        };
    };
    ASSERT_EQ(runInChild(
                  op, o,
                  [] {
                      return std::make_unique<FaultInjector>(
                          faultOnWritesIntoData(platform::Fault::Crash));
                  },
                  [](pid_t) {}),
              platform::kCrashExitCode);
    const Snapshot pending = snapshot(o.dir);
    ASSERT_TRUE(pending.count(kRollbackJournalFileName));
    const Operation reopen{"reopen", {}, true, [](DataFiles& data, Prompter&) {
                               return data.team(kTeam).openFile(FileKind::Stats);
                           }};
    int calls = 0;
    {
        FaultInjector counting;
        FakePrompter prompter;
        DataFiles data(o.paths(), prompter);
        ASSERT_TRUE(reopen.run(data, prompter));
        calls = static_cast<int>(counting.calls().size());
    }
    ASSERT_GT(calls, 3);
    for (int k = 1; k <= calls; ++k) {
        restore(o.dir, pending);
        ASSERT_EQ(runInChild(reopen, o, crashAt(k), [](pid_t) {}), platform::kCrashExitCode)
            << "call " << k;
        ASSERT_TRUE(holdsOldOrNew(op, o, Stopped::ByEnd)) << "ended at call " << k;
        EXPECT_TRUE(snapshot(o.dir) == o.before) << "ended at call " << k;
    }
}

#endif

INSTANTIATE_TEST_SUITE_P(Changes, OperationCrashes, ::testing::ValuesIn(operations()), nameOf);
INSTANTIATE_TEST_SUITE_P(InPlace, RollbackCrashes, ::testing::ValuesIn(inPlaceOperations()),
                         nameOf);
