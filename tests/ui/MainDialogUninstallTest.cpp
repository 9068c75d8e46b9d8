// The command that starts the suite's uninstaller and leaves.
#include "support/MainDialogFixture.h"
#include "support/Printing.h"
#include "support/SuiteFixture.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using Opened = MemoryShell::OpenedProgram;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int UninstallCommand = 32775;
constexpr const wchar_t* FirstKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";

class MainDialogUninstallTest : public MainDialogTest
{
protected:
    void Register(const std::wstring& command)
    {
        memory.registry.SetText(Hive::LocalMachine, FirstKey, L"UninstallString", command);
    }
    DriverStep TypeFolder()
    {
        return Do("type a folder", [](const MainDialogPage& page) { page.Enter(ApplicationField, L"N:\\New\\"); });
    }
};

TEST_F(MainDialogUninstallTest, StartsTheUninstallerAndAppliesAndLeaves)
{
    Register(L"C:\\Setup\\setup.exe -runfromtemp -removeonly");
    bool wasOpenedFirst = false;
    m_shell.onWork = [&] { wasOpenedFirst = !memory.shell.OpenedPrograms().empty(); };
    EXPECT_EQ(Run({TypeFolder(), Choose(UninstallCommand)}), IDOK);
    EXPECT_THAT(memory.shell.OpenedPrograms(), ElementsAre(Opened{L"C:\\Setup\\setup.exe", L"-runfromtemp"}));
    EXPECT_TRUE(wasOpenedFirst) << "settings are applied when the uninstaller has been started";
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\Suite\\Data\\"}));
    EXPECT_EQ(memory.files.ReadShortcut(std::wstring(DesktopFolder) + L"Site Keeper.lnk"),
              ShortcutTo(L"N:\\New\\", L"SiteKeeper64.exe"));
}

TEST_F(MainDialogUninstallTest, LeavesAlsoBehindACommandThatStartsNothing)
{
    Register(L"\"C:\\Setup\\setup.exe\"");
    EXPECT_EQ(Run({TypeFolder(), Choose(UninstallCommand)}), IDOK);
    EXPECT_THAT(memory.shell.OpenedPrograms(), ElementsAre(Opened{L"\"C:", L"\\Setup\\setup.exe\""}));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
    EXPECT_EQ(StoredFolders().application, L"N:\\New\\");
}

TEST_F(MainDialogUninstallTest, SaysWhereNothingIsRegisteredAndStays)
{
    memory.messages.Expect();
    const State before = memory.CurrentState();
    State during;
    WindowId owner{};
    EXPECT_EQ(Run({TypeFolder(), Choose(UninstallCommand), AwaitBoxes(1),
                   Do("look",
                      [&](const MainDialogPage& page) {
                          owner = IdOf(page.Window());
                          EXPECT_TRUE(page.IsOpen());
                          EXPECT_EQ(page.Text(ApplicationField), L"N:\\New\\");
                          during = memory.CurrentState();
                      }),
                   Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Box{owner,
                                                         L"Could not find InstallShield uninstall information.\n\n"
                                                         L"Make sure that program was properly installed.",
                                                         L"Site Keeper", MessageStyle::Error}));
    EXPECT_THAT(Removed(before, during), IsEmpty());
    EXPECT_THAT(Added(before, during), ElementsAre(testing::StartsWith(L"box Site Keeper: Could not find")));
}

TEST_F(MainDialogUninstallTest, StaysWhereTheSettingsCannotBeApplied)
{
    Register(L"C:\\Setup\\setup.exe -x");
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    memory.messages.Expect();
    EXPECT_EQ(Run({Choose(UninstallCommand), AwaitBoxes(1), Press(IDCANCEL)}), IDCANCEL);
    EXPECT_THAT(memory.shell.OpenedPrograms(), ElementsAre(Opened{L"C:\\Setup\\setup.exe", L"-x"}));
}

} // namespace
} // namespace sitekeeper
