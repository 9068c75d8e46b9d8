// Every operation of the program that needs no window, through every failure of the platform.
#include "PlatformFailures.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

SweptOperations AllOperations()
{
    SweptOperations all;
    for (const SweptOperations& some : {SettingsOperations(), StartOperations(), ApplyOperations(), CommandOperations(),
                                        PrintOperations(), UpdateOperations(), ShortcutOperations(),
                                        AccessListOperations(), SafeSaveOperations(), AutoCADOperations()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

class PlatformFailure : public ::testing::TestWithParam<SweptOperation>
{};

TEST_P(PlatformFailure, LeavesWhatIsPromisedWhicheverCallFails)
{
    EXPECT_GT(GetParam().sweep(), 0);
}

INSTANTIATE_TEST_SUITE_P(EachOperation, PlatformFailure, ::testing::ValuesIn(AllOperations()),
                         [](const auto& tested) { return TestNameOf(tested.param); });

TEST(PlatformFailureTable, IsTheOneThatIsKept)
{
    ExpectTableIsKept(AllOperations(), "platform calls", Numbers::OfEachBuild);
}

} // namespace
} // namespace sitekeeper
