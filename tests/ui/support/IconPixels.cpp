#include "support/IconPixels.h"

namespace sitekeeper {
namespace {

BITMAPINFO Format(int width, int height)
{
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    return format;
}

std::vector<std::uint32_t> Read(HBITMAP bitmap)
{
    BITMAP size{};
    ::GetObjectW(bitmap, sizeof size, &size);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.bmWidth) * static_cast<std::size_t>(size.bmHeight));
    BITMAPINFO format = Format(size.bmWidth, size.bmHeight);
    const WindowDc screen(nullptr);
    ::GetDIBits(screen.get(), bitmap, 0, static_cast<UINT>(size.bmHeight), pixels.data(), &format, DIB_RGB_COLORS);
    return pixels;
}

} // namespace

UniqueIcon MakeTestIcon(int width, int height, const std::vector<std::uint32_t>& pixels,
                        const std::vector<POINT>& clear)
{
    const BITMAPINFO format = Format(width, height);
    void* bits = nullptr;
    const UniqueBitmap colours(::CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    std::copy(pixels.begin(), pixels.end(), static_cast<std::uint32_t*>(bits));

    const std::size_t stride = (static_cast<std::size_t>(width) + 15) / 16 * 2;
    std::vector<std::uint8_t> maskBits(stride * static_cast<std::size_t>(height));
    for (const POINT& point : clear) {
        maskBits[static_cast<std::size_t>(point.y) * stride + static_cast<std::size_t>(point.x / 8)] |=
            static_cast<std::uint8_t>(0x80 >> point.x % 8);
    }
    const UniqueBitmap mask(::CreateBitmap(width, height, 1, 1, maskBits.data()));
    ICONINFO description{};
    description.fIcon = TRUE;
    description.hbmColor = colours.get();
    description.hbmMask = mask.get();
    return UniqueIcon(::CreateIconIndirect(&description));
}

UniqueIcon MakeTestIcon(int width, int height, std::uint32_t colour)
{
    return MakeTestIcon(
        width, height,
        std::vector<std::uint32_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), colour), {});
}

IconPixels PixelsOf(HICON icon)
{
    ICONINFO description{};
    if (::GetIconInfo(icon, &description) == FALSE) {
        return {};
    }
    const UniqueBitmap mask(description.hbmMask);
    const UniqueBitmap colours(description.hbmColor);
    IconPixels pixels;
    pixels.colours = Read(colours.get());
    for (const std::uint32_t pixel : Read(mask.get())) {
        pixels.isClear.push_back((pixel & 0xFFFFFF) != 0);
    }
    return pixels;
}

} // namespace sitekeeper
