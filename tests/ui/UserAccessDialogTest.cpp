// What the user access dialog shows, adds, refreshes and writes.
#include "support/Capture.h"
#include "support/UserAccessFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST_F(UserAccessTest, ShowsTheStoredListsSorted)
{
    Store("[User List]\r\nbob = bob\r\nCarol = Carol\r\nalice = alice\r\n\r\n[Ledger Composer]\r\nbob = bob\r\n\r\n"
          "[SiteKeeper]\r\nalice = alice\r\nCarol = Carol\r\n\r\n[Norm Keeper]\r\nzoe = zoe\r\n");
    EXPECT_EQ(Run({Expect({{L"alice", L"bob", L"Carol"}, {L"bob"}, {L"alice", L"Carol"}, NobodyElse, {L"zoe"}}),
                   Do("take a picture",
                      [](const UserAccessPage& page) {
                          page.Select(UserList, {L"bob"});
                          CaptureWindow(page.Window()).Save(L"user-access");
                      }),
                   Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_TRUE(memory.accounts.Requests().empty());
}

TEST_F(UserAccessTest, CollectsTheUsersWhereNoneAreKnown)
{
    memory.accounts.AddServer(L"", {L"root", L"Guest"});
    Run({Expect({{L"1", L"Guest", L"root"}, NobodyElse, NobodyElse, NobodyElse, NobodyElse}), Press(IDCANCEL)});
    EXPECT_EQ(Stored(), "[User List]\r\nAdministrator = 1\r\nGuest = Guest\r\nroot = root\r\n");
    EXPECT_FALSE(m_app.IsWaiting());
}

TEST_F(UserAccessTest, ShowsEveryoneAloneWithoutADatafilesFolder)
{
    m_settings.WriteFolder(SuiteFolder::Datafiles, L"");
    const State before = memory.CurrentState();
    EXPECT_EQ(Run({Expect({NobodyElse, NobodyElse, NobodyElse, NobodyElse, NobodyElse}), Press(IDOK)}), IDOK);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(UserAccessTest, CancelWritesNothing)
{
    Store("[User List]\r\nbob = bob\r\n");
    std::vector<DriverStep> steps =
        Joined({{Do("type", [](const UserAccessPage& page) { page.Enter(NewUserField, L"dora"); }), Press(AddButton)},
                {Press(IDCANCEL)}});
    EXPECT_EQ(Run(std::move(steps)), IDCANCEL);
    EXPECT_EQ(Stored(), "[User List]\r\nbob = bob\r\n");
}

TEST_F(UserAccessTest, OkRewritesTheFileSorted)
{
    Store("a comment\n[User List]\nbob = bob\nalice = alice\n[Other]\nkey = kept\n[SheetWriter]\nbob = bob\n");
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(Stored(), "[Other]\r\nkey = kept\r\n\r\n[SheetWriter]\r\nbob = bob\r\n\r\n"
                        "[User List]\r\nalice = alice\r\nbob = bob\r\n");
}

TEST_F(UserAccessTest, AddsATypedNameInItsPlace)
{
    Store("[User List]\r\nbob = bob\r\nzoe = zoe\r\n");
    Run({Do("type", [](const UserAccessPage& page) { page.Enter(NewUserField, L"  dora \t"); }), Press(AddButton),
         Await("the field is empty", [](const UserAccessPage& page) { return page.Text(NewUserField).empty(); }),
         Expect({{L"bob", L"dora", L"zoe"}, NobodyElse, NobodyElse, NobodyElse, NobodyElse}), Press(IDOK)});
    EXPECT_EQ(Stored(), "[User List]\r\nbob = bob\r\ndora = dora\r\nzoe = zoe\r\n");
}

TEST_F(UserAccessTest, RefusesANameThatIsThereInAnotherCaseAndKeepsItsText)
{
    Store("[User List]\r\nalice = alice\r\n");
    Run({Do("type", [](const UserAccessPage& page) { page.Enter(NewUserField, L"ALICE "); }), Press(AddButton),
         Do("look",
            [](const UserAccessPage& page) {
                EXPECT_EQ(page.Text(NewUserField), L"ALICE ");
                EXPECT_EQ(page.NamesOf(UserList), (Names{L"alice"}));
                page.Enter(NewUserField, L"   ");
            }),
         Press(AddButton),
         Do("look",
            [](const UserAccessPage& page) {
                EXPECT_EQ(page.Text(NewUserField), L"   ");
                EXPECT_EQ(page.NamesOf(UserList), (Names{L"alice"}));
            }),
         Press(IDCANCEL)});
}

TEST_F(UserAccessTest, NeverWritesEveryone)
{
    Store("[User List]\r\nbob = bob\r\n\r\n[SiteKeeper]\r\nEveryone = Everyone\r\n");
    Run({Do("type", [](const UserAccessPage& page) { page.Enter(NewUserField, L"Everyone"); }), Press(AddButton),
         Await("added", [](const UserAccessPage& page) { return page.NamesOf(UserList).size() == 2; }), Press(IDOK)});
    EXPECT_EQ(Stored(), "[User List]\r\nbob = bob\r\n");
}

TEST_F(UserAccessTest, KeepsEveryoneBesideANewNameUntilTheListsAreRefreshed)
{
    m_settings.WriteFolder(SuiteFolder::Datafiles, L"");
    Run({Do("type", [](const UserAccessPage& page) { page.Enter(NewUserField, L"dora"); }), Press(AddButton),
         Await("added", [](const UserAccessPage& page) { return page.NamesOf(UserList).size() == 2; }),
         Expect({{L"dora", L"Everyone"}, NobodyElse, NobodyElse, NobodyElse, NobodyElse}), Press(RefreshButton),
         Await("refreshed", [](const UserAccessPage& page) { return page.NamesOf(UserList).size() == 1; }),
         Expect({NobodyElse, NobodyElse, NobodyElse, NobodyElse, NobodyElse}), Press(IDCANCEL)});
}

TEST_F(UserAccessTest, RefreshCollectsTheUsersAndLeavesTheToolLists)
{
    Store("[User List]\r\nold = old\r\n\r\n[Norm Keeper]\r\nold = old\r\n");
    memory.accounts.AddServer(L"SERVER", {L"dave", L"Administrator"});
    memory.accounts.AddServer(L"", {L"root", L"dave"});
    Run({Press(RefreshButton),
         Await("refreshed", [](const UserAccessPage& page) { return page.NamesOf(UserList).size() == 3; }),
         Expect({{L"Administrator", L"dave", L"root"}, NobodyElse, NobodyElse, NobodyElse, {L"old"}}),
         Press(IDCANCEL)});
    EXPECT_FALSE(m_app.IsWaiting());
}

TEST_F(UserAccessTest, PassesHelpToItsOwner)
{
    class Owner : public CWnd
    {
    public:
        Owner()
        {
            CreateOfOwnClass(::GetModuleHandleW(nullptr), L"UserAccessOwner", WS_POPUP, {0, 0, 10, 10}, nullptr);
        }
        ~Owner() override { DestroyWindow(); }
        Owner(const Owner&) = delete;
        Owner& operator=(const Owner&) = delete;
        int m_helps = 0;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            m_helps += message == WM_COMMAND && wParam == HelpButton ? 1 : 0;
            return CWnd::WindowProc(message, wParam, lParam);
        }
    } owner;
    RunOwnedBy(owner, {Press(HelpButton), Await("passed on", [&](const UserAccessPage&) { return owner.m_helps == 1; }),
                       Press(IDCANCEL)});
    EXPECT_EQ(owner.m_helps, 1);
    EXPECT_NE(::IsWindowEnabled(owner.Handle()), FALSE);
}

} // namespace
} // namespace sitekeeper
