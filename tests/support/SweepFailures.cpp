#include "support/FaultyPlatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <new>

namespace sitekeeper {
namespace {

FaultedRun Run(const Sweep& sweep, int failingCall, FaultKind kind)
{
    MemoryPlatform memory;
    sweep.prepare(memory);
    FaultedRun run;
    FaultyPlatform faulty(memory.Ports(), FaultPlan(failingCall, kind, [&] { run.atFailure = memory.CurrentState(); }));
    run.before = memory.CurrentState();
    try {
        sweep.operation(faulty.Ports());
    } catch (const PlatformError& error) {
        run.raised = error.Code();
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(kind, FaultKind::OutOfMemory);
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

/// What an operation took and has to give back, whatever happens to it.
bool IsHeld(const std::wstring& line)
{
    return line.starts_with(L"component runtime entered") || line.starts_with(L"libraries released too often") ||
           line.starts_with(L"documents still held");
}

void CheckWhatHoldsForAll(const FaultedRun& run, const FaultedRun& untouched)
{
    for (const std::wstring& line : Added(run.before, run.after)) {
        EXPECT_FALSE(IsHeld(line)) << ::testing::PrintToString(line);
    }
    const auto count = std::min(static_cast<std::size_t>(run.number), untouched.calls.size());
    EXPECT_TRUE(std::equal(untouched.calls.begin(), untouched.calls.begin() + static_cast<std::ptrdiff_t>(count),
                           run.calls.begin()));
}

} // namespace

FaultedRun RunUntouched(const Sweep& sweep)
{
    return Run(sweep, 0, FaultKind::Once);
}

int SweepFailures(const Sweep& sweep)
{
    const FaultedRun untouched = RunUntouched(sweep);
    for (int number = 1;; ++number) {
        for (const FaultKind kind : {FaultKind::OutOfMemory, FaultKind::FromThenOn, FaultKind::Once}) {
            const FaultedRun run = Run(sweep, number, kind);
            if (run.number == 0) {
                EXPECT_EQ(run.after, untouched.after);
                return number - 1;
            }
            SCOPED_TRACE("failing call " + std::to_string(number) + ": " + ::testing::PrintToString(run.failed) +
                         ", kind " + std::to_string(static_cast<int>(kind)));
            CheckWhatHoldsForAll(run, untouched);
            const auto& check = kind == FaultKind::OutOfMemory ? sweep.checkOutOfMemory : sweep.check;
            if (kind != FaultKind::FromThenOn && check) {
                check(run);
            }
        }
    }
}

} // namespace sitekeeper
