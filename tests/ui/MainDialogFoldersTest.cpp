// The commands around the three folders: browsing, choosing the program folder, opening in the explorer.
#include "support/MainDialogFixture.h"
#include "support/Printing.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int BrowseApplication = 1002;
constexpr int BrowseDatafiles = 1004;
constexpr int SelectProgramPath = 17;

using Asked = ScriptedFolderChooser::Question;

class MainDialogFoldersTest : public MainDialogTest
{
protected:
    /// The fields after the steps; then the dialog is cancelled.
    InstallationFolders FoldersAfter(std::vector<DriverStep> steps)
    {
        InstallationFolders folders;
        steps.push_back(Do("read the fields", [&folders](const MainDialogPage& page) { folders = page.Folders(); }));
        steps.push_back(Press(IDCANCEL));
        Run(std::move(steps));
        return folders;
    }

    DriverStep Type(int field, const std::wstring& text)
    {
        return Do("type", [field, text](const MainDialogPage& page) { page.Enter(field, text); });
    }

    const InstallationFolders Stored{L"C:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Data\\"};
};

// --- the application folder ------------------------------------------------------------------------------------------

TEST_F(MainDialogFoldersTest, BrowsesForTheApplicationFolderFromWhatIsTyped)
{
    memory.folders.ExpectChoice(L"P:\\New");
    const InstallationFolders after = FoldersAfter(
        {Type(ApplicationField, L"X:\\Typed"), Type(DatafilesField, L"X:\\Data"), Press(BrowseApplication)});
    EXPECT_EQ(after, (InstallationFolders{L"C:\\Suite\\", L"P:\\New\\", L"X:\\Data"}));
    EXPECT_THAT(memory.folders.Asked(), ElementsAre(Asked{L"Choose the application folder", L"X:\\Typed"}));
    EXPECT_EQ(StoredFolders(), Stored) << "nothing is written before OK";
}

TEST_F(MainDialogFoldersTest, EmptiesTheApplicationFolderWhenNothingIsChosen)
{
    memory.folders.ExpectCancel();
    EXPECT_EQ(FoldersAfter({Press(BrowseApplication)}),
              (InstallationFolders{L"C:\\Suite\\", L"", L"N:\\Suite\\Data\\"}));
    EXPECT_EQ(StoredFolders(), Stored);
}

// --- the data-files folder -------------------------------------------------------------------------------------------

TEST_F(MainDialogFoldersTest, BrowsesForTheDatafilesFolderFromTheLastExchangeAndLosesWhatIsTyped)
{
    memory.folders.ExpectChoice(L"P:\\Data");
    const InstallationFolders after = FoldersAfter(
        {Type(ApplicationField, L"X:\\Typed"), Type(DatafilesField, L"X:\\Typed\\Data"), Press(BrowseDatafiles)});
    EXPECT_EQ(after, (InstallationFolders{L"C:\\Suite\\", L"N:\\Suite\\", L"P:\\Data\\"}));
    EXPECT_THAT(memory.folders.Asked(), ElementsAre(Asked{L"Choose the datafiles folder", L"N:\\Suite\\Data\\"}));
    EXPECT_EQ(StoredFolders(), Stored);
}

TEST_F(MainDialogFoldersTest, BrowsesForTheDatafilesFolderFromWhatAnEarlierCommandRead)
{
    memory.folders.ExpectChoice(L"P:\\Data");
    FoldersAfter({Type(DatafilesField, L"X:\\Typed"), Press(1008), Press(BrowseDatafiles)});
    EXPECT_THAT(memory.folders.Asked(), ElementsAre(Asked{L"Choose the datafiles folder", L"X:\\Typed"}));
}

TEST_F(MainDialogFoldersTest, EmptiesTheDatafilesFolderWhenNothingIsChosen)
{
    memory.folders.ExpectCancel();
    EXPECT_EQ(FoldersAfter({Press(BrowseDatafiles)}), (InstallationFolders{L"C:\\Suite\\", L"N:\\Suite\\", L""}));
    EXPECT_EQ(StoredFolders(), Stored);
}

// --- the program folder ----------------------------------------------------------------------------------------------

TEST_F(MainDialogFoldersTest, WritesAChosenProgramFolderAtOnce)
{
    memory.folders.ExpectChoice(L"D:\\Suite");
    std::wstring atOnce;
    const InstallationFolders after = FoldersAfter(
        {Type(ApplicationField, L"X:\\Typed"), ChooseSystem(SelectProgramPath),
         Do("look into the registry", [&](const MainDialogPage& /*page*/) { atOnce = StoredFolders().program; })});
    EXPECT_EQ(atOnce, L"D:\\Suite\\");
    EXPECT_EQ(after, (InstallationFolders{L"D:\\Suite\\", L"X:\\Typed", L"N:\\Suite\\Data\\"}));
    EXPECT_THAT(memory.folders.Asked(), ElementsAre(Asked{L"Choose the program folder", L"C:\\Suite\\"}));
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"D:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Data\\"}))
        << "cancelling the dialog does not take it back";
}

TEST_F(MainDialogFoldersTest, FillsEmptyFieldsFromAChosenProgramFolder)
{
    memory.folders.ExpectChoice(L"D:\\Suite");
    EXPECT_EQ(FoldersAfter({Type(ApplicationField, L""), Type(DatafilesField, L""), ChooseSystem(SelectProgramPath)}),
              (InstallationFolders{L"D:\\Suite\\", L"D:\\Suite\\", L"D:\\Suite\\Datafiles"}));
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"D:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Data\\"}));
}

TEST_F(MainDialogFoldersTest, EmptiesTheProgramFolderWithoutWritingItWhenNothingIsChosen)
{
    memory.folders.ExpectCancel();
    EXPECT_EQ(FoldersAfter({Type(ApplicationField, L""), ChooseSystem(SelectProgramPath)}),
              (InstallationFolders{L"", L"", L"N:\\Suite\\Data\\"}));
    EXPECT_EQ(StoredFolders(), Stored);
}

TEST_F(MainDialogFoldersTest, StartsTheNextProgramFolderChoiceAtTheRootOfTheDriveAfterACancelledOne)
{
    memory.folders.ExpectCancel();
    memory.folders.ExpectCancel();
    FoldersAfter({ChooseSystem(SelectProgramPath), ChooseSystem(SelectProgramPath)});
    EXPECT_EQ(memory.folders.Asked().back().selected, L"C:\\");
}

TEST_F(MainDialogFoldersTest, TakesOnlyTheExactNumberOfTheSystemCommand)
{
    // All of them are the number 16 in the system's own reading, which leaves the low four bits out; the last has 17 in
    // its low word.
    EXPECT_EQ(FoldersAfter({ChooseSystem(18), ChooseSystem(19), ChooseSystem(31), ChooseSystem(0x10011)}), Stored);
    EXPECT_THAT(memory.folders.Asked(), IsEmpty());
}

TEST_F(MainDialogFoldersTest, DoesNotTakeTheSystemCommandsNumberForACommand)
{
    EXPECT_EQ(FoldersAfter({Choose(SelectProgramPath)}), Stored);
    EXPECT_THAT(memory.folders.Asked(), IsEmpty());
}

// --- the explorer ----------------------------------------------------------------------------------------------------

TEST_F(MainDialogFoldersTest, OpensEachFolderAsItStandsInTheField)
{
    const InstallationFolders after =
        FoldersAfter({Type(ApplicationField, L"X:\\Typed"), Type(DatafilesField, L"X:\\Typed\\Data"), Press(1008),
                      Press(1010), Press(1011)});
    EXPECT_THAT(memory.shell.Explored(), ElementsAre(L"C:\\Suite\\", L"X:\\Typed", L"X:\\Typed\\Data"));
    EXPECT_EQ(after, (InstallationFolders{L"C:\\Suite\\", L"X:\\Typed", L"X:\\Typed\\Data"}));
    EXPECT_EQ(StoredFolders(), Stored);
}

TEST_F(MainDialogFoldersTest, HandsAnEmptyFolderToTheExplorerAsItStands)
{
    memory.folders.ExpectCancel();
    FoldersAfter({ChooseSystem(SelectProgramPath), Press(1008)});
    EXPECT_THAT(memory.shell.Explored(), ElementsAre(L""));
}

} // namespace
} // namespace sitekeeper
