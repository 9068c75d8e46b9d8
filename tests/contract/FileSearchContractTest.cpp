#include "contract/World.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class FileSearchContract : public testing::Test
{
protected:
    [[nodiscard]] std::vector<std::wstring> Names(const std::wstring& pattern) const
    {
        std::vector<std::wstring> names;
        files.Search(pattern, [&names](const FoundFile& file) { names.emplace_back(file.name); });
        return names;
    }
    /// When the only file that the pattern finds was changed.
    [[nodiscard]] std::optional<Seconds> Modified(const std::wstring& pattern) const
    {
        std::vector<std::optional<Seconds>> found;
        files.Search(pattern, [&found](const FoundFile& file) { found.push_back(file.modified); });
        EXPECT_EQ(found.size(), 1U);
        return found.size() == 1 ? found.front() : std::nullopt;
    }

    std::unique_ptr<World> world = MakeWorld();
    FileSystem& files = world->Files();
    const std::wstring scratch = world->ScratchFolder();
};

TEST_F(FileSearchContract, FindsFilesAndFoldersByTheirNames)
{
    world->MakeFile(scratch + L"One.exe", "1");
    world->MakeFile(scratch + L"two.EXE", "");
    world->MakeFile(scratch + L"three.exe.txt", "");
    world->MakeFile(scratch + L"exe", "");
    ASSERT_TRUE(files.MakeFolder(scratch + L"Folder.exe"));
    world->MakeFile(scratch + L"Folder.exe\\inside.exe", "");
    EXPECT_THAT(Names(scratch + L"*.exe"), UnorderedElementsAre(L"One.exe", L"two.EXE", L"Folder.exe"));
    EXPECT_THAT(Names(scratch + L"*.ExE"), UnorderedElementsAre(L"One.exe", L"two.EXE", L"Folder.exe"));
    EXPECT_THAT(Names(scratch + L"t?o.exe"), UnorderedElementsAre(L"two.EXE"));
    EXPECT_THAT(Names(scratch + L"one.exe"), UnorderedElementsAre(L"One.exe"));
    EXPECT_THAT(Names(scratch + L"*"),
                UnorderedElementsAre(L"One.exe", L"two.EXE", L"three.exe.txt", L"exe", L"Folder.exe"));
}

TEST_F(FileSearchContract, FindsNothingWhereNothingMatches)
{
    world->MakeFile(scratch + L"File.txt", "");
    EXPECT_THAT(Names(scratch + L"*.exe"), IsEmpty());
    EXPECT_THAT(Names(scratch + L"No folder\\*.exe"), IsEmpty());
    EXPECT_THAT(Names(scratch + L"File.txt\\*.exe"), IsEmpty());
    EXPECT_THAT(Names(scratch), IsEmpty());
    EXPECT_THAT(Names(L""), IsEmpty());
}

TEST_F(FileSearchContract, SearchesTheCurrentFolderWithoutAnother)
{
    world->MakeFile(scratch + L"here.fas", "");
    world->SetCurrentFolder(scratch);
    EXPECT_THAT(Names(L"*.fas"), UnorderedElementsAre(L"here.fas"));
}

TEST_F(FileSearchContract, ToleratesDoubledBackslashes)
{
    ASSERT_TRUE(files.MakeFolder(scratch + L"A"));
    world->MakeFile(scratch + L"A\\file.fas", "");
    EXPECT_THAT(Names(scratch + L"A\\\\*.fas"), UnorderedElementsAre(L"file.fas"));
}

TEST_F(FileSearchContract, FindsHiddenFilesToo)
{
    world->MakeFile(scratch + L"hidden.exe", "");
    world->SetAttributes(scratch + L"hidden.exe", FileAttributes::Hidden | FileAttributes::System);
    EXPECT_THAT(Names(scratch + L"*.exe"), UnorderedElementsAre(L"hidden.exe"));
}

TEST_F(FileSearchContract, FindsThousandsOfFilesOnceEach)
{
    constexpr int Count = 3000; // more than the system hands on at a time
    for (int number = 0; number < Count; ++number) {
        world->MakeFile(scratch + std::to_wstring(number) + L".fas", "");
    }
    std::vector<std::wstring> names = Names(scratch + L"*.fas");
    EXPECT_EQ(names.size(), Count);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
}

TEST_F(FileSearchContract, TellsWhenAFileWasChanged)
{
    world->MakeFile(scratch + L"file.exe", "content");
    ASSERT_TRUE(files.MakeFolder(scratch + L"folder.fas"));
    for (const Seconds moment : {Seconds{0}, Seconds{1}, Seconds{951782400}, Seconds{2147483647}, Seconds{2147483648},
                                 Seconds{4102444800}, Seconds{10413792000}}) {
        world->SetModified(scratch + L"file.exe", moment);
        EXPECT_EQ(Modified(scratch + L"*.exe"), moment);
        world->SetModified(scratch + L"folder.fas", moment);
        EXPECT_EQ(Modified(scratch + L"*.fas"), moment);
    }
}

TEST_F(FileSearchContract, TellsTimesBefore1970)
{
    world->MakeFile(scratch + L"file.exe", "");
    world->SetModified(scratch + L"file.exe", -86400);
    EXPECT_EQ(Modified(scratch + L"*.exe"), -86400);
}

} // namespace
} // namespace sitekeeper
