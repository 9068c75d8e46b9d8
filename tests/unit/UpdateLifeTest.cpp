// The life of the reminder's two values: each situation at a start, and what it leaves.
#include "support/UpdateFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace sitekeeper {
namespace {

struct Situation
{
    const char* name;
    /// What differs from an installation that asks its question.
    void (*prepare)(MemoryPlatform& memory);
    std::optional<Answer> answer = std::nullopt;
    bool isPageRead = false;
    const wchar_t* storedDate = L"";
    bool isPageOpened = false;
    const wchar_t* told = nullptr;
};

void Nothing(MemoryPlatform& /*memory*/) {}

void StoreDate(MemoryPlatform& memory, const wchar_t* date)
{
    memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", date);
}

constexpr const wchar_t* Armed = L"2024-05-20 00:00:00"; // today and the interval

const Situation Situations[] = {
    {.name = "LocalAndNetworkPathsDiffer",
     .prepare =
         [](MemoryPlatform& memory) {
             SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Application, L"C:\\Suite2\\");
         },
     .storedDate = L"2024-05-06 00:00:00"},
    {.name = "DateAbsent",
     .prepare =
         [](MemoryPlatform& memory) {
             memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
         },
     .storedDate = Armed},
    {.name = "DateIncomplete",
     .prepare = [](MemoryPlatform& memory) { StoreDate(memory, L"2024-05-01"); },
     .storedDate = Armed},
    {.name = "TodayEarlierThanTheStoredDate",
     .prepare = [](MemoryPlatform& memory) { StoreDate(memory, L"2024-05-07 00:00:00"); },
     .storedDate = L"2024-05-07 00:00:00"},
    {.name = "ClockSetBackByYears",
     .prepare = [](MemoryPlatform& memory) { StoreDate(memory, L"2031-05-07 00:00:00"); },
     .storedDate = L"2031-05-07 00:00:00"},
    {.name = "DuePageNotFound",
     .prepare = [](MemoryPlatform& memory) { memory.web.Withdraw(Address); },
     .isPageRead = true,
     .storedDate = Armed},
    {.name = "DueKeyNotFound",
     .prepare = [](MemoryPlatform& memory) { memory.web.Publish(Address, "LX_2022_Plus_Update2024_05_06."); },
     .isPageRead = true,
     .storedDate = Armed},
    {.name = "DueFilesAsNewAsThePublishedDate",
     .prepare =
         [](MemoryPlatform& memory) { memory.files.SetModified(L"C:\\Suite\\Applications\\SiteKeeper64.exe", Today); },
     .isPageRead = true,
     .storedDate = Armed},
    {.name = "DueForYearsAndAnsweredYes",
     .prepare = [](MemoryPlatform& memory) { StoreDate(memory, L"1999-12-31 23:59:59"); },
     .answer = Answer::Yes,
     .isPageRead = true,
     .storedDate = Armed,
     .isPageOpened = true},
    {.name = "DueTodayAndAnsweredYes",
     .prepare = Nothing,
     .answer = Answer::Yes,
     .isPageRead = true,
     .storedDate = Armed,
     .isPageOpened = true},
    {.name = "DueAndTheQuestionCannotBeShown", // any answer but No and Cancel opens the page
     .prepare = Nothing,
     .answer = Answer::None,
     .isPageRead = true,
     .storedDate = Armed,
     .isPageOpened = true},
    {.name = "DueAndAnsweredNo",
     .prepare = Nothing,
     .answer = Answer::No,
     .isPageRead = true,
     .storedDate = Armed,
     .told = L"You will be reminded in 14 days of a new update."},
    {.name = "DueAndAnsweredCancel",
     .prepare = Nothing,
     .answer = Answer::Cancel,
     .isPageRead = true,
     .storedDate = L"2025-05-06 00:00:00",
     .told = L"You will not be reminded of any new updates."},
};

class UpdateLife : public UpdateFixture, public testing::WithParamInterface<Situation>
{};

TEST_P(UpdateLife, LeavesWhatTheSituationAsksFor)
{
    const Situation& situation = GetParam();
    situation.prepare(memory);
    std::vector<ScriptedMessageBoxes::Box> boxes;
    if (situation.answer) {
        memory.messages.Expect(*situation.answer);
        boxes.push_back(Question());
    }
    if (situation.told != nullptr) {
        memory.messages.Expect();
        boxes.push_back(Told(situation.told));
    }
    Run();
    EXPECT_EQ(memory.messages.Shown(), boxes);
    EXPECT_EQ(memory.web.AllRead().size(), situation.isPageRead ? 1U : 0U);
    EXPECT_EQ(memory.shell.Opened().size(), situation.isPageOpened ? 1U : 0U);
    EXPECT_EQ(StoredDate(), situation.storedDate);
    EXPECT_EQ(StoredDays(), 14U);
}

INSTANTIATE_TEST_SUITE_P(Situations, UpdateLife, testing::ValuesIn(Situations),
                         [](const testing::TestParamInfo<Situation>& row) { return std::string(row.param.name); });

/// A moment in a time zone whose calendar has its own ways there.
struct OddDay
{
    const char* name;
    const char* zone;
    Seconds now;
};

class UpdateOnOddDays : public UpdateFixture, public testing::WithParamInterface<OddDay>
{};

TEST_P(UpdateOnOddDays, ArmsTheReminderWithinADayOfTheInterval)
{
    constexpr Seconds Hour = 3600;
    const TimeZoneScope zone(GetParam().zone);
    memory.clock.SetNow(GetParam().now);
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
    Run();
    const Seconds stored = SettingsOn(memory.Ports()).ReadUpdateDate(ReminderKey, -1);
    EXPECT_LE(stored, GetParam().now + 14 * Day + Hour);
    EXPECT_GT(stored, GetParam().now + 13 * Day - 2 * Hour);
    // Where the clocks went forward meanwhile, the stored day begins an hour too late and the next one is the first
    // due.
    memory.clock.SetNow(stored + Day + 2 * Hour);
    memory.messages.AnswerAll(Answer::Yes);
    Run();
    EXPECT_EQ(memory.web.AllRead().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Days, UpdateOnOddDays,
                         testing::ValuesIn<OddDay>({{"OfTwentyThreeHours", Berlin, 1711839600 + 1800},
                                                    {"OfTwentyFiveHours", Berlin, 1729980000 + 1800},
                                                    {"LastHourOfTwentyFive", Berlin, 1729980000 + 25 * 3600 - 1},
                                                    {"IntoTheLongDay", Berlin, 1729980000 - 14 * 86400},
                                                    {"WithoutAMidnight", SaoPaulo, 1541300400},
                                                    {"IntoTheDayWithoutAMidnight", SaoPaulo, 1541300400 - 14 * 86400},
                                                    {"EndOf32BitTime", Utc, 2147483647},
                                                    {"BeyondThe32BitTime", Utc, 2147483648},
                                                    {"EndOfUnsigned32BitTime", Utc, 4294967295},
                                                    {"SecondDayOf1970", Utc, 86400},
                                                    {"LeapDay", Utc, 1709164800}}),
                         [](const testing::TestParamInfo<OddDay>& row) { return std::string(row.param.name); });

} // namespace
} // namespace sitekeeper
