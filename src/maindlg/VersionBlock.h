// A version resource as bytes: how it is laid out, and how something in it is found.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace sitekeeper {

/// The block that a file's version resource is (VS_VERSIONINFO of the Windows documentation): a tree of nodes, each
/// with its length, the length of its value, a name, the value and further nodes. Somebody else made it: whatever the
/// lengths say, nothing outside the bytes is read, and every search ends.
class VersionBlock
{
public:
    /// Keeps the bytes' place; they must outlive it.
    explicit VersionBlock(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    /// The value of a node: "\" for the root's own, otherwise the names on the way from it, each behind a "\", compared
    /// without regard to case. Of several nodes with the same name the first. Nothing when there is no such node; empty
    /// for a node without a value. A text value is as long as its node says, its end included or not.
    [[nodiscard]] std::optional<std::span<const std::byte>> Query(std::wstring_view path) const;

private:
    std::span<const std::byte> m_bytes;
};

} // namespace sitekeeper
