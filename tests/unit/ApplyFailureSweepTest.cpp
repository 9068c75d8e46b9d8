// Pressing OK, with each of its calls of the platform failing in turn.
#include "settings/Product.h"
#include "support/StateChecks.h"
#include "support/SuiteFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

/// The file that the failing call was about: the last one whose existence was asked for.
std::wstring ShortcutAtFault(const FaultedRun& run)
{
    const std::wstring kind = L"exists ";
    std::wstring path;
    for (int number = 0; number < run.number; ++number) {
        const std::wstring& call = run.calls[static_cast<std::size_t>(number)];
        if (call.starts_with(kind)) {
            path = call.substr(kind.size());
        }
    }
    return path;
}

class ApplySweep : public ::testing::Test
{
protected:
    Sweep MakeSweep()
    {
        return {InstallShortcuts,
                [this](const Platform& ports) {
                    InstallationSettings settings = SettingsOn(ports);
                    m_result.reset();
                    m_result = ApplyInstallation(ports, settings, NewFolders, NewSchedule);
                },
                [this](const FaultedRun& run) { Check(run); }};
    }

    void Check(const FaultedRun& run)
    {
        if (Is(run, L"read ")) {
            CheckUnknownShellFolder(run);
        } else if (Is(run, L"from local") || Is(run, L"to local")) {
            EXPECT_EQ(run.raised, ResultCode::InvalidArgument);
            EXPECT_FALSE(m_result);
            ExpectUntouchedBut(L"registry HKCU", run, m_untouched);
        } else {
            EXPECT_FALSE(run.raised);
            EXPECT_EQ(m_result, ApplyResult::Applied);
            CheckApplied(run);
        }
    }

    void CheckUnknownShellFolder(const FaultedRun& run) const
    {
        const bool isDesktop = run.failed.ends_with(L"Common Desktop");
        EXPECT_EQ(m_result, isDesktop ? ApplyResult::NoDesktopFolder : ApplyResult::NoProgramsFolder);
        EXPECT_EQ(Removed(run.before, run.after), State{});
        EXPECT_EQ(Added(run.before, run.after),
                  (State{L"registry HKLM\\Software\\ORIVEL", L"registry HKLM\\Software\\ORIVEL\\LX Plus",
                         L"registry HKLM\\Software\\ORIVEL\\LX Plus\\2023",
                         L"registry HKLM\\Software\\ORIVEL\\LX Plus\\2023 : DatafilesPath = \"N:\\Suite\\Datafiles\\\"",
                         L"registry HKLM\\Software\\ORIVEL\\LX Plus\\2023 : LocalAppPath = \"C:\\Suite\\\"",
                         L"registry HKLM\\Software\\ORIVEL\\LX Plus\\2023 : NetworkAppPath = \"N:\\Suite\\\""}));
    }

    /// Everything was done but what failed.
    void CheckApplied(const FaultedRun& run) const
    {
        if (Is(run, L"write ")) {
            ExpectUntouchedBut(run.failed.substr(run.failed.find(L" : ")) + L" = ", run, m_untouched);
            EXPECT_EQ(run.calls, m_untouched.calls);
        } else if (Is(run, L"exists ") || Is(run, L"full path ") || Is(run, L"save ")) {
            ExpectUntouchedBut(L"file " + ShortcutAtFault(run), run, m_untouched);
        } else if (Is(run, L"enter components")) {
            ExpectUntouchedBut(L".lnk", run, m_untouched);
        } else if (Is(run, L"format")) {
            const std::wstring date =
                L"registry HKCU\\Software\\ORIVEL\\LX Plus\\2023\\Assist : CheckWebVersionDate = ";
            EXPECT_EQ(Added(m_untouched.after, run.after), State{date + L"\"\""});
            EXPECT_EQ(Removed(m_untouched.after, run.after), State{date + L"\"2024-05-06 07:08:09\""});
        } else {
            ADD_FAILURE() << "a call that this test does not know: " << ::testing::PrintToString(run.failed);
        }
    }

    TimeZoneScope m_zone{Utc};
    std::optional<ApplyResult> m_result;
    FaultedRun m_untouched;
};

TEST_F(ApplySweep, LosesNothingButWhatFailed)
{
    m_untouched = RunUntouched(MakeSweep());
    EXPECT_EQ(m_result, ApplyResult::Applied);
    const int runs = SweepFailures(MakeSweep());
    EXPECT_EQ(runs, static_cast<int>(m_untouched.calls.size()));
    // Three folders, two shell folders, the runtime, twice five files of which two are written, five for the schedule.
    EXPECT_EQ(runs, 3 + 2 + 1 + 2 * (5 + 2 * 2) + 5);
}

} // namespace
} // namespace sitekeeper
