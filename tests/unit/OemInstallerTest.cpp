#include "autocad/OemInstaller.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using Question = ScriptedFolderChooser::Question;

class OemInstallerTest : public ::testing::Test
{
protected:
    /// With the program folder and the folder that the user chooses.
    std::optional<OemSetup> Choose(const std::wstring& programFolder, const std::optional<std::wstring>& choice)
    {
        InstallationSettings settings = SettingsOn(memory.Ports());
        settings.WriteFolder(SuiteFolder::Program, programFolder);
        if (choice) {
            memory.folders.ExpectChoice(*choice);
        } else {
            memory.folders.ExpectCancel();
        }
        return ChooseOemSetup(settings, memory.folders);
    }

    MemoryPlatform memory;
};

TEST_F(OemInstallerTest, KeepsTheDoubledBackslashes)
{
    EXPECT_EQ(Choose(L"C:\\Suite\\", L"D:\\Image\\ACAD64"),
              (OemSetup{L"D:\\Image\\ACAD64\\\\setup.exe", L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\""}));
    EXPECT_EQ(memory.folders.Asked(),
              std::vector<Question>({{L"Select the location of the ACAD64 folder in the Install Image", L"c:\\"}}));
}

TEST_F(OemInstallerTest, TakesTheRootOfADriveAsItIs)
{
    EXPECT_EQ(Choose(L"C:\\Suite", L"D:\\"),
              (OemSetup{L"D:\\\\setup.exe", L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\""}));
}

TEST_F(OemInstallerTest, GoesOnWithoutAProgramFolder)
{
    EXPECT_EQ(Choose(L"", L"D:\\I"), (OemSetup{L"D:\\I\\\\setup.exe", L"/t /qb /c AOEM: INSTALLDIR=\"\\Engine\""}));
}

TEST_F(OemInstallerTest, PutsTheFolderInAsItStands)
{
    EXPECT_EQ(Choose(L"C:\\100%s \"x\"\\", L"D:\\%d %s")->arguments,
              L"/t /qb /c AOEM: INSTALLDIR=\"C:\\100%s \"x\"\\\\Engine\"");
    EXPECT_EQ(Choose(L"C:\\S\\", L"D:\\%d %s")->program, L"D:\\%d %s\\\\setup.exe");
}

TEST_F(OemInstallerTest, GivesNothingWhenNothingIsChosen)
{
    EXPECT_EQ(Choose(L"C:\\Suite\\", std::nullopt), std::nullopt);
    EXPECT_TRUE(memory.messages.Shown().empty());
}

TEST_F(OemInstallerTest, StartsWithTheArgumentsAlone)
{
    memory.processes.AddProgram(L"D:\\I\\setup.exe");
    StartOemSetup(memory.processes, memory.messages, WindowId{7}, L"SiteKeeper", {L"D:\\I\\\\setup.exe", L"/t x"});
    EXPECT_EQ(memory.processes.AllStarted(), std::vector<MemoryProcesses::Started>({{L"D:\\I\\\\setup.exe", L"/t x"}}));
}

TEST_F(OemInstallerTest, SaysWhatCouldNotBeStarted)
{
    memory.messages.Expect();
    StartOemSetup(memory.processes, memory.messages, WindowId{7}, L"SiteKeeper", {L"D:\\%s\\\\setup.exe", L"/t x"});
    EXPECT_TRUE(memory.processes.AllStarted().empty());
    EXPECT_EQ(memory.messages.Shown(), std::vector<Box>({{WindowId{7}, L"Error creating process:\nD:\\%s\\\\setup.exe",
                                                          L"SiteKeeper", MessageStyle::Error}}));
}

} // namespace
} // namespace sitekeeper
