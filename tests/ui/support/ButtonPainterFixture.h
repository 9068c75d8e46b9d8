// The bitmap button's drawing rules on a picture in memory.
#pragma once

#include "controls/ButtonPainter.h"
#include "support/IconPixels.h"
#include "support/MemoryBitmap.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace sitekeeper {

inline constexpr COLORREF Ground = RGB(255, 0, 255);
inline constexpr COLORREF Black = RGB(0, 0, 0);
inline constexpr COLORREF HoveredGround = RGB(240, 200, 10);
inline constexpr COLORREF NormalGround = RGB(10, 240, 200);
inline constexpr COLORREF FocusedGround = RGB(200, 10, 240);
inline constexpr COLORREF HoveredText = RGB(200, 0, 0);
inline constexpr COLORREF NormalText = RGB(0, 100, 0);
inline constexpr COLORREF FocusedText = RGB(0, 0, 150);
inline constexpr COLORREF IconColour = RGB(20, 40, 60);

inline COLORREF System(int index)
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

} // namespace sitekeeper
