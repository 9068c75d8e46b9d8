// The suite's shortcuts, with each of their calls of the platform failing in turn.
#include "PlatformFailures.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutChoice.h"
#include "shortcuts/ShortcutFiles.h"
#include "support/StateChecks.h"
#include "support/SuiteFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr int SiteKeeperRow = 1;
constexpr int NormKeeperRow = 3;

int RenewOneFolder()
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
                          ExpectWrittenStays(run);
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
    return SweepFailures(sweep); // five files looked for, two of them found, each with a full path and a saving
}

int MakeAFolderTree()
{
    const Sweep sweep{[](MemoryPlatform&) {},
                      [](const Platform& ports) { CreateFolderPath(ports.files, L"C:\\A\\B\\C\\x.lnk"); },
                      [](const FaultedRun& run) {
                          EXPECT_EQ(run.calls.size(), 3U); // it goes on behind a folder that cannot be made
                          const State all{L"file C:\\A\\", L"file C:\\A\\B\\", L"file C:\\A\\B\\C\\"};
                          EXPECT_EQ(Added(run.before, run.after), State(all.begin(), all.begin() + run.number - 1));
                      }};
    return SweepFailures(sweep);
}

int AskForShortcuts()
{
    std::vector<bool> has;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          InstallShortcuts(memory);
                          memory.files.Remove(std::wstring(DesktopFolder) + L"Norm Keeper.lnk");
                      },
                      [&has](const Platform& ports) {
                          has.clear();
                          for (int row = 0; row < ShortcutCount(); ++row) {
                              has.push_back(HasShortcut(ports.files, ports.registry, row));
                          }
                      },
                      [&has](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                          // The one on the desktop has another in the Start menu, the one in the Start menu has none.
                          const bool isLost = run.failed.ends_with(std::wstring(ProgramsFolder) + L"Norm Keeper.lnk") ||
                                              (run.failed.ends_with(L"Common Programs") && !has.at(NormKeeperRow));
                          EXPECT_EQ(has, (std::vector<bool>{false, true, false, !isLost, false}));
                      }};
    const int points = SweepFailures(sweep);
    EXPECT_EQ(has, (std::vector<bool>{false, true, false, true, false}));
    return points;
}

int ChooseShortcuts()
{
    const std::wstring asked = std::wstring(ProgramsFolder) + L"Site Keeper.lnk";
    const Sweep sweep{[](MemoryPlatform& memory) {
                          InstallShortcuts(memory);
                          memory.files.Remove(std::wstring(DesktopFolder) + L"Site Keeper.lnk");
                      },
                      [](const Platform& ports) {
                          PlaceShortcut(ports.files, ports.registry, SiteKeeperRow);
                          RemoveShortcut(ports.files, ports.registry, NormKeeperRow);
                      },
                      [&](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          for (const std::wstring& line : Removed(run.before, run.after)) {
                              // A file that cannot be asked for counts as missing, and is emptied: deliberate.
                              const bool isTaken = run.failed == L"exists " + asked && line.find(asked) == 5;
                              EXPECT_TRUE(isTaken || line.find(L"Norm Keeper") != std::wstring::npos)
                                  << testing::PrintToString(line);
                          }
                          for (const std::wstring& line : Added(run.before, run.after)) {
                              EXPECT_TRUE(line.ends_with(L"Site Keeper.lnk = \"\"")) << testing::PrintToString(line);
                          }
                      }};
    return SweepFailures(sweep);
}

/// Placing in folders that are not there yet.
int PlaceTheFirstShortcut()
{
    FaultedRun untouched;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          for (const auto* const folder : {L"Desktop", L"Programs"}) {
                              memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey,
                                                      std::wstring(L"Common ") + folder,
                                                      std::wstring(L"D:\\") + folder);
                              memory.files.AddFolder(std::wstring(L"D:\\") + folder);
                          }
                      },
                      [](const Platform& ports) { PlaceShortcut(ports.files, ports.registry, SiteKeeperRow); },
                      [&untouched](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          ExpectWrittenStays(run);
                          EXPECT_EQ(Removed(run.before, run.after), State{});
                          EXPECT_EQ(Added(untouched.after, run.after), State{});
                          // One folder's failure is none of the other's.
                          const bool isDesktop = run.failed.find(L"Desktop") != std::wstring::npos;
                          const std::wstring other = isDesktop ? ProgramsFolder : DesktopFolder;
                          const std::wstring made = L"file " + other + L"Site Keeper.lnk = \"\"";
                          EXPECT_NE(std::find(run.after.begin(), run.after.end(), made), run.after.end());
                      }};
    untouched = RunUntouched(sweep);
    return SweepFailures(sweep);
}

} // namespace

SweptOperations ShortcutOperations()
{
    return {{"renew the shortcuts of a folder", RenewOneFolder},
            {"make a folder tree", MakeAFolderTree},
            {"ask for all shortcuts", AskForShortcuts},
            {"place one shortcut and remove another", ChooseShortcuts},
            {"place the first shortcut", PlaceTheFirstShortcut}};
}

} // namespace sitekeeper
