// Stands in for Explorer: leaves its command line in a file beside itself, complete or not at all.
#include <windows.h>

#include <array>
#include <string>

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, wchar_t* /*arguments*/, int /*showCommand*/)
{
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    const std::wstring result = std::wstring(self.data()) + L".txt";
    const std::wstring draft = result + L".new";
    const std::wstring line = ::GetCommandLineW();
    const HANDLE file = ::CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
    ::CloseHandle(file);
    return ::MoveFileExW(draft.c_str(), result.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE ? 0 : 1;
}
