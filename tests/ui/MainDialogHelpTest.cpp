// The help commands of the main dialog: its button and its menu item. (F1 is the application's; see StartupTest.)
#include "support/MainDialogFixture.h"
#include "support/MessageBoxOnTop.h"
#include "support/Printing.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using Opened = MemoryHelpViewer::Opened;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int HelpButton = 1009;
constexpr int HelpContents = 32772;
constexpr int UserAccess = 32776;

struct HelpCommand
{
    const char* name;
    int id;
    const wchar_t* topic; // behind the file's path
};

class MainDialogHelpTest : public MainDialogTest, public testing::WithParamInterface<HelpCommand>
{
protected:
    DriverStep NoteOwner()
    {
        return Do("note the dialog", [this](const MainDialogPage& page) { m_dialogId = IdOf(page.Window()); });
    }
    DriverStep Ask() { return GetParam().id == HelpButton ? Press(HelpButton) : Choose(GetParam().id); }
    DriverStep AwaitHelp()
    {
        return Await("wait for help", [this](const MainDialogPage&) { return !memory.help.AllOpened().empty(); });
    }
    [[nodiscard]] Opened ExpectedPage() const
    {
        return {m_dialogId, m_helpFile + GetParam().topic, GetParam().id == HelpButton};
    }
    [[nodiscard]] Box MissingFile() const
    {
        return {m_dialogId,
                L"Couldn't find help file: \nC:\\Suite\\Help\\SiteKeeper.chm\n\nPlease check software installation.",
                L"SiteKeeper", MessageStyle::Error};
    }

    WindowId m_dialogId{};
};

TEST_P(MainDialogHelpTest, OpensTheHelpFileOverTheDialog)
{
    memory.files.AddFile(m_helpFile);
    EXPECT_EQ(Run({NoteOwner(), Ask(), AwaitHelp(), Press(IDCANCEL)}), IDCANCEL);
    EXPECT_THAT(memory.help.AllOpened(), ElementsAre(ExpectedPage()));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_P(MainDialogHelpTest, SaysEachTimeThatTheFileIsMissing)
{
    memory.messages.Expect();
    memory.messages.Expect();
    EXPECT_EQ(Run({NoteOwner(), Ask(), AwaitBoxes(1), Ask(), AwaitBoxes(2),
                   Do("look", [](const MainDialogPage& page) { EXPECT_TRUE(page.IsOpen()); }), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(MissingFile(), MissingFile()));
    EXPECT_THAT(memory.help.AllOpened(), IsEmpty());
}

TEST_P(MainDialogHelpTest, FindsAFileThatIsPutThereMeanwhile)
{
    memory.messages.Expect();
    EXPECT_EQ(Run({NoteOwner(), Ask(), AwaitBoxes(1),
                   Do("install", [this](const MainDialogPage&) { memory.files.AddFile(m_helpFile); }), Ask(),
                   AwaitHelp(), Press(IDCANCEL)}),
              IDCANCEL);
    EXPECT_THAT(memory.help.AllOpened(), ElementsAre(ExpectedPage()));
}

INSTANTIATE_TEST_SUITE_P(By, MainDialogHelpTest,
                         testing::Values(HelpCommand{"Button", HelpButton, L"::/Introduction.htm"},
                                         HelpCommand{"MenuItem", HelpContents, L""}),
                         [](const auto& command) { return std::string(command.param.name); });

class MainDialogHelpFromUserAccessTest : public MainDialogTest
{
protected:
    /// Waits until User Access stands above the main dialog.
    DriverStep AwaitAccess()
    {
        return Await("wait for User Access", [this](const MainDialogPage& page) {
            for (const HWND window : VisibleWindows(L"#32770")) {
                m_access = window != page.Window() ? window : m_access;
            }
            return m_access != nullptr;
        });
    }
    DriverStep PressHelp()
    {
        return Do("press Help", [this](const MainDialogPage&) { DialogPage(m_access).Click(HelpButton); });
    }
    std::vector<DriverStep> Leave()
    {
        return {Do("leave User Access", [this](const MainDialogPage&) { DialogPage(m_access).Command(IDCANCEL); }),
                Await("wait for its end", [this](const MainDialogPage&) { return ::IsWindow(m_access) == FALSE; }),
                Press(IDCANCEL)};
    }

    HWND m_access = nullptr;
};

TEST_F(MainDialogHelpFromUserAccessTest, OpensTheIntroductionAndLeavesTheMainDialogWaiting)
{
    memory.files.AddFile(m_helpFile);
    WindowId main{};
    std::vector<DriverStep> steps = {
        Do("note the dialog", [&main](const MainDialogPage& page) { main = IdOf(page.Window()); }),
        Choose(UserAccess),
        AwaitAccess(),
        PressHelp(),
        Await("wait for help", [this](const MainDialogPage&) { return !memory.help.AllOpened().empty(); }),
        Do("look", [](const MainDialogPage& page) { EXPECT_EQ(::IsWindowEnabled(page.Window()), FALSE); })};
    std::ranges::copy(Leave(), std::back_inserter(steps));
    Run(std::move(steps));
    EXPECT_THAT(memory.help.AllOpened(), ElementsAre(Opened{main, m_helpFile + L"::/Introduction.htm", true}));
}

TEST_F(MainDialogHelpFromUserAccessTest, IsActiveAgainBehindTheMessageOfTheMainDialog)
{
    SeenMessageBox seen;
    std::vector<DriverStep> steps = {Choose(UserAccess),
                                     AwaitAccess(),
                                     PressHelp(),
                                     AnswerMessageBox(IDOK, seen),
                                     Await("wait for the end of the message",
                                           [&seen](const MainDialogPage&) { return ::IsWindow(seen.window) == FALSE; }),
                                     Do("look", [this](const MainDialogPage& page) {
                                         EXPECT_EQ(::GetActiveWindow(), m_access);
                                         EXPECT_EQ(::GetFocus(), ::GetDlgItem(m_access, HelpButton))
                                             << "where it was before";
                                         EXPECT_EQ(::IsWindowEnabled(page.Window()), FALSE);
                                     })};
    std::ranges::copy(Leave(), std::back_inserter(steps));
    EXPECT_EQ(RunOn(WithSystemWindows(), m_settings, std::move(steps)), IDCANCEL);
    EXPECT_EQ(seen.text,
              L"Couldn't find help file: \nC:\\Suite\\Help\\SiteKeeper.chm\n\nPlease check software installation.");
}

} // namespace
} // namespace sitekeeper
