#include "maindlg/VersionStrings.h"

#include "maindlg/VersionBlock.h"
#include "text/Utf16.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace sitekeeper {
namespace {

constexpr std::uint32_t WesternCodePage = 1252;

/// The names in a version resource, in the order of VersionString.
constexpr std::array<const wchar_t*, VersionStrings::Count> ResourceNames = {
    L"Comments",        L"CompanyName",      L"FileDescription", L"FileVersion", L"InternalName",   L"LegalCopyright",
    L"LegalTrademarks", L"OriginalFilename", L"PrivateBuild",    L"ProductName", L"ProductVersion", L"SpecialBuild"};

/// The low 16 bits of `number`, in four hexadecimal digits.
std::wstring FourDigits(std::uint32_t number)
{
    std::wstring digits;
    for (int shift = 12; shift >= 0; shift -= 4) {
        digits += L"0123456789abcdef"[(number >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return digits;
}

/// Where the texts of the first language stand, with a "\" at its end.
std::wstring TextsOf(const VersionBlock& block)
{
    const std::optional<std::span<const std::byte>> found = block.Query(L"\\VarFileInfo\\Translation");
    const std::span<const std::byte> translation = found.value_or(std::span<const std::byte>());
    constexpr std::size_t EntrySize = 4; // language, then code page
    const bool isWhole = translation.size() >= EntrySize;
    const std::uint32_t language = isWhole ? WordAt(translation, 0) : static_cast<std::uint32_t>(translation.size());
    const std::uint32_t codePage = isWhole ? WordAt(translation, 2) : WesternCodePage;
    return L"\\StringFileInfo\\" + FourDigits(language) + FourDigits(codePage) + L"\\";
}

} // namespace

void ReadVersionStrings(const VersionResources& resources, VersionStrings& strings, const std::wstring& path,
                        const std::wstring& extension)
{
    strings = {};
    const std::vector<std::byte> bytes = resources.ReadVersionBlock(path + extension);
    const VersionBlock block(bytes);
    if (!block.Query(L"\\")) {
        return;
    }
    const std::wstring texts = TextsOf(block);
    for (std::size_t which = 0; which < ResourceNames.size(); ++which) {
        if (const auto value = block.Query(texts + ResourceNames.at(which))) {
            strings[static_cast<VersionString>(which)] = DecodeUtf16(*value);
        }
    }
}

} // namespace sitekeeper
