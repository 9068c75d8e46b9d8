#include "win32/Win32HelpViewer.h"

#include "win32/WindowIds.h"

#include <array>
#include <string>

namespace sitekeeper {
namespace {

// From the published header of the HTML Help API (htmlhelp.h).
constexpr UINT DisplayTopic = 0;    // HH_DISPLAY_TOPIC
constexpr UINT DisplayContents = 1; // HH_DISPLAY_TOC
constexpr WORD EntryOrdinal = 15;   // HtmlHelpW

/// Where the control is registered; empty when it is not, or its path takes more than 260 characters.
std::wstring RegisteredControl()
{
    UniqueRegistryKey key;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32", 0,
                        KEY_QUERY_VALUE, key.put()) != ERROR_SUCCESS) {
        return {};
    }
    std::array<wchar_t, MAX_PATH + 1> path{};
    DWORD type = REG_NONE;
    DWORD size = MAX_PATH * sizeof(wchar_t);
    if (::RegQueryValueExW(key.get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(path.data()), &size) !=
        ERROR_SUCCESS) {
        return {};
    }
    if (type != REG_EXPAND_SZ) {
        return path.data();
    }
    std::array<wchar_t, MAX_PATH> expanded{};
    const DWORD length = ::ExpandEnvironmentStringsW(path.data(), expanded.data(), static_cast<DWORD>(expanded.size()));
    return length == 0 || length > expanded.size() ? std::wstring() : std::wstring(expanded.data());
}

} // namespace

Win32HelpViewer::HtmlHelpFunction Win32HelpViewer::EntryPoint()
{
    if (!m_isTried) {
        m_isTried = true;
        if (const std::wstring registered = RegisteredControl(); !registered.empty()) {
            m_control.reset(::LoadLibraryW(registered.c_str()));
        }
        if (!m_control) {
            m_control.reset(::LoadLibraryW(L"hhctrl.ocx"));
        }
        if (m_control) {
            m_entryPoint = reinterpret_cast<HtmlHelpFunction>(
                reinterpret_cast<void*>(::GetProcAddress(m_control.get(), MAKEINTRESOURCEA(EntryOrdinal))));
        }
    }
    return m_entryPoint;
}

void Win32HelpViewer::ShowContents(WindowId owner, const std::wstring& path)
{
    Show(owner, path, DisplayContents);
}

void Win32HelpViewer::ShowTopic(WindowId owner, const std::wstring& address)
{
    Show(owner, address, DisplayTopic);
}

void Win32HelpViewer::Show(WindowId owner, const std::wstring& address, UINT command)
{
    if (const HtmlHelpFunction show = EntryPoint()) {
        show(WindowOf(owner), address.c_str(), command, 0);
    }
}

} // namespace sitekeeper
