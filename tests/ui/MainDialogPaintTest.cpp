// How the main dialog paints itself while it is minimised.
#include "support/MainDialogFixture.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

/// What the dialog does when it is asked to paint itself.
struct Painting
{
    int iconErasings = 0;
    /// Where the device context begins on the screen; a minimised window may get that of its whole frame.
    POINT origin{};
};

class MainDialogPaintTest : public MainDialogTest
{
protected:
    static Painting Paint(const MainDialogPage& page)
    {
        Painting painting;
        const MessageWatch watch([&](const CWPSTRUCT& call) {
            if (call.hwnd == page.Window() && call.message == WM_ICONERASEBKGND) {
                ++painting.iconErasings;
                EXPECT_NE(::GetDCOrgEx(reinterpret_cast<HDC>(call.wParam), &painting.origin), FALSE);
            }
        });
        ::SendMessageW(page.Window(), WM_PAINT, 0, 0);
        return painting;
    }

    /// Only the ground is left, odd in width and height so that rounding shows, and nothing is to be painted.
    static void LeaveOddGround(const MainDialogPage& page)
    {
        RECT client{};
        ::GetClientRect(page.Window(), &client);
        const RECT place = page.ScreenRectangle();
        ::SetWindowPos(page.Window(), nullptr, 0, 0, place.right - place.left + (client.right + 1) % 2,
                       place.bottom - place.top + (client.bottom + 1) % 2, SWP_NOMOVE | SWP_NOZORDER);
        for (HWND child = ::GetWindow(page.Window(), GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            ::ShowWindow(child, SW_HIDE);
        }
        ::UpdateWindow(page.Window());
    }
};

TEST_F(MainDialogPaintTest, ErasesTheIconsBackgroundOnlyWhileMinimised)
{
    int open = 99;
    int minimised = 99;
    Run({Do("paint", [&open](const MainDialogPage& page) { open = Paint(page).iconErasings; }),
         Do("minimise", [](const MainDialogPage& page) { ::ShowWindow(page.Window(), SW_MINIMIZE); }),
         Await("wait for it", [](const MainDialogPage& page) { return ::IsIconic(page.Window()) != FALSE; }),
         Do("paint", [&minimised](const MainDialogPage& page) { minimised = Paint(page).iconErasings; }),
         Press(IDCANCEL)});
    EXPECT_EQ(open, 0);
    EXPECT_EQ(minimised, 1);
}

TEST_F(MainDialogPaintTest, DrawsTheIconInTheMiddleWhileMinimised)
{
    // A window that is really minimised may have no client area at all; with the mark alone the dialog keeps its size.
    Run({Do("paint",
            [](const MainDialogPage& page) {
                const HWND window = page.Window();
                LeaveOddGround(page);
                const MemoryBitmap before = ClientPicture(window);
                const COLORREF ground = before.Pixel(0, 0);
                ASSERT_TRUE(before.IsAll(before.Bounds(), ground));
                ASSERT_EQ(before.Width() % 2 + before.Height() % 2, 2);
                const LONG_PTR style = ::GetWindowLongPtrW(window, GWL_STYLE);
                ::SetWindowLongPtrW(window, GWL_STYLE, style | WS_MINIMIZE);
                ASSERT_NE(::IsIconic(window), FALSE);
                ::InvalidateRect(window, nullptr, TRUE);
                const Painting painting = Paint(page);
                const MemoryBitmap painted = ClientPicture(window);
                ::SetWindowLongPtrW(window, GWL_STYLE, style);

                POINT client{};
                ::ClientToScreen(window, &client);
                const int left = (painted.Width() - ::GetSystemMetrics(SM_CXICON) + 1) / 2;
                const int top = (painted.Height() - ::GetSystemMetrics(SM_CYICON) + 1) / 2;
                MemoryBitmap expected(painted.Width(), painted.Height(), ground);
                ::DrawIcon(expected.Dc(), left + painting.origin.x - client.x, top + painting.origin.y - client.y,
                           reinterpret_cast<HICON>(::SendMessageW(window, WM_GETICON, ICON_BIG, 0)));
                EXPECT_FALSE(expected.IsAll(expected.Bounds(), ground));
                EXPECT_TRUE(painted == expected);
            }),
         Press(IDCANCEL)});
}

} // namespace
} // namespace sitekeeper
