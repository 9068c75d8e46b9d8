// Every parser and the store, through every failure of memory.
#include "AllocationFailures.h"
#include "FailingAllocations.h"

#include <gtest/gtest.h>
#include <memory>

namespace sitekeeper {
namespace {

SweptOperations AllOperations()
{
    SweptOperations all;
    for (const SweptOperations& some : {StoreAllocations(), StorePartAllocations(), AccessListAllocations(),
                                        ParserAllocations(), CommandAllocations()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

class AllocationFailure : public ::testing::TestWithParam<SweptOperation>
{};

TEST_P(AllocationFailure, LeavesWhatIsPromisedWhicheverAllocationFails)
{
    // The sweep itself checks. Unlike calls of the platform, an operation may have no allocation at all.
    static_cast<void>(GetParam().sweep());
}

INSTANTIATE_TEST_SUITE_P(EachOperation, AllocationFailure, ::testing::ValuesIn(AllOperations()),
                         [](const auto& tested) { return TestNameOf(tested.param); });

TEST(AllocationFailureTable, IsTheOneThatIsKept)
{
    ExpectTableIsKept(AllOperations(), "allocations", Numbers::OfTheKeptBuild);
}

struct TwoNumbers
{
    std::unique_ptr<int> first;
    std::unique_ptr<int> second;
};

TEST(SweepAllocations, FailsEachAllocationInTurn)
{
    std::string seen;
    const int points = SweepAllocations<TwoNumbers>(
        [](TwoNumbers& numbers) {
            numbers.first = std::make_unique<int>(1);
            numbers.second = std::make_unique<int>(2);
        },
        [&seen](TwoNumbers& numbers, Ending ending) {
            seen += ending == Ending::Raised ? 'r' : 'd';
            seen += numbers.first ? (numbers.second ? '2' : '1') : '0';
        });
    EXPECT_EQ(points, 2);
    EXPECT_EQ(seen, "d2r0r1d2");
}

TEST(SweepAllocations, PausesForTheSystem)
{
    const int points = SweepAllocations<TwoNumbers>(
        [](TwoNumbers& numbers) {
            numbers.first = std::make_unique<int>(1);
            const AllocationPause pause;
            numbers.second = std::make_unique<int>(2);
        },
        [](TwoNumbers&, Ending) {});
    EXPECT_EQ(points, 1);
}

} // namespace
} // namespace sitekeeper
