// The drawing rules of the bitmap button, pixel by pixel: background and border.
#include "support/ButtonPainterFixture.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

// --- background ------------------------------------------------------------------------------------------------

TEST_F(ButtonPainterTest, FillsWithTheColourOfTheState)
{
    struct Row
    {
        bool isHovered, isPressed, isFocused;
        COLORREF expected;
    };
    const Row rows[] = {
        {false, false, false, NormalGround}, {false, false, true, FocusedGround}, {true, false, false, HoveredGround},
        {true, false, true, HoveredGround},  {false, true, false, HoveredGround}, {false, true, true, HoveredGround},
    };
    m_style.drawsBorder = false;
    for (const Row& row : rows) {
        m_state = {row.isPressed, row.isFocused, false, row.isHovered, false};
        Paint();
        EXPECT_TRUE(m_picture.IsAll(Button, row.expected)) << row.isHovered << row.isPressed << row.isFocused;
        ExpectNothingBesideTheButton();
    }
}

TEST_F(ButtonPainterTest, LeavesTheBackgroundOfATransparentButton)
{
    m_style.isTransparent = true;
    Paint();
    EXPECT_TRUE(m_picture.IsAll(m_picture.Bounds(), Ground));
}

TEST_F(ButtonPainterTest, LeavesTheDeviceContextAsItWas)
{
    Use3dLook();
    m_state.isFocused = true;
    m_face.caption = L"Caption";
    ::SetBkMode(m_picture.Dc(), OPAQUE);
    ::SetTextColor(m_picture.Dc(), RGB(1, 2, 3));
    const HGDIOBJ font = ::GetCurrentObject(m_picture.Dc(), OBJ_FONT);
    Paint();
    EXPECT_EQ(::GetBkMode(m_picture.Dc()), OPAQUE);
    EXPECT_EQ(::GetTextColor(m_picture.Dc()), RGB(1, 2, 3));
    EXPECT_EQ(::GetCurrentObject(m_picture.Dc(), OBJ_FONT), font);
}

// --- border ----------------------------------------------------------------------------------------------------

TEST_F(ButtonPainterTest, Draws3dLookWithFourLines)
{
    Use3dLook();
    Paint();
    Expect3dRectangle(Button, System(COLOR_BTNHILIGHT), System(COLOR_3DDKSHADOW));
    Expect3dRectangle(Inside(Button, 1), System(COLOR_3DLIGHT), System(COLOR_BTNSHADOW));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 2), NormalGround));
    ExpectNothingBesideTheButton();
}

TEST_F(ButtonPainterTest, DrawsABlackFrameAroundTheDefaultButtonIn3dLook)
{
    Use3dLook();
    m_style.isDefault = true;
    Paint();
    ExpectFrame(Button, Black);
    Expect3dRectangle(Inside(Button, 1), System(COLOR_BTNHILIGHT), System(COLOR_3DDKSHADOW));
    Expect3dRectangle(Inside(Button, 2), System(COLOR_3DLIGHT), System(COLOR_BTNSHADOW));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 3), NormalGround));
}

TEST_F(ButtonPainterTest, FramesADarkButtonInTheColourOfItsText)
{
    constexpr COLORREF Yellow = RGB(255, 255, 0);
    Use3dLook();
    m_style.focused = {Black, Yellow}; // as high-contrast colours have it: a black frame could not be seen
    m_state.isFocused = true;
    Paint();
    ExpectFrame(Button, Yellow);
}

TEST_F(ButtonPainterTest, DrawsAFocusedButtonIn3dLookWithFrameAndFocusRectangle)
{
    Use3dLook();
    m_state.isFocused = true;
    Paint();
    ExpectFrame(Button, Black);
    Expect3dRectangle(Inside(Button, 1), System(COLOR_BTNHILIGHT), System(COLOR_3DDKSHADOW));
    Expect3dRectangle(Inside(Button, 2), System(COLOR_3DLIGHT), System(COLOR_BTNSHADOW));
    // Every second pixel of the focus rectangle is inverted, and nothing else inside is touched.
    const RECT inked = m_picture.Inked(Inside(Button, 3), FocusedGround);
    const RECT focus = Inside(Button, 3);
    EXPECT_NE(::EqualRect(&inked, &focus), FALSE);
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 4), FocusedGround));
    const bool isFirstInverted = m_picture.Pixel(focus.left, focus.top) != FocusedGround;
    for (int x = focus.left; x < focus.right; ++x) {
        const bool isInverted = ((x - focus.left) % 2 == 0) == isFirstInverted;
        EXPECT_EQ(m_picture.Pixel(x, focus.top), isInverted ? FocusedGround ^ 0xFFFFFF : FocusedGround) << x;
    }
}

TEST_F(ButtonPainterTest, DrawsAPressedButtonIn3dLookWithOneFrame)
{
    Use3dLook();
    m_state.isPressed = true;
    Paint();
    ExpectFrame(Button, System(COLOR_BTNSHADOW));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 1), HoveredGround));
}

TEST_F(ButtonPainterTest, DrawsThePressedFrameInsideTheBlackOne)
{
    Use3dLook();
    m_state.isPressed = true;
    m_style.isDefault = true;
    Paint();
    ExpectFrame(Button, Black);
    ExpectFrame(Inside(Button, 1), System(COLOR_BTNSHADOW));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 2), HoveredGround));
}

TEST_F(ButtonPainterTest, DrawsTheFlatLookWithoutFrameOrFocus)
{
    m_style.isDefault = true;
    m_state.isFocused = true;
    Paint();
    EXPECT_TRUE(m_picture.IsAll(Button, FocusedGround));
}

TEST_F(ButtonPainterTest, DrawsAHoveredFlatButtonRaised)
{
    m_state.isHovered = true;
    Paint();
    Expect3dRectangle(Button, System(COLOR_BTNHILIGHT), System(COLOR_BTNSHADOW));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 1), HoveredGround));
}

TEST_F(ButtonPainterTest, DrawsAPressedFlatButtonSunken)
{
    m_state.isPressed = true;
    m_state.isHovered = true;
    Paint();
    Expect3dRectangle(Button, System(COLOR_BTNSHADOW), System(COLOR_BTNHILIGHT));
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 1), HoveredGround));
}

TEST_F(ButtonPainterTest, DrawsTheFocusOfAFlatButtonWhenTold)
{
    m_style.drawsFlatFocus = true;
    m_state.isFocused = true;
    Paint();
    const RECT inked = m_picture.Inked(Button, FocusedGround);
    const RECT focus = Inside(Button, 3);
    EXPECT_NE(::EqualRect(&inked, &focus), FALSE);
}

TEST_F(ButtonPainterTest, DrawsTheFocusInsideTheButtonNotInsideItsFrame)
{
    // The same distance from the edge with the black frame and without it.
    m_style.drawsFlatFocus = true;
    m_state.isFocused = true;
    Paint();
    const COLORREF flat = m_picture.Pixel(Button.left + 3, Button.top + 3);
    Use3dLook();
    Paint();
    EXPECT_EQ(m_picture.Pixel(Button.left + 3, Button.top + 3), flat);
    EXPECT_TRUE(m_picture.IsAll(Inside(Button, 4), FocusedGround));
}

} // namespace
} // namespace sitekeeper
