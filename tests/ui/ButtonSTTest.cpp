// The bitmap button as an object and as a window: state, look, messages, what it owns.
#include "res/UiTestIds.h"
#include "support/ButtonFixture.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <string>

namespace sitekeeper {
namespace {

// --- state and attaching -----------------------------------------------------------------------------------------

TEST(NewButtonSTTest, HasTheDefaults)
{
    const CButtonST button;
    const ButtonStyle& style = button.Style();
    EXPECT_TRUE(style.isFlat);
    EXPECT_TRUE(style.drawsBorder);
    EXPECT_FALSE(style.drawsFlatFocus);
    EXPECT_FALSE(style.isTransparent);
    EXPECT_FALSE(style.isCheckBox);
    EXPECT_FALSE(style.isDefault);
    EXPECT_EQ(style.alignment, ImageAlignment::BesideText);
    EXPECT_EQ(style.pressedOffset.x, 1);
    EXPECT_EQ(style.pressedOffset.y, 1);
    EXPECT_EQ(style.margin.cx, 3);
    EXPECT_EQ(style.margin.cy, 3);
    for (const ButtonColours& colours : {style.hovered, style.normal, style.focused}) {
        EXPECT_EQ(colours.background, ::GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(colours.text, ::GetSysColor(COLOR_BTNTEXT));
    }
    EXPECT_FALSE(button.State().isHovered);
    EXPECT_FALSE(button.GetCheck());
    EXPECT_EQ(button.GetURL(), L"");
    EXPECT_EQ(button.Tooltip(), nullptr);
}

TEST_F(ButtonSTTest, BecomesOwnerDrawn)
{
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    EXPECT_FALSE(m_button.Style().isDefault);
    EXPECT_FALSE(m_button.IsCheckBox());
    EXPECT_EQ(Send(WM_GETDLGCODE), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
}

TEST_F(DefaultButtonSTTest, RemembersThatItWasTheDefaultButton)
{
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    EXPECT_TRUE(m_button.Style().isDefault);
    EXPECT_EQ(Send(WM_GETDLGCODE), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
}

TEST_F(ButtonSTTest, StaysOwnerDrawnWhenTheDialogMovesTheDefaultMark)
{
    TakeRepaint();
    Send(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    EXPECT_TRUE(m_button.Style().isDefault);
    EXPECT_TRUE(TakeRepaint());
    Send(BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    EXPECT_FALSE(m_button.Style().isDefault);
}

TEST_F(ButtonSTTest, TakesItsStateFromTheDrawRequest)
{
    Painted(ODS_SELECTED | ODS_FOCUS | ODS_DISABLED | ODS_NOACCEL);
    EXPECT_TRUE(m_button.State().isPressed);
    EXPECT_TRUE(m_button.State().isFocused);
    EXPECT_TRUE(m_button.State().isDisabled);
    EXPECT_TRUE(m_button.State().hidesAccelerator);
    Painted(0);
    EXPECT_FALSE(m_button.State().isPressed);
    EXPECT_FALSE(m_button.State().isFocused);
    EXPECT_FALSE(m_button.State().isDisabled);
    EXPECT_FALSE(m_button.State().hidesAccelerator);
}

// --- look ------------------------------------------------------------------------------------------------------

TEST_F(ButtonSTTest, RepaintsOnlyWhenTold)
{
    const ButtonColours colours{RGB(1, 1, 1), RGB(2, 2, 2)};
    for (const bool repaint : {false, true}) {
        m_button.SetFlat(false, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetAlign(ImageAlignment::AboveText, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetPressedStyle(1, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetDrawBorder(false, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetDrawFlatFocus(true, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetTransparent(true, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetColors(colours, colours, colours, repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
        m_button.SetDefaultColors(repaint);
        EXPECT_EQ(TakeRepaint(), repaint);
    }
}

TEST_F(ButtonSTTest, KnowsTwoPressedStyles)
{
    EXPECT_EQ(m_button.SetPressedStyle(1, false), ButtonResult::Done);
    EXPECT_EQ(m_button.Style().pressedOffset.x, 0);
    EXPECT_EQ(m_button.Style().pressedOffset.y, 2);
    for (const int other : {2, -1, 6}) {
        EXPECT_EQ(m_button.SetPressedStyle(other, true), ButtonResult::BadPressedStyle);
    }
    EXPECT_EQ(static_cast<int>(ButtonResult::BadPressedStyle), 6);
    EXPECT_FALSE(TakeRepaint());
    EXPECT_EQ(m_button.Style().pressedOffset.y, 2);
    EXPECT_EQ(m_button.SetPressedStyle(0, false), ButtonResult::Done);
    EXPECT_EQ(m_button.Style().pressedOffset.x, 1);
    EXPECT_EQ(m_button.Style().pressedOffset.y, 1);
}

TEST_F(ButtonSTTest, TakesTheSystemsColoursWhenTheyChange)
{
    const ButtonColours colours{RGB(1, 1, 1), RGB(2, 2, 2)};
    m_button.SetColors(colours, colours, colours, false);
    EXPECT_EQ(m_button.Style().hovered.background, RGB(1, 1, 1));
    Send(WM_SYSCOLORCHANGE);
    EXPECT_EQ(m_button.Style().hovered.background, ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(m_button.Style().focused.text, ::GetSysColor(COLOR_BTNTEXT));
    EXPECT_TRUE(TakeRepaint());
}

TEST_F(ButtonSTTest, ShowsTheParentsBackgroundWhenTransparent)
{
    m_button.SetTransparent(true, true);
    const ButtonColours colours{RGB(1, 1, 1), RGB(2, 2, 2)};
    m_button.SetColors(colours, colours, colours, false);
    const MemoryBitmap picture = Painted(0);
    EXPECT_NE(picture.Pixel(20, 14), RGB(1, 1, 1));
    m_button.SetTransparent(false, true);
    EXPECT_EQ(MiddlePixel(0), RGB(1, 1, 1));
}

TEST_F(ButtonSTTest, RepaintsWhenItIsEnabledOrDisabled)
{
    ::EnableWindow(m_window, FALSE);
    EXPECT_TRUE(TakeRepaint());
    ::EnableWindow(m_window, TRUE);
    EXPECT_TRUE(TakeRepaint());
}

// --- hyperlink, check box ----------------------------------------------------------------------------------------

TEST_F(ButtonSTTest, KeepsUpTo260CharactersOfALink)
{
    const std::wstring longest(260, L'a');
    m_button.SetURL(longest.c_str());
    EXPECT_EQ(m_button.GetURL(), longest);
    m_button.SetURL((longest + L"b").c_str());
    EXPECT_EQ(m_button.GetURL(), longest);
    m_button.SetURL(nullptr);
    EXPECT_EQ(m_button.GetURL(), L"");
}

TEST_F(ButtonSTTest, IsNeverCheckedAsAPushButton)
{
    m_button.SetCheck(true, true);
    EXPECT_FALSE(m_button.GetCheck());
    Send(BM_SETCHECK, BST_CHECKED);
    EXPECT_EQ(Send(BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(CheckButtonSTTest, IsPressedWhileChecked)
{
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    ASSERT_TRUE(m_button.IsCheckBox());
    EXPECT_EQ(Send(WM_GETDLGCODE), DLGC_BUTTON);
    Send(BM_SETCHECK, BST_CHECKED);
    EXPECT_TRUE(TakeRepaint());
    EXPECT_TRUE(m_button.GetCheck());
    EXPECT_EQ(Send(BM_GETCHECK), BST_CHECKED);
    Painted(0);
    EXPECT_TRUE(m_button.State().isPressed);
    m_button.SetCheck(false, true);
    EXPECT_EQ(Send(BM_GETCHECK), BST_UNCHECKED);
    Painted(0);
    EXPECT_FALSE(m_button.State().isPressed);
    Painted(ODS_SELECTED);
    EXPECT_TRUE(m_button.State().isPressed);
}

TEST_F(CheckButtonSTTest, IsNeverTheDefaultButton)
{
    Send(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(Kind(), BS_OWNERDRAW);
    EXPECT_FALSE(m_button.Style().isDefault);
}

TEST_F(CheckButtonSTTest, DoesNotMoveItsImage)
{
    m_button.SetIcon(MakeTestIcon(16, 16, 0x00FF0000).release());
    m_button.SetCheck(true, true);
    EXPECT_TRUE(Painted(ODS_SELECTED).IsAll({12, 6, 28, 22}, RGB(255, 0, 0)));
}

// --- cursor, what it owns ------------------------------------------------------------------------------------------

TEST_F(ButtonSTTest, ShowsItsOwnCursorWhenItHasOne)
{
    ::SetCursor(nullptr);
    Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(m_window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    const HCURSOR usual = ::GetCursor();
    m_button.SetHandCursor();
    EXPECT_EQ(Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(m_window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)), TRUE);
    EXPECT_NE(::GetCursor(), nullptr);
    EXPECT_NE(::GetCursor(), usual);
    m_button.SetCursor(UniqueCursor());
    Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(m_window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(::GetCursor(), usual);
}

TEST(ButtonSTOwnershipTest, FreesWhatTheButtonOwns)
{
    const HICON in = MakeTestIcon(8, 8, 0x00FF0000).release();
    const HICON out = MakeTestIcon(8, 8, 0x000000FF).release();
    const HMENU menu = ::LoadMenuW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_TEST_MENU));
    const HCURSOR cursor = ::CopyIcon(::LoadCursorW(nullptr, IDC_HAND));
    ASSERT_TRUE(::IsMenu(menu));
    {
        CButtonST button;
        button.SetIcon(in, out);
        button.SetMenu(UniqueMenu(menu), nullptr);
        button.SetCursor(UniqueCursor(cursor));
    }
    EXPECT_FALSE(MeasureIcon(in));
    EXPECT_FALSE(MeasureIcon(out));
    EXPECT_FALSE(MeasureIcon(cursor));
    EXPECT_FALSE(::IsMenu(menu));
}

TEST(ButtonSoundTest, LoadsTheMultimediaLibraryForTheFirstSoundAndKeepsIt)
{
    const auto library = [] { return ::GetModuleHandleW(L"winmm.dll"); };
    const HMODULE before = library();
    {
        ButtonSound silent;
        EXPECT_EQ(library(), before);
        ButtonSound sound;
        sound.Play(L"no such sound.wav"); // what it reports differs between systems
        EXPECT_NE(library(), nullptr);
    }
    EXPECT_NE(library(), nullptr); // its player thread may still run
}

} // namespace
} // namespace sitekeeper
