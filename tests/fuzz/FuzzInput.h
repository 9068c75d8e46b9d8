// The fuzzer's bytes as the values that the targets need.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

namespace sitekeeper {

/// Ends the run as a finding when a promise does not hold.
inline void Require(bool isKept)
{
    if (!isKept) {
        std::abort();
    }
}

[[nodiscard]] inline std::span<const std::byte> AsBytes(const std::uint8_t* data, std::size_t size)
{
    return std::as_bytes(std::span(data, size));
}

/// `bytes` as a text of 16-bit characters, zeros included; an odd last byte is dropped.
[[nodiscard]] inline std::wstring AsText(std::span<const std::byte> bytes)
{
    std::wstring text;
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        const auto low = std::to_integer<unsigned>(bytes[index]);
        const auto high = std::to_integer<unsigned>(bytes[index + 1]);
        text += static_cast<wchar_t>(low | high << 8U);
    }
    return text;
}

} // namespace sitekeeper
