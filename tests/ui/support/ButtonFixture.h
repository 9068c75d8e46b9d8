// A bitmap button in a window of its own.
#pragma once

#include "controls/ButtonST.h"
#include "support/IconPixels.h"
#include "support/MemoryBitmap.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {

/// A visible window with one push button in it, which a CButtonST has taken over.
class ButtonSTTest : public testing::Test
{
protected:
    explicit ButtonSTTest(DWORD kind = BS_PUSHBUTTON)
        : m_owner(::CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, 100, 100, 200, 100, nullptr, nullptr,
                                    nullptr, nullptr)),
          m_window(::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | kind, 10, 10, 40, 28, m_owner, nullptr,
                                     nullptr, nullptr))
    {
        m_button.SubclassWindow(m_window);
        ::UpdateWindow(m_owner);
        ::ValidateRect(m_window, nullptr);
    }
    ~ButtonSTTest() override { ::DestroyWindow(m_owner); }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendMessageW(m_window, message, wParam, lParam);
    }

    /// Whether the button is to be painted again; asking settles it.
    bool TakeRepaint()
    {
        const bool isInvalid = ::GetUpdateRect(m_window, nullptr, FALSE) != FALSE;
        ::ValidateRect(m_window, nullptr);
        return isInvalid;
    }

    [[nodiscard]] LONG_PTR Kind() const { return ::GetWindowLongPtrW(m_window, GWL_STYLE) & BS_TYPEMASK; }

    MemoryBitmap Painted(UINT itemState)
    {
        MemoryBitmap picture(40, 28, RGB(255, 0, 255));
        m_button.Paint(picture.Dc(), picture.Bounds(), itemState);
        return picture;
    }

    COLORREF MiddlePixel(UINT itemState) { return Painted(itemState).Pixel(20, 14); }

    void GiveTwoIcons()
    {
        ASSERT_EQ(m_button.SetIcon(MakeTestIcon(8, 8, 0x00FF0000).release(), MakeTestIcon(8, 8, 0x000000FF).release()),
                  ButtonResult::Done);
    }

    HWND m_owner;
    HWND m_window;
    CButtonST m_button;
};

class DefaultButtonSTTest : public ButtonSTTest
{
protected:
    DefaultButtonSTTest() : ButtonSTTest(BS_DEFPUSHBUTTON) {}
};

class CheckButtonSTTest : public ButtonSTTest
{
protected:
    CheckButtonSTTest() : ButtonSTTest(BS_AUTOCHECKBOX) {}
};

} // namespace sitekeeper
