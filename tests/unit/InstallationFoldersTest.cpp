#include "maindlg/InstallationFolders.h"

#include "settings/Product.h"
#include "support/MemoryPlatform.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Question = ScriptedFolderChooser::Question;

class Folders : public ::testing::Test
{
protected:
    void Store(const wchar_t* name, const std::wstring& folder)
    {
        memory.registry.SetText(Hive::LocalMachine, SuiteKey, name, folder);
    }
    [[nodiscard]] InstallationFolders Load(const std::wstring& programFile) const
    {
        return LoadInstallationFolders(settings, programFile);
    }

    MemoryPlatform memory;
    InstallationSettings settings = SettingsOn(memory.Ports());
};

using FoldersAtStart = Folders;
using FolderCommands = Folders;

TEST_F(FoldersAtStart, AreThoseThatAreStored)
{
    Store(L"LocalAppPath", L"C:\\P");
    Store(L"NetworkAppPath", L"N:\\A\\");
    Store(L"DatafilesPath", L"D:\\D");
    EXPECT_EQ(Load(L"X:\\Y\\Z\\SiteKeeper64.exe"), (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L"D:\\D\\"}));
}

TEST_F(FoldersAtStart, ComeFromTheProgramsPlaceWhereNothingIsStored)
{
    const struct
    {
        const wchar_t* program = nullptr;
        InstallationFolders folders;
    } rows[] = {
        {L"C:\\Suite\\Tools\\SiteKeeper64.exe", {L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"}},
        {L"C:\\Suite\\Tools\\\\SiteKeeper64.exe", {L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"}},
        {L"C:\\Suite\\SiteKeeper64.exe", {L"C:\\", L"C:\\", L"C:\\Datafiles\\"}},
        {L"C:\\SiteKeeper64.exe", {L"", L"", L"Datafiles\\"}},
        {L"SiteKeeper64.exe", {L"", L"", L"Datafiles\\"}},
        {L"Tools\\SiteKeeper64.exe", {L"", L"", L"Datafiles\\"}},
        {L"\\SiteKeeper64.exe", {L"", L"", L"Datafiles\\"}},
        {L"", {L"", L"", L"Datafiles\\"}},
        {L"\\\\server\\share\\SiteKeeper64.exe", {L"\\\\server\\", L"\\\\server\\", L"\\\\server\\Datafiles\\"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Load(row.program), row.folders) << row.program;
    }
}

TEST_F(FoldersAtStart, AreDerivedOnlyWhereMissing)
{
    Store(L"LocalAppPath", L"C:\\P\\");
    EXPECT_EQ(Load(L"C:\\X\\Y\\Z.exe"), (InstallationFolders{L"C:\\P\\", L"C:\\P\\", L"C:\\P\\Datafiles\\"}));
    Store(L"NetworkAppPath", L"N:\\A\\");
    EXPECT_EQ(Load(L"C:\\X\\Y\\Z.exe"), (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L"N:\\A\\Datafiles\\"}));
    Store(L"LocalAppPath", L"");
    EXPECT_EQ(Load(L"C:\\X\\Y\\Z.exe"), (InstallationFolders{L"C:\\X\\", L"N:\\A\\", L"N:\\A\\Datafiles\\"}));
    Store(L"DatafilesPath", L"D:\\D\\");
    EXPECT_EQ(Load(L"C:\\Z.exe"), (InstallationFolders{L"", L"N:\\A\\", L"D:\\D\\"}));
}

TEST_F(FoldersAtStart, AreReadWithoutWriting)
{
    const State before = memory.CurrentState();
    static_cast<void>(Load(L"C:\\Suite\\Tools\\SiteKeeper64.exe"));
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(FolderCommands, SelectProgramFolderWritesAtOnceAndFillsEmptyFields)
{
    InstallationFolders folders;
    memory.folders.ExpectChoice(L"D:\\Suite\\");
    SelectProgramFolder(folders, memory.folders, settings);
    EXPECT_EQ(folders, (InstallationFolders{L"D:\\Suite\\", L"D:\\Suite\\", L"D:\\Suite\\Datafiles"}));
    EXPECT_EQ(settings.ReadLocalAppPath(), L"D:\\Suite\\");
    EXPECT_EQ(settings.ReadNetworkAppPath(), L"");
    EXPECT_EQ(settings.ReadDatafilesPath(), L"");
    EXPECT_EQ(memory.folders.Asked(), (std::vector<Question>{{L"Choose the program folder", L"C:\\"}}));
}

TEST_F(FolderCommands, SelectProgramFolderLeavesFilledFieldsAlone)
{
    const struct
    {
        InstallationFolders before;
        InstallationFolders after;
    } rows[] = {
        {{L"C:\\P\\", L"N:\\A\\", L"D:\\D\\"}, {L"E:\\New\\", L"N:\\A\\", L"D:\\D\\"}},
        {{L"C:\\P\\", L"", L"D:\\D\\"}, {L"E:\\New\\", L"E:\\New\\", L"D:\\D\\"}},
        {{L"C:\\P\\", L"N:\\A\\", L""}, {L"E:\\New\\", L"N:\\A\\", L"E:\\New\\Datafiles"}},
    };
    for (const auto& row : rows) {
        InstallationFolders folders = row.before;
        memory.folders.ExpectChoice(L"E:\\New");
        SelectProgramFolder(folders, memory.folders, settings);
        EXPECT_EQ(folders, row.after);
        EXPECT_EQ(memory.folders.Asked().back(), (Question{L"Choose the program folder", L"C:\\P\\"}));
        EXPECT_EQ(settings.ReadLocalAppPath(), L"E:\\New\\");
    }
}

TEST_F(FolderCommands, SelectProgramFolderCancelledEmptiesTheFieldAndWritesNothing)
{
    Store(L"LocalAppPath", L"C:\\P\\");
    const State before = memory.CurrentState();
    InstallationFolders folders{L"C:\\P\\", L"", L""};
    memory.folders.ExpectCancel();
    SelectProgramFolder(folders, memory.folders, settings);
    EXPECT_EQ(folders, InstallationFolders{});
    EXPECT_EQ(memory.CurrentState(), before);
}

TEST_F(FolderCommands, SelectProgramFolderDoesNotLookAtTheWriting)
{
    memory.registry.RefuseWriting(Hive::LocalMachine, SuiteKey);
    InstallationFolders folders;
    memory.folders.ExpectChoice(L"D:\\Suite");
    SelectProgramFolder(folders, memory.folders, settings);
    EXPECT_EQ(folders, (InstallationFolders{L"D:\\Suite\\", L"D:\\Suite\\", L"D:\\Suite\\Datafiles"}));
}

TEST_F(FolderCommands, BrowsingChangesOneFieldAndWritesNothing)
{
    const State before = memory.CurrentState();
    InstallationFolders folders{L"C:\\P\\", L"", L""};
    memory.folders.ExpectChoice(L"N:\\A");
    BrowseApplicationFolder(folders, memory.folders);
    EXPECT_EQ(folders, (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L""}));
    memory.folders.ExpectChoice(L"D:\\D");
    BrowseDatafilesFolder(folders, memory.folders);
    EXPECT_EQ(folders, (InstallationFolders{L"C:\\P\\", L"N:\\A\\", L"D:\\D\\"}));
    memory.folders.ExpectCancel();
    BrowseApplicationFolder(folders, memory.folders);
    memory.folders.ExpectCancel();
    BrowseDatafilesFolder(folders, memory.folders);
    EXPECT_EQ(folders, (InstallationFolders{L"C:\\P\\", L"", L""}));
    EXPECT_EQ(memory.folders.Asked(), (std::vector<Question>{{L"Choose the application folder", L"C:\\"},
                                                             {L"Choose the datafiles folder", L"C:\\"},
                                                             {L"Choose the application folder", L"N:\\A\\"},
                                                             {L"Choose the datafiles folder", L"D:\\D\\"}}));
    EXPECT_EQ(memory.CurrentState(), before);
}

} // namespace
} // namespace sitekeeper
