#include "maindlg/VersionBlock.h"

#include "text/Text.h"
#include "text/Utf16.h"

#include <algorithm>
#include <string>

namespace sitekeeper {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t UnitSize = 2;
constexpr std::size_t HeaderSize = 3 * UnitSize; // length, length of the value, type
constexpr std::size_t Alignment = 4;
constexpr std::size_t TextType = 1;

std::size_t Aligned(std::size_t place)
{
    return (place + Alignment - 1) / Alignment * Alignment;
}

/// The rest of `bytes` from `place` on; nothing behind the end.
Bytes From(Bytes bytes, std::size_t place)
{
    return bytes.subspan(std::min(place, bytes.size()));
}

/// A node and what is in it. Places count from the node's own beginning, which stands at a multiple of four.
struct Node
{
    /// How far the next node is away.
    std::size_t length = 0;
    std::wstring name;
    Bytes value;
    Bytes children;
};

/// The node at the beginning of `bytes`; nothing when there is none, or none that has a header and a name.
std::optional<Node> ReadNode(Bytes bytes)
{
    if (bytes.size() < HeaderSize) {
        return std::nullopt;
    }
    const std::size_t length = std::min<std::size_t>(WordAt(bytes, 0), bytes.size());
    if (length < HeaderSize) {
        return std::nullopt;
    }
    const Bytes own = bytes.first(length);
    const std::size_t valueLength =
        std::size_t{WordAt(own, UnitSize)} * (WordAt(own, 2 * UnitSize) == TextType ? UnitSize : 1);
    std::size_t end = HeaderSize; // of the name
    while (end + UnitSize <= own.size() && WordAt(own, end) != 0) {
        end += UnitSize;
    }
    if (end + UnitSize > own.size()) {
        return std::nullopt;
    }
    Node node;
    node.length = length;
    node.name = DecodeUtf16(own.subspan(HeaderSize, end - HeaderSize));
    const Bytes behindName = From(own, Aligned(end + UnitSize));
    node.value = behindName.first(std::min(valueLength, behindName.size()));
    node.children = From(own, Aligned(Aligned(end + UnitSize) + node.value.size()));
    return node;
}

/// The first child of that name.
std::optional<Node> FindChild(Bytes children, std::wstring_view name)
{
    while (std::optional<Node> node = ReadNode(children)) {
        if (EqualIgnoringCase(node->name, name)) {
            return node;
        }
        children = From(children, Aligned(node->length));
    }
    return std::nullopt;
}

} // namespace

std::optional<std::span<const std::byte>> VersionBlock::Query(std::wstring_view path) const
{
    std::optional<Node> node = ReadNode(m_bytes);
    while (node && !path.empty()) {
        path.remove_prefix(path.front() == L'\\' ? 1 : 0);
        const std::wstring_view name = path.substr(0, path.find(L'\\'));
        path.remove_prefix(name.size());
        if (!name.empty()) {
            node = FindChild(node->children, name);
        }
    }
    return node ? std::optional(node->value) : std::nullopt;
}

} // namespace sitekeeper
