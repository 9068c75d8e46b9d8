// The byte form in which Windows keeps wide text: UTF-16, little endian, two bytes for each unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// The number of a wide character, which is signed on some systems and unsigned on others.
[[nodiscard]] constexpr std::uint32_t CodeUnit(wchar_t character) noexcept
{
    return sizeof(wchar_t) == 2 ? static_cast<std::uint16_t>(character) : static_cast<std::uint32_t>(character);
}

/// The 16-bit number in the two bytes from `place` on, the low one first. Both are there.
[[nodiscard]] inline std::uint16_t WordAt(std::span<const std::byte> bytes, std::size_t place) noexcept
{
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes[place]) |
                                      std::to_integer<unsigned>(bytes[place + 1]) << 8U);
}

/// Adds a number in that form.
inline void AppendWord(std::vector<std::byte>& bytes, std::uint16_t word)
{
    bytes.push_back(static_cast<std::byte>(word & 0xFFU));
    bytes.push_back(static_cast<std::byte>(word >> 8U));
}

/// The bytes of `text`, without a terminator. A character outside the basic plane takes two units; a lone half of
/// such a pair is kept as it is, since Windows does not refuse one either.
[[nodiscard]] std::vector<std::byte> EncodeUtf16(std::wstring_view text);

/// The text in `bytes`, up to its first zero unit or to its end. An odd last byte is dropped.
[[nodiscard]] std::wstring DecodeUtf16(std::span<const std::byte> bytes);

} // namespace sitekeeper
