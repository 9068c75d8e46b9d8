#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class FileSystemContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    FileSystem& files = world->Files();
    const std::wstring scratch = world->ScratchFolder();
};

TEST_F(FileSystemContract, KnowsFilesAndFolders)
{
    world->MakeFile(scratch + L"File.txt", "");
    EXPECT_TRUE(files.Exists(scratch + L"File.txt"));
    EXPECT_TRUE(files.Exists(scratch));
    EXPECT_TRUE(files.Exists(scratch.substr(0, scratch.size() - 1)));
    EXPECT_TRUE(files.Exists(scratch.substr(0, 3))); // the drive
    EXPECT_FALSE(files.Exists(scratch + L"Other.txt"));
    EXPECT_FALSE(files.Exists(scratch + L"No folder\\File.txt"));
    EXPECT_FALSE(files.Exists(scratch + L"File.txt\\File.txt"));
    EXPECT_FALSE(files.Exists(L""));
}

TEST_F(FileSystemContract, ComparesPathsWithoutRegardToCase)
{
    world->MakeFile(scratch + L"File.txt", "");
    EXPECT_TRUE(files.Exists(scratch + L"fILE.TXT"));
}

TEST_F(FileSystemContract, ToleratesDoubledBackslashes)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"A"));
    world->MakeFile(scratch + L"A\\File.txt", "");
    EXPECT_TRUE(files.Exists(scratch + L"A\\\\File.txt"));
    EXPECT_TRUE(files.Exists(scratch + L"\\A\\File.txt"));
}

TEST_F(FileSystemContract, TakesRelativePathsFromTheCurrentFolder)
{
    world->MakeFile(scratch + L"File.txt", "");
    world->SetCurrentFolder(scratch);
    EXPECT_TRUE(files.Exists(L"File.txt"));
    EXPECT_TRUE(files.Exists(L".\\File.txt"));
    EXPECT_EQ(files.FullPath(L"File.txt"), scratch + L"File.txt");
    EXPECT_EQ(files.FullPath(L"A\\..\\File.txt"), scratch + L"File.txt");
    EXPECT_EQ(files.FullPath(L"\\File.txt"), scratch.substr(0, 3) + L"File.txt");
    EXPECT_TRUE(files.MakeFolder(L"Folder"));
    EXPECT_TRUE(files.Exists(scratch + L"Folder"));
}

TEST_F(FileSystemContract, MakesPathsFull)
{
    const struct
    {
        const wchar_t* path;
        const wchar_t* full;
    } rows[] = {
        {L"C:\\A\\b.exe", L"C:\\A\\b.exe"},
        {L"C:\\A\\\\b.exe", L"C:\\A\\b.exe"},
        {L"C:\\\\\\A\\b.exe", L"C:\\A\\b.exe"},
        {L"C:\\A\\.\\b.exe", L"C:\\A\\b.exe"},
        {L"C:\\A\\B\\..\\b.exe", L"C:\\A\\b.exe"},
        {L"C:\\A\\B\\..\\..\\b.exe", L"C:\\b.exe"},
        {L"C:\\..\\..\\b.exe", L"C:\\b.exe"},
        {L"C:/A/b.exe", L"C:\\A\\b.exe"},
        {L"C:\\A\\", L"C:\\A\\"},
        {L"C:\\", L"C:\\"},
        {L"\\\\server\\share\\A\\b.exe", L"\\\\server\\share\\A\\b.exe"},
        {L"\\\\server\\share\\A\\..\\b.exe", L"\\\\server\\share\\b.exe"},
        {L"\\\\server\\share\\..\\b.exe", L"\\\\server\\share\\b.exe"},
        {L"\\\\server\\share\\A\\\\b.exe", L"\\\\server\\share\\A\\b.exe"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(files.FullPath(row.path), row.full) << row.path;
    }
    EXPECT_EQ(files.FullPath(L""), std::nullopt);
}

TEST_F(FileSystemContract, MakesNoPathOf260CharactersFull)
{
    const std::wstring longest = L"C:\\" + std::wstring(256, L'x');
    EXPECT_EQ(files.FullPath(longest), longest);
    EXPECT_EQ(files.FullPath(longest + L"x"), std::nullopt);
    EXPECT_EQ(files.FullPath(longest + L"xx"), std::nullopt);
    EXPECT_EQ(files.FullPath(L"C:\\" + std::wstring(5000, L'x')), std::nullopt);
    // It is the result that counts, not what it was made from.
    EXPECT_EQ(files.FullPath(L"C:\\" + std::wstring(200, L'y') + L"\\..\\" + std::wstring(256, L'x')), longest);
}

TEST_F(FileSystemContract, MakesOneFolder)
{
    EXPECT_TRUE(files.MakeFolder(scratch + L"A"));
    EXPECT_TRUE(files.Exists(scratch + L"A"));
    EXPECT_TRUE(files.MakeFolder(scratch + L"A\\B"));
    EXPECT_TRUE(files.Exists(scratch + L"A\\B"));
    EXPECT_TRUE(files.MakeFolder(scratch + L"C\\"));
    EXPECT_TRUE(files.Exists(scratch + L"C"));
}

TEST_F(FileSystemContract, MakesNoFolderWhereOneIsMissingAbove)
{
    EXPECT_FALSE(files.MakeFolder(scratch + L"A\\B"));
    EXPECT_FALSE(files.Exists(scratch + L"A"));
    world->MakeFile(scratch + L"File.txt", "");
    EXPECT_FALSE(files.MakeFolder(scratch + L"File.txt\\B"));
}

TEST_F(FileSystemContract, MakesNoFolderWhereSomethingStands)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"A"));
    world->MakeFile(scratch + L"A\\File.txt", "content");
    EXPECT_FALSE(files.MakeFolder(scratch + L"A"));
    EXPECT_FALSE(files.MakeFolder(scratch + L"a\\"));
    EXPECT_FALSE(files.MakeFolder(scratch + L"A\\file.TXT"));
    EXPECT_EQ(world->ContentOf(scratch + L"A\\File.txt"), "content");
    EXPECT_FALSE(files.MakeFolder(L""));
    EXPECT_FALSE(files.MakeFolder(scratch.substr(0, 3)));
}

} // namespace
} // namespace sitekeeper
