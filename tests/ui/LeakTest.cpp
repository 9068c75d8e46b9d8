// A hundred openings of the main dialog leave nothing behind.
#include "support/Holdings.h"
#include "support/MainDialogFixture.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class LeakTest : public MainDialogTest
{
protected:
    /// What the process holds after a few openings, in which the system sets up what it keeps, and after many more.
    void ExpectTheSameAfterManyRunsOf(int button)
    {
        constexpr int WarmUps = 5;
        constexpr int Runs = 100;
        Open(button, WarmUps);
        const Holdings before;
        Open(button, Runs);
        EXPECT_EQ(Holdings(), before);
    }

private:
    void Open(int button, int times)
    {
        for (int i = 0; i < times; ++i) {
            Run({Press(button)});
        }
    }
};

TEST_F(LeakTest, OpeningAndCancellingLeavesNothingBehind)
{
    ExpectTheSameAfterManyRunsOf(IDCANCEL);
}

TEST_F(LeakTest, ApplyingLeavesNothingBehind)
{
    ExpectTheSameAfterManyRunsOf(IDOK);
}

} // namespace
} // namespace sitekeeper
