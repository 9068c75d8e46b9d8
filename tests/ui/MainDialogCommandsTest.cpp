// OK, Exit and the other commands of the main dialog; what the keyboard does.
#include "support/FaultyPlatform.h"
#include "support/MainDialogFixture.h"
#include "support/Printing.h"
#include "support/SuiteFixture.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int ExitCommand = 32771;

class MainDialogCommandsTest : public MainDialogTest
{
protected:
    DriverStep TypeFolders()
    {
        return Do("type the folders", [](const MainDialogPage& page) {
            page.Enter(ApplicationField, L"N:\\New\\");
            page.Enter(DatafilesField, L"N:\\New\\Data");
        });
    }

    [[nodiscard]] std::wstring StoredDate() const
    {
        return Stored(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
    }
    [[nodiscard]] std::optional<MemoryRegistry::Value> StoredDays() const
    {
        return memory.registry.Find(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays");
    }
    [[nodiscard]] static MemoryRegistry::Value Days(std::byte lowest, std::byte others)
    {
        return {L"CheckWebVersionDays", ValueType::Number, {lowest, others, others, others}};
    }
};

// --- OK and Exit -----------------------------------------------------------------------------------------------------

class MainDialogApplyTest : public MainDialogCommandsTest, public testing::WithParamInterface<const char*>
{
protected:
    DriverStep Apply()
    {
        const std::string way = GetParam();
        if (way == "Enter") {
            return Key(VK_RETURN);
        }
        return way == "Exit" ? Choose(ExitCommand) : Press(IDOK);
    }
};

TEST_P(MainDialogApplyTest, WritesEverythingAndEndsTheDialog)
{
    EXPECT_EQ(Run({TypeFolders(), Apply()}), IDOK);
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\New\\Data"}));
    EXPECT_THAT(memory.shell.Saved(), SizeIs(4));
    for (const std::wstring folder : {DesktopFolder, ProgramsFolder}) {
        EXPECT_EQ(memory.files.ReadShortcut(folder + L"Site Keeper.lnk"),
                  ShortcutTo(L"N:\\New\\", L"SiteKeeper64.exe"));
    }
    EXPECT_EQ(StoredDate(), L"2024-05-06 07:08:09");
    EXPECT_EQ(StoredDays(), Days(std::byte{14}, std::byte{0}));
    EXPECT_EQ(memory.shell.ComponentDepth(), 0);
    EXPECT_EQ(memory.shell.ComponentEntries(), 1);
    EXPECT_FALSE(m_app.IsWaiting());
    EXPECT_NE(StoredPosition(), L"(none)");
}

TEST_P(MainDialogApplyTest, WritesInTheSameOrder)
{
    FaultyPlatform recorder(m_platform, 0);
    const Platform recorded = recorder.Ports();
    InstallationSettings settings(recorded.registry, recorded.environment, recorded.clock);
    RunOn(recorded, settings, {Apply()});
    std::vector<std::wstring> writes;
    for (const std::wstring& call : recorder.Calls()) {
        if (call.starts_with(L"write ") || call.starts_with(L"save ") || call.starts_with(L"enter ")) {
            writes.push_back(call.substr(call.find_last_of(L" \\") + 1));
        }
    }
    EXPECT_THAT(writes, ElementsAre(L"LocalAppPath", L"NetworkAppPath", L"DatafilesPath", L"components", L"Keeper.lnk",
                                    L"Keeper.lnk", L"Keeper.lnk", L"Keeper.lnk", L"CheckWebVersionDate",
                                    L"CheckWebVersionDays", L"Application"));
}

INSTANTIATE_TEST_SUITE_P(By, MainDialogApplyTest, testing::Values("OK", "Exit", "Enter"),
                         [](const auto& way) { return std::string(way.param); });

TEST_F(MainDialogCommandsTest, WritesTheDefaultScheduleWhereNoneWasStored)
{
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays");
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(StoredDate(), L"2000-01-01 00:00:00");
    EXPECT_EQ(StoredDays(), Days(std::byte{7}, std::byte{0}));
}

TEST_F(MainDialogCommandsTest, WritesNegativeDaysBackAsTheyWere)
{
    memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", 0xFFFFFFFE);
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(StoredDays(), Days(std::byte{0xFE}, std::byte{0xFF}));
}

TEST_F(MainDialogCommandsTest, EndsWithOKAlsoWhenTheHiddenNumberIsNone)
{
    EXPECT_EQ(Run({TypeFolders(), Do("letters", [](const MainDialogPage& page) { page.Enter(1027, L"often"); }),
                   Press(IDOK)}),
              IDOK);
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\New\\Data"}))
        << "the fields before the number are read";
    EXPECT_EQ(StoredDays(), Days(std::byte{14}, std::byte{0})) << "the number stays what it was";
}

TEST_F(MainDialogCommandsTest, WritesAnEmptyProgramFolderAfterACancelledChoice)
{
    memory.folders.ExpectCancel();
    EXPECT_EQ(Run({ChooseSystem(17), Press(IDOK)}), IDOK);
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"", L"N:\\Suite\\", L"N:\\Suite\\Data\\"}));
}

// --- what OK may fail with -------------------------------------------------------------------------------------------

TEST_F(MainDialogCommandsTest, StaysOpenWhereTheDesktopIsUnknown)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    memory.messages.Expect();
    memory.messages.Expect();
    WindowId owner{};
    std::size_t afterOne = 0;
    std::size_t afterTwo = 0;
    EXPECT_EQ(Run({TypeFolders(), Press(IDOK), AwaitBoxes(1),
                   Do("look",
                      [&](const MainDialogPage& page) {
                          owner = IdOf(page.Window());
                          EXPECT_TRUE(page.IsOpen());
                          EXPECT_TRUE(::IsWindowEnabled(page.Window()));
                          EXPECT_FALSE(m_app.IsWaiting());
                          afterOne = VisibleWindows(ProgressClass).size();
                      }),
                   Press(IDOK), AwaitBoxes(2),
                   Do("look again", [&](const MainDialogPage&) { afterTwo = VisibleWindows(ProgressClass).size(); }),
                   Press(IDCANCEL)}),
              IDCANCEL);
    const Box box{owner, L"Error reading common desktop folder", L"SiteKeeper", MessageStyle::Error};
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(box, box));
    EXPECT_EQ(afterOne, 1U);
    EXPECT_EQ(afterTwo, 2U);
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
    EXPECT_EQ(m_libraryModules.Held(), 0);
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\New\\Data"}));
    EXPECT_THAT(memory.shell.Saved(), IsEmpty());
}

TEST_F(MainDialogCommandsTest, StaysOpenWhereTheProgramsFolderIsUnknown)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Programs");
    memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", 3);
    memory.messages.Expect();
    WindowId owner{};
    EXPECT_EQ(Run({TypeFolders(), Do("change the days", [](const MainDialogPage& page) { page.Enter(1027, L"5"); }),
                   Press(IDOK), AwaitBoxes(1),
                   Do("look", [&owner](const MainDialogPage& page) { owner = IdOf(page.Window()); }), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Box{owner, L"Error reading start menu programs folder",
                                                         L"SiteKeeper", MessageStyle::Error}));
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\New\\Data"}));
    EXPECT_THAT(memory.shell.Saved(), IsEmpty()) << "not even on the desktop, which is known";
    EXPECT_EQ(StoredDays(), Days(std::byte{3}, std::byte{0}));
}

TEST_F(MainDialogCommandsTest, AppliesWhenTheFolderHasBecomeKnown)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    memory.messages.Expect();
    EXPECT_EQ(Run({Press(IDOK), AwaitBoxes(1),
                   Do("mend",
                      [this](const MainDialogPage&) {
                          memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop",
                                                  L"D:\\Desktop");
                      }),
                   Press(IDOK)}),
              IDOK);
    EXPECT_THAT(memory.shell.Saved(), SizeIs(4));
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

TEST_F(MainDialogCommandsTest, ReportsADateThatCannotBeConvertedOnceAndStaysOpen)
{
    memory.messages.Expect();
    WindowId owner{};
    EXPECT_EQ(Run({TypeFolders(),
                   Do("break the calendar", [this](const MainDialogPage& /*page*/) { m_clock.refusesDates = true; }),
                   Press(IDOK), AwaitBoxes(1),
                   Do("look",
                      [&](const MainDialogPage& page) {
                          owner = IdOf(page.Window());
                          EXPECT_TRUE(page.IsOpen());
                          EXPECT_FALSE(m_app.IsWaiting());
                      }),
                   Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(
        memory.messages.Shown(),
        ElementsAre(AllOf(Field(&Box::owner, owner), Field(&Box::caption, L"LX Plus 2023"),
                          Field(&Box::style, MessageStyle::Error), Field(&Box::text, HasSubstr(L"0x80070057")))));
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\New\\", L"N:\\New\\Data"}));
    EXPECT_THAT(memory.shell.Saved(), SizeIs(4));
    EXPECT_EQ(StoredDate(), L"2024-05-06 07:08:09");
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

// --- the keyboard ----------------------------------------------------------------------------------------------------

TEST_F(MainDialogCommandsTest, StartsOnOKAndGoesThroughTheControlsWithTab)
{
    std::vector<int> order;
    std::vector<DriverStep> steps;
    const auto note = [&order](const MainDialogPage& /*page*/) { order.push_back(::GetDlgCtrlID(::GetFocus())); };
    for (int i = 0; i < 12; ++i) {
        steps.push_back(Do("where is the focus", note));
        steps.push_back(Key(VK_TAB));
        steps.push_back(Await("wait for the focus to move", [&order](const MainDialogPage& /*page*/) {
            return ::GetDlgCtrlID(::GetFocus()) != order.back();
        }));
    }
    steps.push_back(Press(IDCANCEL));
    Run(std::move(steps));
    EXPECT_THAT(order, ElementsAre(1, 2, 1000, 1008, 1001, 1002, 1010, 1003, 1004, 1011, 1009, 1));
}

TEST_F(MainDialogCommandsTest, PressesTheBitmapButtonThatHasTheFocusWithEnter)
{
    Run({Do("focus",
            [](const MainDialogPage& page) {
                ::SendMessageW(page.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(page.Control(1008)), TRUE);
            }),
         Key(VK_RETURN),
         Await("wait for the explorer", [this](const MainDialogPage&) { return !memory.shell.Explored().empty(); }),
         Press(IDCANCEL)});
    EXPECT_THAT(memory.shell.Explored(), ElementsAre(L"C:\\Suite\\"));
}

// --- the shortcuts' dialog -------------------------------------------------------------------------------------------

TEST_F(MainDialogCommandsTest, OpensTheShortcutsWhoseChoiceTheNextOkMakesReal)
{
    constexpr int ManageShortcutsCommand = 32777;
    const std::wstring ledger = std::wstring(DesktopFolder) + L"Ledger Composer.lnk";
    const auto isOpen = [](const MainDialogPage& page) {
        return DialogPage::OnTop().Title() == L"Manage Shortcuts" && ::IsWindowEnabled(page.Window()) == FALSE;
    };
    EXPECT_EQ(
        Run({Choose(ManageShortcutsCommand), Await("wait for the shortcuts", isOpen), Key(VK_SPACE),
             Do("OK", [](const MainDialogPage&) { DialogPage::OnTop().Click(IDOK); }),
             Await("wait for its end",
                   [](const MainDialogPage& page) { return ::IsWindowEnabled(page.Window()) != FALSE; }),
             Do("look at the file", [&](const MainDialogPage&) { EXPECT_EQ(memory.files.ContentOf(ledger), ""); }),
             Press(IDOK)}),
        IDOK);
    EXPECT_EQ(memory.files.ReadShortcut(ledger), ShortcutTo(L"N:\\Suite\\", L"LedgerComposer64.exe"));
}

// --- commands that nothing answers -----------------------------------------------------------------------------------

TEST_F(MainDialogCommandsTest, DoesNothingForANumberThatNoCommandHas)
{
    const State before = memory.CurrentState();
    State during;
    std::vector<DriverStep> steps;
    for (const int command : {0, 999, 32770, 32774, 32778, 32781, 65535}) {
        steps.push_back(Choose(command));
    }
    steps.push_back(ChooseSystem(32));
    steps.push_back(Do("look", [&](const MainDialogPage& page) {
        EXPECT_TRUE(page.IsOpen());
        during = memory.CurrentState();
    }));
    steps.push_back(Press(IDCANCEL));
    EXPECT_EQ(Run(std::move(steps)), IDCANCEL);
    EXPECT_EQ(during, before);
}

} // namespace
} // namespace sitekeeper
