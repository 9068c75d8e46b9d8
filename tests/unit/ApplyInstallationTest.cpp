#include "maindlg/ApplyInstallation.h"

#include "settings/Product.h"
#include "support/FaultyPlatform.h"
#include "support/Printing.h"
#include "support/SuiteFixture.h"
#include "text/Utf16.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class Applying : public ::testing::Test
{
protected:
    void SetUp() override { InstallShortcuts(memory); }

    ApplyResult Apply(const InstallationFolders& folders = NewFolders, const ReminderSchedule& schedule = NewSchedule)
    {
        const Platform ports = memory.Ports();
        InstallationSettings settings = SettingsOn(ports);
        return ApplyInstallation(ports, settings, folders, schedule);
    }
    /// What a text value holds, without regard to how it is meant.
    [[nodiscard]] std::wstring Stored(Hive hive, const std::wstring& key, const wchar_t* name) const
    {
        const auto value = memory.registry.Find(hive, key, name);
        return value ? DecodeUtf16(value->bytes) : L"(none)";
    }
    [[nodiscard]] State StoredFolders() const
    {
        return {Stored(Hive::LocalMachine, SuiteKey, L"LocalAppPath"),
                Stored(Hive::LocalMachine, SuiteKey, L"NetworkAppPath"),
                Stored(Hive::LocalMachine, SuiteKey, L"DatafilesPath")};
    }
    [[nodiscard]] std::wstring StoredDate() const { return Stored(Hive::CurrentUser, Key, L"CheckWebVersionDate"); }
    [[nodiscard]] bool HasDays() const
    {
        return memory.registry.Find(Hive::CurrentUser, Key, L"CheckWebVersionDays").has_value();
    }

    const std::wstring Key = InstallationSettings::UpdateReminderKey();
    TimeZoneScope zone{Utc};
    MemoryPlatform memory;
};

const State WrittenFolders{L"C:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Datafiles\\"};

TEST_F(Applying, StoresFoldersShortcutsAndSchedule)
{
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    EXPECT_EQ(StoredFolders(), WrittenFolders);
    for (const std::wstring folder : {DesktopFolder, ProgramsFolder}) {
        EXPECT_EQ(memory.files.ReadShortcut(folder + L"Site Keeper.lnk"),
                  ShortcutTo(L"N:\\Suite\\", L"SiteKeeper64.exe"));
        EXPECT_EQ(memory.files.ReadShortcut(folder + L"Norm Keeper.lnk"),
                  ShortcutTo(L"N:\\Suite\\", L"NormKeeper64.exe"));
        EXPECT_FALSE(memory.files.Exists(folder + L"Sheet Writer.lnk"));
    }
    EXPECT_EQ(StoredDate(), L"2024-05-06 07:08:09");
    EXPECT_EQ(SettingsOn(memory.Ports()).ReadUpdateDays(Key, 0), 14U);
}

TEST_F(Applying, GoesThroughItsStepsInOrder)
{
    FaultyPlatform recorder(memory.Ports(), 0);
    const Platform ports = recorder.Ports();
    InstallationSettings settings = SettingsOn(ports);
    EXPECT_EQ(ApplyInstallation(ports, settings, NewFolders, NewSchedule), ApplyResult::Applied);
    std::vector<std::wstring> effects;
    for (const std::wstring& call : recorder.Calls()) {
        if (!call.starts_with(L"exists") && !call.starts_with(L"full path")) {
            effects.push_back(call);
        }
    }
    const std::wstring shellFolders = std::wstring(L"read HKLM\\") + ShellFoldersKey;
    EXPECT_THAT(effects,
                ::testing::ElementsAre(L"write HKLM\\Software\\ORIVEL\\LX Plus\\2023 : LocalAppPath",
                                       L"write HKLM\\Software\\ORIVEL\\LX Plus\\2023 : NetworkAppPath",
                                       L"write HKLM\\Software\\ORIVEL\\LX Plus\\2023 : DatafilesPath",
                                       shellFolders + L" : Common Desktop", shellFolders + L" : Common Programs",
                                       L"enter components", L"save D:\\Desktop\\ORIVEL LX Plus 2023\\Site Keeper.lnk",
                                       L"save D:\\Desktop\\ORIVEL LX Plus 2023\\Norm Keeper.lnk",
                                       L"save D:\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\Site Keeper.lnk",
                                       L"save D:\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\Norm Keeper.lnk",
                                       L"from local", L"to local", L"format",
                                       L"write HKCU\\Software\\ORIVEL\\LX Plus\\2023\\Assist : CheckWebVersionDate",
                                       L"write HKCU\\Software\\ORIVEL\\LX Plus\\2023\\Assist : CheckWebVersionDays"));
}

TEST_F(Applying, EntersAndLeavesTheComponentRuntimeOnce)
{
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    EXPECT_EQ(memory.shell.ComponentEntries(), 1);
    EXPECT_EQ(memory.shell.ComponentDepth(), 0);
}

TEST_F(Applying, GoesOnWithoutTheComponentRuntime)
{
    memory.shell.RefuseComponents();
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    EXPECT_EQ(memory.files.ContentOf(std::wstring(DesktopFolder) + L"Site Keeper.lnk"), "old");
    EXPECT_EQ(memory.shell.ComponentDepth(), 0);
    EXPECT_EQ(StoredDate(), L"2024-05-06 07:08:09");
}

TEST_F(Applying, LeavesTheSameStateASecondTime)
{
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    const State once = memory.CurrentState();
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    EXPECT_EQ(memory.CurrentState(), once);
    EXPECT_EQ(memory.shell.Saved().size(), 8U);
}

TEST_F(Applying, StoresEmptyFoldersAsTheyStand)
{
    memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"LocalAppPath", L"C:\\Old\\");
    EXPECT_EQ(Apply({L"", L"N:\\Suite", L""}), ApplyResult::Applied);
    EXPECT_EQ(StoredFolders(), (State{L"", L"N:\\Suite", L""}));
    EXPECT_EQ(memory.files.ReadShortcut(std::wstring(DesktopFolder) + L"Site Keeper.lnk"),
              ShortcutTo(L"N:\\Suite", L"SiteKeeper64.exe"));
}

TEST_F(Applying, StopsBehindTheFoldersWithoutDesktop)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    const State before = memory.CurrentState();
    EXPECT_EQ(Apply(), ApplyResult::NoDesktopFolder);
    EXPECT_EQ(StoredFolders(), WrittenFolders);
    EXPECT_EQ(Removed(before, memory.CurrentState()), State{});
    EXPECT_EQ(StoredDate(), L"(none)");
    EXPECT_FALSE(HasDays());
    EXPECT_EQ(memory.shell.ComponentEntries(), 0);
}

TEST_F(Applying, StopsBehindTheFoldersWithoutPrograms)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Programs");
    memory.registry.SetText(Hive::CurrentUser, ShellFoldersKey, L"Programs", L"D:\\Programs");
    const State before = memory.CurrentState();
    EXPECT_EQ(Apply(), ApplyResult::NoProgramsFolder);
    EXPECT_EQ(StoredFolders(), WrittenFolders);
    EXPECT_EQ(Removed(before, memory.CurrentState()), State{}); // no shortcut is renewed, the desktop's neither
    EXPECT_EQ(StoredDate(), L"(none)");
    EXPECT_FALSE(HasDays());
    EXPECT_EQ(memory.shell.ComponentEntries(), 0);
}

TEST_F(Applying, UsesTheUsersDesktopWhereNoneIsShared)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    memory.registry.SetText(Hive::CurrentUser, ShellFoldersKey, L"Desktop", L"D:\\Own");
    memory.files.AddFile(L"D:\\Own\\ORIVEL LX Plus 2023\\Site Keeper.lnk");
    EXPECT_EQ(Apply(), ApplyResult::Applied);
    EXPECT_TRUE(memory.files.ReadShortcut(L"D:\\Own\\ORIVEL LX Plus 2023\\Site Keeper.lnk"));
    EXPECT_EQ(memory.files.ContentOf(std::wstring(DesktopFolder) + L"Site Keeper.lnk"), "old");
}

TEST_F(Applying, RaisesForADateWithoutAMomentBeforeTheSchedule)
{
    for (const int year : {1601, 3002, 30827}) {
        try {
            static_cast<void>(Apply(NewFolders, {CalendarTime{year, 1, 1, 0, 0, 0}, 14}));
            ADD_FAILURE() << year;
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.Code(), ResultCode::InvalidArgument);
        }
        EXPECT_EQ(StoredFolders(), WrittenFolders);
        EXPECT_TRUE(memory.files.ReadShortcut(std::wstring(ProgramsFolder) + L"Norm Keeper.lnk"));
        EXPECT_EQ(memory.shell.ComponentDepth(), 0);
        EXPECT_EQ(StoredDate(), L"(none)");
        EXPECT_FALSE(HasDays());
    }
}

TEST_F(Applying, StoresTheDefaultScheduleLikeAnyOther)
{
    EXPECT_EQ(Apply(NewFolders, {CalendarTime{2000, 1, 1, 0, 0, 0}, 7}), ApplyResult::Applied);
    EXPECT_EQ(StoredDate(), L"2000-01-01 00:00:00");
    EXPECT_EQ(SettingsOn(memory.Ports()).ReadUpdateDays(Key, 0), 7U);
}

// A time that the zone skips is stored as the moment that was found for it, an hour off.
TEST_F(Applying, StoresATimeThatExists)
{
    const TimeZoneScope there(SaoPaulo);
    EXPECT_EQ(Apply(NewFolders, {CalendarTime{2018, 11, 4, 0, 0, 0}, 7}), ApplyResult::Applied);
    EXPECT_THAT(StoredDate(), ::testing::AnyOf(L"2018-11-04 01:00:00", L"2018-11-03 23:00:00"));
}

} // namespace
} // namespace sitekeeper
