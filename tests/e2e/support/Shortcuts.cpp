#include "e2e/support/Shortcuts.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Wide.h"
#include "win32/Handles.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <array>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

using TextBuffer = std::array<wchar_t, 1024>;

/// A link object with its file side; both empty when the shell cannot be had.
class Link
{
public:
    Link()
    {
        if (SUCCEEDED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                         reinterpret_cast<void**>(m_link.put())))) {
            m_link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(m_file.put()));
        }
    }
    [[nodiscard]] bool Load(const std::wstring& path) { return m_file && SUCCEEDED(m_file->Load(path.c_str(), 0)); }
    [[nodiscard]] bool Save(const std::wstring& path) { return m_file && SUCCEEDED(m_file->Save(path.c_str(), TRUE)); }
    IShellLinkW* operator->() const noexcept { return m_link.get(); }

private:
    ComPtr<IShellLinkW> m_link;
    ComPtr<IPersistFile> m_file;
};

/// The target by its item list. Preferred to the path beside it, which Wine keeps in the narrow code page only: a known
/// difference of Wine, where letters outside that page come back as question marks.
std::optional<std::wstring> TargetByItemList(const Link& link)
{
    PIDLIST_ABSOLUTE items = nullptr;
    if (link->GetIDList(&items) != S_OK || items == nullptr) {
        return std::nullopt;
    }
    std::array<wchar_t, MAX_PATH> path{};
    const bool isFile = ::SHGetPathFromIDListW(items, path.data()) != FALSE;
    ::CoTaskMemFree(items);
    return isFile ? std::optional<std::wstring>(path.data()) : std::nullopt;
}

} // namespace

std::optional<Shortcut> ReadShortcut(const std::wstring& path)
{
    Link link;
    if (!link.Load(path)) {
        return std::nullopt;
    }
    Shortcut shortcut;
    TextBuffer text{};
    const int room = static_cast<int>(text.size());
    const auto taken = [&](HRESULT result) {
        std::wstring value = SUCCEEDED(result) ? text.data() : L"?";
        text.fill(L'\0');
        return value;
    };
    const std::wstring narrowTarget = taken(link->GetPath(text.data(), room, nullptr, SLGP_RAWPATH));
    shortcut.target = TargetByItemList(link).value_or(narrowTarget);
    shortcut.arguments = taken(link->GetArguments(text.data(), room));
    shortcut.description = taken(link->GetDescription(text.data(), room));
    shortcut.workingFolder = taken(link->GetWorkingDirectory(text.data(), room));
    shortcut.iconFile = taken(link->GetIconLocation(text.data(), room, &shortcut.iconIndex));
    return shortcut;
}

void WriteShortcut(const std::wstring& path, const Shortcut& shortcut)
{
    MakeFolders(path.substr(0, path.rfind(L'\\')));
    Link link;
    link->SetPath(shortcut.target.c_str());
    link->SetArguments(shortcut.arguments.c_str());
    link->SetDescription(shortcut.description.c_str());
    link->SetWorkingDirectory(shortcut.workingFolder.c_str());
    link->SetIconLocation(shortcut.iconFile.c_str(), shortcut.iconIndex);
    if (!link.Save(path)) {
        throw std::runtime_error("cannot write the shortcut " + ToUtf8(path));
    }
}

std::wstring Describe(const Shortcut& shortcut)
{
    return L"shortcut to \"" + shortcut.target + L"\", arguments \"" + shortcut.arguments + L"\", description \"" +
           shortcut.description + L"\", in \"" + shortcut.workingFolder + L"\", icon \"" + shortcut.iconFile + L"\" " +
           std::to_wstring(shortcut.iconIndex);
}

} // namespace sitekeeper::e2e
