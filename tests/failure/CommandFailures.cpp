// The main dialog's other commands, with each of their calls of the platform failing in turn.
#include "maindlg/AboutText.h"
#include "maindlg/Uninstaller.h"
#include "PlatformFailures.h"
#include "settings/Product.h"
#include "support/StateChecks.h"
#include "support/VersionBlockBuilder.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

int ExploreAFolder()
{
    const Sweep sweep{[](MemoryPlatform&) {}, [](const Platform& ports) { ports.shell.Explore(L"C:\\Suite\\"); },
                      [](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                      }};
    return SweepFailures(sweep);
}

constexpr const wchar_t* PlainKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
constexpr const wchar_t* InstallersKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\InstallShield_{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";

/// Starts the uninstaller or says that there is none, as the command does; what it does then is pressing OK.
void Uninstall(const Platform& ports)
{
    const std::wstring registered = ReadUninstallString(ports.registry);
    if (registered.empty()) {
        ports.messages.Show(WindowId::None, L"none", L"Site Keeper", MessageStyle::Error);
        return;
    }
    const UninstallCommand command = SplitUninstallString(registered);
    ports.shell.OpenProgram(command.program, command.parameters);
}

int StartTheUninstaller()
{
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.registry.SetText(Hive::LocalMachine, PlainKey, L"UninstallString",
                                                  L"C:\\One\\setup.exe -x -removeonly");
                          memory.registry.SetText(Hive::LocalMachine, InstallersKey, L"UninstallString",
                                                  L"C:\\Two\\setup.exe -y");
                          memory.messages.AnswerAll(Answer::Ok);
                      },
                      Uninstall,
                      [](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          const State second{L"program C:\\Two\\setup.exe : -y"};
                          EXPECT_EQ(Added(run.before, run.after), Is(run, L"read ") ? second : State{});
                          EXPECT_EQ(Removed(run.before, run.after), State{});
                      }};
    return SweepFailures(sweep); // the first key, the start
}

int MissTheUninstaller()
{
    const Sweep sweep{[](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); }, Uninstall,
                      [](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(Added(run.before, run.after),
                                    Is(run, L"show ") ? State{} : State{L"box Site Keeper: none"});
                      }};
    return SweepFailures(sweep); // both keys, the message
}

std::vector<std::byte> SomeVersionBlock()
{
    const auto texts = VersionNode(L"040904e4", ValueKind::Text, {},
                                   {TextNode(L"FileDescription", L"Site Keeper"), TextNode(L"FileVersion", L"1.2"),
                                    TextNode(L"ProductVersion", L"2024"), TextNode(L"LegalCopyright", L"(c)")});
    return VersionNode(L"VS_VERSION_INFO", ValueKind::Binary, std::vector<std::byte>(52),
                       {VersionNode(L"StringFileInfo", ValueKind::Text, {}, {texts}),
                        VersionNode(L"VarFileInfo", ValueKind::Text, {},
                                    {VersionNode(L"Translation", ValueKind::Binary, Translations({0x0409, 0x04E4}))})});
}

int ComposeTheAboutText()
{
    std::wstring text;
    const Sweep sweep{[](MemoryPlatform& memory) {
                          memory.versions.Set(L"C:\\S\\SiteKeeper64.exe", SomeVersionBlock());
                          memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"ProductUpdate", L"3");
                      },
                      [&text](const Platform& ports) {
                          text = BuildAboutText(ports.versions, ports.registry, L"C:\\S\\SiteKeeper64.exe");
                      },
                      [&text](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          EXPECT_EQ(run.after, run.before);
                          EXPECT_EQ(text, Is(run, L"version ")
                                              ? L" Version \n\nORIVEL LX Version 2023    Update 3\n\n"
                                              : L"Site Keeper Version 1.2\n\nORIVEL LX Version 2024\n\n(c)");
                      }};
    const int points = SweepFailures(sweep);
    EXPECT_EQ(text, L"Site Keeper Version 1.2\n\nORIVEL LX Version 2024    Update 3\n\n(c)");
    return points;
}

} // namespace

SweptOperations CommandOperations()
{
    return {{"explore a folder", ExploreAFolder},
            {"start the uninstaller", StartTheUninstaller},
            {"miss the uninstaller", MissTheUninstaller},
            {"compose the About text", ComposeTheAboutText}};
}

} // namespace sitekeeper
