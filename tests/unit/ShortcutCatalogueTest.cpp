#include "shortcuts/ShortcutCatalogue.h"

#include "support/MemoryPlatform.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const struct
{
    const wchar_t* name;
    const wchar_t* program;
} Rows[] = {
    {L"Ledger Composer", L"LedgerComposer64.exe"}, {L"Site Keeper", L"SiteKeeper64.exe"},
    {L"Sheet Writer", L"SheetWriter64.exe"},       {L"Norm Keeper", L"NormKeeper64.exe"},
    {L"Assist Web Page", L"Assist64.exe"},
};

TEST(ShortcutNames, StandInTheirOrder)
{
    ASSERT_EQ(ShortcutCount(), 5);
    for (int row = 0; row < ShortcutCount(); ++row) {
        EXPECT_EQ(GetShortcutName(row), Rows[row].name);
        EXPECT_EQ(ShortcutPathIn(L"D:\\S\\", row), std::wstring(L"D:\\S\\") + Rows[row].name + L".lnk");
        EXPECT_EQ(ShortcutPathIn(L"", row), L"");
    }
    for (const int unknown : {-2147483647 - 1, -1, 5, 2147483647}) {
        EXPECT_EQ(GetShortcutName(unknown), L"");
        EXPECT_EQ(ShortcutPathIn(L"D:\\S\\", unknown), L"");
    }
}

class ShortcutRenewal : public ::testing::Test
{
protected:
    void SetUp() override
    {
        memory.files.AddFolder(L"D:\\S");
        ASSERT_TRUE(memory.shell.EnterComponents());
    }
    void TearDown() override { memory.shell.LeaveComponents(); }

    void Renew(const std::wstring& applicationFolder)
    {
        RenewShortcuts(memory.files, memory.shell, L"D:\\S\\", applicationFolder);
    }

    MemoryPlatform memory;
};

TEST_F(ShortcutRenewal, WritesNothingWhereNoShortcutExists)
{
    const State before = memory.CurrentState();
    Renew(L"N:\\Suite\\");
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ShortcutRenewal, TurnsAnEmptyPlaceholderIntoAShortcut)
{
    memory.files.AddFile(L"D:\\S\\Site Keeper.lnk");
    Renew(L"N:\\Suite\\");
    const std::optional<ShortcutFile> shortcut = memory.files.ReadShortcut(L"D:\\S\\Site Keeper.lnk");
    ASSERT_TRUE(shortcut);
    EXPECT_EQ(shortcut->target, L"N:\\Suite\\Applications\\SiteKeeper64.exe");
    EXPECT_EQ(shortcut->arguments, L"");
    EXPECT_EQ(shortcut->workingFolder, L"N:\\Suite\\Applications\\");
    EXPECT_EQ(shortcut->iconFile, L"N:\\Suite\\Applications\\SiteKeeper64.exe");
    EXPECT_EQ(shortcut->iconIndex, 0);
    EXPECT_EQ(memory.shell.Saved(), (State{L"D:\\S\\Site Keeper.lnk"}));
}

TEST_F(ShortcutRenewal, GoesThroughAllRowsInOrder)
{
    State expected;
    for (const auto& row : Rows) {
        memory.files.AddFile(std::wstring(L"D:\\S\\") + row.name + L".lnk", "whatever it held");
        expected.push_back(std::wstring(L"D:\\S\\") + row.name + L".lnk");
    }
    memory.files.AddFile(L"D:\\S\\Other.lnk", "somebody else's");
    Renew(L"N:\\Suite\\");
    EXPECT_EQ(memory.shell.Saved(), expected);
    for (const auto& row : Rows) {
        const auto shortcut = memory.files.ReadShortcut(std::wstring(L"D:\\S\\") + row.name + L".lnk");
        ASSERT_TRUE(shortcut) << row.name;
        EXPECT_EQ(shortcut->target, std::wstring(L"N:\\Suite\\Applications\\") + row.program);
    }
    EXPECT_EQ(memory.files.ContentOf(L"D:\\S\\Other.lnk"), "somebody else's");
}

TEST_F(ShortcutRenewal, FollowsTheApplicationFolder)
{
    memory.files.AddFile(L"D:\\S\\Norm Keeper.lnk");
    Renew(L"N:\\Old\\");
    Renew(L"N:\\New\\");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->target, L"N:\\New\\Applications\\NormKeeper64.exe");
}

// Nothing is put between the folder and "Applications": a folder without "\" at its end names another place.
TEST_F(ShortcutRenewal, JoinsTheApplicationFolderAsItStands)
{
    memory.files.AddFile(L"D:\\S\\Norm Keeper.lnk");
    Renew(L"N:\\Suite");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->workingFolder, L"N:\\SuiteApplications\\");
    Renew(L"");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->target, L"C:\\Applications\\NormKeeper64.exe");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->workingFolder, L"Applications\\");
    Renew(L"N:\\Suite\\\\");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->target,
              L"N:\\Suite\\Applications\\NormKeeper64.exe");
    EXPECT_EQ(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk")->workingFolder, L"N:\\Suite\\\\Applications\\");
}

TEST_F(ShortcutRenewal, LeavesAFileThatCannotBeWrittenAndGoesOn)
{
    memory.files.AddFile(L"D:\\S\\Ledger Composer.lnk", "old");
    memory.files.AddFile(L"D:\\S\\Norm Keeper.lnk");
    memory.files.RefuseWriting(L"D:\\S\\Ledger Composer.lnk");
    Renew(L"N:\\Suite\\");
    EXPECT_EQ(memory.files.ContentOf(L"D:\\S\\Ledger Composer.lnk"), "old");
    EXPECT_TRUE(memory.files.ReadShortcut(L"D:\\S\\Norm Keeper.lnk"));
}

TEST_F(ShortcutRenewal, DoesNothingInAnUnknownFolder)
{
    memory.files.AddFile(L"C:\\Norm Keeper.lnk");
    const State before = memory.CurrentState();
    RenewShortcuts(memory.files, memory.shell, L"", L"N:\\Suite\\");
    EXPECT_EQ(memory.CurrentState(), before);
}

} // namespace
} // namespace sitekeeper
