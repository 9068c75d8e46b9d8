#include "shortcuts/ShortcutChoice.h"

#include "shortcuts/ShortcutCatalogue.h"
#include "support/SuiteFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr int LedgerComposer = 0;
constexpr int SiteKeeper = 1;
constexpr int AssistWebPage = 4;

class ShortcutChoice : public ::testing::Test
{
protected:
    ShortcutChoice() { InstallShortcuts(memory); }

    [[nodiscard]] bool Has(int row) const { return HasShortcut(memory.files, memory.registry, row); }
    void Place(int row) { PlaceShortcut(memory.files, memory.registry, row); }
    void Remove(int row) { RemoveShortcut(memory.files, memory.registry, row); }
    void ForgetFolder(const wchar_t* name) { memory.registry.RemoveValue(Hive::LocalMachine, ShellFoldersKey, name); }

    const std::wstring onDesktop = std::wstring(DesktopFolder) + L"Site Keeper.lnk";
    const std::wstring inPrograms = std::wstring(ProgramsFolder) + L"Site Keeper.lnk";
    MemoryPlatform memory;
};

TEST_F(ShortcutChoice, KnowsAShortcutInEitherFolder)
{
    EXPECT_TRUE(Has(SiteKeeper));
    EXPECT_FALSE(Has(LedgerComposer));
    memory.files.Remove(onDesktop);
    EXPECT_TRUE(Has(SiteKeeper));
    memory.files.Remove(inPrograms);
    EXPECT_FALSE(Has(SiteKeeper));
    memory.files.AddFile(onDesktop);
    EXPECT_TRUE(Has(SiteKeeper));
    EXPECT_FALSE(Has(-1));
    EXPECT_FALSE(Has(ShortcutCount()));
}

TEST_F(ShortcutChoice, TakesAFolderOfThatNameForAShortcut)
{
    memory.files.AddFolder(std::wstring(ProgramsFolder) + L"Assist Web Page.lnk");
    EXPECT_TRUE(Has(AssistWebPage));
}

TEST_F(ShortcutChoice, RemovesAShortcutFromBothFoldersAtOnce)
{
    const State before = memory.CurrentState();
    Remove(SiteKeeper);
    const State after = memory.CurrentState();
    EXPECT_EQ(Removed(before, after),
              (State{L"file " + onDesktop + L" = \"old\"", L"file " + inPrograms + L" = \"old\""}));
    EXPECT_EQ(Added(before, after), State{});
}

TEST_F(ShortcutChoice, RemovesFromTheSecondFolderWhatCannotGoFromTheFirst)
{
    memory.files.SetAttributes(onDesktop, FileAttributes::ReadOnly);
    Remove(SiteKeeper);
    EXPECT_TRUE(memory.files.Exists(onDesktop));
    EXPECT_FALSE(memory.files.Exists(inPrograms));
}

TEST_F(ShortcutChoice, RemovesNothingWhereNothingIs)
{
    const State before = memory.CurrentState();
    Remove(AssistWebPage);
    Remove(-1);
    Remove(ShortcutCount());
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ShortcutChoice, PlacesEmptyFilesWhereTheShortcutIsMissing)
{
    const State before = memory.CurrentState();
    Place(LedgerComposer);
    const State after = memory.CurrentState();
    EXPECT_EQ(Added(before, after), (State{L"file D:\\Desktop\\ORIVEL LX Plus 2023\\Ledger Composer.lnk = \"\"",
                                           L"file D:\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\Ledger Composer.lnk = "
                                           L"\"\""}));
    EXPECT_EQ(Removed(before, after), State{});
}

TEST_F(ShortcutChoice, PlacesOnlyWhatIsMissing)
{
    memory.files.Remove(onDesktop);
    Place(SiteKeeper);
    EXPECT_EQ(memory.files.ContentOf(onDesktop), "");
    EXPECT_EQ(memory.files.ContentOf(inPrograms), "old");
    const State before = memory.CurrentState();
    Place(SiteKeeper);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ShortcutChoice, MakesTheFoldersItNeeds)
{
    memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop", L"E:\\New\\Desktop");
    memory.registry.SetText(Hive::LocalMachine, ShellFoldersKey, L"Common Programs", L"E:\\New\\Programs");
    memory.files.AddFolder(L"E:\\");
    Place(SiteKeeper);
    EXPECT_EQ(memory.files.ContentOf(L"E:\\New\\Desktop\\ORIVEL LX Plus 2023\\Site Keeper.lnk"), "");
    EXPECT_EQ(memory.files.ContentOf(L"E:\\New\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\Site Keeper.lnk"), "");
}

TEST_F(ShortcutChoice, LeavesAnUnknownFolderAlone)
{
    ForgetFolder(L"Common Programs");
    Place(LedgerComposer);
    EXPECT_TRUE(memory.files.Exists(std::wstring(DesktopFolder) + L"Ledger Composer.lnk"));
    EXPECT_FALSE(memory.files.Exists(std::wstring(ProgramsFolder) + L"Ledger Composer.lnk"));
    Remove(SiteKeeper);
    EXPECT_FALSE(memory.files.Exists(onDesktop));
    EXPECT_TRUE(memory.files.Exists(inPrograms));

    ForgetFolder(L"Common Desktop");
    const State before = memory.CurrentState();
    EXPECT_FALSE(Has(LedgerComposer));
    Place(AssistWebPage);
    Remove(LedgerComposer);
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(ShortcutChoice, IsMadeRealByTheNextRenewal)
{
    Place(LedgerComposer);
    memory.shell.EnterComponents();
    RenewShortcuts(memory.files, memory.shell, DesktopFolder, L"N:\\Suite\\");
    memory.shell.LeaveComponents();
    EXPECT_EQ(memory.files.ReadShortcut(std::wstring(DesktopFolder) + L"Ledger Composer.lnk"),
              ShortcutTo(L"N:\\Suite\\", L"LedgerComposer64.exe"));
}

TEST_F(ShortcutChoice, RemovesRealShortcutsToo)
{
    memory.files.WriteShortcut(onDesktop, ShortcutTo(L"N:\\Suite\\", L"SiteKeeper64.exe"));
    Remove(SiteKeeper);
    EXPECT_FALSE(memory.files.Exists(onDesktop));
}

} // namespace
} // namespace sitekeeper
