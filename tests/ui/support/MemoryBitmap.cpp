#include "support/MemoryBitmap.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace sitekeeper {
namespace {

constexpr std::uint32_t ColourBits = 0x00FFFFFF;

BITMAPINFOHEADER Header(int width, int height)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height; // from the top
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    return header;
}

} // namespace

MemoryBitmap::MemoryBitmap(int width, int height, COLORREF ground)
    : m_dc(::CreateCompatibleDC(nullptr)), m_width(width), m_height(height)
{
    BITMAPINFO information{};
    information.bmiHeader = Header(width, height);
    void* bits = nullptr;
    m_bitmap.reset(::CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!m_dc || !m_bitmap) {
        throw std::runtime_error("no bitmap in memory");
    }
    m_bits = static_cast<std::uint32_t*>(bits);
    ::SelectObject(m_dc.get(), m_bitmap.get());
    const RECT all = Bounds();
    ::SetDCBrushColor(m_dc.get(), ground);
    ::FillRect(m_dc.get(), &all, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

COLORREF MemoryBitmap::Pixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return CLR_INVALID;
    }
    ::GdiFlush();
    const std::uint32_t pixel = m_bits[static_cast<std::ptrdiff_t>(y) * m_width + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

bool MemoryBitmap::IsAll(const RECT& part, COLORREF colour) const
{
    const RECT inked = Inked(part, colour);
    return ::IsRectEmpty(&inked) != FALSE;
}

bool MemoryBitmap::HasAny(const RECT& part, COLORREF colour) const
{
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            if (Pixel(x, y) == colour) {
                return true;
            }
        }
    }
    return false;
}

RECT MemoryBitmap::Inked(const RECT& part, COLORREF ground) const
{
    RECT inked{};
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            if (Pixel(x, y) != ground) {
                const RECT pixel{x, y, x + 1, y + 1};
                ::UnionRect(&inked, &inked, &pixel);
            }
        }
    }
    return inked;
}

std::vector<std::uint32_t> MemoryBitmap::Pixels() const
{
    ::GdiFlush();
    std::vector<std::uint32_t> pixels(m_bits, m_bits + static_cast<std::ptrdiff_t>(m_width) * m_height);
    for (std::uint32_t& pixel : pixels) {
        pixel &= ColourBits; // painting leaves the fourth byte to chance
    }
    return pixels;
}

bool MemoryBitmap::operator==(const MemoryBitmap& other) const
{
    return m_width == other.m_width && m_height == other.m_height && Pixels() == other.Pixels();
}

void MemoryBitmap::Save(const std::wstring& name) const
{
    ::CreateDirectoryW(L"pictures", nullptr);
    const std::vector<std::uint32_t> pixels = Pixels();
    const BITMAPINFOHEADER header = Header(m_width, m_height);
    BITMAPFILEHEADER fileHeader{};
    fileHeader.bfType = 0x4D42; // "BM"
    fileHeader.bfOffBits = sizeof fileHeader + sizeof header;
    fileHeader.bfSize = fileHeader.bfOffBits + static_cast<DWORD>(pixels.size() * sizeof pixels[0]);
    std::ofstream file(std::filesystem::path(L"pictures\\" + name + L".bmp"), std::ios::binary);
    const auto write = [&file](const void* bytes, std::size_t size) {
        file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size));
    };
    write(&fileHeader, sizeof fileHeader);
    write(&header, sizeof header);
    write(pixels.data(), pixels.size() * sizeof pixels[0]);
    if (!file.flush()) {
        throw std::runtime_error("a picture could not be saved");
    }
}

} // namespace sitekeeper
