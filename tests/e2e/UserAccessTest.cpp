// Who may run which tool: the real dialog, mouse, keyboard, accounts and file.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/PatchedProgram.h"
#include "e2e/support/UserAccessWindow.h"

#include <cstdio>

namespace sitekeeper::e2e {
namespace {

using enum AccessControl;

const Names EverybodyMay{L"Everyone"};

class UserAccess : public Journey
{
protected:
    static constexpr const char* Stored = "[Norm Keeper]\r\nbob = bob\r\n\r\n[SheetWriter]\r\nalice = alice\r\n"
                                          "bob = bob\r\n\r\n[User List]\r\nalice = alice\r\nbob = bob\r\n"
                                          "carol = carol\r\n";

    /// Runs the program with this list file, opens the dialog, works in it and cancels the main dialog.
    template <typename Work>
    void Run(const std::string& content, Work work)
    {
        WriteWholeFile(ListFile, content);
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        main.Choose(Command::UserAccess);
        work(UserAccessWindow(run));
        EXPECT_NE(::IsWindowEnabled(main.Handle()), FALSE);
        main.Click(Control::Cancel);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }

    /// Names as the section of a list holds them.
    static std::string Section(const std::string& name, const std::vector<std::string>& names)
    {
        std::string text = "[" + name + "]\r\n";
        for (const std::string& each : names) {
            text += each;
            text += " = ";
            text += each;
            text += "\r\n";
        }
        return text;
    }
};

} // namespace

TEST_F(UserAccess, NamesAreDraggedBetweenTheLists)
{
    Run(Stored, [](const UserAccessWindow& dialog) {
        SaveMoment(dialog.Handle(), L"user-access");
        dialog.Drag(Users, L"carol", SiteKeeper); // copied
        dialog.AwaitNames(SiteKeeper, {L"carol"});
        dialog.Drag(SheetWriter, L"alice", LedgerComposer); // moved
        dialog.AwaitNames(SheetWriter, {L"bob"});
        dialog.Drag(NormKeeper, L"bob", Users); // taken off
        dialog.AwaitNames(NormKeeper, EverybodyMay);
        dialog.Click(Users, L"alice");
        dialog.ClickWithControl(Users, L"bob");
        dialog.Drag(Users, L"alice", NormKeeper); // both; by the one clicked first, or it would be a double click
        dialog.AwaitNames(NormKeeper, {L"alice", L"bob"});
        EXPECT_EQ(dialog.NamesIn(Users), (Names{L"alice", L"bob", L"carol"}));
        SaveMoment(dialog.Handle(), L"user-access-arranged");
        dialog.Leave(Ok);
    });
    EXPECT_EQ(ReadWholeFile(ListFile), Section("Ledger Composer", {"alice"}) + "\r\n" +
                                           Section("Norm Keeper", {"alice", "bob"}) + "\r\n" +
                                           Section("SheetWriter", {"bob"}) + "\r\n" + Section("SiteKeeper", {"carol"}) +
                                           "\r\n" + Section("User List", {"alice", "bob", "carol"}));
}

TEST_F(UserAccess, ADragThatEndsNowhereChangesNothing)
{
    Run(Stored, [](const UserAccessWindow& dialog) {
        const auto expectUnchanged = [&dialog] {
            EXPECT_EQ(dialog.NamesIn(Users), (Names{L"alice", L"bob", L"carol"}));
            EXPECT_EQ(dialog.NamesIn(SheetWriter), (Names{L"alice", L"bob"}));
            EXPECT_EQ(dialog.NamesIn(NormKeeper), Names{L"bob"});
            EXPECT_EQ(dialog.NamesIn(LedgerComposer), EverybodyMay);
            EXPECT_EQ(dialog.NamesIn(SiteKeeper), EverybodyMay);
        };
        dialog.Drag(SheetWriter, L"alice", SheetWriter); // onto itself
        expectUnchanged();
        dialog.DragTo(SheetWriter, L"bob", {1, 1}); // outside
        expectUnchanged();
        dialog.DragAndEscape(SheetWriter, L"alice", LedgerComposer);
        expectUnchanged();
        dialog.Drag(SiteKeeper, L"Everyone", NormKeeper);
        expectUnchanged();
        dialog.Drag(LedgerComposer, L"Everyone", SiteKeeper);
        expectUnchanged();
        dialog.Leave(Cancel);
    });
    EXPECT_EQ(ReadWholeFile(ListFile), Stored);
}

TEST_F(UserAccess, TheKeyboardDoesWhatTheMouseDoes)
{
    Run(Stored, [](const UserAccessWindow& dialog) {
        dialog.Click(Users, L"carol");
        dialog.PressWithControl('C');
        dialog.ClickBelow(SiteKeeper);
        dialog.PressWithControl('V');
        dialog.AwaitNames(SiteKeeper, {L"carol"});
        dialog.Click(SheetWriter, L"alice");
        dialog.PressWithControl('X');
        dialog.AwaitNames(SheetWriter, {L"bob"});
        dialog.ClickBelow(LedgerComposer);
        dialog.PressWithControl('V');
        dialog.AwaitNames(LedgerComposer, {L"alice"});
        dialog.Click(NormKeeper, L"bob");
        dialog.Press(VK_DELETE);
        dialog.AwaitNames(NormKeeper, EverybodyMay);
        dialog.ClickBelow(Users);
        dialog.PressWithControl('A');
        dialog.PressWithControl('C');
        dialog.ClickBelow(NormKeeper);
        dialog.PressWithControl('V');
        dialog.AwaitNames(NormKeeper, {L"alice", L"bob", L"carol"});
        dialog.Leave(Ok);
    });
    EXPECT_EQ(ReadWholeFile(ListFile), Section("Ledger Composer", {"alice"}) + "\r\n" +
                                           Section("Norm Keeper", {"alice", "bob", "carol"}) + "\r\n" +
                                           Section("SheetWriter", {"bob"}) + "\r\n" + Section("SiteKeeper", {"carol"}) +
                                           "\r\n" + Section("User List", {"alice", "bob", "carol"}));
}

TEST_F(UserAccess, TheFirstOpeningCollectsTheAccountsOfThisComputer)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::UserAccess);
    const UserAccessWindow dialog(run);
    const Names found = dialog.NamesIn(Users);
    EXPECT_NE(std::find(found.begin(), found.end(), L"Administrator"), found.end());
    const std::string stored = ReadWholeFile(ListFile).value_or("(no file)");
    EXPECT_TRUE(stored.starts_with("[User List]\r\nAdministrator = Administrator\r\n")) << stored;
    dialog.Type(L"  dora ");
    dialog.Push(Add);
    run.Await("the new name", [&] { return dialog.CountOf(Users) == found.size() + 1; });
    dialog.Push(Refresh);
    dialog.AwaitNames(Users, found);
    dialog.Leave(Ok);
    EXPECT_EQ(ReadWholeFile(ListFile), stored);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
}

TEST_F(UserAccess, AHundredThousandNamesAreArrangedLikeTen)
{
    constexpr int Count = 100'000;
    std::vector<std::string> names;
    for (int number = 0; number < Count; ++number) {
        char name[16]{};
        std::snprintf(name, std::size(name), "user%06d", number);
        names.emplace_back(name);
    }
    Run(Section("User List", names), [](const UserAccessWindow& dialog) {
        EXPECT_EQ(dialog.CountOf(Users), std::size_t{Count});
        SaveMoment(dialog.Handle(), L"user-access-hundred-thousand");
        dialog.Press(VK_HOME);
        dialog.PressWithControl('C');
        dialog.ClickBelow(NormKeeper);
        dialog.PressWithControl('V');
        dialog.AwaitNames(NormKeeper, {L"user000000"});
        dialog.Leave(Ok);
    });
    EXPECT_EQ(ReadWholeFile(ListFile), Section("Norm Keeper", {"user000000"}) + "\r\n" + Section("User List", names));
}

namespace {

class ListedUser : public UserAccess
{
protected:
    void SetUp() override
    {
        WriteWholeFile(ListFile, Section("SheetWriter", {"alice"}) + Section("SiteKeeper", {"bob"}));
    }
};

} // namespace

TEST_F(ListedUser, IsRefusedWhenOnlyAnotherToolNamesHim)
{
    const NamedUser user(L"alice");
    const State before = State::Take();
    const ProgramRun run(user.Program());
    const MessageWindow message(run);
    EXPECT_EQ(message.Caption(), L"LX Plus 2023");
    EXPECT_EQ(message.Text(), L"alice,\nYou do not have permission to run this application.\n\n"
                              L"Please contact your system administrator.");
    message.Confirm();
    ExpectEnd(run, before);
}

TEST_F(ListedUser, GetsInInAnyCaseAndSoDoesTheAdministrator)
{
    for (const wchar_t* const name : {L"BOB", L"administrator"}) {
        const NamedUser user(name);
        const ProgramRun run(user.Program());
        const MainWindow main(run);
        main.Click(Control::Cancel);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
}

} // namespace sitekeeper::e2e
