// Every change that rewrites files, stopped by a disk error at each file-system call it makes in
// turn: the user is told, and the files come out as before or as after, never in between.

#include "faults/FaultInjector.h"
#include "faults/Operations.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;
using platform::Fault;

namespace {

// The number of file-system calls the change makes when nothing goes wrong.
int callsOf(const Operation& op, const Outcomes& o) {
    FakePrompter prompter;
    FaultInjector counting;
    {
        DataFiles data(o.paths(), prompter);
        EXPECT_TRUE(op.run(data, prompter));
    }
    restore(o.dir, o.before);
    return static_cast<int>(counting.calls().size());
}

class OperationFaults : public ::testing::TestWithParam<Operation> {};

std::string nameOf(const ::testing::TestParamInfo<Operation>& info) {
    return info.param.name;
}

} // namespace

TEST_P(OperationFaults, AFullDiskAtAnyCallIsReportedAndLeavesTheOldFilesOrTheNewOnes) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const int calls = callsOf(op, o);
    ASSERT_GT(calls, 5);
    int sawOld = 0, sawNew = 0;
    for (int k = 1; k <= calls; ++k) {
        FakePrompter prompter;
        {
            FaultInjector faults(faultOnCall(k, Fault::NoSpace));
            DataFiles data(o.paths(), prompter);
            EXPECT_EQ(op.run(data, prompter).kind(), ErrorKind::ProgramEnded) << "call " << k;
        }
        const auto shown = diskMessages(prompter);
        ASSERT_EQ(shown.size(), 1u) << "call " << k;
        EXPECT_TRUE(shown[0].text.starts_with("Unrecoverable Error - ")) << shown[0].text;
#ifndef _WIN32
        EXPECT_EQ(shown[0].text, "Unrecoverable Error - No space left on device");
#endif
        EXPECT_EQ(shown[0].buttons, Buttons::Ok);
        EXPECT_EQ(prompter.endCalls, 1);
        ASSERT_TRUE(holdsOldOrNew(op, o)) << "full disk at call " << k;
        ++(snapshot(o.dir) == o.after ? sawNew : sawOld);
        restore(o.dir, o.before);
    }
    // A failure after the change was decided is finished on the next opening.
    EXPECT_GT(sawOld, 0);
    if (op.together && op.rewrites.size() > 1 && !op.inPlace) {
        EXPECT_GT(sawNew, 0);
    }
}

TEST_P(OperationFaults, ADiskNotReadyAtAnyCallIsRetriedToTheEnd) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const int calls = callsOf(op, o);
    for (int k = 1; k <= calls; ++k) {
        FakePrompter prompter; // answers Retry, the default
        {
            FaultInjector faults(faultOnCall(k, Fault::NotReady));
            DataFiles data(o.paths(), prompter);
            EXPECT_TRUE(op.run(data, prompter)) << "call " << k;
        }
        const auto shown = diskMessages(prompter);
        ASSERT_EQ(shown.size(), 1u) << "call " << k;
        EXPECT_EQ(shown[0].buttons, Buttons::RetryCancel);
        EXPECT_EQ(prompter.endCalls, 0);
        ASSERT_TRUE(holdsOldOrNew(op, o));
        EXPECT_TRUE(snapshot(o.dir) == o.after) << "retried at call " << k << " but not finished";
        restore(o.dir, o.before);
    }
}

TEST_P(OperationFaults, CancelOnADiskNotReadyEndsTheProgramWithTheFilesWhole) {
    const Operation& op = GetParam();
    Outcomes o(op);
    const int calls = callsOf(op, o);
    for (int k = 1; k <= calls; k += 2) {
        FakePrompter prompter;
        prompter.answers = {Answer::Cancel};
        {
            FaultInjector faults(faultOnCall(k, Fault::NotReady));
            DataFiles data(o.paths(), prompter);
            EXPECT_EQ(op.run(data, prompter).kind(), ErrorKind::ProgramEnded) << "call " << k;
        }
        EXPECT_EQ(diskMessages(prompter).size(), 1u);
        EXPECT_EQ(prompter.endCalls, 1);
        ASSERT_TRUE(holdsOldOrNew(op, o)) << "cancelled at call " << k;
        restore(o.dir, o.before);
    }
}

class RollbackFaults : public ::testing::TestWithParam<Operation> {};

TEST_P(RollbackFaults, AFullDiskWhileRollingBackLeavesTheRollbackToTheNextOpening) {
    const Operation& op = GetParam();
    Outcomes o(op);
    // The change stopped by a full disk at its first write into a data file, its journal made.
    {
        FakePrompter prompter;
        FaultInjector faults(faultOnWritesIntoData(Fault::NoSpace));
        DataFiles data(o.paths(), prompter);
        ASSERT_EQ(op.run(data, prompter).kind(), ErrorKind::ProgramEnded);
    }
    const Snapshot pending = snapshot(o.dir);
    ASSERT_TRUE(pending.count(kRollbackJournalFileName));
    int calls = 0;
    {
        FakePrompter prompter;
        FaultInjector counting;
        DataFiles data(o.paths(), prompter);
        ASSERT_TRUE(data.team(kTeam).openFile(FileKind::Stats));
        calls = static_cast<int>(counting.calls().size());
    }
    for (int k = 1; k <= calls; ++k) {
        restore(o.dir, pending);
        FakePrompter prompter;
        {
            FaultInjector faults(faultOnCall(k, Fault::NoSpace));
            DataFiles data(o.paths(), prompter);
            EXPECT_FALSE(data.team(kTeam).openFile(FileKind::Stats)) << "call " << k;
        }
        EXPECT_EQ(diskMessages(prompter).size(), 1u) << "call " << k;
        ASSERT_TRUE(holdsOldOrNew(op, o)) << "full disk at call " << k << " of the rollback";
        EXPECT_TRUE(snapshot(o.dir) == o.before) << "call " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, OperationFaults, ::testing::ValuesIn(operations()), nameOf);

INSTANTIATE_TEST_SUITE_P(InPlace, RollbackFaults, ::testing::ValuesIn(inPlaceOperations()), nameOf);
