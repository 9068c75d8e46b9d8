// A file's new content: there whole, or the old one is.
#include "access/SafeSave.h"

#include "support/FaultyPlatform.h"
#include "support/InterruptedFiles.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* SavedPath = L"C:\\Data\\list.ini";
constexpr const wchar_t* Neighbour = L"C:\\Data\\list.in~";
constexpr const char* Old = "the old content, which is the longer one";
constexpr const char* New = "the new content";

/// Where the new content goes through the neighbour, and where it cannot.
enum class Way
{
    Beside,
    InPlace,
    InPlaceOfAMissingFile,
};

void Prepare(MemoryFileSystem& files, Way way)
{
    files.AddFolder(L"C:\\Data");
    if (way != Way::InPlaceOfAMissingFile) {
        files.AddFile(SavedPath, Old);
    }
    if (way != Way::Beside) {
        files.RefuseWriting(Neighbour);
    }
}

class SafeSaveTest : public ::testing::Test
{
protected:
    [[nodiscard]] std::string Content() const { return files.ContentOf(SavedPath).value_or("(no file)"); }
    void ExpectNoNeighbour() const { EXPECT_FALSE(files.Exists(Neighbour)); }

    MemoryFileSystem files;
};

TEST_F(SafeSaveTest, NamesANeighbourOfTheSameLength)
{
    EXPECT_EQ(NeighbourOf(SavedPath), Neighbour);
    EXPECT_EQ(NeighbourOf(L"C:\\a~"), L"C:\\a-");
    EXPECT_EQ(NeighbourOf(L""), L"");
}

TEST_F(SafeSaveTest, ReplacesContentOfAnyLength)
{
    for (const Way way : {Way::Beside, Way::InPlace}) {
        MemoryFileSystem fresh;
        Prepare(fresh, way);
        for (const std::string content : {"longer than what was there before it", "short", "", "again"}) {
            EXPECT_TRUE(SaveContent(fresh, SavedPath, content));
            EXPECT_EQ(fresh.ContentOf(SavedPath), content);
            EXPECT_FALSE(fresh.Exists(Neighbour));
        }
    }
}

TEST_F(SafeSaveTest, MakesAMissingFile)
{
    for (const Way way : {Way::Beside, Way::InPlaceOfAMissingFile}) {
        MemoryFileSystem fresh;
        Prepare(fresh, way);
        fresh.Remove(SavedPath);
        EXPECT_TRUE(SaveContent(fresh, SavedPath, New));
        EXPECT_EQ(fresh.ContentOf(SavedPath), New);
        EXPECT_FALSE(fresh.Exists(Neighbour));
    }
}

TEST_F(SafeSaveTest, UsesUpTheNeighbourThatAnEarlierCrashLeft)
{
    Prepare(files, Way::Beside);
    files.AddFile(Neighbour, "half of something that was much longer than the new content will be");
    EXPECT_TRUE(SaveContent(files, SavedPath, New));
    EXPECT_EQ(Content(), New);
    ExpectNoNeighbour();
}

TEST_F(SafeSaveTest, KeepsTheSpellingOfTheFilesName)
{
    files.AddFile(L"C:\\Data\\List.INI", Old);
    EXPECT_TRUE(SaveContent(files, SavedPath, New));
    EXPECT_EQ(files.Listing(),
              (std::vector<std::wstring>{L"C:\\", L"C:\\Data\\", L"C:\\Data\\List.INI = \"the new content\""}));
}

TEST_F(SafeSaveTest, RefusesWhatMayNotBeWritten)
{
    Prepare(files, Way::Beside);
    files.RefuseWriting(SavedPath);
    const auto before = files.Listing();
    EXPECT_FALSE(SaveContent(files, SavedPath, New));
    EXPECT_EQ(files.Listing(), before);
}

TEST_F(SafeSaveTest, RefusesAFolderOfThatName)
{
    files.AddFolder(SavedPath);
    const auto before = files.Listing();
    EXPECT_FALSE(SaveContent(files, SavedPath, New));
    EXPECT_EQ(files.Listing(), before);
}

TEST_F(SafeSaveTest, RefusesWhereTheFolderIsMissing)
{
    const auto before = files.Listing();
    EXPECT_FALSE(SaveContent(files, L"C:\\Gone\\list.ini", New));
    EXPECT_FALSE(SaveContent(files, L"", New));
    EXPECT_EQ(files.Listing(), before);
}

TEST_F(SafeSaveTest, WritesInPlaceOnlyWhatItCouldPutBack)
{
    Prepare(files, Way::InPlace);
    files.RefuseReading(SavedPath);
    EXPECT_FALSE(SaveContent(files, SavedPath, New));
    EXPECT_EQ(Content(), Old);
}

TEST_F(SafeSaveTest, LeavesOldOrNewOnADiskOfAnyRoom)
{
    const std::string longer = std::string(Old) + " and still more of it";
    for (const Way way : {Way::Beside, Way::InPlace, Way::InPlaceOfAMissingFile}) {
        bool wasFull = false;
        for (std::size_t room = 0; room <= longer.size(); ++room) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + ", " + std::to_string(room) + " bytes");
            MemoryFileSystem fresh;
            Prepare(fresh, way);
            const auto before = fresh.Listing();
            fresh.SetRoom(room);
            if (SaveContent(fresh, SavedPath, longer)) {
                EXPECT_EQ(fresh.ContentOf(SavedPath), longer);
                EXPECT_FALSE(fresh.Exists(Neighbour));
            } else {
                wasFull = true;
                EXPECT_EQ(fresh.Listing(), before);
            }
        }
        EXPECT_TRUE(wasFull);
        MemoryFileSystem roomy;
        Prepare(roomy, way);
        roomy.SetRoom(longer.size());
        EXPECT_TRUE(SaveContent(roomy, SavedPath, longer));
    }
}

TEST(SafeSaveOutOfMemory, LeavesNoNeighbourAndNoMixture)
{
    int raised = 0;
    for (const Way way : {Way::Beside, Way::InPlace, Way::InPlaceOfAMissingFile}) {
        for (int number = 1; number <= 8; ++number) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + ", call " + std::to_string(number));
            MemoryPlatform memory;
            Prepare(memory.files, way);
            const auto before = memory.files.Listing();
            FaultyPlatform faulty(memory.Ports(), FaultPlan(number, FaultKind::OutOfMemory));
            try {
                EXPECT_TRUE(SaveContent(faulty.Ports().files, SavedPath, New));
                EXPECT_FALSE(faulty.HasFailed());
            } catch (const std::bad_alloc&) {
                ++raised;
                EXPECT_EQ(memory.files.Listing(), before);
            }
        }
    }
    EXPECT_EQ(raised, 6 + 8 + 6);
}

TEST(SafeSaveInterruption, LeavesOldOrNewWhereverItHappens)
{
    int number = 0;
    for (bool wasInterrupted = true; wasInterrupted;) {
        ++number;
        SCOPED_TRACE("interrupted at call " + std::to_string(number));
        MemoryFileSystem files;
        Prepare(files, Way::Beside);
        InterruptedFiles interrupted(files, number);
        try {
            EXPECT_TRUE(SaveContent(interrupted, SavedPath, New));
        } catch (const Interrupted&) {
        }
        wasInterrupted = interrupted.WasInterrupted();
        EXPECT_EQ(files.ContentOf(SavedPath), wasInterrupted ? Old : New);
        // What was left is no hindrance and is gone afterwards.
        EXPECT_TRUE(SaveContent(files, SavedPath, "newer"));
        EXPECT_EQ(files.ContentOf(SavedPath), "newer");
        EXPECT_FALSE(files.Exists(Neighbour));
    }
    EXPECT_EQ(number, 7); // six calls and then none
}

TEST(SafeSaveInterruption, LeavesNothingWorseThanAHalfWrittenFileInPlaceThatTheNextSaveMends)
{
    int number = 0;
    int mixtures = 0;
    for (bool wasInterrupted = true; wasInterrupted;) {
        ++number;
        MemoryFileSystem files;
        Prepare(files, Way::InPlace);
        InterruptedFiles interrupted(files, number);
        try {
            EXPECT_TRUE(SaveContent(interrupted, SavedPath, New));
        } catch (const Interrupted&) {
        }
        wasInterrupted = interrupted.WasInterrupted();
        const std::string left = files.ContentOf(SavedPath).value_or("");
        mixtures += left != Old && left != New ? 1 : 0;
        EXPECT_TRUE(SaveContent(files, SavedPath, "newer"));
        EXPECT_EQ(files.ContentOf(SavedPath), "newer");
    }
    EXPECT_EQ(number, 9);
    EXPECT_EQ(mixtures, 2); // in the middle of the write, and before the end was cut off
}

} // namespace
} // namespace sitekeeper
