// Reading and writing what is in files.
#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class FileContentContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    FileSystem& files = world->Files();
    const std::wstring scratch = world->ScratchFolder();
    const std::wstring file = scratch + L"File.txt";
    const std::wstring other = scratch + L"Other.txt";
};

std::string EachByte()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST_F(FileContentContract, ReadsAllBytesOfAFile)
{
    std::string big;
    while (big.size() < 3'000'000) {
        big += EachByte() + std::to_string(big.size());
    }
    for (const std::string& content : {std::string(), std::string("x"), EachByte(), std::string("a\r\nb\nc\x1A\0d", 9),
                                       std::string(4095, 'y'), std::string(4096, 'y'), std::string(4097, 'y'), big}) {
        world->MakeFile(file, content);
        EXPECT_TRUE(files.ReadContent(file) == content) << content.size();
    }
}

TEST_F(FileContentContract, ReadsNothingThatIsNoFile)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder"));
    EXPECT_EQ(files.ReadContent(scratch + L"Folder"), std::nullopt);
    EXPECT_EQ(files.ReadContent(scratch + L"Folder\\"), std::nullopt);
    EXPECT_EQ(files.ReadContent(file), std::nullopt);
    EXPECT_EQ(files.ReadContent(scratch + L"No folder\\File.txt"), std::nullopt);
    EXPECT_EQ(files.ReadContent(L""), std::nullopt);
}

TEST_F(FileContentContract, ReadsBesideOtherReaders)
{
    world->MakeFile(file, "content");
    world->SetAttributes(file, FileAttributes::ReadOnly);
    for (const FileHolder holder : {FileHolder::TolerantReader, FileHolder::OrdinaryReader, FileHolder::StrictReader}) {
        const std::shared_ptr<void> held = world->Hold(file, holder);
        ASSERT_TRUE(held);
        EXPECT_EQ(files.ReadContent(file), "content");
    }
}

TEST_F(FileContentContract, ReadsNothingWhileSomeoneWrites)
{
    world->MakeFile(file, "content");
    {
        const std::shared_ptr<void> held = world->Hold(file, FileHolder::TolerantWriter);
        ASSERT_TRUE(held);
        EXPECT_EQ(files.ReadContent(file), std::nullopt);
    }
    EXPECT_EQ(files.ReadContent(file), "content");
}

TEST_F(FileContentContract, LeavesAnOpenedFileAsItIs)
{
    world->MakeFile(file, "content");
    EXPECT_TRUE(files.OpenForWriting(file));
    EXPECT_EQ(world->ContentOf(file), "content");
    const std::unique_ptr<OutputFile> output = files.OpenForWriting(file);
    ASSERT_TRUE(output);
    EXPECT_TRUE(output->Write(""));
    EXPECT_TRUE(output->Flush());
}

TEST_F(FileContentContract, WritesOverFromTheFirstByteOn)
{
    world->MakeFile(file, "content");
    {
        const std::unique_ptr<OutputFile> output = files.OpenForWriting(file);
        ASSERT_TRUE(output);
        EXPECT_TRUE(output->Write("CO"));
        EXPECT_TRUE(output->Write("N"));
    }
    EXPECT_EQ(world->ContentOf(file), "CONtent");
    files.OpenForWriting(file)->Write(EachByte());
    EXPECT_EQ(world->ContentOf(file), EachByte());
}

TEST_F(FileContentContract, EndsAFileBehindWhatWasWritten)
{
    world->MakeFile(file, "content");
    {
        const std::unique_ptr<OutputFile> output = files.OpenForWriting(file);
        ASSERT_TRUE(output);
        EXPECT_TRUE(output->Write("new"));
        EXPECT_TRUE(output->EndHere());
        EXPECT_TRUE(output->Flush());
    }
    EXPECT_EQ(world->ContentOf(file), "new");
    EXPECT_TRUE(files.OpenForWriting(file)->EndHere());
    EXPECT_EQ(world->ContentOf(file), "");
}

TEST_F(FileContentContract, OpensNothingThatMayNotBeWritten)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder"));
    EXPECT_FALSE(files.OpenForWriting(scratch + L"Folder"));
    EXPECT_FALSE(files.OpenForWriting(L""));
    EXPECT_FALSE(files.OpenForWriting(file));
    EXPECT_FALSE(files.Exists(file));
    world->MakeFile(file, "content");
    world->SetAttributes(file, FileAttributes::ReadOnly);
    EXPECT_FALSE(files.OpenForWriting(file));
    world->SetAttributes(file, FileAttributes::Hidden | FileAttributes::System);
    EXPECT_TRUE(files.OpenForWriting(file));
    EXPECT_EQ(world->ContentOf(file), "content");
}

TEST_F(FileContentContract, OpensWhatOthersLetBeWritten)
{
    world->MakeFile(file, "content");
    for (const FileHolder holder : {FileHolder::TolerantReader, FileHolder::OrdinaryReader}) {
        const std::shared_ptr<void> held = world->Hold(file, holder);
        ASSERT_TRUE(held);
        EXPECT_TRUE(files.OpenForWriting(file));
    }
    for (const FileHolder holder : {FileHolder::StrictReader, FileHolder::TolerantWriter}) {
        const std::shared_ptr<void> held = world->Hold(file, holder);
        ASSERT_TRUE(held);
        EXPECT_FALSE(files.OpenForWriting(file));
    }
}

TEST_F(FileContentContract, LetsOthersReadButNotWriteWhatIsOpenForWriting)
{
    world->MakeFile(file, "content");
    const std::unique_ptr<OutputFile> output = files.OpenForWriting(file);
    ASSERT_TRUE(output);
    EXPECT_TRUE(world->Hold(file, FileHolder::TolerantReader));
    EXPECT_TRUE(world->Hold(file, FileHolder::OrdinaryReader));
    EXPECT_FALSE(world->Hold(file, FileHolder::StrictReader));
    EXPECT_FALSE(world->Hold(file, FileHolder::TolerantWriter));
    EXPECT_FALSE(files.OpenForWriting(file));
}

TEST_F(FileContentContract, MakesAFile)
{
    {
        const std::unique_ptr<OutputFile> output = files.MakeFileLike(file, other);
        ASSERT_TRUE(output);
        EXPECT_TRUE(output->Write("first "));
        EXPECT_TRUE(output->Write(EachByte()));
        EXPECT_TRUE(output->EndHere());
        EXPECT_TRUE(output->Flush());
    }
    EXPECT_EQ(world->ContentOf(file), "first " + EachByte());
    EXPECT_FALSE(files.Exists(other));
    EXPECT_TRUE(files.MakeFileLike(other, other)); // which is no model yet
    EXPECT_EQ(world->ContentOf(other), "");
}

TEST_F(FileContentContract, MakesNoFileWhereNoneCanBe)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder"));
    EXPECT_FALSE(files.MakeFileLike(scratch + L"Folder", file));
    EXPECT_TRUE(files.Exists(scratch + L"Folder\\"));
    EXPECT_FALSE(files.MakeFileLike(scratch + L"No folder\\File.txt", file));
    EXPECT_FALSE(files.Exists(scratch + L"No folder"));
    EXPECT_FALSE(files.MakeFileLike(L"", file));
}

TEST_F(FileContentContract, EmptiesALeftOverWhateverItsAttributes)
{
    world->MakeFile(other, "model");
    for (const FileAttributes attributes :
         {FileAttributes::None, FileAttributes::Archive, FileAttributes::Hidden, FileAttributes::System,
          FileAttributes::ReadOnly, FileAttributes::ReadOnly | FileAttributes::Hidden | FileAttributes::System}) {
        world->MakeFile(file, "left over");
        world->SetAttributes(file, attributes);
        const std::unique_ptr<OutputFile> output = files.MakeFileLike(file, other);
        ASSERT_TRUE(output) << static_cast<int>(attributes);
        EXPECT_TRUE(output->Write("new"));
        EXPECT_EQ(world->AttributesOf(file) | FileAttributes::Archive, FileAttributes::Archive)
            << static_cast<int>(attributes);
    }
    EXPECT_EQ(world->ContentOf(file), "new");
    EXPECT_EQ(world->ContentOf(other), "model");
}

TEST_F(FileContentContract, LetsNobodyOpenAFileThatIsBeingMade)
{
    const std::unique_ptr<OutputFile> output = files.MakeFileLike(file, other);
    ASSERT_TRUE(output);
    EXPECT_TRUE(output->Write("half"));
    EXPECT_FALSE(world->Hold(file, FileHolder::TolerantReader));
    EXPECT_FALSE(world->Hold(file, FileHolder::TolerantWriter));
    EXPECT_EQ(files.ReadContent(file), std::nullopt);
    EXPECT_FALSE(files.OpenForWriting(file));
    EXPECT_FALSE(files.MakeFileLike(file, other));
    EXPECT_FALSE(files.MoveOver(file, other));
    EXPECT_FALSE(files.RemoveFile(file));
    EXPECT_TRUE(output->Write("half"));
}

TEST_F(FileContentContract, MakesNoFileOverOneThatOthersHold)
{
    world->MakeFile(file, "left over");
    for (const FileHolder holder : {FileHolder::TolerantReader, FileHolder::StrictReader, FileHolder::TolerantWriter}) {
        const std::shared_ptr<void> held = world->Hold(file, holder);
        ASSERT_TRUE(held);
        EXPECT_FALSE(files.MakeFileLike(file, other));
        EXPECT_EQ(files.MakeFileLike(other, file) != nullptr, true); // a held model is one all the same
    }
    EXPECT_EQ(world->ContentOf(file), "left over");
}

TEST_F(FileContentContract, MakesAFileWithTheAttributesOfItsModel)
{
    world->MakeFile(other, "model");
    for (const FileAttributes attributes :
         {FileAttributes::Archive, FileAttributes::Archive | FileAttributes::Hidden,
          FileAttributes::Archive | FileAttributes::System,
          FileAttributes::Archive | FileAttributes::Hidden | FileAttributes::System}) {
        world->SetAttributes(other, attributes);
        EXPECT_TRUE(files.MakeFileLike(file, other));
        EXPECT_EQ(world->AttributesOf(file), attributes) << static_cast<int>(attributes);
    }
    // Except for one that would stand in its own way.
    world->SetAttributes(other, FileAttributes::Archive | FileAttributes::ReadOnly);
    const std::unique_ptr<OutputFile> output = files.MakeFileLike(file, other);
    ASSERT_TRUE(output);
    EXPECT_TRUE(output->Write("new"));
}

TEST_F(FileContentContract, MakesAFileWithTheAccessRightsOfItsModel)
{
    world->MakeFile(other, "model");
    EXPECT_TRUE(files.MakeFileLike(file, other));
    EXPECT_EQ(world->RightsOf(file), world->RightsOf(other));
    const std::string usual = world->RightsOf(other);
    world->RestrictRights(other);
    ASSERT_NE(world->RightsOf(other), usual);
    EXPECT_TRUE(files.MakeFileLike(file, other));
    EXPECT_EQ(world->RightsOf(file), world->RightsOf(other));
}

// --- empty files -----------------------------------------------------------------------------------------------------

TEST_F(FileContentContract, MakesAnEmptyFile)
{
    EXPECT_TRUE(files.MakeEmptyFile(file));
    EXPECT_EQ(world->ContentOf(file), "");
    EXPECT_EQ(world->SpellingOf(file), L"File.txt");
    EXPECT_TRUE(files.RemoveFile(file)) << "nobody holds it";
}

TEST_F(FileContentContract, EmptiesAFileAndKeepsItsSpelling)
{
    world->MakeFile(file, "old");
    EXPECT_TRUE(files.MakeEmptyFile(scratch + L"fILE.TXT"));
    EXPECT_EQ(world->ContentOf(file), "");
    EXPECT_EQ(world->SpellingOf(file), L"File.txt");
}

TEST_F(FileContentContract, MakesNoEmptyFileWhereNoneCanBe)
{
    EXPECT_FALSE(files.MakeEmptyFile(L""));
    EXPECT_FALSE(files.MakeEmptyFile(scratch));
    EXPECT_FALSE(files.MakeEmptyFile(scratch + L"No folder\\File.txt"));
    EXPECT_FALSE(files.Exists(scratch + L"No folder"));
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder"));
    EXPECT_FALSE(files.MakeEmptyFile(scratch + L"Folder"));
}

TEST_F(FileContentContract, EmptiesNoFileThatIsHeld)
{
    world->MakeFile(file, "old");
    {
        const auto held = world->Hold(file, FileHolder::StrictReader);
        ASSERT_TRUE(held);
        EXPECT_FALSE(files.MakeEmptyFile(file));
    }
    EXPECT_EQ(world->ContentOf(file), "old");
    EXPECT_TRUE(files.MakeEmptyFile(file));
}

} // namespace
} // namespace sitekeeper
