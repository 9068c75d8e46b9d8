#include "controls/FolderBrowser.h"

#include "text/Paths.h"
#include "win32/Handles.h"

namespace sitekeeper {

CBrowseFolderShell::CBrowseFolderShell(HWND owner, PCIDLIST_ABSOLUTE root, UINT titleId, HINSTANCE resources)
{
    m_parameters.pszDisplayName = m_displayName.data();
    m_parameters.lpfn = &BrowseCallbackProc;
    m_parameters.lParam = reinterpret_cast<LPARAM>(this);
    SetOwner(owner);
    SetRoot(root);
    if (titleId >= 1) {
        const wchar_t* text = nullptr;
        const int length = ::LoadStringW(resources, titleId, reinterpret_cast<wchar_t*>(&text), 0);
        m_isTitleLoaded = length > 0;
        if (m_isTitleLoaded) {
            m_title.assign(text, static_cast<std::size_t>(length));
            SetTitle(m_title.c_str());
        }
    }
}

void CBrowseFolderShell::OnInit() {}

void CBrowseFolderShell::OnSelChanged(PCIDLIST_ABSOLUTE /*item*/) {}

void CBrowseFolderShell::SetOwner(HWND owner)
{
    if (m_pickerWindow == nullptr) {
        m_parameters.hwndOwner = owner;
    }
}

void CBrowseFolderShell::SetRoot(PCIDLIST_ABSOLUTE root)
{
    if (m_pickerWindow == nullptr) {
        m_parameters.pidlRoot = root;
    }
}

void CBrowseFolderShell::SetTitle(const wchar_t* title)
{
    if (m_pickerWindow == nullptr) {
        m_parameters.lpszTitle = title;
    }
}

void CBrowseFolderShell::SetFlags(UINT flags)
{
    if (m_pickerWindow == nullptr) {
        m_parameters.ulFlags = flags;
    }
}

bool CBrowseFolderShell::SelectFolder()
{
    const PIDLIST_ABSOLUTE item = ::SHBrowseForFolderW(&m_parameters);
    m_pickerWindow = nullptr;
    if (item == nullptr) {
        return false;
    }
    m_displayName.fill(L'\0');
    // Whether the item has a path is not looked at: a chosen item counts as chosen, with an empty path if need be.
    ::SHGetPathFromIDListW(item, m_displayName.data());

    ComPtr<IMalloc> allocator;
    if (SUCCEEDED(::SHGetMalloc(allocator.put()))) {
        allocator->Free(item);
    }
    m_selectedFolder = m_displayName.data();
    return true;
}

int CALLBACK CBrowseFolderShell::BrowseCallbackProc(HWND picker, UINT message, LPARAM parameter, LPARAM object) noexcept
{
    auto* const self = reinterpret_cast<CBrowseFolderShell*>(object);
    self->m_pickerWindow = picker;
    if (message == BFFM_INITIALIZED) {
        self->OnInit();
    } else if (message == BFFM_SELCHANGED) {
        self->OnSelChanged(reinterpret_cast<PCIDLIST_ABSOLUTE>(parameter));
    }
    return 0;
}

void CBrowseForFolder::OnInit()
{
    const auto folder = reinterpret_cast<LPARAM>(m_initialFolder.c_str());
    ::SendMessageW(PickerWindow(), BFFM_SETSELECTIONW, TRUE, folder);
    ::SendMessageW(PickerWindow(), BFFM_SETSTATUSTEXTW, 0, folder);
}

void CBrowseForFolder::OnSelChanged(PCIDLIST_ABSOLUTE item)
{
    std::array<wchar_t, MAX_PATH> path{};
    if (::SHGetPathFromIDListW(item, path.data()) == FALSE) {
        path.front() = L'\0';
    }
    ::SendMessageW(PickerWindow(), BFFM_SETSTATUSTEXTW, 0, reinterpret_cast<LPARAM>(path.data()));
}

void BrowseForFolderPath(const std::wstring& title, std::wstring& path)
{
    if (path.empty()) {
        path = L"C:\\";
    }
    CBrowseForFolder browser;
    browser.SetTitle(title.c_str());
    browser.SetFlags(BIF_NEWDIALOGSTYLE);
    browser.SetInitialFolder(path);
    if (!browser.SelectFolder()) {
        path.clear(); // nothing chosen is an empty path, not the old one
        return;
    }
    path = browser.GetSelectedFolder();
    if (!path.empty()) {
        path = WithBackslash(path);
    }
}

} // namespace sitekeeper
