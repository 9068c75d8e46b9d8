// Any bytes as a file's version resource: whatever is found in them lies in them, and the About text comes of it.
#include "fuzz/FuzzInput.h"
#include "maindlg/AboutText.h"
#include "maindlg/VersionBlock.h"
#include "maindlg/VersionStrings.h"
#include "support/MemoryRegistry.h"
#include "support/MemoryVersionResources.h"

#include <algorithm>
#include <vector>

namespace {

using namespace sitekeeper;

void CheckQuery(std::span<const std::byte> bytes, const std::wstring& path)
{
    const auto found = VersionBlock(bytes).Query(path);
    if (found && !found->empty()) {
        Require(found->data() >= bytes.data());
        Require(found->data() + found->size() <= bytes.data() + bytes.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first bytes once as a path, so that names of the block's own making are looked for as well.
    constexpr std::size_t PathBytes = 24;
    const std::span<const std::byte> bytes = AsBytes(data, size);
    for (const wchar_t* const path :
         {L"\\", L"\\VarFileInfo\\Translation", L"\\StringFileInfo", L"\\StringFileInfo\\040904b0\\FileVersion"}) {
        CheckQuery(bytes, path);
    }
    CheckQuery(bytes, L"\\" + AsText(bytes.first(std::min(PathBytes, size))));

    MemoryVersionResources resources;
    resources.Set(L"C:\\a.exe", std::vector<std::byte>(bytes.begin(), bytes.end()));
    VersionStrings strings;
    ReadVersionStrings(resources, strings, L"C:\\a", L".exe");
    std::size_t length = 0;
    for (std::size_t which = 0; which < VersionStrings::Count; ++which) {
        length = std::max(length, strings[static_cast<VersionString>(which)].size());
    }
    Require(length <= size / 2);
    const MemoryRegistry registry;
    Require(BuildAboutText(resources, registry, L"C:\\a.exe").find(L" Version ") != std::wstring::npos);
    return 0;
}
