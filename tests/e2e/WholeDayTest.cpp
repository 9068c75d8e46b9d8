// Whole days of an administrator: several starts, several commands, and everything that changed in between.
#include "e2e/Journey.h"
#include "e2e/support/Days.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/PatchedProgram.h"
#include "e2e/support/ShortcutsWindow.h"
#include "e2e/support/UserAccessWindow.h"

namespace sitekeeper::e2e {
namespace {

class WholeDay : public Journey
{
protected:
    /// Chooses exactly the first and the second shortcut of a catalogue without any.
    static void ChooseTwoShortcuts(const ProgramRun& run, const MainWindow& main)
    {
        main.Choose(Command::ManageShortcuts);
        const ShortcutsWindow dialog(run);
        dialog.Press(VK_SPACE);
        dialog.Press(VK_DOWN);
        dialog.Press(VK_SPACE);
        dialog.AwaitRows({L"[x] Ledger Composer", L"[x] Site Keeper", L"[ ] Sheet Writer", L"[ ] Norm Keeper",
                          L"[ ] Assist Web Page"});
        dialog.Leave(IDOK);
    }

    static void ExpectTwoShortcuts(State& state, const std::wstring& applicationFolder)
    {
        for (const std::wstring& folder : {Installation::DesktopFolder(), Installation::ProgramsFolder()}) {
            state.SetFolder(folder.substr(0, folder.size() - 1));
            for (const Tool& tool : {Tools[0], Tools[1]}) {
                state.Set(folder + tool.name + L".lnk", RenewedShortcut(tool, applicationFolder));
            }
        }
        const std::wstring programs = Installation::ProgramsFolder();
        state.SetFolder(programs.substr(0, programs.rfind(L'\\', programs.size() - 2)));
    }

    /// Starts the program, lets `work` do something in its main dialog, and waits for its end.
    template <typename Work>
    static void Start(const std::wstring& program, Work work)
    {
        const ProgramRun run(program);
        const MainWindow main(run);
        work(run, main);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
};

} // namespace

TEST_F(WholeDay, AFreshMachineIsSetUpAndComesUpTheSameTheNextMorning)
{
    Installation::RemoveSettings();
    Installation::AddTools(L"C:\\Suite\\");
    CopyFileTo(ShippedFile(L"SiteKeeper64.exe"), Installation::Program()); // AddTools put a stand-in there
    State expected = State::Take();
    RECT rectangle{};
    Start(Installation::Program(), [&](const ProgramRun& run, const MainWindow& main) {
        EXPECT_EQ(main.Text(Control::ProgramPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::DatafilesPath), L"C:\\Suite\\Datafiles\\");
        ChooseTwoShortcuts(run, main);
        rectangle = main.Rectangle();
        main.Click(Control::Ok);
    });
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectTwoShortcuts(expected, L"C:\\Suite\\");
    ExpectReminder(expected, DateAfter(7), 7); // armed by the first start
    ExpectPosition(expected, rectangle);
    EXPECT_TRUE(IsNow(expected));

    Start(Installation::Program(), [&](const ProgramRun& run, const MainWindow& main) {
        EXPECT_EQ(main.Text(Control::ProgramPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
        EXPECT_EQ(main.Text(Control::DatafilesPath), L"C:\\Suite\\Datafiles\\");
        main.Choose(Command::ManageShortcuts);
        const ShortcutsWindow dialog(run);
        dialog.AwaitRows({L"[x] Ledger Composer", L"[x] Site Keeper", L"[ ] Sheet Writer", L"[ ] Norm Keeper",
                          L"[ ] Assist Web Page"});
        dialog.Leave(IDOK);
        ExpectPosition(expected, main.Rectangle());
        main.Click(Control::Ok);
    });
    EXPECT_TRUE(IsNow(expected));
}

TEST_F(WholeDay, TheSuiteMovesToAnotherDriveAndBack)
{
    // Another letter for the same disk: as good as another drive to whoever only knows paths.
    const std::wstring other = L"Z:\\Moved\\Suite\\";
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    State expected = State::Take();
    for (const std::wstring& folder : {other, std::wstring(L"C:\\Suite\\")}) {
        Start(Installation::Program(), [&](const ProgramRun&, const MainWindow& main) {
            main.Type(Control::ApplicationPath, folder);
            main.Type(Control::DatafilesPath, folder + L"Datafiles\\");
            ExpectPosition(expected, main.Rectangle());
            main.Click(Control::Ok);
        });
        ExpectFolders(expected, L"C:\\Suite\\", folder, folder + L"Datafiles\\");
        ExpectRenewed(expected, Installation::DesktopFolder(), folder);
        ExpectRenewed(expected, Installation::ProgramsFolder(), folder);
        EXPECT_TRUE(IsNow(expected)) << (folder == other ? "there" : "and back");
    }
}

TEST_F(WholeDay, ANewColleagueGetsOneTool)
{
    using enum AccessControl;
    WriteWholeFile(ListFile, "[SheetWriter]\r\nalice = alice\r\n\r\n[SiteKeeper]\r\nalice = alice\r\n\r\n"
                             "[User List]\r\nalice = alice\r\n");
    const NamedUser user(L"alice");
    Start(user.Program(), [](const ProgramRun& run, const MainWindow& main) {
        main.Choose(Command::UserAccess);
        const UserAccessWindow dialog(run);
        dialog.Type(L"Zoë");
        dialog.Push(Add);
        dialog.AwaitNames(Users, {L"alice", L"Zoë"});
        dialog.Drag(Users, L"Zoë", SheetWriter);
        dialog.AwaitNames(SheetWriter, {L"alice", L"Zoë"});
        dialog.Leave(Ok);
        main.Click(Control::Cancel);
    });
    const std::string zoe = "Zo\xEB = Zo\xEB\r\n";
    EXPECT_EQ(ReadWholeFile(ListFile), "[SheetWriter]\r\n" + zoe +
                                           "alice = alice\r\n\r\n[SiteKeeper]\r\nalice = alice\r\n\r\n"
                                           "[User List]\r\n" +
                                           zoe + "alice = alice\r\n");

    // Her tool is Sheet Writer; Site Keeper does not let her in, and nothing changes by her trying.
    const State before = State::Take();
    NamedUser::Rename(L"Zoë");
    {
        const ProgramRun run(user.Program());
        const MessageWindow refusal(run);
        EXPECT_TRUE(refusal.Text().starts_with(L"Zoë,\nYou do not have permission"));
        refusal.Confirm();
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
    EXPECT_TRUE(IsNow(before));
}

TEST_F(WholeDay, TwoAdministratorsSaveTheListsAtTheSameMoment)
{
    using enum AccessControl;
    const std::string people = "[User List]\r\nalice = alice\r\nbob = bob\r\n";
    WriteWholeFile(ListFile, people);
    const ProgramRun first(Installation::Program());
    const MainWindow firstMain(first);
    const ProgramRun second(Installation::Program());
    const MainWindow secondMain(second);
    const auto giveNormKeeperTo = [](const ProgramRun& run, const MainWindow& main, const std::wstring& name) {
        main.Choose(Command::UserAccess);
        UserAccessWindow dialog(run);
        dialog.Click(Users, name);
        dialog.PressWithControl('C');
        dialog.ClickBelow(NormKeeper);
        dialog.PressWithControl('V');
        dialog.AwaitNames(NormKeeper, {name});
        return dialog;
    };
    const UserAccessWindow one = giveNormKeeperTo(first, firstMain, L"alice");
    const UserAccessWindow other = giveNormKeeperTo(second, secondMain, L"bob");
    one.Push(Ok);
    other.Push(Ok);
    for (const HWND window : {one.Handle(), other.Handle()}) {
        first.Await("both dialogs to close", [window] { return ::IsWindow(window) == FALSE; });
    }
    const std::string stored = ReadWholeFile(ListFile).value_or("(no file)");
    EXPECT_TRUE(stored == "[Norm Keeper]\r\nalice = alice\r\n\r\n" + people ||
                stored == "[Norm Keeper]\r\nbob = bob\r\n\r\n" + people)
        << stored;
    EXPECT_FALSE(Exists(L"C:\\Suite\\Datafiles\\UserDatafile.in~"));
    firstMain.Click(Control::Cancel);
    secondMain.Click(Control::Cancel);
    EXPECT_EQ(first.WaitForEnd(), 0U);
    EXPECT_EQ(second.WaitForEnd(), 0U);
}

} // namespace sitekeeper::e2e
