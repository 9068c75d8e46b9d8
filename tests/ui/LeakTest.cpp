// A hundred openings of the main dialog leave nothing behind.
#include "support/GuiResources.h"
#include "support/MainDialogFixture.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <ostream>

namespace sitekeeper {
namespace {

/// What the process holds of the system.
struct Holdings
{
    unsigned drawingObjects = CountGdiObjects();
    unsigned userObjects = CountUserObjects();
    std::size_t windows = CountThreadWindows();
    DWORD handles = CountHandles();

    bool operator==(const Holdings&) const = default;

private:
    static DWORD CountHandles()
    {
        DWORD handles = 0;
        EXPECT_NE(::GetProcessHandleCount(::GetCurrentProcess(), &handles), FALSE);
        return handles;
    }
};

std::ostream& operator<<(std::ostream& out, const Holdings& holdings)
{
    return out << holdings.drawingObjects << " drawing objects, " << holdings.userObjects << " user objects, "
               << holdings.windows << " windows, " << holdings.handles << " handles";
}

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
