// The drawing rules of the bitmap button, pixel by pixel: image and caption.
#include "support/ButtonPainterFixture.h"
#include "support/Wine.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

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
        COLORREF colour = 0;
        COLORREF ground = 0;
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
