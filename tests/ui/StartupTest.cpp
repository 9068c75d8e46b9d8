// The program from its start to its end: the gate, the splash, the reminder, the main dialog.
#include "app/DlgOccManager.h"
#include "app/HelpFile.h"
#include "platform/PlatformError.h"
#include "support/MainDialogFixture.h"
#include "support/Printing.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace sitekeeper {
namespace {

using Box = ScriptedMessageBoxes::Box;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const wchar_t* UnexpectedText = L"An unexpected error occurred. The operation was not completed.";

class StartupTest : public ProgramTest
{
protected:
    /// What came to the screen and what was done, in order.
    std::vector<std::wstring> m_events;
};

// --- the gate --------------------------------------------------------------------------------------------------------

TEST_F(StartupTest, TurnsAUserWithoutANameAwayWithOneMessageAndNothingElse)
{
    memory.accounts.SetUserName(L"");
    memory.messages.Expect();
    m_reminder = [this] { m_events.emplace_back(L"reminder"); };
    const State before = memory.CurrentState();
    {
        const WindowLog log(m_events);
        EXPECT_EQ(Run({}), 0);
    }
    const Box box{WindowId::None,
                  L",\nYou do not have permission to run this application.\n\n"
                  L"Please contact your system administrator.",
                  L"LX Plus 2023", MessageStyle::Error};
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(box));
    EXPECT_THAT(m_events, IsEmpty());
    EXPECT_THAT(m_libraryModules.Asked(), IsEmpty());
    EXPECT_THAT(Removed(before, memory.CurrentState()), IsEmpty());
    EXPECT_THAT(Added(before, memory.CurrentState()), SizeIs(1)) << "the message, and nothing written";
    EXPECT_EQ(App().MainWindow(), nullptr);
}

// --- the usual start -------------------------------------------------------------------------------------------------

TEST_F(StartupTest, ShowsTheSplashThenTheDialogAndEnds)
{
    m_reminder = [this] { m_events.emplace_back(L"reminder"); };
    {
        const WindowLog log(m_events);
        EXPECT_EQ(Run({Press(IDCANCEL)}), 0);
    }
    EXPECT_THAT(m_events, ElementsAre(L"shown SiteKeeperSplash", L"reminder", L"gone SiteKeeperSplash", L"shown #32770",
                                      L"gone #32770"));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
    EXPECT_NE(StoredPosition(), L"(none)");
}

TEST_F(StartupTest, RunsTheReminderBehindThePaintedSplashUnderTheWaitCursor)
{
    int calls = 0;
    m_reminder = [&] {
        ++calls;
        EXPECT_TRUE(App().IsWaiting());
        EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
        const std::vector<HWND> splashes = VisibleWindows(SplashClass);
        ASSERT_THAT(splashes, SizeIs(1));
        RECT place{};
        ::GetWindowRect(splashes.front(), &place);
        EXPECT_EQ(place.right - place.left, 500);
        EXPECT_EQ(place.bottom - place.top, 300);
        RECT area{};
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        EXPECT_NEAR(place.left + place.right, area.left + area.right, 1);
        EXPECT_NEAR(place.top + place.bottom, area.top + area.bottom, 1);
        EXPECT_THAT(VisibleWindows(L"#32770"), IsEmpty());
        EXPECT_EQ(App().MainWindow(), nullptr);
    };
    bool isWaiting = true;
    std::vector<HWND> splashes;
    Run({Do("look",
            [&](const MainDialogPage& /*page*/) {
                isWaiting = App().IsWaiting();
                splashes = VisibleWindows(SplashClass);
            }),
         Press(IDCANCEL)});
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(isWaiting);
    EXPECT_THAT(splashes, IsEmpty());
}

TEST_F(StartupTest, MakesTheDialogTheMainWindow)
{
    bool isMain = false;
    Run({Do("look",
            [&](const MainDialogPage& page) {
                isMain = page.Window() == DialogPage::OnTop().Window() &&
                         dynamic_cast<CSiteKeeperDlg*>(App().MainWindow()) != nullptr;
            }),
         Press(IDCANCEL)});
    EXPECT_TRUE(isMain);
    EXPECT_EQ(App().MainWindow(), nullptr) << "it is gone";
}

TEST_F(StartupTest, PreparesTheProcess)
{
    Run({Press(IDCANCEL)});
    EXPECT_NE(dynamic_cast<CDlgOccManager*>(App().OccManager()), nullptr);
    EXPECT_EQ(App().AppName(), L"SiteKeeper");
    EXPECT_EQ(App().ProfileKey(L"WindowPosition"), WindowPositionKey);
    EXPECT_EQ(App().HelpFilePath(), FormHelpFilePath(CWinApp::ProgramHelpFile(), L"C:\\Suite\\"));
    EXPECT_THAT(App().HelpFilePath(),
                testing::AllOf(testing::StartsWith(L"C:\\Suite\\Help\\ui_"), testing::EndsWith(L".chm")));
}

TEST_F(StartupTest, AppliesAndEndsWithExitCodeZero)
{
    EXPECT_EQ(Run({Press(IDOK)}), 0);
    EXPECT_THAT(memory.shell.Saved(), SizeIs(4));
}

// --- what may go wrong -----------------------------------------------------------------------------------------------

TEST_F(StartupTest, OpensTheDialogThoughTheReminderFailed)
{
    m_reminder = [] { throw PlatformError(ResultCode::Fail, L"The reminder is broken."); };
    memory.messages.Expect();
    bool isWaiting = true;
    EXPECT_EQ(
        Run({Do("look", [&](const MainDialogPage& /*page*/) { isWaiting = App().IsWaiting(); }), Press(IDCANCEL)}), 0);
    const Box box{WindowId::None, L"The reminder is broken.\n\n(Error 0x80004005)", L"LX Plus 2023",
                  MessageStyle::Error};
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(box));
    EXPECT_FALSE(isWaiting);
}

TEST_F(StartupTest, OpensTheDialogThoughTheReminderRaisedSomethingUnknown)
{
    m_reminder = [] { throw std::logic_error("unknown to the program"); };
    memory.messages.Expect();
    EXPECT_EQ(Run({Press(IDCANCEL)}), 0);
    EXPECT_THAT(memory.messages.Shown(),
                ElementsAre(Box{WindowId::None, UnexpectedText, L"LX Plus 2023", MessageStyle::Error}));
}

TEST_F(StartupTest, ReportsAnInitialisationThatFailedOnceAndEnds)
{
    memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", L"2024-13-01 00:00:00");
    memory.messages.Expect();
    {
        const WindowLog log(m_events);
        EXPECT_EQ(Run({}), 0);
    }
    EXPECT_THAT(
        memory.messages.Shown(),
        ElementsAre(AllOf(Field(&Box::owner, WindowId::None), Field(&Box::caption, L"LX Plus 2023"),
                          Field(&Box::style, MessageStyle::Error),
                          Field(&Box::text, AllOf(HasSubstr(L"2024-13-01 00:00:00"), HasSubstr(L"CheckWebVersionDate"),
                                                  HasSubstr(L"0x80004005"))))));
    EXPECT_THAT(m_events, ElementsAre(L"shown SiteKeeperSplash", L"gone SiteKeeperSplash"));
    EXPECT_EQ(m_libraryModules.Held(), 0);
    EXPECT_EQ(App().MainWindow(), nullptr);
}

TEST_F(StartupTest, GoesOnWithoutThePictureOfTheSplash)
{
    // The dialogs library has no picture and no dialog either, so the missing dialog is where the program ends.
    const ModuleId library = m_libraryModules.Load(L"");
    m_instance = reinterpret_cast<HINSTANCE>(library);
    m_reminder = [this] { m_events.emplace_back(L"reminder"); };
    memory.messages.Expect();
    {
        const WindowLog log(m_events);
        EXPECT_EQ(Run({}), 0);
    }
    EXPECT_THAT(m_events, ElementsAre(L"reminder"));
    EXPECT_THAT(memory.messages.Shown(),
                ElementsAre(Box{WindowId::None, UnexpectedText, L"LX Plus 2023", MessageStyle::Error}));
    m_libraryModules.Release(library);
}

// --- help ------------------------------------------------------------------------------------------------------------

class HelpTest : public ProgramTest, public testing::WithParamInterface<const char*>
{
protected:
    DriverStep AskForHelp()
    {
        const std::string way = GetParam();
        return way == "F1" ? Key(VK_F1) : Choose(57670);
    }

    [[nodiscard]] static std::wstring HelpFile()
    {
        return FormHelpFilePath(CWinApp::ProgramHelpFile(), L"C:\\Suite\\");
    }
};

TEST_P(HelpTest, OpensTheContentsOfTheHelpFileOverTheDialog)
{
    memory.files.AddFile(HelpFile());
    WindowId dialog{};
    Run({Do("look", [&dialog](const MainDialogPage& page) { dialog = IdOf(page.Window()); }), AskForHelp(),
         Await("wait for help", [this](const MainDialogPage& /*page*/) { return !memory.help.AllOpened().empty(); }),
         Press(IDCANCEL)});
    EXPECT_THAT(memory.help.AllOpened(), ElementsAre(MemoryHelpViewer::Opened{dialog, HelpFile()}));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_P(HelpTest, SaysThatTheHelpFileIsMissing)
{
    memory.messages.Expect();
    Run({AskForHelp(),
         Await("wait for the message", [this](const MainDialogPage&) { return !memory.messages.Shown().empty(); }),
         Do("look", [](const MainDialogPage& page) { EXPECT_TRUE(page.IsOpen()); }), Press(IDCANCEL)});
    EXPECT_THAT(memory.messages.Shown(), ElementsAre(Box{WindowId::None,
                                                         L"Couldn't find help file: \n" + HelpFile() +
                                                             L"\n\nPlease check software installation.",
                                                         std::nullopt, MessageStyle::Error}));
    EXPECT_THAT(memory.help.AllOpened(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(By, HelpTest, testing::Values("F1", "Command"),
                         [](const auto& way) { return std::string(way.param); });

} // namespace
} // namespace sitekeeper
