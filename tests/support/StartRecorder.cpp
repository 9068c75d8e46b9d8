// Stands in for a program that ours starts. Beside itself it leaves how it was started: PROGRAM.txt, complete or not at
// all, one line each for the command line, the state of the window it is asked for ("-" for none), the priority class
// and the working folder. PROGRAM.running is there as long as it runs; it ends when PROGRAM.end appears, or by itself
// after half a minute.
#include <windows.h>

#include <array>
#include <string>

namespace {

constexpr DWORD PollMilliseconds = 10;
constexpr ULONGLONG PatienceMilliseconds = 30000;

std::wstring HowStarted()
{
    STARTUPINFOW startup{};
    ::GetStartupInfoW(&startup);
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetCurrentDirectoryW(MAX_PATH, folder.data());
    std::wstring lines = ::GetCommandLineW();
    lines += L"\n";
    lines += (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? std::to_wstring(startup.wShowWindow) : L"-";
    lines += L"\n" + std::to_wstring(::GetPriorityClass(::GetCurrentProcess())) + L"\n" + folder.data();
    return lines;
}

bool Leave(const std::wstring& path, const std::wstring& text)
{
    const std::wstring draft = path + L".new";
    const HANDLE file = ::CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
    ::CloseHandle(file);
    return ::MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

} // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, wchar_t* /*arguments*/, int /*showCommand*/)
{
    std::array<wchar_t, MAX_PATH> path{};
    ::GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    const std::wstring self = path.data();
    const HANDLE running = ::CreateFileW((self + L".running").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                         FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    const bool isLeft = Leave(self + L".txt", HowStarted());
    const ULONGLONG deadline = ::GetTickCount64() + PatienceMilliseconds;
    while (::GetFileAttributesW((self + L".end").c_str()) == INVALID_FILE_ATTRIBUTES && ::GetTickCount64() < deadline) {
        ::Sleep(PollMilliseconds);
    }
    ::CloseHandle(running);
    return isLeft ? 0 : 1;
}
