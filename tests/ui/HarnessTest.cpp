// The tools of the dialog tests, tested themselves.
#include "frame/Dialog.h"
#include "res/UiTestIds.h"
#include "support/Capture.h"
#include "support/DialogPage.h"
#include "support/GuiResources.h"
#include "support/MemoryBitmap.h"
#include "support/MessageBoxOnTop.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"
#include "support/Watchdog.h"

#include <windows.h>

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

namespace sitekeeper {
namespace {

using testing::HasSubstr;

/// A dialog over the template of the test controls. Its OK raises an error when told so.
class ControlsDialog final : public CDialog
{
public:
    explicit ControlsDialog(CWinApp& app) : CDialog(app, IDD_TEST_CONTROLS) {}
    bool raisesOnOk = false;

protected:
    void OnOK() override
    {
        if (raisesOnOk) {
            throw std::runtime_error("raised by OK");
        }
        CDialog::OnOK();
    }
};

DriverStep WaitFor(ControlsDialog& dialog)
{
    return {"wait for the dialog", [&dialog] { return DialogPage(dialog.Handle()).IsOpen(); }};
}

DriverStep Press(ControlsDialog& dialog, int button)
{
    return {"press a button", [&dialog, button] {
                DialogPage(dialog.Handle()).Click(button);
                return true;
            }};
}

/// What a child process did: its exit code and its standard error output.
struct Outcome
{
    DWORD exitCode = 0;
    std::string errors;
};

Outcome RunVictim(const std::wstring& argument)
{
    std::wstring program = TestApp::ProgramFile();
    program.resize(program.rfind(L'\\') + 1);
    std::wstring commandLine = L"\"" + program + L"ui_watchdog_victim.exe\" " + argument;

    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof inheritable;
    inheritable.bInheritHandle = TRUE;
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    ::CreatePipe(&readEnd, &writeEnd, &inheritable, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    const bool isStarted = ::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                            &startup, &process) != FALSE;
    ::CloseHandle(writeEnd);
    Outcome outcome;
    if (isStarted) {
        char buffer[256];
        DWORD read = 0;
        while (::ReadFile(readEnd, buffer, sizeof buffer, &read, nullptr) != FALSE && read > 0) {
            outcome.errors.append(buffer, read);
        }
        ::WaitForSingleObject(process.hProcess, INFINITE);
        ::GetExitCodeProcess(process.hProcess, &outcome.exitCode);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::CloseHandle(readEnd);
    return outcome;
}

TEST(WatchdogTest, EndsAProcessThatWaitsInAForgottenBoxAndNamesTheBox)
{
    const Outcome outcome = RunVictim(L"");
    EXPECT_EQ(outcome.exitCode, Watchdog::WindowLeftOpen);
    EXPECT_THAT(outcome.errors, HasSubstr("the victim"));
    EXPECT_THAT(outcome.errors, HasSubstr("title \"A forgotten box\", class \"#32770\""));
}

TEST(WatchdogTest, EndsAProcessThatHangsWithoutAWindow)
{
    const Outcome outcome = RunVictim(L"busy");
    EXPECT_EQ(outcome.exitCode, Watchdog::TookTooLong);
    EXPECT_THAT(outcome.errors, HasSubstr("no window is open"));
}

#ifdef SITEKEEPER_TRAPS
TEST(TrapTest, UndefinedBehaviourEndsAProcess)
{
    EXPECT_EQ(RunVictim(L"overflow").exitCode, static_cast<DWORD>(EXCEPTION_ILLEGAL_INSTRUCTION));
}
#endif

TEST(WatchdogTest, LetsWorkPassThatEndsInTime)
{
    constexpr std::chrono::seconds Limit{2}; // a busy machine may take the processor away between the two calls
    Watchdog watchdog;
    watchdog.Guard("quick work", Limit);
    watchdog.Rest();
    std::this_thread::sleep_for(Limit + std::chrono::milliseconds(200)); // the process outlives the limit
}

TEST(ModalDriverTest, RunsItsStepsInOrderInTheDialogsLoop)
{
    TestApp app;
    ControlsDialog dialog(app);
    std::string order;
    int attempts = 0;
    ModalDriver driver({WaitFor(dialog),
                        {"needs three attempts",
                         [&] {
                             order += 'a';
                             return ++attempts == 3;
                         }},
                        {"comes after it",
                         [&] {
                             order += 'b';
                             return true;
                         }},
                        Press(dialog, IDOK)});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(driver.IsFinished());
    EXPECT_FALSE(driver.IsTimedOut());
    EXPECT_EQ(order, "aaab");
}

TEST(ModalDriverTest, ClosesTheDialogWhenItsTimeIsOver)
{
    TestApp app;
    ControlsDialog dialog(app);
    // No step before it: that one might not be done in time itself.
    ModalDriver driver({{"never done", [] { return false; }}}, 100);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(driver.IsTimedOut());
    EXPECT_EQ(driver.Forgive(), "never done");
}

TEST(MessageBoxTest, IsReadAndAnswered)
{
    SeenMessageBox seen;
    ModalDriver driver({AnswerMessageBox(IDNO, seen)});
    EXPECT_EQ(::MessageBoxW(nullptr, L"Is it so?", L"A question", MB_YESNO | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(seen.caption, L"A question");
    EXPECT_EQ(seen.text, L"Is it so?");
    EXPECT_EQ(seen.owner, nullptr);
}

TEST(MessageBoxTest, IsNotAnsweredWithAButtonThatItLacks)
{
    bool isRefused = false;
    SeenMessageBox seen;
    ModalDriver driver({{"try Yes",
                         [&] {
                             const std::optional<SeenMessageBox> box = MessageBoxOnTop();
                             isRefused = box && !Answer(*box, IDYES);
                             return box.has_value();
                         }},
                        AnswerMessageBox(IDOK, seen)});
    EXPECT_EQ(::MessageBoxW(nullptr, L"Only OK.", L"Box", MB_OK), IDOK);
    EXPECT_TRUE(isRefused);
}

TEST(DialogPageTest, ReadsTheControlsAsTheTemplateNamesThem)
{
    TestApp app;
    ControlsDialog dialog(app);
    const auto look = [&dialog] {
        const DialogPage page = DialogPage::OnTop();
        EXPECT_EQ(page.Window(), dialog.Handle());
        EXPECT_EQ(page.Title(), L"Controls");
        EXPECT_EQ(page.ClassOf(IDC_TEST_EDIT), L"Edit");
        EXPECT_EQ(page.Text(IDOK), L"OK");
        EXPECT_TRUE(page.IsVisible(IDOK));
        EXPECT_TRUE(page.IsEnabled(IDOK));
        EXPECT_FALSE(page.IsVisible(IDC_TEST_HIDDEN));
        EXPECT_FALSE(page.IsEnabled(IDC_TEST_HIDDEN));
        EXPECT_TRUE(page.HasFocus(IDC_TEST_EDIT));
        EXPECT_FALSE(page.Has(4711));
        EXPECT_EQ(page.RectangleInUnits(IDC_TEST_EDIT), (UnitRectangle{7, 9, 83, 13}));
        EXPECT_EQ(page.RectangleInUnits(IDC_TEST_HIDDEN), (UnitRectangle{31, 27, 41, 14}));
        EXPECT_EQ(page.ClientInUnits(), (UnitRectangle{0, 0, 120, 60}));
        page.Enter(IDC_TEST_EDIT, L"typed");
        EXPECT_EQ(page.Text(IDC_TEST_EDIT), L"typed");
        CaptureWindow(page.Window()).Save(L"harness-controls");
        return true;
    };
    ModalDriver driver({WaitFor(dialog), {"look", look}, Press(dialog, IDCANCEL)});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(CaptureTest, ShowsWhatTheDialogPaints)
{
    TestApp app;
    ControlsDialog dialog(app);
    RECT inked{};
    ModalDriver driver({WaitFor(dialog),
                        {"capture",
                         [&] {
                             const MemoryBitmap picture = CaptureWindow(dialog.Handle());
                             inked = picture.Inked(picture.Bounds(), ::GetSysColor(COLOR_3DFACE));
                             return true;
                         }},
                        Press(dialog, IDCANCEL)});
    dialog.DoModal();
    EXPECT_FALSE(::IsRectEmpty(&inked));
}

TEST(TestAppTest, RemembersTheErrorThatAHandlerRaised)
{
    TestApp app;
    ControlsDialog dialog(app);
    dialog.raisesOnOk = true;
    ModalDriver driver({WaitFor(dialog),
                        Press(dialog, IDOK),
                        {"wait for the report", [&app] { return !app.Errors().empty(); }},
                        Press(dialog, IDCANCEL)});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_THAT(app.Errors(), testing::ElementsAre("raised by OK"));
}

TEST(MemoryBitmapTest, ReadsWhatWasPainted)
{
    MemoryBitmap picture(5, 4, RGB(1, 2, 3));
    EXPECT_TRUE(picture.IsAll(picture.Bounds(), RGB(1, 2, 3)));
    ::SetPixelV(picture.Dc(), 2, 1, RGB(200, 100, 50));
    ::SetPixelV(picture.Dc(), 3, 2, RGB(200, 100, 50));
    EXPECT_EQ(picture.Pixel(2, 1), RGB(200, 100, 50));
    EXPECT_EQ(picture.Pixel(5, 0), CLR_INVALID);
    const RECT inked = picture.Inked(picture.Bounds(), RGB(1, 2, 3));
    const RECT expected{2, 1, 4, 3};
    EXPECT_NE(::EqualRect(&inked, &expected), FALSE);
    EXPECT_EQ(picture.Pixels()[1 * 5 + 2], 0x00C86432U);
    EXPECT_FALSE(picture == MemoryBitmap(5, 4, RGB(1, 2, 3)));
}

TEST(GuiResourcesTest, CountsAnObjectThatIsThereAndNotOneThatIsGone)
{
    const unsigned before = CountGdiObjects();
    ASSERT_GT(before, 0U);
    {
        const UniqueBitmap bitmap(::CreateBitmap(2, 2, 1, 1, nullptr));
        EXPECT_EQ(CountGdiObjects(), before + 1);
    }
    EXPECT_EQ(CountGdiObjects(), before);
}

} // namespace
} // namespace sitekeeper
