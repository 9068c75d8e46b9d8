// The splash window: what it shows, how long it stays, what it leaves behind.
#include "controls/SplashWnd.h"
#include "support/GuiResources.h"
#include "support/MemoryBitmap.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"
#include "support/TestClock.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <utility>

namespace sitekeeper {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr UINT SplashBitmap = 139;
constexpr UINT NoSuchBitmap = 4711;
constexpr COLORREF Ground = RGB(255, 0, 255);
constexpr Seconds Created = 5000;

/// A window that counts how often it was painted.
class CountingWindow final : public CWnd
{
public:
    CountingWindow()
    {
        CreateOfOwnClass(::GetModuleHandleW(nullptr), L"CountingWindow", WS_POPUP | WS_VISIBLE, {10, 20, 710, 420},
                         nullptr);
    }
    ~CountingWindow() override { DestroyWindow(); }

    int paintings = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_PAINT) {
            ++paintings;
            ::ValidateRect(Handle(), nullptr);
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

class SplashTest : public testing::Test
{
protected:
    SplashTest()
    {
        m_clock.onNow = [this] {
            m_isSeen = true;
            return m_now;
        };
    }

    [[nodiscard]] HWND Window() const { return m_screen.Current() != nullptr ? m_screen.Current()->Handle() : nullptr; }

    /// Hides the splash while a timer, which only comes when messages are handled, moves the clock one second ahead
    /// each time that somebody has looked at it. The second in which the call returned.
    Seconds HideAndWait(int minimumSeconds)
    {
        ModalDriver ticks({{"tick for ever", [this] {
                                m_now += std::exchange(m_isSeen, false) ? 1 : 0;
                                return false;
                            }}});
        m_screen.HideSplashScreen(minimumSeconds);
        ticks.Forgive();
        EXPECT_FALSE(ticks.IsTimedOut());
        return m_now;
    }

    TestApp m_app;
    TestClock m_clock;
    Seconds m_now = Created;
    bool m_isSeen = false;
    SplashScreen m_screen{m_app, m_clock};
};

// --- what it is ------------------------------------------------------------------------------------------------------

TEST_F(SplashTest, IsABareWindowOfTheBitmapsSizeInTheMiddleOfTheScreen)
{
    EXPECT_TRUE(m_screen.ShowSplashScreen(SplashBitmap, nullptr));
    ASSERT_NE(Window(), nullptr);
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(Window(), GWL_STYLE));
    EXPECT_EQ(style & ~DWORD{WS_CLIPSIBLINGS}, DWORD{WS_POPUP | WS_VISIBLE});
    EXPECT_EQ(::GetWindowLongPtrW(Window(), GWL_EXSTYLE), 0);
    EXPECT_EQ(TextOf(Window()), L"");
    EXPECT_EQ(::GetMenu(Window()), nullptr);
    EXPECT_EQ(::GetWindow(Window(), GW_OWNER), nullptr);
    RECT place{};
    ::GetWindowRect(Window(), &place);
    EXPECT_EQ(place.right - place.left, 500);
    EXPECT_EQ(place.bottom - place.top, 300);
    RECT area{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    EXPECT_NEAR(place.left + place.right, area.left + area.right, 1);
    EXPECT_NEAR(place.top + place.bottom, area.top + area.bottom, 1);
}

TEST_F(SplashTest, HasAClassWithAnArrowAndNothingElse)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    EXPECT_EQ(::GetClassLongPtrW(Window(), GCL_STYLE), 0U);
    EXPECT_EQ(::GetClassLongPtrW(Window(), GCLP_HCURSOR),
              reinterpret_cast<ULONG_PTR>(::LoadCursorW(nullptr, IDC_ARROW)));
    EXPECT_EQ(::GetClassLongPtrW(Window(), GCLP_HBRBACKGROUND), 0U);
    EXPECT_EQ(::GetClassLongPtrW(Window(), GCLP_HICON), 0U);
}

TEST_F(SplashTest, StandsOverItsParent)
{
    const CountingWindow parent;
    EXPECT_TRUE(m_screen.ShowSplashScreen(SplashBitmap, &parent));
    EXPECT_EQ(::GetWindow(Window(), GW_OWNER), parent.Handle());
    RECT place{};
    ::GetWindowRect(Window(), &place);
    EXPECT_EQ(place.left, 10 + (700 - 500) / 2);
    EXPECT_EQ(place.top, 20 + (400 - 300) / 2);
}

TEST_F(SplashTest, PaintsTheBitmapAndNothingElse)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    constexpr int Margin = 10;
    MemoryBitmap painted(500 + Margin, 300 + Margin, Ground);
    m_screen.Current()->Paint(painted.Dc());

    MemoryBitmap expected(500 + Margin, 300 + Margin, Ground);
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        ::LoadImageW(m_app.Instance(), MAKEINTRESOURCEW(SplashBitmap), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    ASSERT_TRUE(bitmap);
    {
        const UniqueMemoryDc source(::CreateCompatibleDC(nullptr));
        const SelectScope selected(source.get(), bitmap.get());
        ::BitBlt(expected.Dc(), 0, 0, 500, 300, source.get(), 0, 0, SRCCOPY);
    }
    EXPECT_FALSE(expected.IsAll({0, 0, 500, 300}, expected.Pixel(0, 0))) << "a picture of one colour proves nothing";
    EXPECT_TRUE(painted == expected);
}

TEST_F(SplashTest, IsPaintedBeforeShowReturns)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    MemoryBitmap painted(500, 300, Ground);
    m_screen.Current()->Paint(painted.Dc());
    EXPECT_TRUE(ClientPicture(Window()) == painted);
    EXPECT_EQ(::GetUpdateRect(Window(), nullptr, FALSE), FALSE);
}

// --- one at a time ---------------------------------------------------------------------------------------------------

TEST_F(SplashTest, IsNotShownTwice)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    const HWND first = Window();
    m_now += 10;
    EXPECT_FALSE(m_screen.ShowSplashScreen(SplashBitmap, nullptr));
    EXPECT_EQ(Window(), first);
    EXPECT_EQ(m_screen.Current()->CreationTime(), Created);
    EXPECT_THAT(VisibleWindows(SplashClass), SizeIs(1));
}

TEST_F(SplashTest, StaysCurrentWithoutAPictureUntilItIsHidden)
{
    EXPECT_FALSE(m_screen.ShowSplashScreen(NoSuchBitmap, nullptr));
    EXPECT_NE(m_screen.Current(), nullptr);
    EXPECT_EQ(Window(), nullptr);
    EXPECT_FALSE(m_screen.ShowSplashScreen(SplashBitmap, nullptr)) << "there is one already";
    EXPECT_EQ(HideAndWait(1), Created + 1) << "its time counts all the same";
    EXPECT_EQ(m_screen.Current(), nullptr);
    EXPECT_TRUE(m_screen.ShowSplashScreen(SplashBitmap, nullptr));
}

TEST_F(SplashTest, IsForgottenWhenItsWindowIsDestroyed)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    ::DestroyWindow(Window());
    EXPECT_EQ(m_screen.Current(), nullptr);
    EXPECT_TRUE(m_screen.ShowSplashScreen(SplashBitmap, nullptr));
}

TEST_F(SplashTest, GoesWithItsScreen)
{
    {
        SplashScreen screen(m_app, m_clock);
        screen.ShowSplashScreen(SplashBitmap, nullptr);
        EXPECT_THAT(VisibleWindows(SplashClass), SizeIs(1));
    }
    EXPECT_THAT(VisibleWindows(SplashClass), IsEmpty());
}

// --- how long it stays -----------------------------------------------------------------------------------------------

struct HideCase
{
    const char* name;
    /// Seconds after the splash was made.
    Seconds hidden;
    int minimum;
    Seconds gone;
};
void PrintTo(const HideCase& hide, std::ostream* out)
{
    *out << hide.name;
}

class SplashTimeTest : public SplashTest, public testing::WithParamInterface<HideCase>
{};

TEST_P(SplashTimeTest, StaysUntilTheDeadline)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    m_now = Created + GetParam().hidden;
    EXPECT_EQ(HideAndWait(GetParam().minimum), Created + GetParam().gone);
    EXPECT_EQ(m_screen.Current(), nullptr);
    EXPECT_THAT(VisibleWindows(SplashClass), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(When, SplashTimeTest,
                         testing::Values(HideCase{"HiddenInTheSecondItWasMade", 0, 1, 1},
                                         HideCase{"HiddenInTheSecondOfTheDeadline", 1, 1, 2},
                                         HideCase{"HiddenLater", 2, 1, 2}, HideCase{"HiddenMuchLater", 60, 1, 60},
                                         HideCase{"NoMinimum", 0, 0, 1}, HideCase{"NoMinimumLater", 1, 0, 1},
                                         HideCase{"ThreeSeconds", 1, 3, 3}),
                         [](const auto& when) { return std::string(when.param.name); });

TEST_F(SplashTest, WaitsFromNowWhereThereIsNone)
{
    EXPECT_EQ(HideAndWait(2), Created + 2);
    EXPECT_EQ(HideAndWait(0), Created + 3) << "at least until the next second";
}

TEST_F(SplashTest, HandlesNoMessageWhenItNeedNotWait)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    m_now = Created + 2;
    ::PostThreadMessageW(::GetCurrentThreadId(), WM_APP, 7, 0);
    m_screen.HideSplashScreen(1);
    MSG message{};
    EXPECT_NE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE), FALSE);
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(SplashTest, GoesWhenTheThreadIsToldToQuitAndTellsTheLoopAround)
{
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    ::PostQuitMessage(42);
    m_screen.HideSplashScreen(1); // by a clock that stands still
    EXPECT_EQ(m_screen.Current(), nullptr);
    MSG message{};
    ASSERT_NE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), FALSE);
    EXPECT_EQ(message.wParam, 42U);
}

TEST_F(SplashTest, PaintsTheMainWindowAtOnceWhenItGoes)
{
    CountingWindow main;
    m_app.SetMainWindow(&main);
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    m_now = Created + 2;
    ::InvalidateRect(main.Handle(), nullptr, FALSE);
    main.paintings = 0;
    m_screen.HideSplashScreen(1);
    EXPECT_EQ(main.paintings, 1);

    ::InvalidateRect(main.Handle(), nullptr, FALSE);
    HideAndWait(0);
    EXPECT_EQ(main.paintings, 2) << "also without a splash";
    m_app.SetMainWindow(nullptr);
}

TEST_F(SplashTest, GoesAtOnceWithATimerMessage)
{
    CountingWindow main;
    m_app.SetMainWindow(&main);
    m_screen.ShowSplashScreen(SplashBitmap, nullptr);
    ::InvalidateRect(main.Handle(), nullptr, FALSE);
    main.paintings = 0;
    ::SendMessageW(Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(m_screen.Current(), nullptr);
    EXPECT_THAT(VisibleWindows(SplashClass), IsEmpty());
    EXPECT_EQ(main.paintings, 1);
    EXPECT_EQ(m_now, Created);
    m_app.SetMainWindow(nullptr);
}

TEST_F(SplashTest, LeavesNothingBehind)
{
    const auto showAndHide = [this] {
        EXPECT_TRUE(m_screen.ShowSplashScreen(SplashBitmap, nullptr));
        m_screen.Remove();
    };
    showAndHide();
    const unsigned drawingObjects = CountGdiObjects();
    const std::size_t windows = CountThreadWindows();
    for (int i = 0; i < 50; ++i) {
        showAndHide();
    }
    EXPECT_EQ(CountGdiObjects(), drawingObjects);
    EXPECT_EQ(CountThreadWindows(), windows);
}

} // namespace
} // namespace sitekeeper
