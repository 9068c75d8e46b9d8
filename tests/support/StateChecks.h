// What a run with a failing call may leave behind, said in terms of a run without one.
#pragma once

#include "support/FaultyPlatform.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {

/// The run left what the untouched one leaves, except that whatever contains `part` is as it was before the run.
inline void ExpectUntouchedBut(const std::wstring& part, const FaultedRun& run, const FaultedRun& untouched)
{
    const auto isPart = [&part](const std::wstring& line) { return line.find(part) != std::wstring::npos; };
    State expected;
    std::copy_if(run.before.begin(), run.before.end(), std::back_inserter(expected), isPart);
    std::remove_copy_if(untouched.after.begin(), untouched.after.end(), std::back_inserter(expected), isPart);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(run.after, expected);
}

/// What was written before the call failed is still there. The component runtime, which was entered, was left.
inline void ExpectWrittenStays(const FaultedRun& run)
{
    State gone = Removed(Added(run.before, run.atFailure), run.after);
    std::erase_if(gone, [](const std::wstring& line) { return line.starts_with(L"component runtime"); });
    EXPECT_EQ(gone, State{});
}

/// The failing call was of this kind ("write ", "exists ", …).
[[nodiscard]] inline bool Is(const FaultedRun& run, const wchar_t* kind)
{
    return run.failed.starts_with(kind);
}

} // namespace sitekeeper
