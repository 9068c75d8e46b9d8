// The images of the bitmap button: which one is shown, where they come from, who frees them.
#include "res/ResourceIds.h"
#include "support/ButtonFixture.h"
#include "support/GuiResources.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <utility>

namespace sitekeeper {
namespace {

constexpr COLORREF Ground = RGB(255, 0, 255);
constexpr UINT NoSuchIcon = 4711;

HINSTANCE Resources()
{
    return ::GetModuleHandleW(nullptr);
}

// --- images ----------------------------------------------------------------------------------------------------

TEST_F(ButtonSTTest, CentresItsOnlyIconAndMovesItWhilePressed)
{
    m_button.SetIcon(MakeTestIcon(16, 16, 0x00FF0000).release());
    m_button.SetFlat(false, true);
    MemoryBitmap picture = Painted(0);
    EXPECT_TRUE(picture.IsAll({12, 6, 28, 22}, RGB(255, 0, 0)));
    EXPECT_NE(picture.Pixel(11, 6), RGB(255, 0, 0));
    EXPECT_NE(picture.Pixel(28, 21), RGB(255, 0, 0));
    picture = Painted(ODS_SELECTED);
    EXPECT_TRUE(picture.IsAll({13, 7, 29, 23}, RGB(255, 0, 0)));
    EXPECT_NE(picture.Pixel(12, 7), RGB(255, 0, 0));
    EXPECT_EQ(m_button.SetPressedStyle(1, false), ButtonResult::Done);
    EXPECT_TRUE(Painted(ODS_SELECTED).IsAll({12, 8, 28, 24}, RGB(255, 0, 0)));
}

TEST_F(ButtonSTTest, ShowsIconInWhilePressedOrHoveredAndIconOutOtherwise)
{
    GiveTwoIcons();
    EXPECT_EQ(MiddlePixel(0), RGB(0, 0, 255));
    EXPECT_EQ(MiddlePixel(ODS_FOCUS), RGB(0, 0, 255));
    EXPECT_EQ(MiddlePixel(ODS_SELECTED), RGB(255, 0, 0));
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    ASSERT_TRUE(m_button.State().isHovered);
    EXPECT_EQ(MiddlePixel(0), RGB(255, 0, 0));
}

TEST_F(CheckButtonSTTest, ShowsIconOutAlsoWhileHovered)
{
    GiveTwoIcons();
    Send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    ASSERT_TRUE(m_button.State().isHovered);
    EXPECT_EQ(MiddlePixel(0), RGB(0, 0, 255));
    m_button.SetCheck(true, false);
    EXPECT_EQ(MiddlePixel(0), RGB(255, 0, 0));
}

TEST_F(ButtonSTTest, LoadsTheProgramsIconsFromTheResources)
{
    EXPECT_EQ(m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16), ButtonResult::Done);
    EXPECT_TRUE(TakeRepaint());
    MemoryBitmap expected = [] {
        CButtonST plain;
        MemoryBitmap picture(40, 28, Ground);
        plain.Paint(picture.Dc(), picture.Bounds(), 0);
        return picture;
    }();
    const UniqueIcon icon(static_cast<HICON>(
        ::LoadImageW(Resources(), MAKEINTRESOURCEW(IDI_BROWSE), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR)));
    ::DrawStateW(expected.Dc(), nullptr, nullptr, reinterpret_cast<LPARAM>(icon.get()), 0, 12, 6, 16, 16, DST_ICON);
    EXPECT_TRUE(Painted(0) == expected);
}

TEST_F(ButtonSTTest, MakesIconOutOfIconIn)
{
    const auto paintedWith = [this](int iconOut, int size) {
        EXPECT_EQ(m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16, iconOut, size, size), ButtonResult::Done);
        return Painted(0);
    };
    const MemoryBitmap plain = paintedWith(CButtonST::NoIcon, 0);
    const MemoryBitmap darker = paintedWith(CButtonST::DarkerCopy, 0);
    const MemoryBitmap grey = paintedWith(CButtonST::GreyCopy, 0);
    const MemoryBitmap other = paintedWith(IDI_OPEN_FOLDER, 16);
    EXPECT_FALSE(plain == darker);
    EXPECT_FALSE(plain == grey);
    EXPECT_FALSE(darker == grey);
    EXPECT_FALSE(plain == other);
    m_button.SetIcon(Resources(), IDI_OPEN_FOLDER, 16, 16);
    EXPECT_TRUE(Painted(0) == other);
}

TEST_F(ButtonSTTest, HasNoImageAfterAMissingIcon)
{
    const MemoryBitmap empty = Painted(0);
    for (const auto& [in, out] : {std::pair<UINT, int>{NoSuchIcon, 0},
                                  {NoSuchIcon, CButtonST::DarkerCopy},
                                  {IDI_BROWSE, static_cast<int>(NoSuchIcon)}}) {
        m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16, CButtonST::DarkerCopy);
        ASSERT_FALSE(Painted(0) == empty);
        EXPECT_EQ(m_button.SetIcon(Resources(), in, 16, 16, out, 16, 16), ButtonResult::BadIcon);
        EXPECT_TRUE(Painted(0) == empty) << in << ", " << out;
    }
}

TEST_F(ButtonSTTest, FreesEverythingWhenAnIconCannotBeMeasured)
{
    HICON dead = nullptr;
    {
        const UniqueIcon icon = MakeTestIcon(8, 8, 0x00FF0000);
        dead = icon.get();
    }
    GiveTwoIcons();
    const HICON good = MakeTestIcon(8, 8, 0x00FF0000).release();
    EXPECT_EQ(m_button.SetIcon(good, dead), ButtonResult::BadIcon);
    EXPECT_FALSE(MeasureIcon(good));
    EXPECT_EQ(MiddlePixel(0), ::GetSysColor(COLOR_BTNFACE));
    GiveTwoIcons();
    EXPECT_EQ(m_button.SetIcon(dead), ButtonResult::BadIcon);
    EXPECT_EQ(MiddlePixel(0), ::GetSysColor(COLOR_BTNFACE));
}

TEST_F(ButtonSTTest, OwnsTheIconsItIsGiven)
{
    const HICON first = MakeTestIcon(8, 8, 0x00FF0000).release();
    const HICON second = MakeTestIcon(8, 8, 0x0000FF00).release();
    m_button.SetIcon(first, first); // one icon for both is freed once
    EXPECT_TRUE(MeasureIcon(first));
    m_button.SetIcon(second);
    EXPECT_FALSE(MeasureIcon(first));
    m_button.SetIcon(HICON{nullptr});
    EXPECT_FALSE(MeasureIcon(second));
}

TEST_F(ButtonSTTest, ShowsABitmapInsteadOfAnIcon)
{
    MemoryBitmap source(8, 8, RGB(0, 255, 0));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(source.Dc(), 8, 8));
    {
        const UniqueMemoryDc dc(::CreateCompatibleDC(nullptr));
        const SelectScope selected(dc.get(), bitmap.get());
        ::BitBlt(dc.get(), 0, 0, 8, 8, source.Dc(), 0, 0, SRCCOPY);
        ::SetPixelV(dc.get(), 0, 0, RGB(9, 9, 9));
    }
    EXPECT_EQ(m_button.SetBitmaps(bitmap.get(), RGB(9, 9, 9)), ButtonResult::Done);
    const MemoryBitmap picture = Painted(0);
    EXPECT_EQ(picture.Pixel(20, 14), RGB(0, 255, 0));
    EXPECT_EQ(picture.Pixel(16, 10), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(m_button.SetBitmaps(reinterpret_cast<HBITMAP>(m_owner), std::nullopt), ButtonResult::BadIcon);
    EXPECT_EQ(MiddlePixel(0), ::GetSysColor(COLOR_BTNFACE));
}

TEST_F(ButtonSTTest, LeaksNothingHoweverOftenItsImageChanges)
{
    const auto change = [this] {
        m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16, CButtonST::DarkerCopy);
        m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16, CButtonST::GreyCopy);
        m_button.SetIcon(Resources(), NoSuchIcon, 16, 16);
        m_button.SetIcon(MakeTestIcon(8, 8, 0x00FF0000).release(), MakeTestIcon(8, 8, 0x000000FF).release());
        static_cast<void>(Painted(ODS_FOCUS));
        static_cast<void>(Painted(ODS_DISABLED));
        m_button.SetIcon(Resources(), IDI_BROWSE, 16, 16);
    };
    change(); // what the system keeps from the first time on
    const unsigned gdi = CountGdiObjects();
    const unsigned user = CountUserObjects();
    for (int i = 0; i < 50; ++i) {
        change();
    }
    EXPECT_EQ(CountGdiObjects(), gdi);
    EXPECT_EQ(CountUserObjects(), user);
}

} // namespace
} // namespace sitekeeper
