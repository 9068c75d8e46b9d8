// The window frame: windows and their objects, modal dialogs, the exchange of values, and errors on their way out.
#include "frame/Dialog.h"
#include "res/UiTestIds.h"
#include "support/DialogPage.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <stdexcept>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int RaisingCommand = 9301;
constexpr int TellingCommand = 9302;
constexpr UINT RaisingMessage = WM_APP + 1;

/// A dialog over the template of the test controls, with a text or a number in its one field.
class FieldDialog final : public CDialog
{
public:
    explicit FieldDialog(CWinApp& app, const CWnd* owner = nullptr) : CDialog(app, IDD_TEST_CONTROLS, owner) {}

    using CDialog::UpdateData;

    std::wstring text = L"a text";
    std::optional<std::int32_t> number;
    std::function<void()> onTell;
    bool raisesInInit = false;

protected:
    bool OnInitDialog() override
    {
        CDialog::OnInitDialog();
        if (raisesInInit) {
            throw std::runtime_error("raised by the initialisation");
        }
        return true;
    }
    void DoDataExchange(CDataExchange& exchange) override
    {
        if (number) {
            ExchangeNumber(exchange, IDC_TEST_EDIT, *number);
        } else {
            ExchangeText(exchange, IDC_TEST_EDIT, text);
        }
    }
    bool OnCommand(WORD id) override
    {
        static constexpr CommandRow<FieldDialog> Commands[] = {
            {RaisingCommand, &FieldDialog::Raise},
            {TellingCommand, &FieldDialog::Tell},
        };
        return RunCommand(*this, Commands, id) || CDialog::OnCommand(id);
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == RaisingMessage) {
            Raise();
        }
        return CDialog::WindowProc(message, wParam, lParam);
    }

private:
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): a row of the table, like the other
    void Raise() { throw std::runtime_error("raised by a handler"); }
    void Tell() { onTell(); } // NOLINT(readability-make-member-function-const): as above
};

class FrameTest : public testing::Test
{
protected:
    using Gesture = std::function<void(const DialogPage&)>;

    /// Runs the dialog and the gestures in it, one after the other.
    static INT_PTR Run(FieldDialog& dialog, std::vector<Gesture> gestures)
    {
        std::vector<DriverStep> steps = {
            {"wait for the dialog", [&dialog] { return DialogPage(dialog.Handle()).IsOpen(); }}};
        for (std::size_t i = 0; i < gestures.size(); ++i) {
            steps.push_back({"gesture " + std::to_string(i + 1), [&dialog, gesture = gestures[i]] {
                                 gesture(DialogPage(dialog.Handle()));
                                 return true;
                             }});
        }
        const ModalDriver driver(std::move(steps));
        return dialog.DoModal();
    }

    static Gesture Enter(const std::wstring& text)
    {
        return [text](const DialogPage& page) { page.Enter(IDC_TEST_EDIT, text); };
    }
    static Gesture Click(int button)
    {
        return [button](const DialogPage& page) { page.Click(button); };
    }
    static Gesture Command(int id)
    {
        return [id](const DialogPage& page) { page.Command(id); };
    }

    TestApp m_app;
    FieldDialog m_dialog{m_app};
};

// --- values ----------------------------------------------------------------------------------------------------------

TEST_F(FrameTest, MovesATextBothWays)
{
    std::wstring shown;
    const INT_PTR result = Run(m_dialog, {[&shown](const DialogPage& page) { shown = page.Text(IDC_TEST_EDIT); },
                                          Enter(L"typed \u20AC"), Click(IDOK)});
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(shown, L"a text");
    EXPECT_EQ(m_dialog.text, L"typed \u20AC");
}

TEST_F(FrameTest, LeavesTheMemberAloneOnCancel)
{
    EXPECT_EQ(Run(m_dialog, {Enter(L"typed"), Click(IDCANCEL)}), IDCANCEL);
    EXPECT_EQ(m_dialog.text, L"a text");
}

TEST_F(FrameTest, DoesNotTouchAFieldThatShowsTheTextAlready)
{
    int changes = 0;
    Run(m_dialog, {[&](const DialogPage& page) {
                       const MessageWatch watch([&](const CWPSTRUCT& call) {
                           changes += call.message == WM_SETTEXT && call.hwnd == page.Control(IDC_TEST_EDIT) ? 1 : 0;
                       });
                       m_dialog.UpdateData(ExchangeDirection::ToControls);
                       EXPECT_EQ(changes, 0);
                       m_dialog.text = L"another";
                       m_dialog.UpdateData(ExchangeDirection::ToControls);
                       EXPECT_EQ(changes, 1);
                   },
                   Click(IDCANCEL)});
}

struct NumberCase
{
    const wchar_t* typed;
    std::optional<std::int32_t> read;
};
void PrintTo(const NumberCase& number, std::ostream* out)
{
    *out << testing::PrintToString(number.typed);
}

class NumberTest : public FrameTest, public testing::WithParamInterface<NumberCase>
{};

TEST_P(NumberTest, IsReadOrRefusedAsAWhole)
{
    m_dialog.number = 77;
    bool isTaken = false;
    Run(m_dialog, {Enter(GetParam().typed),
                   [&](const DialogPage& /*page*/) { isTaken = m_dialog.UpdateData(ExchangeDirection::ToMembers); },
                   Click(IDCANCEL)});
    EXPECT_EQ(isTaken, GetParam().read.has_value());
    EXPECT_EQ(m_dialog.number, GetParam().read.value_or(77)) << "a refused number leaves the member as it is";
}

INSTANTIATE_TEST_SUITE_P(Of, NumberTest,
                         testing::Values(NumberCase{L"0", 0}, NumberCase{L"14", 14}, NumberCase{L"-7", -7},
                                         NumberCase{L"2147483647", 2147483647}, NumberCase{L"-2147483648", INT32_MIN},
                                         NumberCase{L"2147483648", {}}, NumberCase{L"", {}}, NumberCase{L"7 days", {}},
                                         NumberCase{L"seven", {}}, NumberCase{L"-", {}},
                                         NumberCase{L"\u0967\u0968", {}}));

TEST_F(FrameTest, DoesNotEndWithOKOverARefusedNumber)
{
    m_dialog.number = 5;
    EXPECT_EQ(Run(m_dialog, {Enter(L"five"), Click(IDOK),
                             [](const DialogPage& page) {
                                 EXPECT_TRUE(page.IsOpen());
                                 page.Enter(IDC_TEST_EDIT, L"6");
                             },
                             Click(IDOK)}),
              IDOK);
    EXPECT_EQ(m_dialog.number, 6);
}

// --- modal dialogs ---------------------------------------------------------------------------------------------------

TEST_F(FrameTest, RunsTwiceWithTheSameObject)
{
    EXPECT_EQ(Run(m_dialog, {Enter(L"first"), Click(IDOK)}), IDOK);
    EXPECT_EQ(m_dialog.Handle(), nullptr);
    EXPECT_EQ(Run(m_dialog, {Click(IDCANCEL)}), IDCANCEL);
    EXPECT_EQ(m_dialog.text, L"first");
}

TEST_F(FrameTest, DisablesItsOwnerWhileItRuns)
{
    FieldDialog inner(m_app, &m_dialog);
    bool isOwnerEnabled = true;
    INT_PTR innerResult = 0;
    m_dialog.onTell = [&] {
        innerResult = Run(inner, {[&](const DialogPage& page) {
                              isOwnerEnabled = ::IsWindowEnabled(m_dialog.Handle()) != FALSE;
                              EXPECT_EQ(::GetWindow(page.Window(), GW_OWNER), m_dialog.Handle());
                              page.Click(IDOK);
                          }});
        EXPECT_NE(::IsWindowEnabled(m_dialog.Handle()), FALSE);
    };
    EXPECT_EQ(Run(m_dialog, {Command(TellingCommand), Click(IDCANCEL)}), IDCANCEL);
    EXPECT_EQ(innerResult, IDOK);
    EXPECT_FALSE(isOwnerEnabled);
}

TEST_F(FrameTest, LeavesAnOwnerDisabledThatWasDisabledBefore)
{
    FieldDialog inner(m_app, &m_dialog);
    m_dialog.onTell = [&] {
        ::EnableWindow(m_dialog.Handle(), FALSE);
        Run(inner, {Click(IDOK)});
        EXPECT_EQ(::IsWindowEnabled(m_dialog.Handle()), FALSE);
        ::EnableWindow(m_dialog.Handle(), TRUE);
    };
    Run(m_dialog, {Command(TellingCommand), Click(IDCANCEL)});
}

/// Lets no dialog be made while it fails.
class FailingManager final : public COccManager
{
public:
    std::optional<std::vector<std::byte>> PreCreateDialog(std::span<const std::byte> /*dialogTemplate*/) override
    {
        return isFailing ? throw std::bad_alloc() : std::optional<std::vector<std::byte>>();
    }

    bool isFailing = false;
};

TEST_F(FrameTest, EnablesItsOwnerAgainWhenThereIsNoMemoryForTheDialog)
{
    auto owned = std::make_unique<FailingManager>();
    FailingManager& manager = *owned;
    m_app.EnableControlContainer(std::move(owned));
    FieldDialog inner(m_app, &m_dialog);
    m_dialog.onTell = [&] {
        manager.isFailing = true;
        EXPECT_THROW(inner.DoModal(), std::bad_alloc);
        EXPECT_NE(::IsWindowEnabled(m_dialog.Handle()), FALSE);
    };
    EXPECT_EQ(Run(m_dialog, {Command(TellingCommand), Click(IDCANCEL)}), IDCANCEL);
}

TEST_F(FrameTest, EndsWhenTheThreadIsToldToQuitAndTellsTheLoopAround)
{
    EXPECT_EQ(Run(m_dialog, {[](const DialogPage& /*page*/) { ::PostQuitMessage(42); }}), -1);
    EXPECT_EQ(m_dialog.Handle(), nullptr);
    MSG message{};
    ASSERT_NE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), FALSE);
    EXPECT_EQ(message.wParam, 42U);
}

TEST_F(FrameTest, EndsWhenSomebodyElseDestroysTheWindow)
{
    EXPECT_EQ(Run(m_dialog, {[](const DialogPage& page) {
                      ::DestroyWindow(page.Window());
                      ::PostThreadMessageW(::GetCurrentThreadId(), WM_NULL, 0, 0);
                  }}),
              -1);
}

TEST_F(FrameTest, RaisesAnErrorForATemplateThatIsMissing)
{
    class MissingDialog final : public CDialog
    {
    public:
        explicit MissingDialog(CWinApp& app) : CDialog(app, 4711) {}
    } missing(m_app);
    EXPECT_THROW(missing.DoModal(), std::runtime_error);
}

TEST_F(FrameTest, RaisesWhatItsInitialisationRaisedAndShowsNothing)
{
    m_dialog.raisesInInit = true;
    std::vector<std::wstring> windows;
    {
        const WindowLog log(windows);
        EXPECT_THROW(m_dialog.DoModal(), std::runtime_error);
    }
    EXPECT_THAT(windows, IsEmpty());
    EXPECT_EQ(m_dialog.Handle(), nullptr);
    EXPECT_THAT(m_app.Errors(), IsEmpty()) << "who runs the dialog has the error";
}

// --- errors of handlers ----------------------------------------------------------------------------------------------

TEST_F(FrameTest, ReportsEachErrorOnceAfterItsMessage)
{
    std::size_t during = 99;
    EXPECT_EQ(Run(m_dialog, {Command(RaisingCommand),
                             [&](const DialogPage& page) {
                                 during = m_app.Errors().size();
                                 ::SendMessageW(page.Window(), RaisingMessage, 0, 0);
                                 EXPECT_EQ(m_app.Errors().size(), during) << "not inside the message";
                             },
                             Click(IDCANCEL)}),
              IDCANCEL);
    EXPECT_EQ(during, 1U);
    EXPECT_THAT(m_app.Errors(), ElementsAre("raised by a handler", "raised by a handler"));
}

TEST_F(FrameTest, ReportsTheFirstOfSeveralErrorsOfOneMessage)
{
    Run(m_dialog, {[](const DialogPage& page) {
                       ::SendMessageW(page.Window(), RaisingMessage, 0, 0);
                       ::SendMessageW(page.Window(), RaisingMessage, 0, 0);
                   },
                   Click(IDCANCEL)});
    EXPECT_THAT(m_app.Errors(), ElementsAre("raised by a handler"));
}

/// A control that raises an error when it is told to.
class RaisingControl final : public CWnd
{
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == RaisingMessage) {
            throw std::runtime_error("raised by a control");
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

TEST_F(FrameTest, ReportsTheErrorOfAControlThroughItsDialog)
{
    RaisingControl control;
    Run(m_dialog, {[&control](const DialogPage& page) {
                       EXPECT_TRUE(control.SubclassWindow(page.Control(IDC_TEST_EDIT)));
                       EXPECT_EQ(::SendMessageW(control.Handle(), RaisingMessage, 0, 0), 0);
                   },
                   Click(IDCANCEL)});
    EXPECT_THAT(m_app.Errors(), ElementsAre("raised by a control"));
}

} // namespace
} // namespace sitekeeper
