// The main of every test program with windows: GoogleTest's, under a watchdog.
#include "support/LongUse.h"
#include "support/Watchdog.h"

#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace sitekeeper {
namespace {

/// Well below the time that ctest gives a test, so that the watchdog is the one who tells. The long forms of some tests
/// bring a limit of their own in SITEKEEPER_TEST_SECONDS.
constexpr int UsualSeconds = 40;

class WatchEachTest final : public testing::EmptyTestEventListener
{
public:
    void OnTestStart(const testing::TestInfo& test) override
    {
        m_watchdog.Guard(std::string(test.test_suite_name()) + "." + test.name(),
                         std::chrono::seconds(GivenNumber(L"SITEKEEPER_TEST_SECONDS", UsualSeconds)));
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { m_watchdog.Rest(); }

private:
    Watchdog m_watchdog;
};

} // namespace
} // namespace sitekeeper

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    ::InitCommonControlsEx(&controls);
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<sitekeeper::WatchEachTest>().release());
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
