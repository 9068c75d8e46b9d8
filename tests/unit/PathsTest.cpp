#include "text/Paths.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(WithBackslash, AddsOneWhereNoneStands)
{
    EXPECT_EQ(WithBackslash(L"C:\\Suite"), L"C:\\Suite\\");
    EXPECT_EQ(WithBackslash(L"C:\\Suite\\"), L"C:\\Suite\\");
    EXPECT_EQ(WithBackslash(L"C:\\Suite\\\\"), L"C:\\Suite\\\\");
    EXPECT_EQ(WithBackslash(L""), L"\\");
    EXPECT_EQ(WithBackslash(L"\\"), L"\\");
}

TEST(SplittingAPath, CutsBehindTheLastBackslash)
{
    const struct
    {
        const wchar_t* path;
        const wchar_t* folder;
        const wchar_t* name;
    } rows[] = {
        {L"C:\\A\\b.lnk", L"C:\\A\\", L"b.lnk"},
        {L"b.lnk", L"", L"b.lnk"},
        {L"", L"", L""},
        {L"C:\\A\\", L"C:\\A\\", L""},
        {L"\\", L"\\", L""},
        {L"C:\\\\b", L"C:\\\\", L"b"},
        {L"C:b", L"", L"C:b"},
        {L"C:/A/b.lnk", L"", L"C:/A/b.lnk"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(GetFolderOfPath(row.path), row.folder) << row.path;
        EXPECT_EQ(GetNameOfPath(row.path), row.name) << row.path;
    }
}

TEST(ExtensionStart, IsAtTheLastDotOfTheName)
{
    EXPECT_EQ(ExtensionStart(L"C:\\A.b\\Tool.v2.exe"), 14U);
    EXPECT_EQ(ExtensionStart(L"Tool.exe"), 4U);
    EXPECT_EQ(ExtensionStart(L".exe"), 0U);
    EXPECT_EQ(ExtensionStart(L"C:\\A\\.exe"), 5U);
}

TEST(ExtensionStart, IsTheEndWhereTheNameHasNone)
{
    EXPECT_EQ(ExtensionStart(L"C:\\A.b\\Tool"), 11U);
    EXPECT_EQ(ExtensionStart(L"C:\\A.b\\"), 7U);
    EXPECT_EQ(ExtensionStart(L"Tool"), 4U);
    EXPECT_EQ(ExtensionStart(L""), 0U);
}

TEST(WithoutTrailingBackslashes, StripsThemAll)
{
    EXPECT_EQ(WithoutTrailingBackslashes(L"C:\\A\\"), L"C:\\A");
    EXPECT_EQ(WithoutTrailingBackslashes(L"C:\\A\\\\\\"), L"C:\\A");
    EXPECT_EQ(WithoutTrailingBackslashes(L"C:\\\\A"), L"C:\\\\A");
    EXPECT_EQ(WithoutTrailingBackslashes(L"\\\\"), L"");
    EXPECT_EQ(WithoutTrailingBackslashes(L""), L"");
}

} // namespace
} // namespace sitekeeper
