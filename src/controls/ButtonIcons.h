// The icons of a bitmap button, apart from its window: measuring them, and making new ones of them.
#pragma once

#include "win32/Handles.h"

#include <windows.h>

#include <cstdint>
#include <optional>

namespace sitekeeper {

/// The copies of its icon that a button makes by itself.
enum class IconCopy
{
    Darker,
    Grey
};

/// `colour` with each channel c lowered to c - c * factor, fractions dropped. A factor that is not above 0 and at most
/// 1 leaves the colour as it is.
[[nodiscard]] COLORREF DarkenColor(COLORREF colour, double factor) noexcept;

/// The grey of the same brightness: 0.299 red + 0.587 green + 0.114 blue in each channel, fractions dropped.
[[nodiscard]] COLORREF GreyColor(COLORREF colour) noexcept;

/// One pixel of a copy. Pixels are 0xAARRGGBB, as in a 32-bit bitmap; black stays black, and the opacity of the
/// pixel is carried over.
[[nodiscard]] std::uint32_t CopiedPixel(std::uint32_t pixel, IconCopy copy) noexcept;

/// Twice the icon's hot spot, deliberately: the hot spot of an ordinary icon is its centre. Nothing for what is no
/// icon.
[[nodiscard]] std::optional<SIZE> MeasureIcon(HICON icon);

/// A new icon of the measured size of `icon`, with its mask and the copied pixels of its colours. Empty when the icon
/// cannot be measured, has no colours, or the system is out of bitmaps.
[[nodiscard]] UniqueIcon MakeIconCopy(HICON icon, IconCopy copy);

/// A new icon that looks like `bitmap`; pixels of the colour `transparent`, if one is given, let the background
/// through. Empty for what is no bitmap, or when the system is out of bitmaps.
[[nodiscard]] UniqueIcon MakeIconOfBitmap(HBITMAP bitmap, std::optional<COLORREF> transparent);

} // namespace sitekeeper
