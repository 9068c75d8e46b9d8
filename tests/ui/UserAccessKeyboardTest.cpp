// The same arrangements without a mouse.
#include "support/Input.h"
#include "support/UserAccessFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class UserAccessKeyboardTest : public UserAccessTest
{
protected:
    UserAccessKeyboardTest()
    {
        Store("[User List]\r\nalice = alice\r\nbob = bob\r\nCarol = Carol\r\n\r\n[Norm Keeper]\r\nbob = bob\r\n\r\n"
              "[SheetWriter]\r\nalice = alice\r\nbob = bob\r\n");
    }

    DriverStep Select(int list, const Names& names)
    {
        return Do("select", [=](const UserAccessPage& page) { page.Select(list, names); });
    }
    /// A key that the list with the focus answers; the next step comes when it was answered.
    std::vector<DriverStep> Key(WORD key)
    {
        return {Do("key", [key](const UserAccessPage&) { PressKey(key); }), Turn()};
    }
    std::vector<DriverStep> Control(WORD key)
    {
        return {Do("key with Ctrl", [key](const UserAccessPage&) { PressWithControl(key); }), Turn()};
    }
    DriverStep Turn()
    {
        return Await("the key was handled", [](const UserAccessPage&) {
            return ::GetQueueStatus(QS_KEY) == 0 && ::GetKeyState(VK_CONTROL) >= 0;
        });
    }
    void RunAll(std::vector<std::vector<DriverStep>> scripts)
    {
        scripts.push_back({Press(IDCANCEL)});
        EXPECT_EQ(Run(Joined(std::move(scripts))), IDCANCEL);
    }

    const Names everybody{L"alice", L"bob", L"Carol"};
    const std::vector<Names> atFirst{everybody, NobodyElse, NobodyElse, {L"alice", L"bob"}, {L"bob"}};
};

TEST_F(UserAccessKeyboardTest, CopiesAndPastesKnownUsers)
{
    RunAll({{Select(UserList, {L"alice", L"Carol"})},
            Control('C'),
            {Select(NormKeeperList, {})},
            Control('V'),
            {Expect({everybody, NobodyElse, NobodyElse, {L"alice", L"bob"}, {L"alice", L"bob", L"Carol"}})}});
    EXPECT_EQ(memory.clipboard.Content(), L"alice\r\nCarol\r\n");
}

TEST_F(UserAccessKeyboardTest, CutsAndPastesBetweenTools)
{
    RunAll({{Select(SheetWriterList, {L"alice", L"bob"})},
            Control('X'),
            {Expect({everybody, NobodyElse, NobodyElse, NobodyElse, {L"bob"}})},
            {Select(LedgerComposerList, {})},
            Control('V'),
            {Expect({everybody, {L"alice", L"bob"}, NobodyElse, NobodyElse, {L"bob"}})}});
}

TEST_F(UserAccessKeyboardTest, DeleteTakesTheSelectionOffAToolOnly)
{
    RunAll({{Select(SheetWriterList, {L"bob"})},
            Key(VK_DELETE),
            {Expect({everybody, NobodyElse, NobodyElse, {L"alice"}, {L"bob"}})},
            {Select(UserList, everybody)},
            Key(VK_DELETE),
            Control('X'),
            {Expect({everybody, NobodyElse, NobodyElse, {L"alice"}, {L"bob"}})},
            {Select(SiteKeeperList, {L"Everyone"})},
            Key(VK_DELETE),
            {Expect({everybody, NobodyElse, NobodyElse, {L"alice"}, {L"bob"}})}});
    EXPECT_EQ(memory.clipboard.Content(), L"alice\r\nbob\r\nCarol\r\n"); // a cut there copies
}

TEST_F(UserAccessKeyboardTest, SelectsAll)
{
    RunAll({{Select(UserList, {})}, Control('A'), {Do("look", [this](const UserAccessPage& page) {
                EXPECT_EQ(page.SelectionOf(UserList), everybody);
            })}});
}

TEST_F(UserAccessKeyboardTest, PastesOnlyKnownUsersInTheirSpelling)
{
    memory.clipboard.Set(L"CAROL\nnobody\r\n\r\n alice\r\nbob\r\nBob");
    RunAll({{Select(LedgerComposerList, {})},
            Control('V'),
            {Expect({everybody, {L"bob", L"Carol"}, NobodyElse, {L"alice", L"bob"}, {L"bob"}})}});
}

TEST_F(UserAccessKeyboardTest, PastesNothingIntoTheKnownUsersNorFromAnEmptyClipboard)
{
    memory.clipboard.Set(L"dora\r\nbob\r\n");
    RunAll({{Select(UserList, {})}, Control('V'), {Expect(atFirst)}});
    memory.clipboard.Set(std::nullopt);
    RunAll({{Select(LedgerComposerList, {})}, Control('V'), {Expect(atFirst)}});
}

TEST_F(UserAccessKeyboardTest, KeepsWhatCouldNotBePutOnTheClipboard)
{
    memory.clipboard.Refuse(true);
    RunAll({{Select(SheetWriterList, {L"alice"})}, Control('X'), {Expect(atFirst)}});
}

TEST_F(UserAccessKeyboardTest, LeavesOtherKeysToTheControl)
{
    RunAll({{Select(SheetWriterList, {L"alice"})}, Key('C'), Key('X'), Control(VK_DELETE), {Expect(atFirst)}});
    EXPECT_EQ(memory.clipboard.Content(), std::nullopt);
}

TEST_F(UserAccessKeyboardTest, KeysOfTheFieldForANewNameAreItsOwn)
{
    RunAll({{Select(SheetWriterList, {L"alice"}), Do("go to the field",
                                                     [](const UserAccessPage& page) {
                                                         page.Enter(NewUserField, L"dora");
                                                         ::SetFocus(page.Control(NewUserField));
                                                     })},
            Key(VK_DELETE),
            Control('X'),
            {Expect(atFirst)}});
    EXPECT_EQ(memory.clipboard.Content(), std::nullopt);
}

} // namespace
} // namespace sitekeeper
