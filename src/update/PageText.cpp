#include "update/PageText.h"

#include "text/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace sitekeeper {
namespace {

/// Whether each byte is from 1 to 127: eight of them at a time. Of such bytes neither they nor what is one below has
/// the high bit; of others one of the two has, or a neighbour from which one was borrowed.
bool IsPlain(std::string_view bytes) noexcept
{
    constexpr std::uint64_t Ones = 0x0101'0101'0101'0101;
    constexpr std::uint64_t HighBits = 0x8080'8080'8080'8080;
    constexpr std::size_t Step = sizeof Ones;
    const auto marks = [bytes](std::size_t place) noexcept {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes.data() + place, Step);
        return eight | (eight - Ones);
    };
    if (bytes.size() < Step) {
        return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<signed char>(byte) > 0; });
    }
    std::uint64_t all = marks(bytes.size() - Step); // the end, and for the most part bytes that come again
    for (std::size_t place = 0; place + Step < bytes.size(); place += Step) {
        all |= marks(place);
    }
    return (all & HighBits) == 0;
}

std::wstring Wide(std::string_view plain)
{
    return {plain.begin(), plain.end()};
}
std::wstring Wide(std::wstring_view text)
{
    return std::wstring(text);
}

/// Searched by the part without letters, which the library finds quickly and which hardly any page has elsewhere.
template <typename Character>
std::optional<std::wstring> TextBetween(std::basic_string_view<Character> page, std::wstring_view key,
                                        std::wstring_view caseless, wchar_t end)
{
    const std::size_t offset = key.find(caseless);
    const std::basic_string<Character> part(caseless.begin(), caseless.end());
    for (std::size_t place = page.find(part, offset); place != page.npos; place = page.find(part, place + 1)) {
        const std::size_t start = place - offset;
        if (!EqualIgnoringCase(Wide(page.substr(start, key.size())), key)) {
            continue;
        }
        const std::basic_string_view<Character> rest = page.substr(start + key.size());
        const std::size_t length = rest.find(static_cast<Character>(end));
        return length == page.npos ? std::nullopt : std::optional(Wide(rest.substr(0, length)));
    }
    return std::nullopt;
}

} // namespace

void PageText::Append(std::string_view piece, const CodePage& codePage)
{
    if (m_isPlain && IsPlain(piece)) {
        m_plain += piece;
        return;
    }
    if (m_isPlain) {
        m_text = Wide(m_plain);
        m_plain = {};
        m_isPlain = false;
    }
    codePage.Decode(piece.substr(0, piece.find('\0')), m_text);
}

std::optional<std::wstring> PageText::Between(std::wstring_view key, std::wstring_view caseless, wchar_t end) const
{
    return m_isPlain ? TextBetween<char>(m_plain, key, caseless, end)
                     : TextBetween<wchar_t>(m_text, key, caseless, end);
}

std::wstring PageText::Text() const
{
    return m_isPlain ? Wide(m_plain) : m_text;
}

} // namespace sitekeeper
