// Every change that rewrites files, in a process that ends in the middle of it: at each
// file-system call in turn (before it, or halfway through a write), and at random moments by
// SIGKILL. Opened again, the data directory holds the old files or the new ones. Runs where
// processes can be forked.

#include "faults/FaultInjector.h"
#include "faults/Operations.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#ifndef _WIN32

using namespace scorvane;
using namespace scorvane::testing;

namespace {

using OperationCrashes = OperationTest;
using RollbackCrashes = OperationTest;

// The change run in a child process, under `decide` when given: runInChild's work.
std::function<int(const std::function<void()>&)> inChild(const Operation& op, const Outcomes& o,
                                                         FaultInjector::Decide decide = {}) {
    return [&op, &o, decide](const std::function<void()>& started) {
        std::unique_ptr<FaultInjector> faults;
        if (decide)
            faults = std::make_unique<FaultInjector>(decide);
        FakePrompter prompter;
        DataFiles data(o.paths(), prompter);
        started();
        return op.run(data, prompter) ? 0 : 1;
    };
}

// The change stopped at call `k` (halfway through it when a write): the child's exit code.
int stoppedAt(const Operation& op, const Outcomes& o, int k, bool halfway = false) {
    return runInChild(inChild(op, o, faultOnCall(k, platform::Fault::Crash, halfway)));
}

} // namespace

TEST_P(OperationCrashes, AProcessEndingAtAnyCallLeavesTheOldFilesOrTheNewOnes) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const std::vector<FaultInjector::Seen> calls = o.callsOf(op);
    int sawOld = 0, sawNew = 0;
    for (int k = 1; k <= static_cast<int>(calls.size()); ++k) {
        // Before the call; and for a write, also with half of its bytes written.
        const bool write = calls[static_cast<std::size_t>(k - 1)].call == platform::Call::Write;
        for (bool halfway : write ? std::vector{false, true} : std::vector{false}) {
            ASSERT_EQ(stoppedAt(op, o, k, halfway), platform::kCrashExitCode)
                << "call " << k << " was not reached";
            ASSERT_TRUE(holdsOldOrNew(op, o, Stopped::ByEnd))
                << "ended at call " << k << (halfway ? ", halfway through the write" : "");
            ++(o.isNew() ? sawNew : sawOld);
            o.reset(o.before);
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
    const long long took = microsecondsFor([&] { (void)o.callsOf(op); });
    const KillTally t = killAtRandomMoments(
        30, 19870411, std::clamp<long long>(2 * took, 1000, 50000), inChild(op, o), [&] {
            const ::testing::AssertionResult held = holdsOldOrNew(op, o, Stopped::ByEnd);
            EXPECT_TRUE(held);
            const Held h = !held ? Held::Neither : o.isNew() ? Held::New : Held::Old;
            o.reset(o.before);
            return h;
        });
    EXPECT_GT(t.killed, 0);
}

// A change made in place that stopped once its journal was made, then the opening that rolls it
// back ended at each of its calls in turn: the next opening rolls back again.
TEST_P(RollbackCrashes, AProcessEndingAtAnyCallOfTheRollbackLeavesItToTheNextOpening) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const FolderSnapshot pending = o.stoppedWithJournal(op);
    o.reset(pending);
    const int calls = static_cast<int>(o.callsOf(kReopen).size());
    ASSERT_GT(calls, 3);
    for (int k = 1; k <= calls; ++k) {
        o.reset(pending);
        ASSERT_EQ(stoppedAt(kReopen, o, k), platform::kCrashExitCode) << "call " << k;
        ASSERT_TRUE(holdsOldOrNew(op, o, Stopped::ByEnd)) << "ended at call " << k;
        EXPECT_TRUE(snapshot(o.dir.path()) == o.before) << "ended at call " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, OperationCrashes, ::testing::ValuesIn(operations()), nameOf);
INSTANTIATE_TEST_SUITE_P(InPlace, RollbackCrashes, ::testing::ValuesIn(inPlaceOperations()),
                         nameOf);

#endif
