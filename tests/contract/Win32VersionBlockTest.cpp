// The reader of version resources beside the system's own, on the system's files.
#include "maindlg/VersionBlock.h"
#include "text/Utf16.h"
#include "win32/Win32VersionResources.h"

#include <windows.h>

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

std::wstring SystemFile(const std::wstring& name)
{
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetSystemDirectoryW(folder.data(), MAX_PATH);
    return folder.data() + (L"\\" + name);
}

/// The system's answer; the length in its own count: bytes, or characters of a text.
std::optional<std::pair<const void*, UINT>> Ask(const std::vector<std::byte>& block, const std::wstring& path)
{
    void* value = nullptr;
    UINT length = 0;
    if (::VerQueryValueW(block.data(), path.c_str(), &value, &length) == FALSE) {
        return std::nullopt;
    }
    return std::pair<const void*, UINT>(value, length);
}

/// The first language and code page that the block names, as the names of its texts have them.
std::wstring FirstLanguage(const std::vector<std::byte>& block)
{
    const auto translation = Ask(block, L"\\VarFileInfo\\Translation");
    if (!translation) {
        return L"";
    }
    std::array<WORD, 2> numbers{};
    std::memcpy(numbers.data(), translation->first, sizeof numbers);
    std::array<wchar_t, 16> text{};
    ::wsprintfW(text.data(), L"%04x%04x", numbers[0], numbers[1]);
    return text.data();
}

class VersionBlockBesideTheSystem : public testing::TestWithParam<const wchar_t*>
{
protected:
    const std::vector<std::byte> bytes = Win32VersionResources().ReadVersionBlock(SystemFile(GetParam()));
    const VersionBlock block{bytes};
};

TEST_P(VersionBlockBesideTheSystem, FindsTheSamePlaces)
{
    ASSERT_FALSE(bytes.empty());
    for (const wchar_t* const path : {L"\\", L"\\VarFileInfo\\Translation", L"\\VARFILEINFO\\translation"}) {
        const auto ours = block.Query(path);
        const auto theirs = Ask(bytes, path);
        ASSERT_TRUE(ours && theirs) << testing::PrintToString(path);
        EXPECT_EQ(ours->data(), theirs->first);
        EXPECT_EQ(ours->size(), theirs->second);
    }
    EXPECT_FALSE(Ask(bytes, L"\\VarFileInfo\\Transl"));
    EXPECT_FALSE(block.Query(L"\\VarFileInfo\\Transl"));
}

TEST_P(VersionBlockBesideTheSystem, ReadsTheSameTexts)
{
    int found = 0;
    for (const wchar_t* const key : {L"Comments", L"CompanyName", L"FileDescription", L"FileVersion", L"InternalName",
                                     L"LegalCopyright", L"LegalTrademarks", L"OriginalFilename", L"PrivateBuild",
                                     L"ProductName", L"ProductVersion", L"SpecialBuild"}) {
        const std::wstring path = L"\\StringFileInfo\\" + FirstLanguage(bytes) + L"\\" + key;
        const auto ours = block.Query(path);
        const auto theirs = Ask(bytes, path);
        ASSERT_EQ(ours.has_value(), theirs.has_value()) << testing::PrintToString(path);
        if (ours) {
            EXPECT_EQ(DecodeUtf16(*ours), static_cast<const wchar_t*>(theirs->first));
            ++found;
        }
    }
    EXPECT_GT(found, 4) << "the file's texts stand elsewhere";
}

INSTANTIATE_TEST_SUITE_P(Files, VersionBlockBesideTheSystem,
                         testing::Values(L"kernel32.dll", L"shell32.dll", L"user32.dll"));

} // namespace
} // namespace sitekeeper
