#include "support/FaultyPlatform.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

FaultedRun Run(const Sweep& sweep, int failingCall)
{
    MemoryPlatform memory;
    sweep.prepare(memory);
    FaultyPlatform faulty(memory.Ports(), failingCall);
    FaultedRun run;
    run.before = memory.CurrentState();
    try {
        sweep.operation(faulty.Ports());
    } catch (const PlatformError& error) {
        run.raised = error.Code();
    }
    run.after = memory.CurrentState();
    run.calls = faulty.Calls();
    if (faulty.HasFailed()) {
        run.number = failingCall;
        run.failed = run.calls[static_cast<std::size_t>(failingCall) - 1];
        // The script is written for the untouched run; what a fault left over is no failure.
        memory.folders.ForgetPending();
    }
    return run;
}

} // namespace

FaultedRun RunUntouched(const Sweep& sweep)
{
    return Run(sweep, 0);
}

int SweepFailures(const Sweep& sweep)
{
    const FaultedRun untouched = RunUntouched(sweep);
    for (int number = 1;; ++number) {
        const FaultedRun run = Run(sweep, number);
        if (run.number == 0) {
            EXPECT_EQ(run.after, untouched.after);
            return number - 1;
        }
        SCOPED_TRACE("failing call " + std::to_string(number) + ": " + ::testing::PrintToString(run.failed));
        sweep.check(run);
    }
}

} // namespace sitekeeper
