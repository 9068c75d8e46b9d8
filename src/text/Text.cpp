#include "text/Text.h"

#include "text/Utf16.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace sitekeeper {
namespace {

struct FoldRange
{
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t distance;
};

/// Capitals that stand in one block at a fixed distance before their small letters.
constexpr FoldRange Blocks[] = {
    {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},   {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32}, {0x400, 0x40F, 80},
    {0x410, 0x42F, 32}, {0x386, 0x386, 38}, {0x388, 0x38A, 37}, {0x38C, 0x38C, 64}, {0x38E, 0x38F, 63},
};

/// Blocks in which a capital stands directly before its small letter: capitals even, or odd where so marked.
constexpr FoldRange EvenPairs[] = {{0x100, 0x12F, 0}, {0x132, 0x137, 0}, {0x14A, 0x177, 0},   {0x460, 0x481, 0},
                                   {0x48A, 0x4BF, 0}, {0x4D0, 0x52F, 0}, {0x1E00, 0x1E95, 0}, {0x1EA0, 0x1EFF, 0}};
constexpr FoldRange OddPairs[] = {{0x139, 0x148, 0}, {0x179, 0x17E, 0}, {0x4C1, 0x4CE, 0}};

constexpr std::uint32_t FirstBeyondAscii = 0x80;
constexpr std::uint32_t LettersOfAscii = 26;
constexpr std::uint32_t AsciiDistance = 32; // from a capital to its small letter

constexpr std::uint32_t CapitalYWithDiaeresis = 0x178;
constexpr std::uint32_t SmallYWithDiaeresis = 0xFF;

template <std::size_t Size>
const FoldRange* Find(const FoldRange (&ranges)[Size], std::uint32_t code) noexcept
{
    const auto* found = std::find_if(std::begin(ranges), std::end(ranges), [code](const FoldRange& range) {
        return code >= range.first && code <= range.last;
    });
    return found == std::end(ranges) ? nullptr : found;
}

bool IsBlank(wchar_t character) noexcept
{
    return character == L' ' || (character >= L'\t' && character <= L'\r');
}

} // namespace

wchar_t FoldCase(wchar_t character) noexcept
{
    const std::uint32_t code = CodeUnit(character);
    if (code < FirstBeyondAscii) { // nearly every character there is
        return code - U'A' < LettersOfAscii ? static_cast<wchar_t>(code + AsciiDistance) : character;
    }
    if (const FoldRange* block = Find(Blocks, code)) {
        return static_cast<wchar_t>(code + block->distance);
    }
    if (code == CapitalYWithDiaeresis) {
        return static_cast<wchar_t>(SmallYWithDiaeresis);
    }
    const bool isOdd = (code & 1U) != 0;
    if ((!isOdd && Find(EvenPairs, code) != nullptr) || (isOdd && Find(OddPairs, code) != nullptr)) {
        return static_cast<wchar_t>(code + 1);
    }
    return character;
}

std::wstring ToLowerCase(std::wstring_view text)
{
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), FoldCase);
    return lower;
}

bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return FoldCase(a) == FoldCase(b); });
}

int LeadingNumber(std::wstring_view text) noexcept
{
    constexpr std::int64_t Highest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t Lowest = std::numeric_limits<std::int32_t>::min();
    std::wstring_view rest = text;
    while (!rest.empty() && IsBlank(rest.front())) {
        rest.remove_prefix(1);
    }
    bool isNegative = false;
    if (!rest.empty() && (rest.front() == L'-' || rest.front() == L'+')) {
        isNegative = rest.front() == L'-';
        rest.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (; !rest.empty() && rest.front() >= L'0' && rest.front() <= L'9'; rest.remove_prefix(1)) {
        value = std::min(value * 10 + (rest.front() - L'0'), Highest + 1);
    }
    return static_cast<int>(std::clamp(isNegative ? -value : value, Lowest, Highest));
}

std::wstring Fill(std::wstring_view pattern, std::initializer_list<std::wstring_view> arguments)
{
    std::wstring filled;
    const auto* next = arguments.begin();
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        const wchar_t kind = pattern[index] == L'%' && index + 1 < pattern.size() ? pattern[index + 1] : L'\0';
        if (kind == L's' || kind == L'd') {
            if (next != arguments.end()) {
                filled += *next++;
            }
            ++index;
        } else {
            filled += pattern[index];
            index += kind == L'%' ? 1 : 0;
        }
    }
    return filled;
}

std::wstring ReplaceAll(std::wstring_view text, std::wstring_view from, std::wstring_view to)
{
    std::wstring replaced;
    while (!from.empty()) {
        const std::size_t found = text.find(from);
        if (found == std::wstring_view::npos) {
            break;
        }
        replaced.append(text.substr(0, found)).append(to);
        text.remove_prefix(found + from.size());
    }
    return replaced.append(text);
}

} // namespace sitekeeper
