// How a bitmap button looks: the drawing rules, apart from the window.
#pragma once

#include <windows.h>

#include <string>

namespace sitekeeper {

/// Where the image stands. The numbers are those that dialogs use.
enum class ImageAlignment
{
    BesideText = 0,
    AboveText = 1,
    RightOfText = 2
};

/// The colours of a button in one of its three states.
struct ButtonColours
{
    COLORREF background;
    COLORREF text;
};

/// What stays the same from one drawing to the next.
struct ButtonStyle
{
    bool isFlat = true;
    bool drawsBorder = true;
    bool drawsFlatFocus = false;
    bool isTransparent = false; // the background is there already
    bool isCheckBox = false;
    bool isDefault = false;
    ImageAlignment alignment = ImageAlignment::BesideText;
    POINT pressedOffset{1, 1};
    SIZE margin{3, 3}; // between the button's edge and the image
    ButtonColours hovered{};
    ButtonColours normal{};
    ButtonColours focused{};
};

/// What belongs to one drawing.
struct ButtonState
{
    bool isPressed = false;
    bool isFocused = false;
    bool isDisabled = false;
    bool isHovered = false;
    bool hidesAccelerator = false;
};

/// What stands on the button; null or empty where there is none. The handles are the caller's.
struct ButtonFace
{
    HICON icon = nullptr;
    SIZE iconSize{};
    std::wstring caption;
    HFONT font = nullptr;
};

/// Where the image and the caption stand in a button of the given rectangle.
struct ButtonLayout
{
    RECT image;
    RECT caption;
};
[[nodiscard]] ButtonLayout LayOutButton(const RECT& rectangle, const ButtonStyle& style, const ButtonState& state,
                                        const ButtonFace& face) noexcept;

/// Draws the whole button: background, border, image, caption, focus. The device context is left as it was found.
void PaintButton(HDC dc, const RECT& rectangle, const ButtonStyle& style, const ButtonState& state,
                 const ButtonFace& face);

} // namespace sitekeeper
