// What all journeys share: a fresh installation for each, and its state before and after.
#pragma once

#include "e2e/support/Installation.h"
#include "e2e/support/Pages.h"
#include "e2e/support/ProgramRun.h"
#include "e2e/support/Screenshot.h"
#include "e2e/support/State.h"

#include <gtest/gtest.h>

namespace sitekeeper::e2e {

class Journey : public ::testing::Test
{
protected:
    [[nodiscard]] Installation& Suite() noexcept { return m_installation; }

    /// Looks into every folder, so that no later look changes its time of last access. Wine's folder picker compares
    /// those times and does not find its start folder when one changes under it, which the first look after a change
    /// does.
    static void SettleAccessTimes()
    {
        static_cast<void>(State::Take());
        static_cast<void>(State::Take()); // the first may have come within the same tick of the clock as the change
    }

    /// What every orderly end of the program writes: the window's rectangle in screen coordinates.
    static void ExpectPosition(State& state, const RECT& rectangle)
    {
        state.Set(Hive::User, PositionKey, L"Application",
                  TextValue(std::to_wstring(rectangle.left) + L"," + std::to_wstring(rectangle.top) + L"," +
                            std::to_wstring(rectangle.right) + L"," + std::to_wstring(rectangle.bottom)));
    }

    static void ExpectFolders(State& state, const std::wstring& program, const std::wstring& application,
                              const std::wstring& datafiles)
    {
        state.Set(Hive::Machine, SuiteKey, L"LocalAppPath", TextValue(program));
        state.Set(Hive::Machine, SuiteKey, L"NetworkAppPath", TextValue(application));
        state.Set(Hive::Machine, SuiteKey, L"DatafilesPath", TextValue(datafiles));
    }

    static void ExpectReminder(State& state, const std::wstring& date, DWORD days)
    {
        state.Set(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(date));
        state.Set(Hive::User, ReminderKey, L"CheckWebVersionDays", NumberValue(days));
    }

    static void ExpectRenewed(State& state, const std::wstring& shortcutFolder, const std::wstring& applicationFolder)
    {
        for (const Tool& tool : Tools) {
            state.Set(shortcutFolder + tool.name + L".lnk", RenewedShortcut(tool, applicationFolder));
        }
    }

    /// Whether the machine is in that state; the failure lists every difference.
    [[nodiscard]] static ::testing::AssertionResult IsNow(const State& expected)
    {
        const std::string changes = expected.ChangesTo(State::Take());
        return changes.empty() ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "\n" << changes;
    }

    /// The program ends by itself, well, and leaves no window and no process; the machine is in the expected state.
    static void ExpectEnd(const ProgramRun& run, const State& expected)
    {
        EXPECT_EQ(run.WaitForEnd(), 0U);
        EXPECT_TRUE(run.Windows().empty());
        EXPECT_TRUE(IsNow(expected));
    }

private:
    Installation m_installation;
};

} // namespace sitekeeper::e2e
