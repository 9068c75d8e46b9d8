// The update reminder: when it is due, what it reads and writes, what it asks.
#include "support/UpdateFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using UpdateCheckTest = UpdateFixture;

TEST_F(UpdateCheckTest, RunsOnlyWhereBothPathsAreTheSame)
{
    SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Application, L"N:\\Suite\\");
    const State before = memory.CurrentState();
    Run();
    EXPECT_EQ(memory.CurrentState(), before);
    EXPECT_THAT(memory.web.AllRead(), IsEmpty());
}

TEST_F(UpdateCheckTest, TheFirstStartOnlyArmsTheReminder)
{
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays");
    Run();
    EXPECT_EQ(StoredDate(), L"2024-05-13 00:00:00");
    EXPECT_EQ(StoredDays(), 7U);
    EXPECT_THAT(memory.web.AllRead(), IsEmpty());
}

TEST_F(UpdateCheckTest, TakesAnIncompleteDateForNone)
{
    for (const wchar_t* const text : {L"2023-05-17", L"", L"2000-01-01 00:00:00"}) {
        StoreDate(text);
        Run();
        EXPECT_EQ(StoredDate(), L"2024-05-20 00:00:00") << testing::PrintToString(text);
        EXPECT_THAT(memory.web.AllRead(), IsEmpty());
    }
}

TEST_F(UpdateCheckTest, IsNotDueBeforeTheStoredDay)
{
    StoreDate(L"2024-05-06 00:00:01");
    const State before = memory.CurrentState();
    Run();
    EXPECT_EQ(memory.CurrentState(), before);
    EXPECT_THAT(memory.web.AllRead(), IsEmpty());
}

TEST_F(UpdateCheckTest, WritesSevenDaysBackWhereNoneAreStored)
{
    StoreDays(0xFFFFFFFF);
    StoreDate(L"2030-01-01 00:00:00");
    Run();
    EXPECT_EQ(StoredDays(), 7U);
    EXPECT_EQ(StoredDate(), L"2030-01-01 00:00:00");
}

TEST_F(UpdateCheckTest, AsksAndOpensThePageOnAYes)
{
    memory.messages.Expect(Answer::Yes);
    Run();
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Question()));
    EXPECT_THAT(memory.shell.Opened(), ElementsAre(Address));
    EXPECT_EQ(StoredDate(), L"2024-05-20 00:00:00");
}

TEST_F(UpdateCheckTest, TellsTheDaysOnANo)
{
    for (const auto& [days, text] : {std::pair(14U, L"14"), std::pair(0U, L"0"), std::pair(0xFFFFFFFEU, L"-2")}) {
        MemoryPlatform each;
        Install(each);
        each.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", days);
        each.messages.Expect(Answer::No);
        each.messages.Expect();
        Check(each.Ports());
        EXPECT_THAT(each.messages.Shown(), ElementsAre(Question(), Told(std::wstring(L"You will be reminded in ") +
                                                                        text + L" days of a new update.")));
        EXPECT_THAT(each.shell.Opened(), IsEmpty());
    }
}

TEST_F(UpdateCheckTest, AsksAgainAfterAYearOnACancel)
{
    memory.messages.Expect(Answer::Cancel);
    memory.messages.Expect();
    Run();
    EXPECT_THAT(memory.messages.Shown(),
                ElementsAre(Question(), Told(L"You will not be reminded of any new updates.")));
    EXPECT_EQ(StoredDate(), L"2025-05-06 00:00:00");
    EXPECT_THAT(memory.shell.Opened(), IsEmpty());
}

TEST_F(UpdateCheckTest, SaysNothingWhereThePageOrItsDateCannotBeFound)
{
    for (const char* const page : {"", "no update here", "LX_2023_Plus_Update2024_05_06"}) {
        StoreDate(L"2024-05-01 00:00:00");
        memory.web.Publish(Address, page);
        Run();
        EXPECT_EQ(StoredDate(), L"2024-05-20 00:00:00");
        EXPECT_THAT(memory.messages.Shown(), IsEmpty());
    }
}

TEST_F(UpdateCheckTest, SaysNothingWhereAnInstalledFileIsAsNew)
{
    struct
    {
        const wchar_t* file;
        Seconds modified;
        bool isAsked;
    } const rows[] = {
        {L"C:\\Suite\\Applications\\b.EXE", Today, false},
        {L"C:\\Suite\\Applications\\b.exe", Today - 1, true},
        {L"C:\\Suite\\Applications\\b.dll", Today, true},
        {L"C:\\Suite\\Designer\\Common\\R23\\b.arx", Today + 5, false},
        {L"C:\\Suite\\Designer\\Common\\b.exe", Today, false},
        {L"C:\\Suite\\Designer\\Common\\R23\\b.exe", Today, true},
        {L"C:\\Suite\\Designer\\Common\\R23\\b.fas", Today, false},
        {L"C:\\Suite\\Designer\\ELECTRIC\\R23\\b.fas", Today, false},
        {L"C:\\Suite\\Designer\\PID\\R23\\b.fas", Today, false},
        {L"C:\\Suite\\Designer\\ISOMETRIC\\R23\\b.fas", Today, false},
        {L"C:\\Suite\\Designer\\ORTHO\\R23\\b.fas", Today, false},
        {L"C:\\Suite\\Designer\\ORTHO\\R24\\b.fas", Today, true},
    };
    for (const auto& row : rows) {
        MemoryPlatform each;
        Install(each);
        each.files.AddFile(row.file);
        each.files.SetModified(row.file, row.modified);
        each.messages.AnswerAll(Answer::Yes);
        Check(each.Ports());
        EXPECT_EQ(!each.messages.Shown().empty(), row.isAsked) << testing::PrintToString(row.file);
    }
}

TEST_F(UpdateCheckTest, CountsFoldersAndSkipsWhatHasNoTime)
{
    memory.files.AddFile(L"C:\\Suite\\Applications\\unknown.exe");
    memory.files.SetModified(L"C:\\Suite\\Applications\\unknown.exe", std::nullopt);
    memory.files.AddFolder(L"C:\\Suite\\Applications\\folder.exe");
    memory.files.SetModified(L"C:\\Suite\\Applications\\folder.exe", Today + 1);
    const Platform ports = memory.Ports();
    InstallationSettings settings = SettingsOn(ports);
    Seconds newest = 5;
    UpdateCheck(ports, settings, Address).NewestFileTime(newest, L"C:\\Suite\\Applications\\*.exe");
    EXPECT_EQ(newest, Today + 1);
    UpdateCheck(ports, settings, Address).NewestFileTime(newest, L"C:\\Nowhere\\*.exe");
    EXPECT_EQ(newest, Today + 1);
}

TEST_F(UpdateCheckTest, KeepsTheOrderOfTheScanList)
{
    const Platform ports = memory.Ports();
    InstallationSettings settings = SettingsOn(ports);
    const std::wstring n = L"c:\\SUITE\\";
    const std::wstring programs = n + L"Applications\\*.exe";
    EXPECT_THAT(UpdateCheck(ports, settings, Address).ScanList(),
                ElementsAre(programs, n + L"Designer\\Common\\R23\\*.arx", n + L"Designer\\Common\\*.exe",
                            n + L"Designer\\Common\\R23\\*.fas", n + L"Designer\\ELECTRIC\\R23\\*.fas",
                            n + L"Designer\\PID\\R23\\*.fas", n + L"Designer\\ISOMETRIC\\R23\\*.fas",
                            n + L"Designer\\ORTHO\\R23\\*.fas", programs, programs, programs, programs, programs));
}

TEST_F(UpdateCheckTest, SearchesTheCurrentFolderWithoutPaths)
{
    InstallationSettings settings = SettingsOn(memory.Ports());
    settings.WriteFolder(SuiteFolder::Program, L"");
    settings.WriteFolder(SuiteFolder::Application, L"");
    memory.files.AddFile(L"D:\\Here\\b.fas");
    memory.files.SetModified(L"D:\\Here\\b.fas", Today);
    memory.files.SetCurrentFolder(L"D:\\Here");
    Run();
    EXPECT_THAT(memory.web.AllRead(), ElementsAre(Address));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
    const Platform ports = memory.Ports();
    EXPECT_THAT(UpdateCheck(ports, settings, Address).ScanList(),
                ElementsAre(L"*.exe", L"*.arx", L"*.exe", L"*.fas", L"*.fas", L"*.fas", L"*.fas", L"*.fas", L"*.exe",
                            L"*.exe", L"*.exe", L"*.exe", L"*.exe"));
}

TEST_F(UpdateCheckTest, ArmsTheNextReminderBeforeABadPageIsRead)
{
    memory.web.Publish(Address, "LX_2023_Plus_Update_2024_05_06.");
    EXPECT_THROW(Run(), PlatformError);
    EXPECT_EQ(StoredDate(), L"2024-05-20 00:00:00");
    Run(); // not due any more
    EXPECT_EQ(memory.web.AllRead().size(), 1U);
}

TEST_F(UpdateCheckTest, RefusesADamagedStoredDateAndKeepsIt)
{
    StoreDate(L"2024-13-06 00:00:00");
    const State before = memory.CurrentState();
    EXPECT_THROW(Run(), PlatformError);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(UpdateCheckTest, RefusesTimesBeyondTheCalendar)
{
    memory.clock.SetNow(32535215999 + Day); // the year 3001
    EXPECT_THROW(Run(), PlatformError);
    memory.clock.SetNow(-1);
    EXPECT_THROW(Run(), PlatformError);
    memory.clock.SetNow(Today);
    StoreDays(0x7FFFFFFF);
    EXPECT_THROW(Run(), PlatformError); // the next date lies beyond
    EXPECT_EQ(StoredDate(), L"2024-05-06 00:00:00");
}

TEST_F(UpdateCheckTest, CountsDaysInSecondsAcrossAChangeOfTheClock)
{
    const TimeZoneScope berlin(Berlin);
    memory.clock.SetNow(1711666800); // 2024-03-29 00:00:00 in Berlin, two days before the clocks go forward
    StoreDate(L"2024-03-29 00:00:00");
    StoreDays(7);
    memory.web.Publish(Address, "");
    Run();
    EXPECT_EQ(StoredDate(), L"2024-04-05 01:00:00");
}

} // namespace
} // namespace sitekeeper
