// The commands for AutoCAD of the main dialog.
#include "support/AutoCADTree.h"
#include "support/MainDialogFixture.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using Asked = ScriptedFolderChooser::Question;
using Started = MemoryProcesses::Started;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int AddTrustedPathsCommand = 32780;
constexpr int InstallOemCommand = 32779;

class MainDialogAutoCADTest : public MainDialogTest
{
protected:
    MainDialogAutoCADTest()
    {
        memory.registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", L"C:\\S");
    }

    DriverStep NoteOwner()
    {
        return Do("note the dialog", [this](const MainDialogPage& page) { m_owner = IdOf(page.Window()); });
    }
    /// The dialog is on the screen again, and does what it is told.
    DriverStep ExpectBack()
    {
        return Await("wait for the dialog to come back", [](const MainDialogPage& page) {
            return page.IsOpen() && ::IsWindowEnabled(page.Window()) != FALSE && ::IsIconic(page.Window()) == FALSE;
        });
    }
    [[nodiscard]] std::wstring Paths(const std::wstring& release, const std::wstring& product) const
    {
        return Stored(Hive::LocalMachine, PathsKey(release, product), L"");
    }
    [[nodiscard]] Box Confirmation() const
    {
        return {m_owner, L"The ORIVEL LX file paths have been added to the AutoCAD Trusted Paths. ", L"Site Keeper",
                MessageStyle::Ok};
    }

    WindowId m_owner{};
};

// --- trusted paths --------------------------------------------------------------------------------------------------

TEST_F(MainDialogAutoCADTest, AnswersTheCommandWhoseItemIsGrayed)
{
    AddProduct(memory.registry, L"R24.0", L"P", L"C:\\A");
    memory.messages.Expect();
    UINT before = 0;
    UINT after = 0;
    const auto stateOf = [](const MainDialogPage& page) {
        return ::GetMenuState(::GetMenu(page.Window()), AddTrustedPathsCommand, MF_BYCOMMAND);
    };
    EXPECT_EQ(Run({NoteOwner(), Do("look at the item", [&](const MainDialogPage& page) { before = stateOf(page); }),
                   Choose(AddTrustedPathsCommand), AwaitBoxes(1), ExpectBack(),
                   Do("look again", [&](const MainDialogPage& page) { after = stateOf(page); }), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_EQ(before & MF_GRAYED, static_cast<UINT>(MF_GRAYED));
    EXPECT_EQ(after, before);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Confirmation()));
    EXPECT_EQ(Paths(L"R24.0", L"P"), L"C:\\A;" + FiveFolders(L"C:\\S", L"R24"));
}

TEST_F(MainDialogAutoCADTest, ConfirmsAlsoWithoutAProduct)
{
    memory.messages.Expect();
    State before;
    State after;
    EXPECT_EQ(Run({NoteOwner(), Do("before", [&](const MainDialogPage&) { before = memory.CurrentState(); }),
                   Choose(AddTrustedPathsCommand), AwaitBoxes(1),
                   Do("after", [&](const MainDialogPage&) { after = memory.CurrentState(); }), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Confirmation()));
    EXPECT_THAT(Added(before, after), ElementsAre(HasSubstr(L"box Site Keeper: ")));
    EXPECT_THAT(Removed(before, after), IsEmpty());
}

TEST_F(MainDialogAutoCADTest, ReportsTheSecondProductOnceAndConfirmsNothing)
{
    AddProduct(memory.registry, L"R23.1", L"P", L"");
    AddProduct(memory.registry, L"R24.0", L"P", L"");
    memory.messages.Expect();
    EXPECT_EQ(Run({NoteOwner(), Choose(AddTrustedPathsCommand), AwaitBoxes(1), ExpectBack(), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(
        memory.messages.Shown(),
        ElementsAre(AllOf(
            Field(&Box::owner, m_owner), Field(&Box::caption, L"LX Plus 2023"), Field(&Box::style, MessageStyle::Error),
            Field(&Box::text, AllOf(HasSubstr(PathsKey(L"R24.0", L"P")), HasSubstr(L"what was written for them stays"),
                                    HasSubstr(L"(Error 0x80070057)"))))));
    EXPECT_EQ(Paths(L"R23.1", L"P"), FiveFolders(L"C:\\S", L"R23"));
    EXPECT_EQ(Paths(L"R24.0", L"P"), L"");
}

TEST_F(MainDialogAutoCADTest, BeginsTheSearchAfreshAtEachCommand)
{
    AddProduct(memory.registry, L"R24.0", L"P", L"C:\\A");
    memory.messages.AnswerAll(Answer::Ok);
    Run({NoteOwner(), Choose(AddTrustedPathsCommand), AwaitBoxes(1), Choose(AddTrustedPathsCommand), AwaitBoxes(2),
         Do("another product instead",
            [this](const MainDialogPage&) {
                memory.registry.RemoveValue(Hive::LocalMachine, PathsKey(L"R24.0", L"P"), L"");
                AddProduct(memory.registry, L"R20.1", L"Q", L"");
            }),
         Choose(AddTrustedPathsCommand), AwaitBoxes(3), Press(IDCANCEL)});
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Confirmation(), Confirmation(), Confirmation()));
    EXPECT_EQ(Paths(L"R24.0", L"P"), L"(none)") << "the lists are those of the moment";
    EXPECT_EQ(Paths(L"R20.1", L"Q"), FiveFolders(L"C:\\S", L"R20"));
}

// --- the engine's installer -----------------------------------------------------------------------------------------

TEST_F(MainDialogAutoCADTest, HidesItselfWhileTheInstallerIsStarted)
{
    memory.folders.ExpectChoice(L"D:\\Image\\ACAD64");
    memory.processes.AddProgram(L"D:\\Image\\ACAD64\\setup.exe");
    bool wasVisible = true;
    m_processes.onStart = [&] { wasVisible = Page().IsOpen(); };
    bool isBack = false;
    EXPECT_EQ(
        Run({Choose(InstallOemCommand),
             Await("wait for the installer",
                   [this](const MainDialogPage&) { return !memory.processes.AllStarted().empty(); }),
             Do("look",
                [&](const MainDialogPage& page) { isBack = page.IsOpen() && ::IsIconic(page.Window()) == FALSE; }),
             Press(IDCANCEL)}),
        IDCANCEL);
    EXPECT_FALSE(wasVisible);
    EXPECT_TRUE(isBack);
    EXPECT_THAT(
        memory.processes.AllStarted(),
        ElementsAre(Started{L"D:\\Image\\ACAD64\\\\setup.exe", L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\""}));
    EXPECT_THAT(memory.folders.Asked(),
                ElementsAre(Asked{L"Select the location of the ACAD64 folder in the Install Image", L"c:\\"}));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_F(MainDialogAutoCADTest, TakesTheStoredProgramFolderAndNotTheFieldsOwn)
{
    memory.folders.ExpectChoice(L"D:\\I");
    memory.processes.AddProgram(L"D:\\I\\setup.exe");
    Run({Do("another program folder", [this](const MainDialogPage&) { StoreFolder(L"LocalAppPath", L"E:\\Later"); }),
         Choose(InstallOemCommand),
         Await("wait for the installer",
               [this](const MainDialogPage&) { return !memory.processes.AllStarted().empty(); }),
         Press(IDCANCEL)});
    EXPECT_THAT(memory.processes.AllStarted(),
                ElementsAre(Started{L"D:\\I\\\\setup.exe", L"/t /qb /c AOEM: INSTALLDIR=\"E:\\Later\\\\Engine\""}));
}

TEST_F(MainDialogAutoCADTest, SaysThatTheInstallerCouldNotBeStartedAndComesBack)
{
    memory.folders.ExpectChoice(L"D:\\I");
    memory.messages.Expect();
    bool wasVisible = true;
    m_processes.onStart = [&] { wasVisible = Page().IsOpen(); };
    EXPECT_EQ(Run({NoteOwner(), Choose(InstallOemCommand), AwaitBoxes(1), ExpectBack(), Press(IDCANCEL)}), IDCANCEL);
    EXPECT_FALSE(wasVisible);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Box{m_owner, L"Error creating process:\nD:\\I\\\\setup.exe",
                                                         L"SiteKeeper", MessageStyle::Error}));
}

TEST_F(MainDialogAutoCADTest, DoesNothingWhenNoFolderIsChosen)
{
    memory.folders.ExpectCancel();
    bool hasStarted = false;
    m_processes.onStart = [&] { hasStarted = true; };
    State before;
    State after;
    EXPECT_EQ(
        Run({Do("before", [&](const MainDialogPage&) { before = memory.CurrentState(); }), Choose(InstallOemCommand),
             Await("wait for the choice", [this](const MainDialogPage&) { return memory.folders.Pending() == 0; }),
             ExpectBack(), Do("after", [&](const MainDialogPage&) { after = memory.CurrentState(); }),
             Press(IDCANCEL)}),
        IDCANCEL);
    EXPECT_FALSE(hasStarted);
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace sitekeeper
