#include "support/Utf8CodePage.h"

#include "text/Utf16.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace sitekeeper {
namespace {

constexpr std::uint32_t Replacement = 0xFFFD;
constexpr std::uint32_t FirstOfPair = 0xD800;
constexpr std::uint32_t SecondOfPair = 0xDC00;
constexpr std::uint32_t BehindPairs = 0xE000;
constexpr std::uint32_t Last = 0x10FFFF;

/// How many bytes a character takes that begins with `lead`, and the smallest number that needs so many.
struct Form
{
    std::size_t length;
    std::uint32_t smallest;
    std::uint32_t mask;
};

std::optional<Form> FormOf(unsigned char lead)
{
    if (lead < 0x80) {
        return Form{1, 0, 0x7F};
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return Form{2, 0x80, 0x1F};
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return Form{3, 0x800, 0x0F};
    }
    if (lead >= 0xF0 && lead < 0xF5) {
        return Form{4, 0x10000, 0x07};
    }
    return std::nullopt;
}

/// The character at the start of `bytes`, and in `length` how many bytes it takes; nothing when there is none.
std::optional<std::uint32_t> CharacterAt(std::string_view bytes, std::size_t& length)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    const std::optional<Form> form = FormOf(lead);
    if (!form || bytes.size() < form->length) {
        return std::nullopt;
    }
    std::uint32_t code = lead & form->mask;
    for (std::size_t place = 1; place < form->length; ++place) {
        const auto byte = static_cast<unsigned char>(bytes[place]);
        if ((byte & 0xC0U) != 0x80U) {
            return std::nullopt;
        }
        code = code << 6U | (byte & 0x3FU);
    }
    if (code < form->smallest || code > Last || (code >= FirstOfPair && code < BehindPairs)) {
        return std::nullopt;
    }
    length = form->length;
    return code;
}

void AppendCharacter(std::uint32_t code, std::wstring& text)
{
    if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
        text += static_cast<wchar_t>(FirstOfPair + ((code - 0x10000) >> 10U));
        text += static_cast<wchar_t>(SecondOfPair + ((code - 0x10000) & 0x3FFU));
    } else {
        text += static_cast<wchar_t>(code);
    }
}

void AppendBytes(std::uint32_t code, std::string& bytes)
{
    const auto trail = [code](unsigned shift) { return static_cast<char>(0x80U | ((code >> shift) & 0x3FU)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += {static_cast<char>(0xC0U | (code >> 6U)), trail(0)};
    } else if (code < 0x10000) {
        bytes += {static_cast<char>(0xE0U | (code >> 12U)), trail(6), trail(0)};
    } else {
        bytes += {static_cast<char>(0xF0U | (code >> 18U)), trail(12), trail(6), trail(0)};
    }
}

} // namespace

void Utf8CodePage::Decode(std::string_view bytes, std::wstring& text) const
{
    while (!bytes.empty()) {
        std::size_t length = 1;
        AppendCharacter(CharacterAt(bytes, length).value_or(Replacement), text);
        bytes.remove_prefix(length);
    }
}

bool Utf8CodePage::Encode(std::wstring_view text, std::string& bytes) const
{
    const std::size_t before = bytes.size();
    for (std::size_t place = 0; place < text.size(); ++place) {
        std::uint32_t code = CodeUnit(text[place]);
        if (sizeof(wchar_t) == 2 && code >= FirstOfPair && code < SecondOfPair && place + 1 < text.size()) {
            const std::uint32_t second = CodeUnit(text[place + 1]);
            if (second >= SecondOfPair && second < BehindPairs) {
                code = 0x10000 + ((code - FirstOfPair) << 10U) + (second - SecondOfPair);
                ++place;
            }
        }
        if (code > Last || (code >= FirstOfPair && code < BehindPairs)) {
            bytes.resize(before);
            return false;
        }
        AppendBytes(code, bytes);
    }
    return true;
}

} // namespace sitekeeper
