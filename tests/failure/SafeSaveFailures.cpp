// Replacing a file's content, with each of its calls of the platform failing in turn.
#include "access/SafeSave.h"
#include "PlatformFailures.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* Path = L"C:\\Data\\list.ini";
constexpr const wchar_t* Neighbour = L"C:\\Data\\list.in~";
const std::wstring OldLine = std::wstring(L"file ") + Path + L" = \"the old content, which is the longer one\"";
const std::wstring NewLine = std::wstring(L"file ") + Path + L" = \"the new content\"";

enum class File
{
    Old,
    Missing,
};
enum class Beside
{
    Possible,
    Refused,
};

/// A save that ended with an error: no neighbour is left either.
void ExpectOldOrNew(const FaultedRun& run)
{
    const State added = Added(run.before, run.after);
    EXPECT_TRUE(added.empty() || added == State{NewLine}) << testing::PrintToString(added);
}

/// Saves with each call failing in turn. The file is the new one where the save says so, the old one where not; no
/// neighbour is left. `isGotAround` says whether it is saved all the same.
int SweepSave(File file, Beside beside, const std::function<bool(const FaultedRun&)>& isGotAround)
{
    bool isSaved = false;
    const Sweep sweep{
        [=](MemoryPlatform& memory) {
            memory.files.AddFolder(L"C:\\Data");
            if (file == File::Old) {
                memory.files.AddFile(Path, "the old content, which is the longer one");
            }
            if (beside == Beside::Refused) {
                memory.files.RefuseWriting(Neighbour);
            }
        },
        [&isSaved](const Platform& ports) { isSaved = SaveContent(ports.files, Path, "the new content"); },
        [&](const FaultedRun& run) {
            EXPECT_FALSE(run.raised);
            EXPECT_EQ(isSaved, isGotAround(run));
            EXPECT_EQ(Added(run.before, run.after), isSaved ? State{NewLine} : State{});
            EXPECT_EQ(Removed(run.before, run.after), isSaved && file == File::Old ? State{OldLine} : State{});
        },
        ExpectOldOrNew};
    const int points = SweepFailures(sweep);
    EXPECT_TRUE(isSaved);
    return points;
}

int SaveThroughTheNeighbour()
{
    // Without the first the file counts as missing; without the neighbour it is written in place.
    return SweepSave(File::Old, Beside::Possible, [](const FaultedRun& run) {
        return Is(run, L"exists ") || Is(run, L"make file ") || Is(run, L"move over ");
    });
}

int SaveInPlace()
{
    bool isSaved = false;
    const Sweep sweep{
        [](MemoryPlatform& memory) {
            memory.files.AddFolder(L"C:\\Data");
            memory.files.AddFile(Path, "the old content, which is the longer one");
            memory.files.RefuseWriting(Neighbour);
        },
        [&isSaved](const Platform& ports) { isSaved = SaveContent(ports.files, Path, "the new content"); },
        [&isSaved](const FaultedRun& run) {
            if (Is(run, L"exists ")) {
                return; // two faults at once: nothing promised it could be told from a missing file
            }
            EXPECT_EQ(isSaved, Is(run, L"make file "));
            EXPECT_EQ(run.after == run.before, !isSaved);
        },
        ExpectOldOrNew};
    return SweepFailures(sweep); // exists, open, make the neighbour, read, open, write, end, flush
}

int SaveAMissingFile()
{
    return SweepSave(File::Missing, Beside::Possible,
                     [](const FaultedRun& run) { return Is(run, L"exists ") || Is(run, L"make file "); });
}

int SaveAMissingFileInPlace()
{
    return SweepSave(File::Missing, Beside::Refused, [](const FaultedRun& run) {
        return Is(run, L"exists ") || run.failed == std::wstring(L"make file ") + Neighbour; // refused anyhow
    });
}

} // namespace

SweptOperations SafeSaveOperations()
{
    return {{"save a file through its neighbour", SaveThroughTheNeighbour},
            {"save a file in place", SaveInPlace},
            {"save a missing file", SaveAMissingFile},
            {"save a missing file in place", SaveAMissingFileInPlace}};
}

} // namespace sitekeeper
