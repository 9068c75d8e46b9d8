// The characters below 128, which every code page keeps at their ASCII numbers: nearly all of a user list, and quick to
// convert.
#pragma once

#include "text/Utf16.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace sitekeeper {

/// Puts the characters of `bytes` to `text`, which has room for them. False when one of them is not below 128; what
/// stands at `text` then means nothing.
inline bool WidenPlainText(std::string_view bytes, wchar_t* text) noexcept
{
    unsigned char all = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const auto byte = static_cast<unsigned char>(bytes[index]);
        all = static_cast<unsigned char>(all | byte);
        text[index] = static_cast<wchar_t>(byte);
    }
    return all < 0x80;
}

/// Puts the bytes of `text` to `bytes`, which has room for them. False when a character is not below 128; what stands
/// at `bytes` then means nothing.
inline bool NarrowPlainText(std::wstring_view text, char* bytes) noexcept
{
    constexpr std::size_t Step = 8; // of a fixed size, which compilers unroll
    std::uint32_t all = 0;
    const auto narrow = [&](std::size_t begin, std::size_t count) noexcept {
        for (std::size_t index = begin; index < begin + count; ++index) {
            all |= CodeUnit(text[index]);
            bytes[index] = static_cast<char>(text[index]);
        }
    };
    if (text.size() < Step) {
        narrow(0, text.size());
        return all < 0x80;
    }
    for (std::size_t begin = 0; begin + Step < text.size(); begin += Step) {
        narrow(begin, Step);
    }
    narrow(text.size() - Step, Step); // the end, and for the most part characters that come again
    return all < 0x80;
}

} // namespace sitekeeper
