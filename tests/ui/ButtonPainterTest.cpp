// The drawing rules of the bitmap button, pixel by pixel.
#include "controls/ButtonPainter.h"

#include "support/IconPixels.h"
#include "support/MemoryBitmap.h"
#include "support/Wine.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

constexpr COLORREF Ground = RGB(255, 0, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF HoveredGround = RGB(240, 200, 10);
constexpr COLORREF NormalGround = RGB(10, 240, 200);
constexpr COLORREF FocusedGround = RGB(200, 10, 240);
constexpr COLORREF HoveredText = RGB(200, 0, 0);
constexpr COLORREF NormalText = RGB(0, 100, 0);
constexpr COLORREF FocusedText = RGB(0, 0, 150);
constexpr COLORREF IconColour = RGB(20, 40, 60);

COLORREF System(int index)
{
    return ::GetSysColor(index);
}

/// A button in the middle of a picture, so that drawing beside it would show.
class ButtonPainterTest : public testing::Test
{
protected:
    ButtonPainterTest()
    {
        m_style.hovered = {HoveredGround, HoveredText};
        m_style.normal = {NormalGround, NormalText};
        m_style.focused = {FocusedGround, FocusedText};
    }

    void Use3dLook() { m_style.isFlat = false; }

    void Paint() { PaintButton(m_picture.Dc(), Button, m_style, m_state, m_face); }

    void GiveIcon(int width, int height)
    {
        m_icon = MakeTestIcon(width, height, 0x0014283C);
        m_face.icon = m_icon.get();
        m_face.iconSize = {width, height};
    }

    /// Without smoothing, so that all its pixels have the text's own colour.
    void GiveCaption(const wchar_t* caption)
    {
        m_font.reset(::CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                   CLIP_DEFAULT_PRECIS, NONANTIALIASED_QUALITY, DEFAULT_PITCH, L"Segoe UI"));
        m_face.caption = caption;
        m_face.font = m_font.get();
    }

    /// One-pixel lines inside `r`, as a 3D rectangle has them; the far corners belong to the lower right.
    void Expect3dRectangle(const RECT& r, COLORREF upperLeft, COLORREF lowerRight)
    {
        EXPECT_TRUE(m_picture.IsAll({r.left, r.top, r.right - 1, r.top + 1}, upperLeft)) << "top";
        EXPECT_TRUE(m_picture.IsAll({r.left, r.top, r.left + 1, r.bottom - 1}, upperLeft)) << "left";
        EXPECT_TRUE(m_picture.IsAll({r.left, r.bottom - 1, r.right, r.bottom}, lowerRight)) << "bottom";
        EXPECT_TRUE(m_picture.IsAll({r.right - 1, r.top, r.right, r.bottom}, lowerRight)) << "right";
    }
    void ExpectFrame(const RECT& r, COLORREF colour) { Expect3dRectangle(r, colour, colour); }

    void ExpectNothingBesideTheButton()
    {
        EXPECT_TRUE(m_picture.IsAll({0, 0, Width, Button.top}, Ground));
        EXPECT_TRUE(m_picture.IsAll({0, Button.bottom, Width, Height}, Ground));
        EXPECT_TRUE(m_picture.IsAll({0, 0, Button.left, Height}, Ground));
        EXPECT_TRUE(m_picture.IsAll({Button.right, 0, Width, Height}, Ground));
    }

    static RECT Inside(const RECT& r, int distance)
    {
        return {r.left + distance, r.top + distance, r.right - distance, r.bottom - distance};
    }

    static constexpr int Width = 60;
    static constexpr int Height = 40;
    static constexpr RECT Button{5, 4, 45, 32}; // 40 by 28

    MemoryBitmap m_picture{Width, Height, Ground};
    ButtonStyle m_style;
    ButtonState m_state;
    ButtonFace m_face;
    UniqueIcon m_icon;
    UniqueFont m_font;
};

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
    for (int x = focus.left; x < focus.right; ++x) {
        const bool isInverted = (x - focus.left) % 2 == (m_picture.Pixel(focus.left, focus.top) == FocusedGround);
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

// --- image -----------------------------------------------------------------------------------------------------

TEST_F(ButtonPainterTest, PlacesTheImage)
{
    struct Row
    {
        ImageAlignment alignment;
        bool hasCaption;
        RECT image; // of 10 by 6
        RECT caption;
    };
    const Row rows[] = {
        {ImageAlignment::BesideText, true, {8, 15, 18, 21}, {18, 4, 45, 32}},
        {ImageAlignment::BesideText, false, {20, 15, 30, 21}, {5, 4, 45, 32}},
        {ImageAlignment::AboveText, true, {20, 7, 30, 13}, {5, 10, 45, 32}},
        {ImageAlignment::AboveText, false, {20, 15, 30, 21}, {5, 4, 45, 32}},
        {ImageAlignment::RightOfText, true, {32, 15, 42, 21}, {5, 4, 32, 32}},
        {ImageAlignment::RightOfText, false, {20, 4, 30, 10}, {5, 4, 45, 32}},
    };
    GiveIcon(10, 6);
    for (const bool isDefault : {false, true}) {
        Use3dLook();
        m_style.isDefault = isDefault; // the black frame moves nothing
        for (const Row& row : rows) {
            m_style.alignment = row.alignment;
            m_face.caption = row.hasCaption ? L"x" : L"";
            const ButtonLayout layout = LayOutButton(Button, m_style, m_state, m_face);
            const int alignment = static_cast<int>(row.alignment);
            EXPECT_NE(::EqualRect(&layout.image, &row.image), FALSE) << alignment << row.hasCaption;
            if (row.hasCaption) {
                EXPECT_NE(::EqualRect(&layout.caption, &row.caption), FALSE) << alignment;
            }
        }
    }
}

TEST_F(ButtonPainterTest, DrawsTheImageAtItsPlaceInItsOwnSize)
{
    GiveIcon(10, 6);
    Paint();
    const RECT inked = m_picture.Inked(Button, NormalGround);
    const RECT expected{20, 15, 30, 21};
    EXPECT_NE(::EqualRect(&inked, &expected), FALSE);
    EXPECT_TRUE(m_picture.IsAll(expected, IconColour));
}

TEST_F(ButtonPainterTest, MovesTheImageOfAPressedButton)
{
    m_style.drawsBorder = false;
    m_state.isPressed = true;
    GiveIcon(10, 6);
    for (const POINT offset : {POINT{1, 1}, POINT{0, 2}}) {
        m_style.pressedOffset = offset;
        Paint();
        RECT expected{20, 15, 30, 21};
        ::OffsetRect(&expected, offset.x, offset.y);
        const RECT inked = m_picture.Inked(Button, HoveredGround);
        EXPECT_NE(::EqualRect(&inked, &expected), FALSE) << offset.x << ", " << offset.y;
    }
}

TEST_F(ButtonPainterTest, DoesNotMoveTheImageOfAPressedCheckBox)
{
    m_style.drawsBorder = false;
    m_style.isCheckBox = true;
    m_state.isPressed = true;
    GiveIcon(10, 6);
    Paint();
    const RECT expected{20, 15, 30, 21};
    const RECT inked = m_picture.Inked(Button, HoveredGround);
    EXPECT_NE(::EqualRect(&inked, &expected), FALSE);
}

TEST_F(ButtonPainterTest, GreysTheImageOfADisabledButtonInItsPlace)
{
    GiveIcon(10, 6);
    m_state.isDisabled = true;
    Paint();
    const RECT place{20, 15, 30, 21};
    EXPECT_FALSE(m_picture.IsAll(place, IconColour));
    const RECT inked = m_picture.Inked(Button, NormalGround);
    RECT withShadow = place;
    withShadow.right += 1; // the system may add a highlight beside it
    withShadow.bottom += 1;
    RECT united{};
    ::UnionRect(&united, &inked, &withShadow);
    EXPECT_NE(::EqualRect(&united, &withShadow), FALSE);
    EXPECT_FALSE(::IsRectEmpty(&inked));
}

// --- caption ---------------------------------------------------------------------------------------------------

TEST_F(ButtonPainterTest, DrawsTheCaptionInTheColourOfTheState)
{
    struct Row
    {
        ButtonState state; // pressed, focused, disabled, hovered
        COLORREF colour;
        COLORREF ground;
    };
    const Row rows[] = {
        {{false, false, false, false, false}, NormalText, NormalGround},
        {{false, true, false, false, false}, FocusedText, FocusedGround},
        {{false, false, false, true, false}, HoveredText, HoveredGround},
        {{true, true, false, false, false}, HoveredText, HoveredGround},
        {{false, false, true, false, false}, System(COLOR_GRAYTEXT), NormalGround},
    };
    m_style.drawsBorder = false;
    GiveCaption(L"HM");
    for (const Row& row : rows) {
        m_state = row.state;
        Paint();
        const RECT inked = m_picture.Inked(Button, row.ground);
        EXPECT_FALSE(::IsRectEmpty(&inked));
        EXPECT_TRUE(m_picture.HasAny(Button, row.colour)) << row.colour;
    }
}

TEST_F(ButtonPainterTest, CentresTheCaptionBesideTheImage)
{
    GiveCaption(L"H");
    GiveIcon(10, 6);
    Paint();
    const RECT caption = LayOutButton(Button, m_style, m_state, m_face).caption;
    const RECT inked = m_picture.Inked(caption, NormalGround);
    ASSERT_FALSE(::IsRectEmpty(&inked));
    EXPECT_NEAR(inked.left - caption.left, caption.right - inked.right, 2);
}

TEST_F(ButtonPainterTest, HidesTheAcceleratorsLineWhenTold)
{
    GiveCaption(L"&x");
    Paint();
    const RECT with = m_picture.Inked(Button, NormalGround);
    m_state.hidesAccelerator = true;
    Paint();
    const RECT without = m_picture.Inked(Button, NormalGround);
    if (IsWine()) {
        GTEST_SKIP() << "Wine 8 draws the line in spite of DT_HIDEPREFIX";
    }
    EXPECT_GT(with.bottom, without.bottom);
    EXPECT_EQ(with.top, without.top);
}

} // namespace
} // namespace sitekeeper
