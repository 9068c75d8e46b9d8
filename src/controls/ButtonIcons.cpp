#include "controls/ButtonIcons.h"

#include <algorithm>
#include <span>
#include <vector>

namespace sitekeeper {
namespace {

constexpr double CopyDarkness = 0.25;
constexpr std::uint32_t ColourBits = 0x00FFFFFF;

/// The pixels of a bitmap, row by row from the top, each 0xAARRGGBB.
struct Pixels
{
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values;
};

BITMAPINFO TopDown32Bit(int width, int height)
{
    BITMAPINFO information{};
    information.bmiHeader.biSize = sizeof information.bmiHeader;
    information.bmiHeader.biWidth = width;
    information.bmiHeader.biHeight = -height;
    information.bmiHeader.biPlanes = 1;
    information.bmiHeader.biBitCount = 32;
    information.bmiHeader.biCompression = BI_RGB;
    return information;
}

std::optional<Pixels> ReadPixels(HBITMAP bitmap)
{
    BITMAP description{};
    if (bitmap == nullptr || ::GetObjectW(bitmap, sizeof description, &description) == 0) {
        return std::nullopt;
    }
    Pixels pixels{description.bmWidth, description.bmHeight, {}};
    pixels.values.resize(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
    BITMAPINFO information = TopDown32Bit(pixels.width, pixels.height);
    const WindowDc screen(nullptr);
    if (::GetDIBits(screen.get(), bitmap, 0, static_cast<UINT>(pixels.height), pixels.values.data(), &information,
                    DIB_RGB_COLORS) != pixels.height) {
        return std::nullopt;
    }
    return pixels;
}

/// A bitmap of the given size with these pixels in its upper left corner; what is not covered is black and clear.
UniqueBitmap MakeBitmap(const Pixels& pixels, const SIZE& size)
{
    const BITMAPINFO information = TopDown32Bit(size.cx, size.cy);
    void* bits = nullptr;
    UniqueBitmap bitmap(::CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap) {
        auto* const target = static_cast<std::uint32_t*>(bits);
        const int columns = std::min<int>(pixels.width, size.cx);
        const int rows = std::min<int>(pixels.height, size.cy);
        for (int row = 0; row < rows; ++row) {
            std::copy_n(pixels.values.data() + static_cast<std::ptrdiff_t>(row) * pixels.width, columns,
                        target + static_cast<std::ptrdiff_t>(row) * size.cx);
        }
    }
    return bitmap;
}

UniqueIcon MakeIcon(HBITMAP colours, HBITMAP mask)
{
    ICONINFO description{};
    description.fIcon = TRUE;
    description.hbmColor = colours;
    description.hbmMask = mask;
    return UniqueIcon(::CreateIconIndirect(&description));
}

/// One bit for each pixel, rows padded to 16: set where the background shows.
UniqueBitmap MakeMask(const Pixels& pixels, std::optional<COLORREF> transparent)
{
    const std::size_t width = static_cast<std::size_t>(pixels.width);
    const std::size_t stride = (width + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(stride * static_cast<std::size_t>(pixels.height));
    for (std::size_t i = 0; transparent && i < pixels.values.size(); ++i) {
        const std::uint32_t pixel = pixels.values[i];
        const COLORREF colour = RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
        if (colour == *transparent) {
            bits[i / width * stride + i % width / 8] |= static_cast<std::uint8_t>(0x80 >> i % width % 8);
        }
    }
    return UniqueBitmap(::CreateBitmap(pixels.width, pixels.height, 1, 1, bits.data()));
}

} // namespace

COLORREF DarkenColor(COLORREF colour, double factor) noexcept
{
    if (!(factor > 0.0 && factor <= 1.0)) {
        return colour;
    }
    const auto darken = [factor](BYTE channel) { return static_cast<BYTE>(channel - channel * factor); };
    return RGB(darken(GetRValue(colour)), darken(GetGValue(colour)), darken(GetBValue(colour)));
}

COLORREF GreyColor(COLORREF colour) noexcept
{
    // In thousandths, since the sum of the three fractions must not come out below the whole number it is.
    const auto grey =
        static_cast<BYTE>((299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000);
    return RGB(grey, grey, grey);
}

std::uint32_t CopiedPixel(std::uint32_t pixel, IconCopy copy) noexcept
{
    if ((pixel & ColourBits) == 0) {
        return pixel;
    }
    const COLORREF colour = RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
    const COLORREF copied = copy == IconCopy::Grey ? GreyColor(colour) : DarkenColor(colour, CopyDarkness);
    const std::uint32_t red = GetRValue(copied);
    const std::uint32_t green = GetGValue(copied);
    const std::uint32_t blue = GetBValue(copied);
    return (pixel & ~ColourBits) | red << 16 | green << 8 | blue;
}

std::optional<SIZE> MeasureIcon(HICON icon)
{
    ICONINFO description{};
    if (::GetIconInfo(icon, &description) == FALSE) {
        return std::nullopt;
    }
    const UniqueBitmap mask(description.hbmMask);
    const UniqueBitmap colours(description.hbmColor);
    return SIZE{static_cast<LONG>(description.xHotspot * 2), static_cast<LONG>(description.yHotspot * 2)};
}

UniqueIcon MakeIconCopy(HICON icon, IconCopy copy)
{
    ICONINFO description{};
    if (::GetIconInfo(icon, &description) == FALSE) {
        return {};
    }
    const UniqueBitmap mask(description.hbmMask);
    const UniqueBitmap colours(description.hbmColor);
    std::optional<Pixels> pixels = ReadPixels(colours.get());
    if (!pixels) {
        return {};
    }
    for (std::uint32_t& pixel : pixels->values) {
        pixel = CopiedPixel(pixel, copy);
    }
    const SIZE size{static_cast<LONG>(description.xHotspot * 2), static_cast<LONG>(description.yHotspot * 2)};
    const UniqueBitmap copied = MakeBitmap(*pixels, size);
    return copied ? MakeIcon(copied.get(), mask.get()) : UniqueIcon();
}

UniqueIcon MakeIconOfBitmap(HBITMAP bitmap, std::optional<COLORREF> transparent)
{
    std::optional<Pixels> pixels = ReadPixels(bitmap);
    if (!pixels) {
        return {};
    }
    const UniqueBitmap mask = MakeMask(*pixels, transparent);
    for (std::uint32_t& pixel : pixels->values) {
        // Black where the background shows, or it would be mixed in; and no opacity: the mask alone decides.
        const COLORREF colour = RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
        pixel = transparent && colour == *transparent ? 0 : pixel & ColourBits;
    }
    const UniqueBitmap colours = MakeBitmap(*pixels, {pixels->width, pixels->height});
    return colours && mask ? MakeIcon(colours.get(), mask.get()) : UniqueIcon();
}

} // namespace sitekeeper
