// Putting files in each other's places, removing them, and the safe saving that stands on it.
#include "access/SafeSave.h"
#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class FileMoveContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    FileSystem& files = world->Files();
    const std::wstring scratch = world->ScratchFolder();
    const std::wstring from = scratch + L"New.tx~";
    const std::wstring to = scratch + L"File.txt";
};

TEST_F(FileMoveContract, ReplacesAFile)
{
    world->MakeFile(from, "new");
    world->MakeFile(to, "old, and longer");
    EXPECT_TRUE(files.MoveOver(from, to));
    EXPECT_EQ(world->ContentOf(to), "new");
    EXPECT_FALSE(files.Exists(from));
}

TEST_F(FileMoveContract, MovesToWhereNothingIs)
{
    world->MakeFile(from, "new");
    EXPECT_TRUE(files.MoveOver(from, to));
    EXPECT_EQ(world->ContentOf(to), "new");
    EXPECT_EQ(world->SpellingOf(to), L"File.txt");
    EXPECT_FALSE(files.Exists(from));
}

TEST_F(FileMoveContract, KeepsTheSpellingOfTheReplacedFile)
{
    world->MakeFile(from, "new");
    world->MakeFile(to, "old");
    EXPECT_TRUE(files.MoveOver(from, scratch + L"fILE.TXT"));
    EXPECT_EQ(world->SpellingOf(to), L"File.txt");
    EXPECT_EQ(world->ContentOf(to), "new");
}

TEST_F(FileMoveContract, MovesAttributesAndRightsAlong)
{
    world->MakeFile(to, "old");
    world->SetAttributes(to, FileAttributes::Archive | FileAttributes::Hidden);
    world->RestrictRights(to);
    const std::string rights = world->RightsOf(to);
    ASSERT_TRUE(files.MakeFileLike(from, to));
    EXPECT_TRUE(files.MoveOver(from, to));
    EXPECT_EQ(world->AttributesOf(to), FileAttributes::Archive | FileAttributes::Hidden);
    EXPECT_EQ(world->RightsOf(to), rights);
}

TEST_F(FileMoveContract, MovesNothingThatIsNoFile)
{
    EXPECT_FALSE(files.MoveOver(from, to));
    world->MakeFile(to, "old");
    EXPECT_FALSE(files.MoveOver(from, to));
    EXPECT_FALSE(files.MoveOver(L"", to));
    EXPECT_EQ(world->ContentOf(to), "old");
}

TEST_F(FileMoveContract, MovesOverNoFolder)
{
    world->MakeFile(from, "new");
    ASSERT_TRUE(files.MakeFolder(to));
    EXPECT_FALSE(files.MoveOver(from, to));
    EXPECT_TRUE(files.Exists(to + L"\\"));
    EXPECT_FALSE(files.MoveOver(from, scratch + L"No folder\\File.txt"));
    EXPECT_FALSE(files.MoveOver(from, L""));
    EXPECT_EQ(world->ContentOf(from), "new");
}

TEST_F(FileMoveContract, LeavesBothFilesWhereTheTargetIsHeld)
{
    world->MakeFile(from, "new");
    world->MakeFile(to, "old");
    for (const FileHolder holder : {FileHolder::OrdinaryReader, FileHolder::StrictReader}) {
        const std::shared_ptr<void> held = world->Hold(to, holder);
        ASSERT_TRUE(held);
        EXPECT_FALSE(files.MoveOver(from, to));
        EXPECT_EQ(world->ContentOf(from), "new");
        EXPECT_EQ(world->ContentOf(to), "old");
    }
    EXPECT_TRUE(files.MoveOver(from, to));
}

TEST_F(FileMoveContract, LeavesBothFilesWhereTheOneToMoveIsHeld)
{
    world->MakeFile(from, "new");
    world->MakeFile(to, "old");
    const std::shared_ptr<void> held = world->Hold(from, FileHolder::OrdinaryReader);
    ASSERT_TRUE(held);
    EXPECT_FALSE(files.MoveOver(from, to));
    EXPECT_EQ(world->ContentOf(from), "new");
    EXPECT_EQ(world->ContentOf(to), "old");
}

// Some systems let a file be replaced whose readers let it be removed, some do not.
TEST_F(FileMoveContract, ReplacesATolerantlyReadFileWhollyOrNotAtAll)
{
    world->MakeFile(from, "new");
    world->MakeFile(to, "old");
    const std::shared_ptr<void> held = world->Hold(to, FileHolder::TolerantReader);
    ASSERT_TRUE(held);
    const bool isMoved = files.MoveOver(from, to);
    EXPECT_EQ(world->ContentOf(to), isMoved ? "new" : "old");
    EXPECT_EQ(world->ContentOf(from), isMoved ? "(no file)" : "new");
}

TEST_F(FileMoveContract, RemovesAFile)
{
    world->MakeFile(to, "old");
    EXPECT_TRUE(files.RemoveFile(to));
    EXPECT_FALSE(files.Exists(to));
    EXPECT_FALSE(files.RemoveFile(to));
    EXPECT_FALSE(files.RemoveFile(L""));
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder"));
    EXPECT_FALSE(files.RemoveFile(scratch + L"Folder"));
    EXPECT_TRUE(files.Exists(scratch + L"Folder"));
}

TEST_F(FileMoveContract, RemovesNoFileThatIsKept)
{
    world->MakeFile(to, "old");
    {
        const std::shared_ptr<void> held = world->Hold(to, FileHolder::OrdinaryReader);
        ASSERT_TRUE(held);
        EXPECT_FALSE(files.RemoveFile(to));
    }
    world->SetAttributes(to, FileAttributes::ReadOnly);
    EXPECT_FALSE(files.RemoveFile(to));
    EXPECT_EQ(world->ContentOf(to), "old");
    world->SetAttributes(to, FileAttributes::None);
    EXPECT_TRUE(files.RemoveFile(to));
}

TEST_F(FileMoveContract, HandlesNamesOfAllScripts)
{
    const std::wstring file = scratch + L"M\u00FCller \u0416\u4E2D.ini";
    const std::wstring neighbour = NeighbourOf(file);
    {
        const std::unique_ptr<OutputFile> output = files.MakeFileLike(neighbour, file);
        ASSERT_TRUE(output);
        EXPECT_TRUE(output->Write("first"));
    }
    EXPECT_TRUE(files.MoveOver(neighbour, file));
    EXPECT_EQ(files.ReadContent(file), "first");
    EXPECT_EQ(world->SpellingOf(file), L"M\u00FCller \u0416\u4E2D.ini");
    EXPECT_TRUE(files.OpenForWriting(file)->Write("FIRST"));
    EXPECT_EQ(world->ContentOf(file), "FIRST");
    EXPECT_TRUE(files.RemoveFile(file));
    EXPECT_FALSE(files.Exists(file));
}

class SaveContract : public FileMoveContract
{
protected:
    const std::wstring neighbour = NeighbourOf(to);
};

TEST_F(SaveContract, MakesAMissingFile)
{
    EXPECT_TRUE(SaveContent(files, to, "new"));
    EXPECT_EQ(world->ContentOf(to), "new");
    EXPECT_FALSE(files.Exists(neighbour));
    EXPECT_FALSE(SaveContent(files, scratch + L"No folder\\File.txt", "new"));
    EXPECT_FALSE(SaveContent(files, scratch, "new"));
}

TEST_F(SaveContract, KeepsSpellingAttributesAndRights)
{
    world->MakeFile(to, "old");
    world->SetAttributes(to, FileAttributes::Archive | FileAttributes::Hidden | FileAttributes::System);
    world->RestrictRights(to);
    const std::string rights = world->RightsOf(to);
    EXPECT_TRUE(SaveContent(files, scratch + L"FILE.txt", "new"));
    EXPECT_EQ(world->ContentOf(to), "new");
    EXPECT_EQ(world->SpellingOf(to), L"File.txt");
    EXPECT_EQ(world->AttributesOf(to), FileAttributes::Archive | FileAttributes::Hidden | FileAttributes::System);
    EXPECT_EQ(world->RightsOf(to), rights);
    EXPECT_FALSE(files.Exists(neighbour));
}

TEST_F(SaveContract, UsesALeftOverNeighbourUp)
{
    world->MakeFile(to, "old");
    world->MakeFile(neighbour, "half of what a crash left, longer than the file");
    world->SetAttributes(neighbour, FileAttributes::ReadOnly | FileAttributes::Hidden);
    EXPECT_TRUE(SaveContent(files, to, "new"));
    EXPECT_EQ(world->ContentOf(to), "new");
    EXPECT_EQ(world->AttributesOf(to) | FileAttributes::Archive, FileAttributes::Archive);
    EXPECT_FALSE(files.Exists(neighbour));
}

TEST_F(SaveContract, WritesOverWhatCannotBeReplaced)
{
    world->MakeFile(to, "old, and longer");
    {
        const std::shared_ptr<void> held = world->Hold(to, FileHolder::OrdinaryReader);
        ASSERT_TRUE(held);
        EXPECT_TRUE(SaveContent(files, to, "new"));
        EXPECT_EQ(world->ContentOf(to), "new");
    }
    {
        const std::shared_ptr<void> held = world->Hold(to, FileHolder::TolerantReader);
        ASSERT_TRUE(held);
        EXPECT_TRUE(SaveContent(files, to, "newer"));
        EXPECT_EQ(world->ContentOf(to), "newer");
    }
    EXPECT_FALSE(files.Exists(neighbour));
    ASSERT_TRUE(files.MakeFolder(neighbour));
    EXPECT_TRUE(SaveContent(files, to, "newest"));
    EXPECT_EQ(world->ContentOf(to), "newest");
}

TEST_F(SaveContract, LeavesWhatMayNotBeWritten)
{
    world->MakeFile(to, "old");
    for (const FileHolder holder : {FileHolder::StrictReader, FileHolder::TolerantWriter}) {
        const std::shared_ptr<void> held = world->Hold(to, holder);
        ASSERT_TRUE(held);
        EXPECT_FALSE(SaveContent(files, to, "new"));
    }
    world->SetAttributes(to, FileAttributes::ReadOnly);
    EXPECT_FALSE(SaveContent(files, to, "new"));
    EXPECT_EQ(world->ContentOf(to), "old");
    EXPECT_FALSE(files.Exists(neighbour));
}

} // namespace
} // namespace sitekeeper
