// Stands where a program of the suite stands in a real installation, and says which one it would have been.
#include <windows.h>

#include <string>

int WINAPI wWinMain(HINSTANCE /*hInstance*/, HINSTANCE /*hPrevInstance*/, LPWSTR lpCmdLine, int /*nShowCmd*/)
{
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);

    std::wstring text = name + L"\n\n" + path;
    if (*lpCmdLine != L'\0') {
        text += L"\n\n";
        text += lpCmdLine;
    }
    ::MessageBoxW(nullptr, text.c_str(), name.c_str(), MB_OK | MB_ICONINFORMATION);
    return 0;
}
