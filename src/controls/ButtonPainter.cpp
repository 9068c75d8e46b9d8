#include "controls/ButtonPainter.h"

#include "win32/Handles.h"

namespace sitekeeper {
namespace {

constexpr int FocusInset = 3;

/// The device context is at the end as it was at the start.
class DcState
{
public:
    explicit DcState(HDC dc) noexcept : m_dc(dc), m_saved(::SaveDC(dc)) {}
    DcState(const DcState&) = delete;
    DcState& operator=(const DcState&) = delete;
    ~DcState() { ::RestoreDC(m_dc, m_saved); }

private:
    HDC m_dc;
    int m_saved;
};

RECT Inset(const RECT& rectangle, int distance) noexcept
{
    return {rectangle.left + distance, rectangle.top + distance, rectangle.right - distance,
            rectangle.bottom - distance};
}

void Fill(HDC dc, const RECT& rectangle, COLORREF colour)
{
    ::SetDCBrushColor(dc, colour);
    ::FillRect(dc, &rectangle, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

/// One-pixel lines inside the rectangle; the corners at the lower left and upper right belong to the lower right.
void Draw3dRectangle(HDC dc, const RECT& r, int upperLeftColour, int lowerRightColour)
{
    const COLORREF upperLeft = ::GetSysColor(upperLeftColour);
    const COLORREF lowerRight = ::GetSysColor(lowerRightColour);
    Fill(dc, {r.left, r.top, r.right - 1, r.top + 1}, upperLeft);
    Fill(dc, {r.left, r.top, r.left + 1, r.bottom - 1}, upperLeft);
    Fill(dc, {r.right - 1, r.top, r.right, r.bottom}, lowerRight);
    Fill(dc, {r.left, r.bottom - 1, r.right, r.bottom}, lowerRight);
}

const ButtonColours& ColoursOf(const ButtonStyle& style, const ButtonState& state) noexcept
{
    if (state.isHovered || state.isPressed) {
        return style.hovered;
    }
    return state.isFocused ? style.focused : style.normal;
}

/// Black; on a face as dark as those of high-contrast colours the colour of the text, which can be seen there.
COLORREF FrameColour(const ButtonColours& colours) noexcept
{
    constexpr int Darkest = 3 * 64; // the three channels together
    const COLORREF face = colours.background;
    return GetRValue(face) + GetGValue(face) + GetBValue(face) < Darkest ? colours.text : RGB(0, 0, 0);
}

void DrawBorder(HDC dc, const RECT& rectangle, const ButtonStyle& style, const ButtonState& state)
{
    if (!style.isFlat && state.isPressed) {
        ::FrameRect(dc, &rectangle, ::GetSysColorBrush(COLOR_BTNSHADOW));
    } else if (!style.isFlat) {
        Draw3dRectangle(dc, rectangle, COLOR_BTNHILIGHT, COLOR_3DDKSHADOW);
        Draw3dRectangle(dc, Inset(rectangle, 1), COLOR_3DLIGHT, COLOR_BTNSHADOW);
    } else if (style.drawsBorder && state.isPressed) {
        Draw3dRectangle(dc, rectangle, COLOR_BTNSHADOW, COLOR_BTNHILIGHT);
    } else if (style.drawsBorder && state.isHovered) {
        Draw3dRectangle(dc, rectangle, COLOR_BTNHILIGHT, COLOR_BTNSHADOW);
    }
}

void DrawCaption(HDC dc, const RECT& rectangle, COLORREF colour, const ButtonState& state, const ButtonFace& face)
{
    const SelectScope font(dc, face.font != nullptr ? face.font : ::GetStockObject(DEFAULT_GUI_FONT));
    const UINT format = DT_CENTER | DT_WORDBREAK | (state.hidesAccelerator ? DT_HIDEPREFIX : 0U);
    const int length = static_cast<int>(face.caption.size());
    RECT measured{0, 0, rectangle.right - rectangle.left, 0};
    ::DrawTextW(dc, face.caption.c_str(), length, &measured, format | DT_CALCRECT);

    // The full width, so that each line is centred in it.
    RECT text = rectangle;
    text.top += (rectangle.bottom - rectangle.top - measured.bottom) / 2;
    ::SetTextColor(dc, state.isDisabled ? ::GetSysColor(COLOR_GRAYTEXT) : colour);
    ::DrawTextW(dc, face.caption.c_str(), length, &text, format);
}

void DrawFocus(HDC dc, const RECT& rectangle)
{
    // The pattern of the focus rectangle is inverted into the picture: it needs these two colours.
    ::SetTextColor(dc, RGB(0, 0, 0));
    ::SetBkColor(dc, RGB(255, 255, 255));
    const RECT focus = Inset(rectangle, FocusInset);
    ::DrawFocusRect(dc, &focus);
}

} // namespace

ButtonLayout LayOutButton(const RECT& rectangle, const ButtonStyle& style, const ButtonState& state,
                          const ButtonFace& face) noexcept
{
    const bool hasCaption = !face.caption.empty();
    const SIZE image = face.icon != nullptr ? face.iconSize : SIZE{};
    POINT corner{(rectangle.left + rectangle.right - image.cx) / 2, (rectangle.top + rectangle.bottom - image.cy) / 2};
    RECT caption = rectangle;
    if (face.icon != nullptr) {
        switch (style.alignment) {
        case ImageAlignment::BesideText:
            if (hasCaption) {
                corner.x = rectangle.left + style.margin.cx;
                caption.left += style.margin.cx + image.cx;
            }
            break;
        case ImageAlignment::AboveText:
            if (hasCaption) {
                corner.y = rectangle.top + style.margin.cy;
                caption.top += image.cy;
            }
            break;
        case ImageAlignment::RightOfText:
            if (hasCaption) {
                corner.x = rectangle.right - style.margin.cx - image.cx;
                caption.right -= style.margin.cx + image.cx;
            } else {
                corner.y = rectangle.top; // deliberately not centred
            }
            break;
        }
    }
    RECT place{corner.x, corner.y, corner.x + image.cx, corner.y + image.cy};
    if (state.isPressed && !style.isCheckBox) {
        ::OffsetRect(&place, style.pressedOffset.x, style.pressedOffset.y);
        ::OffsetRect(&caption, style.pressedOffset.x, style.pressedOffset.y);
    }
    return {place, caption};
}

void PaintButton(HDC dc, const RECT& rectangle, const ButtonStyle& style, const ButtonState& state,
                 const ButtonFace& face)
{
    const DcState former(dc);
    ::SetBkMode(dc, TRANSPARENT);
    RECT inside = rectangle;
    const ButtonColours& colours = ColoursOf(style, state);
    if (!style.isFlat && (state.isFocused || style.isDefault)) {
        ::SetDCBrushColor(dc, FrameColour(colours));
        ::FrameRect(dc, &inside, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        inside = Inset(inside, 1);
    }
    if (!style.isTransparent) {
        Fill(dc, inside, colours.background);
    }
    DrawBorder(dc, inside, style, state);

    const ButtonLayout layout = LayOutButton(rectangle, style, state, face);
    if (face.icon != nullptr) {
        ::DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(face.icon), 0, layout.image.left, layout.image.top,
                     layout.image.right - layout.image.left, layout.image.bottom - layout.image.top,
                     DST_ICON | (state.isDisabled ? DSS_DISABLED : DSS_NORMAL));
    }
    if (!face.caption.empty()) {
        DrawCaption(dc, layout.caption, colours.text, state, face);
    }
    if (state.isFocused && (!style.isFlat || style.drawsFlatFocus)) {
        DrawFocus(dc, rectangle);
    }
}

} // namespace sitekeeper
