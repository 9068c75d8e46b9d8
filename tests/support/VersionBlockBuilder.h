// Version resources as tests want them, laid out as the Windows documentation says.
#pragma once

#include "text/Utf16.h"

#include <cstddef>
#include <string>
#include <vector>

namespace sitekeeper {

enum class ValueKind
{
    Binary,
    Text
};

/// A node of a version resource with its value and its children, each child made by this function.
inline std::vector<std::byte> VersionNode(const std::wstring& name, ValueKind kind, const std::vector<std::byte>& value,
                                          const std::vector<std::vector<std::byte>>& children = {})
{
    std::vector<std::byte> bytes(6);
    const auto append = [&bytes](const std::vector<std::byte>& part) {
        bytes.insert(bytes.end(), part.begin(), part.end());
    };
    const auto align = [&bytes] { bytes.resize((bytes.size() + 3) / 4 * 4); };
    const auto put = [&bytes](std::size_t place, std::size_t number) {
        bytes[place] = static_cast<std::byte>(number & 0xFFU);
        bytes[place + 1] = static_cast<std::byte>(number >> 8U);
    };
    append(EncodeUtf16(name));
    bytes.resize(bytes.size() + 2);
    align();
    append(value);
    for (const std::vector<std::byte>& child : children) {
        align();
        append(child);
    }
    put(0, bytes.size());
    put(2, kind == ValueKind::Text ? value.size() / 2 : value.size());
    put(4, kind == ValueKind::Text ? 1 : 0);
    return bytes;
}

inline std::vector<std::byte> TextNode(const std::wstring& name, const std::wstring& text)
{
    return VersionNode(name, ValueKind::Text, EncodeUtf16(text + L'\0'));
}

/// The languages and code pages that a resource names, as it keeps them.
inline std::vector<std::byte> Translations(const std::vector<unsigned>& numbers)
{
    std::vector<std::byte> bytes;
    for (const unsigned number : numbers) {
        bytes.push_back(static_cast<std::byte>(number & 0xFFU));
        bytes.push_back(static_cast<std::byte>(number >> 8U));
    }
    return bytes;
}

} // namespace sitekeeper
