// The operations that load or choose something, with each of their calls of the platform failing in turn.
#include "app/DialogsLibrary.h"
#include "app/HelpFile.h"
#include "settings/Product.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"
#include "support/Printing.h"
#include "support/StateChecks.h"
#include "support/SuiteFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(LoadingFoldersSweep, DerivesAFolderThatCannotBeRead)
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
    EXPECT_EQ(SweepFailures(sweep), 3);
    EXPECT_EQ(loaded, (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L"D:\\D\\"}));
}

TEST(LoadingReminderSweep, FallsBackOrRaises)
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
    EXPECT_EQ(SweepFailures(sweep), 3);
}

class DialogsLibrarySweep : public ::testing::Test
{
protected:
    static void Install(MemoryPlatform& memory)
    {
        memory.environment.Set(L"CommonProgramFiles", L"C:\\One");
        memory.registry.SetText(Hive::LocalMachine, L"Software\\Microsoft\\Windows\\CurrentVersion", L"CommonFilesDir",
                                L"D:\\Two");
        memory.files.AddFile(First);
        memory.files.AddFile(Second);
        memory.modules.AddLibrary(First);
        memory.modules.AddLibrary(Second);
        memory.messages.AnswerAll(Answer::Ok);
    }
    static ModuleId Load(const Platform& ports)
    {
        return LoadDialogsLibrary(SettingsOn(ports), ports.files, ports.modules, ports.messages);
    }

    inline static const std::wstring First = L"C:\\One\\ORIVEL\\ORSWDialogsOEM64.dll";
    inline static const std::wstring Second = L"D:\\Two\\ORIVEL\\ORSWDialogsOEM64.dll";
};

TEST_F(DialogsLibrarySweep, LoadsFromTheOtherPlaceOrComplainsOnce)
{
    ModuleId library = ModuleId::None;
    const Sweep sweep{Install, [&library](const Platform& ports) { library = Load(ports); },
                      [&library](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          if (Is(run, L"load ")) {
                              EXPECT_EQ(library, ModuleId::None);
                              EXPECT_EQ(Added(run.before, run.after),
                                        State{L"box (no caption): Couldn't load dll file: \n" + First +
                                              L"\n\nPlease check software installation."});
                          } else {
                              EXPECT_NE(library, ModuleId::None);
                              EXPECT_EQ(Added(run.before, run.after), State{L"loaded " + Second});
                          }
                      }};
    EXPECT_EQ(SweepFailures(sweep), 3); // the variable, the file, the loading
}

TEST_F(DialogsLibrarySweep, GivesNothingWhenTheMessageCannotBeShownEither)
{
    ModuleId library = ModuleId::None;
    const Sweep sweep{[](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); },
                      [&library](const Platform& ports) { library = Load(ports); },
                      [&library](const FaultedRun& run) {
                          EXPECT_EQ(library, ModuleId::None);
                          const std::size_t boxes = Is(run, L"show ") ? 0 : 1;
                          EXPECT_EQ(Added(run.before, run.after).size(), boxes);
                      }};
    EXPECT_EQ(SweepFailures(sweep), 5); // variable, file, registry value, file, message
}

TEST(RenewalSweep, LeavesOnlyTheFileAtFault)
{
    const auto prepare = [](MemoryPlatform& memory) {
        InstallShortcuts(memory);
        EXPECT_TRUE(memory.shell.EnterComponents());
    };
    const auto renew = [](const Platform& ports) {
        RenewShortcuts(ports.files, ports.shell, DesktopFolder, L"N:\\Suite\\");
    };
    const FaultedRun untouched = RunUntouched({prepare, renew, {}});
    const Sweep sweep{prepare, renew, [&untouched](const FaultedRun& run) {
                          const std::size_t begin = run.failed.find(L"D:\\");
                          if (begin != std::wstring::npos) {
                              ExpectUntouchedBut(L"file " + run.failed.substr(begin), run, untouched);
                          } else {
                              ASSERT_TRUE(Is(run, L"full path "));
                              const bool isSiteKeeper = run.failed.ends_with(L"SiteKeeper64.exe");
                              ExpectUntouchedBut(isSiteKeeper ? L"2023\\Site Keeper.lnk" : L"2023\\Norm Keeper.lnk",
                                                 run, untouched);
                          }
                      }};
    EXPECT_EQ(SweepFailures(sweep), 9); // five files looked for, two of them found, each with a full path and a saving
}

TEST(SelectingProgramFolderSweep, KeepsTheChoiceOfWhatCannotBeStored)
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
    EXPECT_EQ(SweepFailures(sweep), 2);
}

TEST(FolderTreeSweep, GoesOnBehindAFolderThatCannotBeMade)
{
    const Sweep sweep{[](MemoryPlatform&) {},
                      [](const Platform& ports) { CreateFolderPath(ports.files, L"C:\\A\\B\\C\\x.lnk"); },
                      [](const FaultedRun& run) {
                          EXPECT_EQ(run.calls.size(), 3U);
                          const State all{L"file C:\\A\\", L"file C:\\A\\B\\", L"file C:\\A\\B\\C\\"};
                          EXPECT_EQ(Added(run.before, run.after), State(all.begin(), all.begin() + run.number - 1));
                      }};
    EXPECT_EQ(SweepFailures(sweep), 3);
}

class HelpSweep : public testing::TestWithParam<HelpPage>
{};

TEST_P(HelpSweep, ShowsTheMessageOrNothing)
{
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.files.AddFile(L"C:\\Help\\SiteKeeper.chm");
                          memory.messages.AnswerAll(Answer::Ok);
                      },
                      [](const Platform& ports) { ShowHelp(ports, {}, GetParam(), L"C:\\Help\\SiteKeeper.chm"); },
                      [](const FaultedRun& run) {
                          const std::size_t boxes = Is(run, L"exists ") ? 1 : 0;
                          EXPECT_EQ(Added(run.before, run.after).size(), boxes);
                      }};
    EXPECT_EQ(SweepFailures(sweep), 2);
}

INSTANTIATE_TEST_SUITE_P(On, HelpSweep, testing::Values(HelpPage::Contents, HelpPage::Introduction),
                         [](const auto& page) {
                             return std::string(page.param == HelpPage::Contents ? "Contents" : "Introduction");
                         });

} // namespace
} // namespace sitekeeper
