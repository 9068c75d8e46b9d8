// Pressing OK, with each of its calls of the platform failing in turn.
#include "PlatformFailures.h"
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

/// Pressing OK on an installation with its shortcuts.
class Applying
{
public:
    /// With something taken away from the installation by `prepare`.
    explicit Applying(std::function<void(MemoryPlatform&)> prepare) : m_prepare(std::move(prepare)) {}

    int SweepAll()
    {
        m_untouched = RunUntouched(MakeSweep());
        EXPECT_EQ(m_result, ApplyResult::Applied);
        const int points = SweepFailures(MakeSweep());
        EXPECT_EQ(points, static_cast<int>(m_untouched.calls.size()));
        return points;
    }

private:
    Sweep MakeSweep()
    {
        return {[this](MemoryPlatform& memory) {
                    InstallShortcuts(memory);
                    m_prepare(memory);
                },
                [this](const Platform& ports) {
                    InstallationSettings settings = SettingsOn(ports);
                    m_result.reset();
                    m_result = ApplyInstallation(ports, settings, NewFolders, NewSchedule);
                },
                [this](const FaultedRun& run) { Check(run); }};
    }

    void Check(const FaultedRun& run)
    {
        ExpectWrittenStays(run);
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

    /// The folders are written and nothing else is.
    void CheckUnknownShellFolder(const FaultedRun& run) const
    {
        const bool isPrograms = run.failed.ends_with(L"Common Programs");
        const bool isOtherDesktop = run.failed.ends_with(L"Common Desktop") &&
                                    m_untouched.calls.size() > static_cast<std::size_t>(run.number) &&
                                    m_untouched.calls[static_cast<std::size_t>(run.number)].ends_with(L" : Desktop");
        if (isOtherDesktop) { // it was missing anyhow
            EXPECT_EQ(m_result, ApplyResult::Applied);
            EXPECT_EQ(run.after, m_untouched.after);
            return;
        }
        EXPECT_EQ(m_result, isPrograms ? ApplyResult::NoProgramsFolder : ApplyResult::NoDesktopFolder);
        EXPECT_EQ(run.after, run.atFailure);
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
    std::function<void(MemoryPlatform&)> m_prepare;
    std::optional<ApplyResult> m_result;
    FaultedRun m_untouched;
};

int ApplyChanges()
{
    return Applying([](MemoryPlatform&) {}).SweepAll();
}

int ApplyChangesOnTheUsersDesktop()
{
    return Applying([](MemoryPlatform& memory) {
               memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
               memory.registry.SetText(Hive::CurrentUser, ShellFoldersKey, L"Desktop", L"D:\\Desktop");
           })
        .SweepAll();
}

} // namespace

SweptOperations ApplyOperations()
{
    return {{"apply the changes", ApplyChanges},
            {"apply the changes, with the user's own desktop", ApplyChangesOnTheUsersDesktop}};
}

} // namespace sitekeeper
