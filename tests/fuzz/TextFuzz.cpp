// Any text through the small text rules and through the making of folder trees.
#include "app/VersionText.h"
#include "fuzz/FuzzInput.h"
#include "shortcuts/ShortcutFiles.h"
#include "support/FoldersOnly.h"
#include "support/MemoryFileSystem.h"
#include "text/Paths.h"
#include "text/Text.h"
#include "text/Utf16.h"

namespace {

using namespace sitekeeper;

/// Looks at each folder that is asked for: each lies in the one before it.
class NestedFolders final : public FoldersOnly
{
public:
    [[nodiscard]] bool Exists(const std::wstring& path) const override { return path.empty(); }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override { return path; }
    bool MakeFolder(const std::wstring& path) override
    {
        Require(path.starts_with(m_last) && path.size() > m_last.size());
        m_last = path;
        return true;
    }

private:
    std::wstring m_last;
};

void CheckText(const std::wstring& text)
{
    Require(Fill(text, {}).size() <= text.size());
    Require(Fill(L"%s", {text}) == text);
    Require(text.find(L'%') != std::wstring::npos || Fill(text, {L"x"}) == text);
    static_cast<void>(LeadingNumber(text));
    const std::wstring lower = ToLowerCase(text);
    Require(ToLowerCase(lower) == lower && EqualIgnoringCase(text, lower));
    Require(GetFolderOfPath(text) + GetNameOfPath(text) == text);
    std::wstring version = text;
    NormalizeVersionText(version);
    Require(version.size() <= text.size() + 2);
}

void CheckRoundTrip(std::span<const std::byte> bytes)
{
    const std::wstring decoded = DecodeUtf16(bytes);
    const std::vector<std::byte> encoded = EncodeUtf16(decoded);
    Require(encoded.size() <= bytes.size());
    Require(std::equal(encoded.begin(), encoded.end(), bytes.begin()));
    Require(DecodeUtf16(encoded) == decoded);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::byte> bytes = AsBytes(data, size);
    CheckRoundTrip(bytes);
    for (const std::wstring& text : {AsText(bytes), std::wstring(data, data + size)}) {
        CheckText(text);
        NestedFolders nested;
        CreateFolderPath(nested, text);
        MemoryFileSystem files;
        CreateFolderPath(files, text);
        Require(files.Exists(L"C:\\"));
    }
    return 0;
}
