// Stands in for the HTML Help control: adds a line for each call to the file that SITEKEEPER_HELP_CALLS names, in the
// system's own wide text: owner, command and data as hexadecimal numbers, and the address.
#include <windows.h>

#include <array>
#include <string>

namespace {

std::wstring Hexadecimal(ULONG_PTR value)
{
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789abcdef"[value & 0xFU]);
        value >>= 4U;
    } while (value != 0);
    return digits;
}

} // namespace

extern "C" HWND WINAPI FakeHtmlHelp(HWND owner, const wchar_t* address, UINT command, DWORD_PTR data)
{
    std::array<wchar_t, MAX_PATH> path{};
    ::GetEnvironmentVariableW(L"SITEKEEPER_HELP_CALLS", path.data(), MAX_PATH);
    const std::wstring line = Hexadecimal(reinterpret_cast<ULONG_PTR>(owner)) + L' ' + Hexadecimal(command) + L' ' +
                              Hexadecimal(data) + L' ' + address + L'\n';
    const HANDLE file = ::CreateFileW(path.data(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        ::WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
        ::CloseHandle(file);
    }
    return nullptr;
}
