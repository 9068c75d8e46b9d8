// Memory that runs out: the n-th allocation fails. For the one test program whose operator new this replaces.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <string>

namespace sitekeeper {

/// For the life of this object allocations are counted, and number `failing`, from 1, fails; none for 0. One at a time.
class AllocationFault
{
public:
    explicit AllocationFault(int failing) noexcept;
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;
    ~AllocationFault();

    [[nodiscard]] bool HasFailed() const noexcept;
};

/// For the life of this object no allocation counts or fails: what stands in for the system does not share the
/// program's memory. May be nested.
class AllocationPause
{
public:
    AllocationPause() noexcept;
    AllocationPause(const AllocationPause&) = delete;
    AllocationPause& operator=(const AllocationPause&) = delete;
    ~AllocationPause();
};

/// How many allocations were made and not given back.
[[nodiscard]] long HeldAllocations() noexcept;

/// How an operation ended: with std::bad_alloc, or without, be it that none failed or that it got over it.
enum class Ending
{
    Done,
    Raised,
};

/// Makes a `World`, does `operation` on it with the first, the second, the third … allocation failing, until a run has
/// no such allocation, and lets `check` look at each run, the last one too. Every other error fails the test, and so
/// does an allocation that is still held when the world is gone. Gives the number of failure points.
template <typename World>
int SweepAllocations(const std::function<void(World&)>& operation, const std::function<void(World&, Ending)>& check)
{
    constexpr int Most = 100'000;                   // more than any operation here makes
    for (int number = 0; number < Most; ++number) { // the first run only makes what the libraries make once
        SCOPED_TRACE("failing allocation " + std::to_string(number));
        const long held = HeldAllocations();
        bool hasFailed = false;
        {
            World world;
            auto ending = Ending::Done;
            try {
                const AllocationFault fault(number);
                // What is raised ends the fault before anything of the framework runs.
                try {
                    operation(world);
                } catch (const std::bad_alloc&) {
                    ending = Ending::Raised;
                }
                hasFailed = fault.HasFailed();
            } catch (...) {
                ADD_FAILURE() << "another error than that there is no memory";
                return number;
            }
            EXPECT_TRUE(hasFailed || ending == Ending::Done);
            check(world, ending);
        }
        if (number == 0) {
            continue;
        }
        EXPECT_EQ(HeldAllocations(), held);
        if (!hasFailed) {
            return number - 1;
        }
        if (::testing::Test::HasFatalFailure()) {
            return number;
        }
    }
    ADD_FAILURE() << "an operation that does not come to an end";
    return Most;
}

} // namespace sitekeeper
