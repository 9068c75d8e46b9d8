// The settings, loaded, saved and chosen, with each of their calls of the platform failing in turn.
#include "maindlg/InstallationFolders.h"
#include "PlatformFailures.h"
#include "settings/Product.h"
#include "settings/SuiteCatalogue.h"
#include "support/Printing.h"
#include "support/StateChecks.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

int LoadFolders()
{
    InstallationFolders loaded;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"LocalAppPath", L"C:\\P");
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"NetworkAppPath", L"N:\\A");
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"DatafilesPath", L"D:\\D");
                      },
                      [&loaded](const Platform& ports) {
                          loaded = LoadInstallationFolders(SettingsOn(ports), L"X:\\Y\\Z\\SiteKeeper64.exe");
                      },
                      [&loaded](const FaultedRun& run) {
                          // A folder that cannot be read is derived.
                          const InstallationFolders expected[] = {
                              {L"X:\\Y\\", L"N:\\A\\", L"D:\\D\\"},
                              {L"C:\\P\\", L"C:\\P\\", L"D:\\D\\"},
                              {L"C:\\P\\", L"N:\\A\\", L"N:\\A\\Datafiles\\"},
                          };
                          ASSERT_LE(run.number, 3);
                          EXPECT_EQ(loaded, expected[run.number - 1]);
                          EXPECT_EQ(run.after, run.before);
                          EXPECT_FALSE(run.raised);
                      }};
    const int points = SweepFailures(sweep);
    EXPECT_EQ(loaded, (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L"D:\\D\\"}));
    return points;
}

/// Loads the reminder as the main dialog does: the default date first.
int LoadReminder()
{
    const TimeZoneScope zone(Utc);
    const std::wstring key = InstallationSettings::UpdateReminderKey();
    Seconds date = 0;
    std::uint32_t days = 0;
    const Sweep sweep{[&key](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::CurrentUser, key, L"CheckWebVersionDate",
                                                  L"2024-05-06 07:08:09");
                          memory.registry.SetNumber(Hive::CurrentUser, key, L"CheckWebVersionDays", 14);
                      },
                      [&](const Platform& ports) {
                          const InstallationSettings settings = SettingsOn(ports);
                          days = settings.ReadUpdateDays(key, 7);
                          date = settings.ReadUpdateDate(key, 1);
                      },
                      [&](const FaultedRun& run) {
                          EXPECT_EQ(run.after, run.before);
                          EXPECT_EQ(days, run.failed.ends_with(L"CheckWebVersionDays") ? 7U : 14U);
                          if (Is(run, L"from local")) {
                              EXPECT_EQ(run.raised, ResultCode::InvalidArgument);
                          } else {
                              EXPECT_FALSE(run.raised);
                              EXPECT_EQ(date, run.failed.ends_with(L"CheckWebVersionDate") ? 1 : 1714979289);
                          }
                      }};
    return SweepFailures(sweep);
}

/// The folders of the design files, and the maker's below the system's own.
int LoadDerivedFolders()
{
    std::vector<std::wstring> read;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"NetworkAppPath", L"N:\\A");
                          memory.registry.SetText(Hive::LocalMachine, L"Software\\Microsoft\\Windows\\CurrentVersion",
                                                  L"CommonFilesDir", L"C:\\Common");
                          memory.environment.Set(L"CommonProgramFiles", L"C:\\Shared");
                      },
                      [&read](const Platform& ports) {
                          read.clear();
                          const InstallationSettings settings = SettingsOn(ports);
                          read.push_back(ToolDesignerFolder(settings, 1, L"R23"));
                          read.push_back(CommonDesignerFolder(settings, L""));
                          read.push_back(settings.ReadCommonFilesFolder());
                          read.push_back(settings.ReadCommonProgramFilesFolder());
                      },
                      [&read](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                          std::vector<std::wstring> expected = {L"N:\\A\\Designer\\ELECTRIC\\R23\\",
                                                                L"N:\\A\\Designer\\Common\\", L"C:\\Common\\ORIVEL\\",
                                                                L"C:\\Shared\\ORIVEL\\"};
                          expected.at(static_cast<std::size_t>(run.number) - 1).clear();
                          EXPECT_EQ(read, expected);
                      }};
    return SweepFailures(sweep);
}

/// Each setting that the program writes, one after the other; which of them said that they were stored.
std::vector<bool> SaveEach(const Platform& ports)
{
    InstallationSettings settings = SettingsOn(ports);
    const std::wstring key = InstallationSettings::UpdateReminderKey();
    return {settings.WriteFolder(SuiteFolder::Program, L"C:\\P\\"),
            settings.WriteFolder(SuiteFolder::Application, L""),
            settings.WriteFolder(SuiteFolder::Datafiles, L"D:\\D\\"),
            settings.WriteUpdateDays(key, 3),
            settings.WriteUpdateDate(key, 1714979289),
            settings.WriteString(Hive::CurrentUser, L"Software\\ORIVEL\\LX Plus\\2023\\SiteKeeper\\WindowPosition",
                                 L"Application", L"1,2,3,4")};
}

int SaveSettings()
{
    const TimeZoneScope zone(Utc);
    std::vector<bool> stored;
    FaultedRun untouched;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"LocalAppPath", L"C:\\Old\\");
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"NetworkAppPath", L"N:\\Old\\");
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"DatafilesPath", L"D:\\Old\\");
                          memory.registry.SetNumber(Hive::CurrentUser, InstallationSettings::UpdateReminderKey(),
                                                    L"CheckWebVersionDays", 14);
                          memory.registry.AddKey(Hive::CurrentUser,
                                                 L"Software\\ORIVEL\\LX Plus\\2023\\SiteKeeper\\WindowPosition");
                      },
                      [&stored](const Platform& ports) {
                          stored.clear();
                          stored = SaveEach(ports);
                      },
                      [&](const FaultedRun& run) {
                          if (Is(run, L"to local")) {
                              EXPECT_EQ(run.raised, ResultCode::InvalidArgument);
                              EXPECT_EQ(run.after, run.atFailure);
                              return;
                          }
                          EXPECT_FALSE(run.raised);
                          if (Is(run, L"format")) {
                              EXPECT_EQ(stored, std::vector<bool>(6, true));
                              const State added = Added(untouched.after, run.after);
                              ASSERT_EQ(added.size(), 1U);
                              EXPECT_TRUE(added.front().ends_with(L"CheckWebVersionDate = \"\""));
                              return;
                          }
                          ASSERT_TRUE(Is(run, L"write "));
                          EXPECT_EQ(std::count(stored.begin(), stored.end(), false), 1);
                          ExpectUntouchedBut(run.failed.substr(run.failed.find(L" : ")) + L" = ", run, untouched);
                      }};
    untouched = RunUntouched(sweep);
    EXPECT_EQ(stored, std::vector<bool>(6, true));
    return SweepFailures(sweep);
}

int ChooseFolders()
{
    InstallationFolders folders;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.folders.ExpectChoice(L"N:\\A");
                          memory.folders.ExpectChoice(L"N:\\D");
                      },
                      [&folders](const Platform& ports) {
                          folders = {L"C:\\P\\", L"C:\\Old\\", L"C:\\Old\\"};
                          BrowseApplicationFolder(folders, ports.folders);
                          BrowseDatafilesFolder(folders, ports.folders);
                      },
                      [&folders](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                          EXPECT_EQ(folders.program, L"C:\\P\\");
                          // What cannot be chosen is empty, as after a cancelled choice; the script then goes on.
                          EXPECT_EQ(folders.application, run.number == 1 ? L"" : L"N:\\A\\");
                          EXPECT_EQ(folders.datafiles, run.number == 1 ? L"N:\\A\\" : L"");
                      }};
    return SweepFailures(sweep);
}

int SelectTheProgramFolder()
{
    InstallationFolders folders;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"LocalAppPath", L"C:\\Old\\");
                          memory.folders.ExpectChoice(L"D:\\Suite");
                      },
                      [&folders](const Platform& ports) {
                          InstallationSettings settings = SettingsOn(ports);
                          folders = {L"C:\\Old\\", L"", L""};
                          SelectProgramFolder(folders, ports.folders, settings);
                      },
                      [&folders](const FaultedRun& run) {
                          EXPECT_EQ(run.after, run.before);
                          const InstallationFolders chosen{L"D:\\Suite\\", L"D:\\Suite\\", L"D:\\Suite\\Datafiles"};
                          EXPECT_EQ(folders, Is(run, L"choose ") ? InstallationFolders{} : chosen);
                      }};
    return SweepFailures(sweep);
}

} // namespace

SweptOperations SettingsOperations()
{
    return {{"load the folders", LoadFolders},
            {"load the reminder", LoadReminder},
            {"load the derived folders", LoadDerivedFolders},
            {"save each setting", SaveSettings},
            {"browse for two folders", ChooseFolders},
            {"select the program folder", SelectTheProgramFolder}};
}

} // namespace sitekeeper
