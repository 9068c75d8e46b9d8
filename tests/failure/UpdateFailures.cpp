// The update reminder in each of its outcomes, with each of its calls of the platform failing in turn.
#include "PlatformFailures.h"
#include "support/StateChecks.h"
#include "support/UpdateFixture.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::wstring StoredDateLine = std::wstring(L"registry HKCU\\") + ReminderKey + L" : CheckWebVersionDate = ";
const std::wstring StoredDaysLine = std::wstring(L"registry HKCU\\") + ReminderKey + L" : CheckWebVersionDays = ";

/// The first line of `state` that begins like that.
std::wstring LineOf(const State& state, const std::wstring& begin)
{
    const auto found =
        std::find_if(state.begin(), state.end(), [&](const std::wstring& line) { return line.starts_with(begin); });
    return found == state.end() ? std::wstring() : *found;
}

/// What one run did that can be seen from outside.
struct Seen
{
    std::wstring date;
    std::size_t boxes = 0;
    bool isPageOpened = false;

    bool operator==(const Seen&) const = default;
};

Seen SeenIn(const State& state)
{
    const auto beginsWith = [](const wchar_t* begin) {
        return [begin](const std::wstring& line) { return line.starts_with(begin); };
    };
    return {LineOf(state, StoredDateLine),
            static_cast<std::size_t>(std::count_if(state.begin(), state.end(), beginsWith(L"box "))),
            std::any_of(state.begin(), state.end(), beginsWith(L"opened "))};
}

/// What holds whatever fails: only the two stored values change, the reminder is armed before the page is read, no
/// question comes without it, and what was done before the failing call stays.
void CheckOutcome(const FaultedRun& run, const FaultedRun& untouched)
{
    for (const std::wstring& line : Removed(run.before, run.after)) {
        EXPECT_TRUE(line.starts_with(StoredDateLine) || line.starts_with(StoredDaysLine))
            << testing::PrintToString(line);
    }
    const Seen before = SeenIn(run.before);
    const Seen seen = SeenIn(run.after);
    const Seen whole = SeenIn(untouched.after);
    const bool isPageRead = std::any_of(run.calls.begin(), run.calls.end(),
                                        [](const std::wstring& call) { return call.starts_with(L"read page "); });
    const bool isWriteLost = Is(run, L"write ");
    if (isPageRead && !isWriteLost) {
        EXPECT_NE(seen.date, before.date); // armed, whatever followed
    }
    EXPECT_TRUE(isPageRead || seen.boxes == 0);
    // A question that cannot be shown counts as answered Yes; a file that cannot be seen does not suppress it.
    EXPECT_TRUE(whole.isPageOpened || !seen.isPageOpened || Is(run, L"show ") || Is(run, L"search ") ||
                run.failed.ends_with(L"NetworkAppPath"));
    if (run.raised) { // nothing comes behind an error
        EXPECT_EQ(run.after, run.atFailure);
        EXPECT_EQ(run.raised, ResultCode::InvalidArgument);
        EXPECT_TRUE(Is(run, L"from local") || Is(run, L"to local")) << testing::PrintToString(run.failed);
    } else if (isWriteLost) {
        EXPECT_EQ(run.calls, untouched.calls); // nobody looks whether it was stored
        EXPECT_EQ(seen.boxes, whole.boxes);
    } else if (Is(run, L"format")) {
        EXPECT_TRUE(seen.date.ends_with(L"\"\"") || seen.date == whole.date);
    }
}

int SweepUpdate(Answer answer, const std::function<void(MemoryPlatform&)>& change)
{
    const TimeZoneScope zone(Utc);
    FaultedRun untouched;
    const Sweep sweep{[&](MemoryPlatform& memory) {
                          Install(memory);
                          memory.messages.AnswerAll(answer);
                          change(memory);
                      },
                      [](const Platform& ports) { Check(ports); },
                      [&untouched](const FaultedRun& run) { CheckOutcome(run, untouched); }};
    untouched = RunUntouched(sweep);
    return SweepFailures(sweep);
}

void ChangeNothing(MemoryPlatform& /*memory*/) {}

void StoreDate(MemoryPlatform& memory, const wchar_t* date)
{
    memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", date);
}

int OnAYes()
{
    return SweepUpdate(Answer::Yes, ChangeNothing);
}
int OnANo()
{
    return SweepUpdate(Answer::No, ChangeNothing);
}
int OnACancel()
{
    return SweepUpdate(Answer::Cancel, ChangeNothing);
}
int OnTheFirstRun()
{
    return SweepUpdate(Answer::Yes, [](MemoryPlatform& memory) {
        memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
        memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays");
    });
}
int BeforeItsDay()
{
    return SweepUpdate(Answer::Yes, [](MemoryPlatform& memory) { StoreDate(memory, L"2024-05-07 00:00:00"); });
}
int WithTwoFolders()
{
    return SweepUpdate(Answer::Yes, [](MemoryPlatform& memory) {
        SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Application, L"N:\\Suite\\");
    });
}
int WithoutThePage()
{
    return SweepUpdate(Answer::Yes, [](MemoryPlatform& memory) { memory.web.Withdraw(Address); });
}
int WithNewFiles()
{
    return SweepUpdate(Answer::Yes, [](MemoryPlatform& memory) {
        memory.files.SetModified(L"C:\\Suite\\Applications\\SiteKeeper64.exe", Today);
    });
}

/// A date that is none ends the check with an error: nobody is asked anything, whichever call fails besides.
int SweepError(const std::function<void(MemoryPlatform&)>& change)
{
    const TimeZoneScope zone(Utc);
    const Sweep sweep{[&](MemoryPlatform& memory) {
                          Install(memory);
                          change(memory);
                      },
                      [](const Platform& ports) { Check(ports); },
                      [](const FaultedRun& run) {
                          EXPECT_EQ(SeenIn(run.after).boxes, 0U);
                          EXPECT_FALSE(SeenIn(run.after).isPageOpened);
                      }};
    EXPECT_EQ(RunUntouched(sweep).raised, ResultCode::Fail);
    return SweepFailures(sweep);
}

int WithABadStoredDate()
{
    return SweepError([](MemoryPlatform& memory) { StoreDate(memory, L"2024-13-01 00:00:00"); });
}
int WithABadPage()
{
    return SweepError([](MemoryPlatform& memory) { memory.web.Publish(Address, "LX_2023_Plus_Update2024_13_01.exe"); });
}

} // namespace

SweptOperations UpdateOperations()
{
    return {{"check for updates, answered Yes", OnAYes},
            {"check for updates, answered No", OnANo},
            {"check for updates, answered Cancel", OnACancel},
            {"check for updates, the first time", OnTheFirstRun},
            {"check for updates, before the day", BeforeItsDay},
            {"check for updates, with two folders", WithTwoFolders},
            {"check for updates, without the page", WithoutThePage},
            {"check for updates, with new files", WithNewFiles},
            {"check for updates, with a damaged stored date", WithABadStoredDate},
            {"check for updates, with a damaged page", WithABadPage}};
}

} // namespace sitekeeper
