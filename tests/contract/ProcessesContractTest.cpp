#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr int Show = 5;
constexpr std::uint32_t NormalPriority = 0x20;

class ProcessesContract : public ::testing::Test
{
protected:
    ProcessesContract() { world->MakeRecorder(program); }

    std::unique_ptr<World> world = MakeWorld();
    Processes& processes = world->TheProcesses();
    std::wstring scratch = world->ScratchFolder();
    std::wstring program = scratch + L"a recorder.exe";
};

TEST_F(ProcessesContract, GivesTheCommandLineAsItIsAndDoesNotWait)
{
    const std::wstring line = L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\"  \u00E9 ";
    ASSERT_TRUE(processes.Start(program, line));
    const auto record = world->AwaitRecord(program);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->commandLine, line);
    EXPECT_EQ(record->showState, Show);
    EXPECT_EQ(record->priority, NormalPriority);
    EXPECT_EQ(record->workingFolder, world->CurrentFolder());
    EXPECT_TRUE(world->IsRecorderRunning(program));
    world->EndRecorder(program);
    EXPECT_FALSE(world->IsRecorderRunning(program));
}

TEST_F(ProcessesContract, TakesDoubledBackslashesForOne)
{
    ASSERT_TRUE(processes.Start(scratch + L"\\a recorder.exe", L"x"));
    const auto record = world->AwaitRecord(program);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->commandLine, L"x");
    world->EndRecorder(program);
}

TEST_F(ProcessesContract, StartsInTheWorkingFolder)
{
    world->SetCurrentFolder(scratch);
    ASSERT_TRUE(processes.Start(program, L"x"));
    const auto record = world->AwaitRecord(program);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->workingFolder, scratch);
    world->EndRecorder(program);
}

TEST_F(ProcessesContract, StartsNothingWhereNoProgramIs)
{
    EXPECT_FALSE(processes.Start(scratch + L"missing.exe", L"x"));
    EXPECT_FALSE(processes.Start(scratch + L"no folder\\missing.exe", L"x"));
    EXPECT_FALSE(processes.Start(scratch + L"a recorder", L"x")) << "no ending is added";
    EXPECT_FALSE(processes.Start(scratch, L"x"));
    EXPECT_FALSE(processes.Start(L"", L""));
    world->MakeFile(scratch + L"empty.exe", "");
    EXPECT_FALSE(processes.Start(scratch + L"empty.exe", L"x"));
    world->MakeFile(scratch + L"text.exe", "just some text, long enough to be looked at for a header of any kind");
    EXPECT_FALSE(processes.Start(scratch + L"text.exe", L"x"));
}

TEST_F(ProcessesContract, KeepsNoHandle)
{
    const auto start = [this](const std::wstring& path) {
        EXPECT_TRUE(processes.Start(path, L"x"));
        EXPECT_FALSE(processes.Start(scratch + L"missing.exe", L"x"));
    };
    const std::vector<std::wstring> more{scratch + L"1.exe", scratch + L"2.exe", scratch + L"3.exe"};
    for (const std::wstring& path : more) {
        world->MakeRecorder(path);
    }
    start(program); // what the system sets up once
    const unsigned before = world->OpenHandles();
    for (const std::wstring& path : more) {
        start(path);
    }
    EXPECT_EQ(world->OpenHandles(), before);
    for (const std::wstring& path : {program, more[0], more[1], more[2]}) {
        EXPECT_TRUE(world->AwaitRecord(path)) << path;
        world->EndRecorder(path);
    }
}

} // namespace
} // namespace sitekeeper
