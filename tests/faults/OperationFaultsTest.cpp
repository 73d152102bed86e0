// Every change that rewrites files, stopped by a disk error at each file-system call it makes in
// turn: the user is told, and the files come out as before or as after, never in between.

#include "faults/FaultInjector.h"
#include "faults/Operations.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;
using platform::Fault;

using OperationFaults = OperationTest;
using RollbackFaults = OperationTest;

// A full disk ends the program; a disk not ready is retried to the end (Retry is the default
// answer) or, cancelled, ends the program. Cancel is tried at every other call only.
TEST_P(OperationFaults, ADiskErrorAtAnyCallIsReportedAndLeavesTheOldFilesOrTheNewOnes) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const int calls = static_cast<int>(o.callsOf(op).size());
    ASSERT_GT(calls, 5);
    for (auto [fault, answer, step] : {std::tuple{Fault::NoSpace, Answer::Ok, 1},
                                       {Fault::NotReady, Answer::Retry, 1},
                                       {Fault::NotReady, Answer::Cancel, 2}}) {
        const bool ends = answer != Answer::Retry;
        int sawOld = 0, sawNew = 0;
        for (int k = 1; k <= calls; k += step) {
            SCOPED_TRACE(::testing::Message()
                         << "fault " << int(fault) << ", answer " << int(answer) << ", call " << k);
            FakePrompter prompter;
            prompter.answers = {answer};
            {
                FaultInjector faults(faultOnCall(k, fault));
                const Status s = o.run(op, prompter);
                EXPECT_TRUE(ends ? s.kind() == ErrorKind::ProgramEnded : s.isOk());
            }
            const auto shown = diskMessages(prompter);
            ASSERT_EQ(shown.size(), 1u);
            EXPECT_EQ(shown[0].buttons,
                      fault == Fault::NoSpace ? Buttons::Ok : Buttons::RetryCancel);
            if (fault == Fault::NoSpace) {
                EXPECT_TRUE(shown[0].text.starts_with("Unrecoverable Error - ")) << shown[0].text;
#ifndef _WIN32
                EXPECT_EQ(shown[0].text, "Unrecoverable Error - No space left on device");
#endif
            }
            EXPECT_EQ(prompter.endCalls, ends ? 1 : 0);
            ASSERT_TRUE(holdsOldOrNew(op, o));
            ++(o.isNew() ? sawNew : sawOld);
            EXPECT_TRUE(ends || o.isNew()) << "retried but not finished";
            o.reset(o.before);
        }
        if (fault != Fault::NoSpace)
            continue;
        // A failure after the change was decided is finished on the next opening.
        EXPECT_GT(sawOld, 0);
        if (op.together && op.rewrites.size() > 1 && !op.inPlace) {
            EXPECT_GT(sawNew, 0);
        }
    }
}

TEST_P(RollbackFaults, AFullDiskWhileRollingBackLeavesTheRollbackToTheNextOpening) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const FolderSnapshot pending = o.stoppedWithJournal(op);
    o.reset(pending);
    const int calls = static_cast<int>(o.callsOf(kReopen).size());
    for (int k = 1; k <= calls; ++k) {
        o.reset(pending);
        FakePrompter prompter;
        {
            FaultInjector faults(faultOnCall(k, Fault::NoSpace));
            EXPECT_FALSE(o.run(kReopen, prompter)) << "call " << k;
        }
        EXPECT_EQ(diskMessages(prompter).size(), 1u) << "call " << k;
        ASSERT_TRUE(holdsOldOrNew(op, o)) << "full disk at call " << k << " of the rollback";
        EXPECT_TRUE(snapshot(o.dir.path()) == o.before) << "call " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, OperationFaults, ::testing::ValuesIn(operations()), nameOf);
INSTANTIATE_TEST_SUITE_P(InPlace, RollbackFaults, ::testing::ValuesIn(inPlaceOperations()), nameOf);
