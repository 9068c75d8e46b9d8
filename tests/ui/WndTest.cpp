// Windows and the objects that answer for them; the application object.
#include "frame/Wnd.h"

#include "res/UiTestIds.h"
#include "support/TestApp.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace sitekeeper {
namespace {

using testing::ElementsAre;

/// A window that does not let its text be changed.
class DeafWindow final : public CWnd
{
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        return message == WM_SETTEXT ? FALSE : CWnd::WindowProc(message, wParam, lParam);
    }
};

class SubclassTest : public testing::Test
{
protected:
    SubclassTest()
        : m_window(::CreateWindowExW(0, L"EDIT", L"text", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr))
    {}
    ~SubclassTest() override { ::DestroyWindow(m_window); }

    HWND m_window;
};

TEST_F(SubclassTest, IsFoundAndForgotten)
{
    EXPECT_EQ(CWnd::FromHandle(m_window), nullptr);
    CWnd object;
    EXPECT_TRUE(object.SubclassWindow(m_window));
    EXPECT_EQ(object.Handle(), m_window);
    EXPECT_EQ(CWnd::FromHandle(m_window), &object);
    EXPECT_EQ(TextOf(m_window), L"text");
    ::DestroyWindow(m_window);
    EXPECT_EQ(object.Handle(), nullptr);
    EXPECT_EQ(CWnd::FromHandle(m_window), nullptr);
}

TEST_F(SubclassTest, GivesTheWindowBackWhenTheObjectDiesFirst)
{
    {
        DeafWindow object;
        EXPECT_TRUE(object.SubclassWindow(m_window));
        ::SetWindowTextW(m_window, L"not heard");
        EXPECT_EQ(TextOf(m_window), L"text");
    }
    EXPECT_EQ(CWnd::FromHandle(m_window), nullptr);
    ::SetWindowTextW(m_window, L"an edit again");
    EXPECT_EQ(TextOf(m_window), L"an edit again");
    CWnd other;
    EXPECT_TRUE(other.SubclassWindow(m_window));
}

TEST_F(SubclassTest, TakesAWindowForOneObjectOnly)
{
    CWnd first;
    CWnd second;
    EXPECT_TRUE(first.SubclassWindow(m_window));
    EXPECT_FALSE(second.SubclassWindow(m_window));
    EXPECT_FALSE(first.SubclassWindow(m_window));
    EXPECT_EQ(second.Handle(), nullptr);
    EXPECT_FALSE(second.SubclassWindow(nullptr));
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    EXPECT_EQ(CWnd::FromHandle(::GetDesktopWindow()), nullptr) << "a window of another process";
}

TEST_F(SubclassTest, GivesTheTextOfAnyLength)
{
    const std::wstring text(5000, L'x');
    ::SendMessageW(m_window, EM_SETLIMITTEXT, 10000, 0);
    ::SetWindowTextW(m_window, text.c_str());
    EXPECT_EQ(TextOf(m_window), text);
    ::SetWindowTextW(m_window, L"");
    EXPECT_EQ(TextOf(m_window), L"");
}

// --- the application -------------------------------------------------------------------------------------------------

TEST(WinAppTest, ShowsTheWaitCursorUntilTheLastOneEnds)
{
    TestApp app;
    const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
    const HCURSOR wait = ::LoadCursorW(nullptr, IDC_WAIT);
    ::SetCursor(arrow);
    {
        const CWaitCursor outer(app);
        EXPECT_EQ(::GetCursor(), wait);
        {
            const CWaitCursor inner(app);
        }
        EXPECT_TRUE(app.IsWaiting());
        EXPECT_EQ(::GetCursor(), wait);
    }
    EXPECT_FALSE(app.IsWaiting());
    EXPECT_EQ(::GetCursor(), arrow);
    app.EndWaitCursor(); // one too many
    EXPECT_FALSE(app.IsWaiting());
}

TEST(WinAppTest, HasNothingForANumberOfNoResource)
{
    const TestApp app;
    EXPECT_EQ(app.ResourceText(4711), L"");
    EXPECT_TRUE(app.ResourceBytes(RT_DIALOG, 4711).empty());
    EXPECT_FALSE(app.ResourceBytes(RT_DIALOG, IDD_TEST_CONTROLS).empty());
}

/// A start-up that fails.
class FailingApp final : public TestApp
{
public:
    bool InitInstance() override { throw std::runtime_error("raised by the start-up"); }
};

TEST(WinAppTest, ReportsAStartUpThatFailedAndEnds)
{
    FailingApp app;
    EXPECT_EQ(app.Run(), 0);
    EXPECT_THAT(app.Errors(), ElementsAre("raised by the start-up"));
}

TEST(WinAppTest, RunsTheMessageLoopWhereTheStartUpSaysSo)
{
    TestApp app;
    ::PostQuitMessage(0);
    EXPECT_EQ(app.Run(), 0);
    MSG message{};
    EXPECT_EQ(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), FALSE) << "the loop took it";
}

} // namespace
} // namespace sitekeeper
