// The bitmap button and the mouse: tooltip, double click, hover.
#include "support/ButtonFixture.h"

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>
#include <string>

namespace sitekeeper {
namespace {

// --- tooltip -----------------------------------------------------------------------------------------------------

struct Tip
{
    LRESULT tools;
    std::wstring text;
    RECT rectangle;
};

Tip TipOf(const CButtonST& button)
{
    wchar_t text[256]{};
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = button.Handle();
    tool.uId = 1;
    tool.lpszText = text;
    ::SendMessageW(button.Tooltip(), TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
    const RECT rectangle = tool.rect;
    ::SendMessageW(button.Tooltip(), TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
    return {::SendMessageW(button.Tooltip(), TTM_GETTOOLCOUNT, 0, 0), text, rectangle};
}

TEST_F(ButtonSTTest, MakesItsTooltipAtFirstUseAndUpdatesItLater)
{
    EXPECT_EQ(m_button.Tooltip(), nullptr);
    m_button.SetTooltipText(L"First text", true);
    const HWND tooltip = m_button.Tooltip();
    ASSERT_NE(tooltip, nullptr);
    Tip tip = TipOf(m_button);
    EXPECT_EQ(tip.tools, 1);
    EXPECT_EQ(tip.text, L"First text");
    const RECT client{0, 0, 40, 28};
    EXPECT_NE(::EqualRect(&tip.rectangle, &client), FALSE);
    EXPECT_EQ(::SendMessageW(tooltip, TTM_GETMAXTIPWIDTH, 0, 0), 400);
    EXPECT_EQ(::GetWindow(tooltip, GW_OWNER), m_owner); // the system puts popups of a child under its main window
    EXPECT_EQ(::GetWindowLongPtrW(tooltip, GWL_STYLE) & (TTS_ALWAYSTIP | TTS_NOPREFIX | TTS_BALLOON), 0);

    m_button.SetTooltipText(L"Second text", false);
    EXPECT_EQ(m_button.Tooltip(), tooltip);
    tip = TipOf(m_button);
    EXPECT_EQ(tip.tools, 1);
    EXPECT_EQ(tip.text, L"Second text");
}

TEST_F(ButtonSTTest, NeedsItsWindowForATooltip)
{
    CButtonST button;
    button.SetTooltipText(L"Text", true);
    EXPECT_EQ(button.Tooltip(), nullptr);
}

TEST_F(ButtonSTTest, TakesItsTooltipAlong)
{
    m_button.SetTooltipText(L"Text", true);
    const HWND tooltip = m_button.Tooltip();
    ::DestroyWindow(m_window);
    EXPECT_FALSE(::IsWindow(tooltip));
    EXPECT_EQ(m_button.Tooltip(), nullptr);
    EXPECT_EQ(m_button.Handle(), nullptr);
}

TEST_F(ButtonSTTest, MakesTheTooltipBeforeItsMessagesAreTranslated)
{
    MSG message{};
    message.hwnd = m_window;
    message.message = WM_MOUSEMOVE;
    EXPECT_FALSE(m_button.PreTranslateMessage(message));
    EXPECT_NE(m_button.Tooltip(), nullptr);
    EXPECT_EQ(TipOf(m_button).tools, 0);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_MOUSEMOVE));
}

TEST_F(ButtonSTTest, TurnsADoubleClickIntoAPress)
{
    MSG message{};
    message.hwnd = m_window;
    message.message = WM_LBUTTONDBLCLK;
    message.wParam = MK_LBUTTON;
    message.lParam = MAKELPARAM(7, 8);
    EXPECT_FALSE(m_button.PreTranslateMessage(message));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_LBUTTONDOWN));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(MK_LBUTTON));
    EXPECT_EQ(message.lParam, MAKELPARAM(7, 8));
}

// --- hover -----------------------------------------------------------------------------------------------------

TEST_F(ButtonSTTest, BecomesHoveredOnceInTheFlatLook)
{
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(m_button.State().isHovered);
    EXPECT_TRUE(TakeRepaint());
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(6, 5));
    EXPECT_TRUE(m_button.State().isHovered);
    EXPECT_FALSE(TakeRepaint());
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(60, 5)); // the mouse is captured and beside the button
    EXPECT_FALSE(m_button.State().isHovered);
    EXPECT_TRUE(TakeRepaint());
}

TEST_F(ButtonSTTest, NeverFollowsTheMouseIn3dLook)
{
    m_button.SetFlat(false, false);
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_FALSE(m_button.State().isHovered);
    EXPECT_FALSE(TakeRepaint());
}

TEST_F(ButtonSTTest, IgnoresAMouseThatComesWithItsButtonDown)
{
    Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_FALSE(m_button.State().isHovered);
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(60, 5)); // hovered already: it sees the mouse leave
    EXPECT_FALSE(m_button.State().isHovered);
}

TEST_F(ButtonSTTest, FollowsTheMouseOnlyInAnActiveProgramWhenToldSo)
{
    ::SetActiveWindow(nullptr);
    ::SetForegroundWindow(::GetDesktopWindow());
    ASSERT_EQ(::GetActiveWindow(), nullptr);
    m_button.SetAlwaysTrack(false);
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_FALSE(m_button.State().isHovered);
    m_button.SetAlwaysTrack(true);
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(m_button.State().isHovered);
    ::SetActiveWindow(m_owner);
    ASSERT_EQ(::GetActiveWindow(), m_owner);
    Send(WM_MOUSELEAVE);
    m_button.SetAlwaysTrack(false);
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(m_button.State().isHovered);
}

TEST_F(ButtonSTTest, EndsItsHoverWhenTheMouseFocusOrActivityGoes)
{
    struct Row
    {
        UINT message;
        WPARAM wParam;
        bool endsHover;
    };
    const Row rows[] = {
        {WM_MOUSELEAVE, 0, true},         {WM_KILLFOCUS, 0, true},         {WM_CANCELMODE, 0, true},
        {WM_ACTIVATE, WA_INACTIVE, true}, {WM_ACTIVATE, WA_ACTIVE, false}, {WM_ENABLE, FALSE, true},
    };
    for (const Row& row : rows) {
        Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
        ASSERT_TRUE(m_button.State().isHovered);
        TakeRepaint();
        Send(row.message, row.wParam);
        EXPECT_EQ(m_button.State().isHovered, !row.endsHover) << row.message;
        if (row.endsHover) {
            EXPECT_TRUE(TakeRepaint()) << row.message;
        }
        Send(WM_MOUSELEAVE);
    }
}

} // namespace
} // namespace sitekeeper
