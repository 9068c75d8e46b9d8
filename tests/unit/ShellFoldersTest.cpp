#include "shortcuts/ShellFolders.h"

#include "support/SuiteFixture.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class ShellFolders : public ::testing::Test
{
protected:
    void SetCommon(const wchar_t* name, const std::wstring& folder)
    {
        registry.SetText(Hive::LocalMachine, ShellFoldersKey, name, folder);
    }
    void SetOwn(const wchar_t* name, const std::wstring& folder)
    {
        registry.SetText(Hive::CurrentUser, ShellFoldersKey, name, folder);
    }

    MemoryRegistry registry;
};

TEST_F(ShellFolders, LieBelowTheFoldersOfAllUsers)
{
    SetCommon(L"Common Desktop", L"D:\\Users\\Public\\Desktop");
    SetCommon(L"Common Programs", L"C:\\ProgramData\\Programs");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"D:\\Users\\Public\\Desktop\\ORIVEL LX Plus 2023\\");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"C:\\ProgramData\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\");
}

TEST_F(ShellFolders, AreTheSameWithABackslashBehindTheBase)
{
    SetCommon(L"Common Desktop", L"D:\\Users\\Public\\Desktop\\");
    SetCommon(L"Common Programs", L"C:\\ProgramData\\Programs\\");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"D:\\Users\\Public\\Desktop\\ORIVEL LX Plus 2023\\");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"C:\\ProgramData\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\");
}

TEST_F(ShellFolders, FallBackToTheUsersDesktop)
{
    SetOwn(L"Desktop", L"C:\\Users\\keeper\\Desktop");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"C:\\Users\\keeper\\Desktop\\ORIVEL LX Plus 2023\\");
    SetCommon(L"Common Desktop", L"");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"C:\\Users\\keeper\\Desktop\\ORIVEL LX Plus 2023\\");
    SetCommon(L"Common Desktop", L"D:\\");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"D:\\ORIVEL LX Plus 2023\\");
}

TEST_F(ShellFolders, DoNotFallBackToTheUsersPrograms)
{
    SetOwn(L"Programs", L"C:\\Users\\keeper\\Programs");
    SetOwn(L"Common Programs", L"C:\\Users\\keeper\\Programs");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"");
    SetCommon(L"Common Programs", L"");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"");
}

TEST_F(ShellFolders, AreEmptyWhereTheSystemNamesNone)
{
    SetCommon(L"Desktop", L"C:\\Wrong");
    SetOwn(L"Common Desktop", L"C:\\Wrong");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"");
    EXPECT_EQ(GetDesktopShortcutPath(registry, 0), L"");
    EXPECT_EQ(GetProgramsShortcutPath(registry, 0), L"");
}

TEST_F(ShellFolders, AskForFullReadAccess)
{
    SetCommon(L"Common Desktop", L"D:\\Public");
    SetCommon(L"Common Programs", L"D:\\Programs");
    SetOwn(L"Desktop", L"D:\\Own");
    registry.RefuseReading(Hive::LocalMachine, ShellFoldersKey, KeyAccess::Read);
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"D:\\Own\\ORIVEL LX Plus 2023\\");
    EXPECT_EQ(GetProgramsShortcutFolder(registry), L"");
}

TEST_F(ShellFolders, TakeALongBaseForAMissingOne)
{
    SetCommon(L"Common Desktop", std::wstring(1024, L'x'));
    SetOwn(L"Desktop", L"D:\\Own");
    EXPECT_EQ(GetDesktopShortcutFolder(registry), L"D:\\Own\\ORIVEL LX Plus 2023\\");
}

TEST_F(ShellFolders, HoldOneFileForEachRow)
{
    SetCommon(L"Common Desktop", L"D:\\Desktop");
    SetCommon(L"Common Programs", L"D:\\Programs");
    EXPECT_EQ(GetDesktopShortcutPath(registry, 3), L"D:\\Desktop\\ORIVEL LX Plus 2023\\Norm Keeper.lnk");
    EXPECT_EQ(GetProgramsShortcutPath(registry, 0), L"D:\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\Ledger Composer.lnk");
    for (const int unknown : {-1, 5, 100}) {
        EXPECT_EQ(GetDesktopShortcutPath(registry, unknown), L"");
        EXPECT_EQ(GetProgramsShortcutPath(registry, unknown), L"");
    }
}

} // namespace
} // namespace sitekeeper
