// Which shortcuts there are: chosen in the dialog, made real by the next OK.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/ShortcutsWindow.h"

namespace sitekeeper::e2e {
namespace {

class Shortcuts : public Journey
{
protected:
    static std::wstring OnDesktop(const Tool& tool) { return Installation::DesktopFolder() + tool.name + L".lnk"; }
    static std::wstring InPrograms(const Tool& tool) { return Installation::ProgramsFolder() + tool.name + L".lnk"; }
    static std::wstring WithoutBackslash(std::wstring folder)
    {
        folder.pop_back();
        return folder;
    }
    static constexpr const Tool& LedgerComposer = Tools[0];
    static constexpr const Tool& SiteKeeper = Tools[1];
    static constexpr const Tool& NormKeeper = Tools[3];
};

} // namespace

TEST_F(Shortcuts, ChosenOnesAreEmptyUntilTheNextOkMakesThemReal)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::ManageShortcuts);
    {
        const ShortcutsWindow dialog(run);
        EXPECT_EQ(WindowText(dialog.Handle()), L"Manage Shortcuts");
        EXPECT_EQ(::IsWindowEnabled(main.Handle()), FALSE);
        dialog.AwaitRows({L"[ ] Ledger Composer", L"[ ] Site Keeper", L"[ ] Sheet Writer", L"[ ] Norm Keeper",
                          L"[ ] Assist Web Page"});
        dialog.Press(VK_SPACE); // the focus starts in the tree, on the first row
        dialog.ClickCheckBox(3);
        dialog.AwaitRows({L"[x] Ledger Composer", L"[ ] Site Keeper", L"[ ] Sheet Writer", L"[x] Norm Keeper",
                          L"[ ] Assist Web Page"});
        SaveMoment(dialog.Handle(), L"manage-shortcuts");
        EXPECT_TRUE(IsNow(expected)) << "clicking writes nothing";
        dialog.Leave(IDOK);
    }
    expected.SetFolder(WithoutBackslash(Installation::DesktopFolder()));
    expected.SetFolder(WithoutBackslash(Installation::ProgramsFolder()));
    expected.SetFolder(WithoutBackslash(Installation::ProgramsFolder())
                           .substr(0, WithoutBackslash(Installation::ProgramsFolder()).rfind(L'\\')));
    for (const Tool& tool : {LedgerComposer, NormKeeper}) {
        expected.SetEmptyFile(OnDesktop(tool));
        expected.SetEmptyFile(InPrograms(tool));
    }
    EXPECT_TRUE(IsNow(expected));

    for (const Tool& tool : {LedgerComposer, NormKeeper}) {
        expected.Set(OnDesktop(tool), RenewedShortcut(tool, L"C:\\Suite\\"));
        expected.Set(InPrograms(tool), RenewedShortcut(tool, L"C:\\Suite\\"));
    }
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Shortcuts, ThoseTakenOffAreDeletedAtOnceInBothFolders)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    RemoveFile(OnDesktop(NormKeeper)); // still checked, by the other folder
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::ManageShortcuts);
    {
        const ShortcutsWindow dialog(run);
        dialog.AwaitRows({L"[x] Ledger Composer", L"[x] Site Keeper", L"[x] Sheet Writer", L"[x] Norm Keeper",
                          L"[x] Assist Web Page"});
        dialog.Press(VK_DOWN);
        dialog.Press(VK_SPACE);
        dialog.AwaitRows({L"[x] Ledger Composer", L"[ ] Site Keeper", L"[x] Sheet Writer", L"[x] Norm Keeper",
                          L"[x] Assist Web Page"});
        dialog.Leave(IDOK);
    }
    expected.Remove(OnDesktop(SiteKeeper));
    expected.Remove(InPrograms(SiteKeeper));
    expected.SetEmptyFile(OnDesktop(NormKeeper));
    EXPECT_TRUE(IsNow(expected));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel); // what the dialog did, stays
    ExpectEnd(run, expected);
}

TEST_F(Shortcuts, CancelTouchesNothing)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::ManageShortcuts);
    {
        const ShortcutsWindow dialog(run);
        dialog.Press(VK_SPACE);
        dialog.AwaitRows({L"[ ] Ledger Composer", L"[x] Site Keeper", L"[x] Sheet Writer", L"[x] Norm Keeper",
                          L"[x] Assist Web Page"});
        dialog.Leave(IDCANCEL);
    }
    EXPECT_TRUE(IsNow(expected));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

} // namespace sitekeeper::e2e
