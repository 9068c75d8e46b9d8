// Icons made of given pixels, and the pixels of icons.
#pragma once

#include "win32/Handles.h"

#include <windows.h>

#include <cstdint>
#include <vector>

namespace sitekeeper {

/// An icon of these pixels, 0xAARRGGBB in rows from the top; clear at the `clear` ones. Where no pixel has an opacity,
/// all others are opaque.
[[nodiscard]] UniqueIcon MakeTestIcon(int width, int height, const std::vector<std::uint32_t>& pixels,
                                      const std::vector<POINT>& clear);

/// An icon of one opaque colour.
[[nodiscard]] UniqueIcon MakeTestIcon(int width, int height, std::uint32_t colour);

/// The colours and the mask, in rows from the top.
struct IconPixels
{
    std::vector<std::uint32_t> colours;
    std::vector<bool> isClear;
};
[[nodiscard]] IconPixels PixelsOf(HICON icon);

} // namespace sitekeeper
