// make_shortcut LINK TARGET DESCRIPTION: writes a shell link whose start folder is the target's.
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <cstdio>
#include <string>

namespace {

// Wide strings as the shell takes them.
struct Shortcut
{
    const wchar_t* link;
    const wchar_t* target;
    const wchar_t* description;
};

HRESULT Fill(IShellLinkW& shell_link, const Shortcut& shortcut)
{
    const std::wstring target = shortcut.target;
    const std::wstring folder = target.substr(0, target.find_last_of(L'\\'));
    HRESULT result = shell_link.SetPath(shortcut.target);
    if (SUCCEEDED(result)) {
        result = shell_link.SetWorkingDirectory(folder.c_str());
    }
    if (SUCCEEDED(result)) {
        result = shell_link.SetDescription(shortcut.description);
    }
    if (SUCCEEDED(result)) {
        result = shell_link.SetIconLocation(shortcut.target, 0);
    }
    return result;
}

HRESULT Save(IShellLinkW& shell_link, const wchar_t* path)
{
    IPersistFile* file = nullptr;
    HRESULT result = shell_link.QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file));
    if (SUCCEEDED(result)) {
        result = file->Save(path, TRUE);
        file->Release();
    }
    return result;
}

HRESULT Write(const Shortcut& shortcut)
{
    IShellLinkW* shell_link = nullptr;
    HRESULT result = ::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                        reinterpret_cast<void**>(&shell_link));
    if (SUCCEEDED(result)) {
        result = Fill(*shell_link, shortcut);
        if (SUCCEEDED(result)) {
            result = Save(*shell_link, shortcut.link);
        }
        shell_link->Release();
    }
    return result;
}

} // namespace

int wmain(int count, wchar_t* arguments[])
{
    if (count != 4) {
        std::fputs("usage: make_shortcut LINK TARGET DESCRIPTION\n", stderr);
        return 2;
    }
    HRESULT result = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (SUCCEEDED(result)) {
        result = Write({arguments[1], arguments[2], arguments[3]});
        ::CoUninitialize();
    }
    if (FAILED(result)) {
        std::fprintf(stderr, "%ls: 0x%08lx\n", arguments[1], static_cast<unsigned long>(result));
        return 1;
    }
    return 0;
}
