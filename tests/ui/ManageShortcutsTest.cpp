// The dialog of the shortcuts on a platform in memory: what it shows, what its user does, what is left.
#include "app/DlgOccManager.h"
#include "shortcuts/ManageShortcutsDlg.h"
#include "support/Capture.h"
#include "support/GuiResources.h"
#include "support/Input.h"
#include "support/ManageShortcutsPage.h"
#include "support/ModalDriver.h"
#include "support/SuiteFixture.h"
#include "support/TemplateReader.h"
#include "support/TestApp.h"

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ManageShortcutsTest : public testing::Test
{
protected:
    using Gesture = std::function<void(const ManageShortcutsPage&)>;
    using Question = std::function<bool(const ManageShortcutsPage&)>;

    ManageShortcutsTest()
    {
        InstallShortcuts(memory);
        m_app.EnableControlContainer(std::make_unique<CDlgOccManager>());
    }

    INT_PTR Run(std::vector<DriverStep> steps)
    {
        steps.insert(steps.begin(), Await([](const ManageShortcutsPage& page) { return page.IsOpen(); }));
        CManageShortcutsDlg dialog(m_app, m_nobody, {memory.files, memory.registry});
        m_dialog = &dialog;
        const ModalDriver driver(std::move(steps));
        return dialog.DoModal();
    }

    DriverStep Do(Gesture gesture)
    {
        return {"do", [this, gesture = std::move(gesture)] {
                    gesture(ManageShortcutsPage(m_dialog->Handle()));
                    return true;
                }};
    }
    DriverStep Await(Question question)
    {
        return {"await",
                [this, question = std::move(question)] { return question(ManageShortcutsPage(m_dialog->Handle())); }};
    }
    DriverStep Press(int button)
    {
        return Do([button](const ManageShortcutsPage& page) { page.Click(button); });
    }
    /// Waits until the row shows that.
    DriverStep AwaitRow(std::size_t row, const std::wstring& line)
    {
        return Await([=](const ManageShortcutsPage& page) { return page.Rows().at(row) == line; });
    }
    /// Clicks the check box of a row, which then shows that.
    std::vector<DriverStep> Click(int row, const std::wstring& line)
    {
        return {Do([row](const ManageShortcutsPage& page) { MoveMouse(page.CheckBoxOf(row)); }),
                Do([](const ManageShortcutsPage&) { PressMouse(); }),
                Do([](const ManageShortcutsPage&) { ReleaseMouse(); }), AwaitRow(static_cast<std::size_t>(row), line)};
    }

    MemoryPlatform memory;
    TestApp m_app;
    const CWnd m_nobody;
    CManageShortcutsDlg* m_dialog = nullptr;
};

std::vector<DriverStep> operator+(std::vector<DriverStep> steps, const std::vector<DriverStep>& more)
{
    steps.insert(steps.end(), more.begin(), more.end());
    return steps;
}

std::wstring Desktop(const wchar_t* name)
{
    return DesktopFolder + std::wstring(name) + L".lnk";
}

std::wstring Programs(const wchar_t* name)
{
    return ProgramsFolder + std::wstring(name) + L".lnk";
}

// --- what it shows ---------------------------------------------------------------------------------------------------

TEST_F(ManageShortcutsTest, HasTheControlsOfTheTable)
{
    constexpr std::uint32_t Shown = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    const DialogTemplate dialog = ReadTemplate(m_app.ResourceBytes(RT_DIALOG, 132));
    EXPECT_EQ(dialog.title, L"Manage Shortcuts");
    EXPECT_EQ(dialog.place.width, 186);
    EXPECT_EQ(dialog.place.height, 114);
    EXPECT_EQ(dialog.fontFace, L"MS Shell Dlg");
    EXPECT_EQ(dialog.fontSize, 8);
    EXPECT_THAT(
        dialog.items,
        ElementsAre(TemplateItem{1017, L"SYSTREEVIEW32", L"", {6, 6, 114, 102}, Shown | WS_BORDER | TVS_CHECKBOXES},
                    TemplateItem{1, L"Button", L"OK", {129, 6, 50, 14}, Shown | BS_DEFPUSHBUTTON},
                    TemplateItem{2, L"Button", L"Cancel", {129, 24, 50, 14}, Shown | BS_PUSHBUTTON}));
}

TEST_F(ManageShortcutsTest, ShowsTheCatalogueAndWhatExists)
{
    memory.files.Remove(Desktop(L"Site Keeper"));
    memory.files.Remove(Programs(L"Norm Keeper"));
    memory.files.AddFile(Programs(L"Assist Web Page"));
    EXPECT_EQ(Run({Do([](const ManageShortcutsPage& page) {
                       EXPECT_EQ(page.Title(), L"Manage Shortcuts");
                       EXPECT_THAT(page.Rows(),
                                   ElementsAre(L"[ ] Ledger Composer", L"[x] Site Keeper", L"[ ] Sheet Writer",
                                               L"[x] Norm Keeper", L"[x] Assist Web Page"));
                       CaptureWindow(page.Window()).Save(L"manage-shortcuts");
                   }),
                   Press(IDCANCEL)}),
              IDCANCEL);
}

TEST_F(ManageShortcutsTest, ShowsNothingCheckedWithoutShortcutFolders)
{
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop");
    memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, L"Common Programs");
    const State before = memory.CurrentState();
    Run({Do([](const ManageShortcutsPage& page) {
             EXPECT_THAT(page.Rows(), testing::Each(testing::StartsWith(L"[ ] ")));
         }),
         Press(IDOK)});
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ManageShortcutsTest, StartsInTheTree)
{
    Run({Do([](const ManageShortcutsPage& page) { EXPECT_TRUE(page.HasFocus(ShortcutTree)); }), Press(IDCANCEL)});
}

// --- OK and Cancel ---------------------------------------------------------------------------------------------------

TEST_F(ManageShortcutsTest, PlacesAndRemovesWhatWasClicked)
{
    const State before = memory.CurrentState();
    EXPECT_EQ(Run(Click(0, L"[x] Ledger Composer") + Click(1, L"[ ] Site Keeper") + std::vector{Press(IDOK)}), IDOK);
    const State after = memory.CurrentState();
    EXPECT_THAT(Added(before, after), UnorderedElementsAre(L"file " + Desktop(L"Ledger Composer") + L" = \"\"",
                                                           L"file " + Programs(L"Ledger Composer") + L" = \"\""));
    EXPECT_THAT(Removed(before, after), UnorderedElementsAre(L"file " + Desktop(L"Site Keeper") + L" = \"old\"",
                                                             L"file " + Programs(L"Site Keeper") + L" = \"old\""));
}

TEST_F(ManageShortcutsTest, CompletesAShortcutThatStandsInOneFolder)
{
    memory.files.Remove(Desktop(L"Norm Keeper"));
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(memory.files.ContentOf(Desktop(L"Norm Keeper")), "");
    EXPECT_EQ(memory.files.ContentOf(Programs(L"Norm Keeper")), "old");
}

TEST_F(ManageShortcutsTest, ChangesNothingWhereNothingWasChanged)
{
    const State before = memory.CurrentState();
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ManageShortcutsTest, ChangesNothingOnCancel)
{
    const State before = memory.CurrentState();
    EXPECT_EQ(Run(Click(0, L"[x] Ledger Composer") + Click(1, L"[ ] Site Keeper") + std::vector{Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ManageShortcutsTest, GoesOnBehindAFileThatCannotBeRemovedOrMade)
{
    memory.files.SetAttributes(Desktop(L"Site Keeper"), FileAttributes::ReadOnly);
    memory.files.RefuseWriting(Desktop(L"Ledger Composer"));
    EXPECT_EQ(Run(Click(0, L"[x] Ledger Composer") + Click(1, L"[ ] Site Keeper") + std::vector{Press(IDOK)}), IDOK);
    EXPECT_TRUE(memory.files.Exists(Desktop(L"Site Keeper")));
    EXPECT_FALSE(memory.files.Exists(Programs(L"Site Keeper")));
    EXPECT_FALSE(memory.files.Exists(Desktop(L"Ledger Composer")));
    EXPECT_TRUE(memory.files.Exists(Programs(L"Ledger Composer")));
}

// --- the keyboard ----------------------------------------------------------------------------------------------------

TEST_F(ManageShortcutsTest, TogglesWithTheSpaceBar)
{
    const auto key = [this](WORD pressed) { return Do([pressed](const ManageShortcutsPage&) { PressKey(pressed); }); };
    EXPECT_EQ(Run({key(VK_SPACE), AwaitRow(0, L"[x] Ledger Composer"), key(VK_DOWN), key(VK_SPACE),
                   AwaitRow(1, L"[ ] Site Keeper"), key(VK_SPACE), AwaitRow(1, L"[x] Site Keeper"), key(VK_RETURN)}),
              IDOK);
    EXPECT_EQ(memory.files.ContentOf(Desktop(L"Ledger Composer")), "");
    EXPECT_EQ(memory.files.ContentOf(Desktop(L"Site Keeper")), "old");
}

TEST_F(ManageShortcutsTest, IsCancelledByEscape)
{
    EXPECT_EQ(Run({Do([](const ManageShortcutsPage&) { PressKey(VK_ESCAPE); })}), IDCANCEL);
}

TEST_F(ManageShortcutsTest, LeavesNothingBehind)
{
    const auto open = [this](int times) {
        for (int i = 0; i < times; ++i) {
            Run({Press(i % 2 == 0 ? IDOK : IDCANCEL)});
        }
    };
    open(6); // in which the system sets up what it keeps
    const unsigned before = CountGdiObjects();
    open(100);
    EXPECT_EQ(CountGdiObjects(), before);
}

} // namespace
} // namespace sitekeeper
