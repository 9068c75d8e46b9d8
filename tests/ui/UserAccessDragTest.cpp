// Names dragged from list to list with the mouse.
#include "support/Input.h"
#include "support/UserAccessFixture.h"

#include <commctrl.h>

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class UserAccessDragTest : public UserAccessTest
{
protected:
    UserAccessDragTest()
    {
        Store("[User List]\r\nalice = alice\r\nbob = bob\r\ncarol = carol\r\n\r\n[Norm Keeper]\r\nbob = bob\r\n\r\n"
              "[SheetWriter]\r\nalice = alice\r\nbob = bob\r\n");
    }
    const Names everybody{L"alice", L"bob", L"carol"};
    const std::vector<Names> atFirst{everybody, NobodyElse, NobodyElse, {L"alice", L"bob"}, {L"bob"}};

    INT_PTR RunThenCancel(std::vector<std::vector<DriverStep>> scripts)
    {
        scripts.push_back({Press(IDCANCEL)});
        return Run(Joined(std::move(scripts)));
    }
};

TEST_F(UserAccessDragTest, CopiesFromTheKnownUsers)
{
    RunThenCancel({DragOnto(UserList, L"carol", SiteKeeperList),
                   {Expect({everybody, NobodyElse, {L"carol"}, {L"alice", L"bob"}, {L"bob"}})}});
}

TEST_F(UserAccessDragTest, MovesFromAToolsList)
{
    RunThenCancel({DragOnto(SheetWriterList, L"alice", LedgerComposerList),
                   {Expect({everybody, {L"alice"}, NobodyElse, {L"bob"}, {L"bob"}})}});
}

TEST_F(UserAccessDragTest, TakesAUserOffAToolOntoTheKnownUsers)
{
    RunThenCancel({DragOnto(NormKeeperList, L"bob", UserList),
                   {Expect({everybody, NobodyElse, NobodyElse, {L"alice", L"bob"}, NobodyElse})}});
}

TEST_F(UserAccessDragTest, LeavesANameThatIsThereAlreadyOnce)
{
    RunThenCancel({DragOnto(SheetWriterList, L"bob", NormKeeperList),
                   {Expect({everybody, NobodyElse, NobodyElse, {L"alice"}, {L"bob"}})}});
}

TEST_F(UserAccessDragTest, MovesSeveralAtOnce)
{
    RunThenCancel({{Do("select",
                       [](const UserAccessPage& page) {
                           page.Select(UserList, {L"alice", L"carol"});
                       })},
                   DragOnto(UserList, L"alice", NormKeeperList),
                   {Expect({everybody, NobodyElse, NobodyElse, {L"alice", L"bob"}, {L"alice", L"bob", L"carol"}})}});
}

TEST_F(UserAccessDragTest, ChangesNothingOnTheListItCameFrom)
{
    RunThenCancel({DragOnto(SheetWriterList, L"alice", SheetWriterList), {Expect(atFirst)}});
}

TEST_F(UserAccessDragTest, ChangesNothingOutsideTheLists)
{
    // Each from another name: two presses at one place would be a double click.
    RunThenCancel(
        {Drag(SheetWriterList, L"alice", [](const UserAccessPage& page) { return page.MiddleOf(NewUserField); }),
         Drag(SheetWriterList, L"bob",
              [](const UserAccessPage&) {
                  return POINT{2, 2};
              }),
         {Expect(atFirst)}});
}

TEST_F(UserAccessDragTest, PutsEveryoneBackWhereItIsDraggedFrom)
{
    RunThenCancel({DragOnto(SiteKeeperList, L"Everyone", NormKeeperList), {Expect(atFirst)}});
}

TEST_F(UserAccessDragTest, WritesWhatWasArranged)
{
    Run(Joined({DragOnto(SheetWriterList, L"bob", SiteKeeperList), {Press(IDOK)}}));
    EXPECT_EQ(Stored(), "[Norm Keeper]\r\nbob = bob\r\n\r\n[SheetWriter]\r\nalice = alice\r\n\r\n[SiteKeeper]\r\n"
                        "bob = bob\r\n\r\n[User List]\r\nalice = alice\r\nbob = bob\r\ncarol = carol\r\n");
}

/// A drag that is ended before its drop.
class UserAccessBrokenDragTest : public UserAccessDragTest
{
protected:
    void RunBroken(DriverStep breakIt)
    {
        std::vector<DriverStep> steps = DragOnto(SheetWriterList, L"alice", LedgerComposerList);
        steps.insert(steps.end() - 2, std::move(breakIt));
        steps.insert(steps.end() - 2, Await("the drag has ended early",
                                            [](const UserAccessPage&) { return ::GetCapture() == nullptr; }));
        RunThenCancel({std::move(steps),
                       {Expect(atFirst)},
                       DragOnto(SheetWriterList, L"bob", LedgerComposerList), // the next one works
                       {Expect({everybody, {L"bob"}, NobodyElse, {L"alice"}, {L"bob"}})}});
    }
};

TEST_F(UserAccessBrokenDragTest, EscapeEndsItAndChangesNothing)
{
    RunBroken(Do("press Escape", [](const UserAccessPage&) { PressKey(VK_ESCAPE); }));
}

TEST_F(UserAccessBrokenDragTest, LosingTheMouseEndsItAndChangesNothing)
{
    RunBroken(Do("lose the capture", [](const UserAccessPage&) { ::ReleaseCapture(); }));
}

TEST_F(UserAccessDragTest, ShowsByTheCursorWhereNamesCanBeDropped)
{
    HCURSOR overList = nullptr;
    HCURSOR elsewhere = nullptr;
    std::vector<DriverStep> steps = DragOnto(SheetWriterList, L"alice", LedgerComposerList);
    const auto beforeRelease = steps.end() - 2;
    std::vector<DriverStep> looks = {
        Await("the arrow",
              [&](const UserAccessPage&) {
                  overList = ::GetCursor();
                  return overList == ::LoadCursorW(nullptr, IDC_ARROW);
              }),
        Do("move off", [](const UserAccessPage& page) { MoveMouse(page.MiddleOf(NewUserField)); }),
        Await("the sign",
              [&](const UserAccessPage&) {
                  elsewhere = ::GetCursor();
                  return elsewhere == ::LoadCursorW(nullptr, IDC_NO);
              }),
    };
    steps.insert(beforeRelease, looks.begin(), looks.end());
    RunThenCancel({std::move(steps), {Expect(atFirst)}});
    EXPECT_NE(overList, elsewhere);
}

TEST_F(UserAccessDragTest, ReturnDuringADragDoesNotEndTheDialog)
{
    std::vector<DriverStep> steps = DragOnto(SheetWriterList, L"alice", LedgerComposerList);
    steps.insert(steps.end() - 2, Do("press Return", [](const UserAccessPage&) { PressKey(VK_RETURN); }));
    EXPECT_EQ(RunThenCancel({std::move(steps), {Expect({everybody, {L"alice"}, NobodyElse, {L"bob"}, {L"bob"}})}}),
              IDCANCEL);
}

} // namespace
} // namespace sitekeeper
