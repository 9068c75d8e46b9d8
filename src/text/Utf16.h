// The byte form in which Windows keeps wide text: UTF-16, little endian, two bytes for each unit.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// The bytes of `text`, without a terminator. A character outside the basic plane takes two units; a lone half of
/// such a pair is kept as it is, since Windows does not refuse one either.
[[nodiscard]] std::vector<std::byte> EncodeUtf16(std::wstring_view text);

/// The text in `bytes`, up to its first zero unit or to its end. An odd last byte is dropped.
[[nodiscard]] std::wstring DecodeUtf16(std::span<const std::byte> bytes);

} // namespace sitekeeper
