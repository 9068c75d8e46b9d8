// Explore and Open have no test here: they promise nothing that could be seen, and on a real system they would open
// windows.
#include "contract/World.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

class ShellContract : public ::testing::Test
{
protected:
    void TearDown() override
    {
        while (m_depth > 0) {
            Leave();
        }
    }
    bool Enter()
    {
        const bool isEntered = shell.EnterComponents();
        m_depth += isEntered ? 1 : 0;
        return isEntered;
    }
    void Leave()
    {
        shell.LeaveComponents();
        --m_depth;
    }

    std::unique_ptr<World> world = MakeWorld();
    Shell& shell = world->TheShell();
    const std::wstring scratch = world->ScratchFolder();
    const ShortcutFile toTool{.target = L"C:\\Suite\\Applications\\Tool64.exe",
                              .arguments = L"",
                              .workingFolder = L"C:\\Suite\\Applications\\",
                              .iconFile = L"C:\\Suite\\Applications\\Tool64.exe",
                              .iconIndex = 0};

private:
    int m_depth = 0;
};

TEST_F(ShellContract, WritesAShortcutToATargetThatNeedNotExist)
{
    ASSERT_TRUE(Enter());
    EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", toTool), ResultCode::Ok);
    EXPECT_EQ(world->ReadShortcut(scratch + L"Tool.lnk"), toTool);
}

TEST_F(ShellContract, KeepsEverythingThatAShortcutSays)
{
    ASSERT_TRUE(Enter());
    const ShortcutFile full{.target = L"C:\\M\u00FCller\\Tool64.exe",
                            .arguments = L"-a \"b c\"",
                            .workingFolder = L"N:\\Suite\\\\Applications\\",
                            .iconFile = L"N:\\Suite\\\\Applications\\Tool64.exe",
                            .iconIndex = 3};
    EXPECT_EQ(shell.SaveShortcut(scratch + L"T\u00FCr.lnk", full), ResultCode::Ok);
    EXPECT_EQ(world->ReadShortcut(scratch + L"T\u00FCr.lnk"), full);
}

TEST_F(ShellContract, KeepsCharactersOutsideTheNarrowCodePage)
{
    if (world->IsWine()) {
        GTEST_SKIP() << "Wine keeps a shortcut's target in the narrow code page";
    }
    ASSERT_TRUE(Enter());
    ShortcutFile other = toTool;
    other.target = L"C:\\\u0416\u0443\u043A\\\u4E2D.exe";
    EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", other), ResultCode::Ok);
    EXPECT_EQ(world->ReadShortcut(scratch + L"Tool.lnk"), other);
}

TEST_F(ShellContract, ReplacesWhatTheFileHeld)
{
    ASSERT_TRUE(Enter());
    for (const std::string& former : {std::string(), std::string("no shortcut"), std::string(5000, 'x')}) {
        world->MakeFile(scratch + L"Tool.lnk", former);
        EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", toTool), ResultCode::Ok);
        EXPECT_EQ(world->ReadShortcut(scratch + L"Tool.lnk"), toTool) << former.size();
    }
    ShortcutFile other = toTool;
    other.target = L"C:\\Short.exe";
    EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", other), ResultCode::Ok);
    EXPECT_EQ(world->ReadShortcut(scratch + L"Tool.lnk"), other);
}

TEST_F(ShellContract, FailsWhereTheFolderIsMissing)
{
    ASSERT_TRUE(Enter());
    EXPECT_FALSE(Succeeded(shell.SaveShortcut(scratch + L"No folder\\Tool.lnk", toTool)));
    EXPECT_FALSE(world->Files().Exists(scratch + L"No folder"));
}

TEST_F(ShellContract, FailsWhereAFolderStands)
{
    ASSERT_TRUE(Enter());
    ASSERT_TRUE(world->Files().MakeFolder(scratch + L"Tool.lnk"));
    EXPECT_FALSE(Succeeded(shell.SaveShortcut(scratch + L"Tool.lnk", toTool)));
    EXPECT_FALSE(world->Files().MakeFolder(scratch + L"Tool.lnk"));
}

TEST_F(ShellContract, RefusesAPathOf260Characters)
{
    ASSERT_TRUE(Enter());
    const std::wstring tooLong = scratch + std::wstring(260 - scratch.size() - 4, L'x') + L".lnk";
    ASSERT_EQ(tooLong.size(), 260U);
    EXPECT_EQ(shell.SaveShortcut(tooLong, toTool), ResultCode::Fail);
    EXPECT_EQ(shell.SaveShortcut(tooLong + L".lnk", toTool), ResultCode::Fail);
    EXPECT_FALSE(world->Files().Exists(tooLong.substr(0, 259)));
}

TEST_F(ShellContract, NeedsTheComponentRuntime)
{
    world->MakeFile(scratch + L"Tool.lnk", "as it was");
    EXPECT_FALSE(Succeeded(shell.SaveShortcut(scratch + L"Tool.lnk", toTool)));
    EXPECT_EQ(world->ContentOf(scratch + L"Tool.lnk"), "as it was");
}

TEST_F(ShellContract, StaysEnteredUntilTheLastLeaving)
{
    ASSERT_TRUE(Enter());
    ASSERT_TRUE(Enter());
    Leave();
    EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", toTool), ResultCode::Ok);
    Leave();
    EXPECT_FALSE(Succeeded(shell.SaveShortcut(scratch + L"Tool.lnk", toTool)));
    ASSERT_TRUE(Enter());
    EXPECT_EQ(shell.SaveShortcut(scratch + L"Tool.lnk", toTool), ResultCode::Ok);
}

// --- programs --------------------------------------------------------------------------------------------------------

constexpr int ShowNormal = 1;

TEST_F(ShellContract, OpensAProgramWithItsParametersAndDoesNotWait)
{
    const std::wstring program = scratch + L"an uninstaller.exe";
    world->MakeRecorder(program);
    shell.OpenProgram(program, L"-runfromtemp  \"a b\" \u00E9");
    const auto record = world->AwaitRecord(program);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->commandLine, L"\"" + program + L"\" -runfromtemp  \"a b\" \u00E9");
    EXPECT_EQ(record->showState, ShowNormal);
    EXPECT_EQ(record->workingFolder, world->CurrentFolder());
    EXPECT_TRUE(world->IsRecorderRunning(program));
    world->EndRecorder(program);
}

TEST_F(ShellContract, SaysNothingOfAProgramThatCannotBeOpened)
{
    world->MakeFile(scratch + L"text.exe", "just some text, long enough to be looked at for a header of any kind");
    for (const std::wstring& program : {scratch + L"missing.exe", scratch + L"text.exe", std::wstring(L"Msi")}) {
        EXPECT_NO_THROW(shell.OpenProgram(program, L"x"));
    }
}

} // namespace
} // namespace sitekeeper
