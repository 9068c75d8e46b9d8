#include "text/Utf16.h"

namespace sitekeeper {
namespace {

constexpr std::uint32_t FirstSupplementary = 0x10000;

// Only where a pair becomes one character does anybody ask.
[[maybe_unused]] bool IsHighHalf(std::uint32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}
[[maybe_unused]] bool IsLowHalf(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUnit(std::vector<std::byte>& bytes, std::uint32_t unit)
{
    AppendWord(bytes, static_cast<std::uint16_t>(unit));
}

std::uint32_t UnitAt(std::span<const std::byte> bytes, std::size_t index)
{
    return WordAt(bytes, 2 * index);
}

} // namespace

std::vector<std::byte> EncodeUtf16(std::wstring_view text)
{
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() * 2);
    for (const wchar_t character : text) {
        const std::uint32_t code = CodeUnit(character);
        if (code < FirstSupplementary) {
            AppendUnit(bytes, code);
        } else {
            AppendUnit(bytes, 0xD800U + ((code - FirstSupplementary) >> 10U));
            AppendUnit(bytes, 0xDC00U + ((code - FirstSupplementary) & 0x3FFU));
        }
    }
    return bytes;
}

std::wstring DecodeUtf16(std::span<const std::byte> bytes)
{
    const std::size_t units = bytes.size() / 2;
    std::wstring text;
    text.reserve(units);
    for (std::size_t index = 0; index < units; ++index) {
        const std::uint32_t unit = UnitAt(bytes, index);
        if (unit == 0) {
            break;
        }
        // Where wide characters have 32 bits a pair becomes one character; on Windows it stays two.
        if constexpr (sizeof(wchar_t) > 2) {
            if (IsHighHalf(unit) && index + 1 < units && IsLowHalf(UnitAt(bytes, index + 1))) {
                const std::uint32_t low = UnitAt(bytes, ++index);
                text.push_back(static_cast<wchar_t>(FirstSupplementary + ((unit - 0xD800U) << 10U) + (low - 0xDC00U)));
                continue;
            }
        }
        text.push_back(static_cast<wchar_t>(unit));
    }
    return text;
}

} // namespace sitekeeper
