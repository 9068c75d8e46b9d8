#include "win32/Win32Shell.h"

#include "win32/Handles.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

namespace sitekeeper {
namespace {

ResultCode CodeOf(HRESULT result)
{
    return static_cast<ResultCode>(result);
}

} // namespace

bool Win32Shell::EnterComponents()
{
    return SUCCEEDED(::CoInitialize(nullptr));
}

void Win32Shell::LeaveComponents() noexcept
{
    ::CoUninitialize();
}

ResultCode Win32Shell::SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut)
{
    // A cut path would name another file.
    if (path.size() >= MAX_PATH) {
        return ResultCode::Fail;
    }
    ComPtr<IShellLinkW> link;
    HRESULT result = ::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                        reinterpret_cast<void**>(link.put()));
    if (FAILED(result)) {
        return CodeOf(result);
    }
    ComPtr<IPersistFile> file;
    result = link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.put()));
    if (FAILED(result)) {
        return CodeOf(result);
    }
    result = link->SetPath(shortcut.target.c_str());
    if (FAILED(result)) {
        return CodeOf(result);
    }
    link->SetArguments(shortcut.arguments.c_str());
    link->SetWorkingDirectory(shortcut.workingFolder.c_str());
    link->SetIconLocation(shortcut.iconFile.c_str(), shortcut.iconIndex);
    return CodeOf(file->Save(path.c_str(), TRUE));
}

void Win32Shell::Explore(const std::wstring& folder)
{
    ::ShellExecuteW(nullptr, L"explore", folder.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void Win32Shell::OpenProgram(const std::wstring& program, const std::wstring& parameters)
{
    ::ShellExecuteW(nullptr, L"open", program.c_str(), parameters.c_str(), nullptr, SW_SHOWNORMAL);
}

void Win32Shell::Open(const std::wstring& address)
{
    ::ShellExecuteW(nullptr, L"open", address.c_str(), nullptr, nullptr, SW_SHOW);
}

} // namespace sitekeeper
