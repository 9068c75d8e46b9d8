// A picture in memory: something to paint into, and to read pixel by pixel afterwards.
#pragma once

#include "win32/Handles.h"

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace sitekeeper {

class MemoryBitmap
{
public:
    /// All pixels have the colour `ground`.
    MemoryBitmap(int width, int height, COLORREF ground);

    [[nodiscard]] HDC Dc() const { return m_dc.get(); }
    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }
    [[nodiscard]] RECT Bounds() const { return {0, 0, m_width, m_height}; }

    /// A colour as RGB makes it.
    [[nodiscard]] COLORREF Pixel(int x, int y) const;

    /// Every pixel of `part` has this colour.
    [[nodiscard]] bool IsAll(const RECT& part, COLORREF colour) const;

    /// Some pixel of `part` has this colour.
    [[nodiscard]] bool HasAny(const RECT& part, COLORREF colour) const;

    /// The smallest rectangle around the pixels of `part` that differ from `ground`; empty when none does.
    [[nodiscard]] RECT Inked(const RECT& part, COLORREF ground) const;

    /// The pixels in rows from the top, 0x00RRGGBB.
    [[nodiscard]] std::vector<std::uint32_t> Pixels() const;

    /// Writes "pictures/<name>.bmp" below the current folder, for looking at.
    void Save(const std::wstring& name) const;

    bool operator==(const MemoryBitmap& other) const;

private:
    UniqueBitmap m_bitmap;
    std::uint32_t* m_bits = nullptr;
    // Declared last: a bitmap that is selected cannot be deleted, so the device context goes first.
    UniqueMemoryDc m_dc;
    int m_width;
    int m_height;
};

} // namespace sitekeeper
