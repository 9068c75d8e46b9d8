// The program without a mouse, from its start to its end: nothing but keys, and the focus always to be seen.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/ShortcutsWindow.h"
#include "e2e/support/UserAccessWindow.h"
#include "support/Input.h"

#include <algorithm>
#include <string>
#include <vector>

namespace sitekeeper::e2e {
namespace {

/// Where the keys go that are pressed now.
HWND FocusOf(HWND window)
{
    return ThreadState(window).hwndFocus;
}

class Keyboard : public Journey
{
protected:
    void SetUp() override { SettleAccessTimes(); }

    static void AwaitFocus(const ProgramRun& run, HWND window, HWND control)
    {
        run.Await("the focus on control " + std::to_string(::GetDlgCtrlID(control)),
                  [=] { return FocusOf(window) == control; });
    }

    /// The main dialog takes keys, and they go to its OK, as after every start.
    static void Begin(const ProgramRun& run, const MainWindow& main)
    {
        run.BringToFront(main.Handle());
        AwaitFocus(run, main.Handle(), main.Item(Control::Ok));
    }

    /// One turn of the Tab key through a dialog whose focus is on the last of these controls. Each is another picture
    /// once it has the focus.
    static void TabThrough(const ProgramRun& run, HWND window, const std::vector<int>& order)
    {
        for (const int id : order) {
            const HWND control = ::GetDlgItem(window, id);
            ASSERT_NE(::IsWindowVisible(control), FALSE) << id;
            const Picture before = IsScreenReadable() ? AwaitPicture(control) : Picture();
            PressKey(VK_TAB);
            AwaitFocus(run, window, control);
            if (IsScreenReadable()) {
                run.Await("the focus to be seen on control " + std::to_string(id),
                          [&] { return TakePicture(control).pixels != before.pixels; });
            }
        }
    }

    /// Tab, as often as it takes.
    static void GoTo(const ProgramRun& run, const MainWindow& main, Control control)
    {
        for (int turn = 0; turn < 12 && FocusOf(main.Handle()) != main.Item(control); ++turn) {
            const HWND former = FocusOf(main.Handle());
            PressKey(VK_TAB);
            run.Await("the focus to go on", [&] { return FocusOf(main.Handle()) != former; });
        }
        AwaitFocus(run, main.Handle(), main.Item(control));
    }

    /// Opens a menu with Alt and its letter, and presses these keys in it.
    static void ChooseWithKeys(const ProgramRun& run, const MainWindow& main, WORD menu, const std::vector<WORD>& keys)
    {
        PressWith(VK_MENU, menu);
        run.Await("the menu to open", [&] { return (ThreadState(main.Handle()).flags & GUI_INMENUMODE) != 0; });
        for (const WORD key : keys) {
            PressKey(key);
        }
    }

    /// Presses a key in a window that it closes.
    static void Close(const ProgramRun& run, HWND window, WORD key)
    {
        run.Await("the window to take keys", [=] { return ::GetForegroundWindow() == window; });
        PressKey(key);
        run.Await("the window to close", [=] { return ::IsWindow(window) == FALSE; });
    }

    /// What a turn of Tab visits, from the default button's next on.
    const std::vector<int> mainOrder{2, 1000, 1008, 1001, 1002, 1010, 1003, 1004, 1011, 1009, 1};
};

} // namespace

TEST_F(Keyboard, TabVisitsEveryControlInTheTemplatesOrderAndShowsItsFocus)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    Begin(run, main);
    TabThrough(run, main.Handle(), mainOrder);

    std::vector<int> back(mainOrder.rbegin() + 1, mainOrder.rend());
    for (const int id : back) {
        PressWith(VK_SHIFT, VK_TAB);
        AwaitFocus(run, main.Handle(), ::GetDlgItem(main.Handle(), id));
    }
    Close(run, main.Handle(), VK_ESCAPE);
    EXPECT_EQ(run.WaitForEnd(), 0U);
}

TEST_F(Keyboard, TakesAnAdministratorFromTheStartToTheEnd)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    Begin(run, main);
    ExpectPosition(expected, main.Rectangle());

    // The picker, opened with the space bar, and left.
    GoTo(run, main, Control::BrowseDatafiles);
    PressKey(VK_SPACE);
    {
        const FolderPicker picker(run, L"Datafiles");
        Close(run, picker.Handle(), VK_RETURN);
    }
    run.Await("the chosen folder", [&] { return main.Text(Control::DatafilesPath) == L"C:\\Suite\\Datafiles\\"; });
    AwaitFocus(run, main.Handle(), main.Item(Control::BrowseDatafiles));

    // A dialog by the letters of its menu and its item; the focus comes back to where it was.
    ChooseWithKeys(run, main, 'E', {'M'});
    {
        const ShortcutsWindow shortcuts(run);
        const std::vector<std::wstring> rows = shortcuts.Rows();
        AwaitFocus(run, shortcuts.Handle(), ::GetDlgItem(shortcuts.Handle(), 1017));
        TabThrough(run, shortcuts.Handle(), {1, 2, 1017});
        Close(run, shortcuts.Handle(), VK_ESCAPE);
    }
    AwaitFocus(run, main.Handle(), main.Item(Control::BrowseDatafiles));

    // Two items without a letter, with the arrows: the second of the menu, and the last of the window's own.
    ChooseWithKeys(run, main, 'H', {VK_DOWN, VK_RETURN});
    Close(run, AboutWindow(run).Handle(), VK_ESCAPE);
    ChooseWithKeys(run, main, VK_SPACE, {VK_UP, VK_RETURN});
    Close(run, AboutWindow(run).Handle(), VK_RETURN);

    PressKey(VK_F1);
    Close(run, MessageWindow(run).Handle(), VK_RETURN); // the help file is not installed
    AwaitFocus(run, main.Handle(), main.Item(Control::BrowseDatafiles));

    // A field is all selected when Tab comes to it: what is typed replaces it.
    GoTo(run, main, Control::ApplicationPath);
    TypeText(L"D:\\Büro\\");
    run.Await("the typed folder", [&] { return main.Text(Control::ApplicationPath) == L"D:\\Büro\\"; });

    ChooseWithKeys(run, main, 'F', {VK_UP, VK_RETURN}); // Exit, the last item, which does what OK does
    ExpectFolders(expected, L"C:\\Suite\\", L"D:\\Büro\\", L"C:\\Suite\\Datafiles\\");
    ExpectEnd(run, expected);
}

TEST_F(Keyboard, EnterAppliesWhereverTheFocusIsInAField)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    Begin(run, main);
    ExpectPosition(expected, main.Rectangle());
    GoTo(run, main, Control::DatafilesPath);
    TypeText(L"E:\\Data\\");
    run.Await("the typed folder", [&] { return main.Text(Control::DatafilesPath) == L"E:\\Data\\"; });
    PressKey(VK_RETURN);
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Suite\\", L"E:\\Data\\");
    ExpectEnd(run, expected);
}

TEST_F(Keyboard, EscapeLeavesEverythingAsItWas)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    Begin(run, main);
    ExpectPosition(expected, main.Rectangle());
    GoTo(run, main, Control::ApplicationPath);
    TypeText(L"X:\\");
    run.Await("the typed folder", [&] { return main.Text(Control::ApplicationPath) == L"X:\\"; });
    PressKey(VK_ESCAPE);
    ExpectEnd(run, expected);
}

TEST_F(Keyboard, AUserIsAddedAndGivenATool)
{
    using enum AccessControl;
    WriteWholeFile(ListFile, "[User List]\r\nalice = alice\r\n");
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::UserAccess); // no key and no menu leads there
    {
        const UserAccessWindow dialog(run);
        AwaitFocus(run, dialog.Handle(), dialog.Item(Users));
        TabThrough(run, dialog.Handle(), {1019, 1007, 1013, 1020, 1022, 1023, 1024, 1, 2, 1009, 1018, 1019});
        TypeText(L"Zoë");
        PressKey(VK_TAB);
        AwaitFocus(run, dialog.Handle(), dialog.Item(Add));
        PressKey(VK_SPACE);
        dialog.AwaitNames(Users, {L"alice", L"Zoë"});

        PressWith(VK_SHIFT, VK_TAB);
        AwaitFocus(run, dialog.Handle(), dialog.Item(NewUser));
        PressWith(VK_SHIFT, VK_TAB);
        AwaitFocus(run, dialog.Handle(), dialog.Item(Users));
        PressWithControl('A');
        PressWithControl('C');
        for (const AccessControl next : {NewUser, Add, Refresh, LedgerComposer}) {
            PressKey(VK_TAB);
            AwaitFocus(run, dialog.Handle(), dialog.Item(next));
        }
        PressWithControl('V');
        dialog.AwaitNames(LedgerComposer, {L"alice", L"Zoë"});
        Close(run, dialog.Handle(), VK_RETURN);
    }
    EXPECT_EQ(ReadWholeFile(ListFile),
              "[Ledger Composer]\r\nZo\xEB = Zo\xEB\r\nalice = alice\r\n\r\n[User List]\r\nZo\xEB = Zo\xEB\r\n"
              "alice = alice\r\n");
    run.BringToFront(main.Handle());
    Close(run, main.Handle(), VK_ESCAPE);
    EXPECT_EQ(run.WaitForEnd(), 0U);
}

} // namespace sitekeeper::e2e
