#include "ProgramStart.h"

#include "Measure.h"
#include "res/ResourceIds.h"
#include "win32/Handles.h"

#include <windows.h>

#include <optional>
#include <psapi.h>
#include <stdexcept>

namespace sitekeeper::bench {
namespace {

constexpr double DeadlineMilliseconds = 10'000;

/// The windows of one process that the measurement waits for.
struct Windows
{
    DWORD process = 0;
    HWND splash = nullptr;
    HWND main = nullptr;
};

BOOL CALLBACK Note(HWND window, LPARAM parameter)
{
    auto& windows = *reinterpret_cast<Windows*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == windows.process && ::IsWindowVisible(window) != FALSE) {
        wchar_t name[32]{};
        ::GetClassNameW(window, name, 32);
        if (std::wstring(name) == L"SiteKeeperSplash") {
            windows.splash = window;
        } else if (::GetDlgItem(window, IDC_PROGRAM_PATH) != nullptr) {
            windows.main = window;
        }
    }
    return TRUE;
}

Windows WindowsOf(DWORD process)
{
    Windows windows{process};
    ::EnumWindows(&Note, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace

StartResult MeasureStart(const std::wstring& program)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    const Stopwatch watch;
    if (::CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started) ==
        FALSE) {
        throw std::runtime_error("a program could not be started");
    }
    const UniqueProcess process(started.hProcess);
    const UniqueThread thread(started.hThread);

    std::optional<double> splashCame;
    double splashTime = 0;
    Windows windows;
    for (windows = WindowsOf(started.dwProcessId); windows.main == nullptr; windows = WindowsOf(started.dwProcessId)) {
        const double now = watch.Milliseconds();
        if (windows.splash != nullptr && !splashCame) {
            splashCame = now;
        }
        if (windows.splash != nullptr) {
            splashTime = now - *splashCame;
        }
        if (now > DeadlineMilliseconds) {
            ::TerminateProcess(process.get(), 1);
            throw std::runtime_error("a main window did not come");
        }
        ::Sleep(1);
    }
    const double milliseconds = watch.Milliseconds() - splashTime;

    PROCESS_MEMORY_COUNTERS memory{};
    ::GetProcessMemoryInfo(process.get(), &memory, sizeof memory);
    ::PostMessageW(windows.main, WM_COMMAND, IDCANCEL, 0);
    ::WaitForSingleObject(process.get(), static_cast<DWORD>(DeadlineMilliseconds));
    return {milliseconds, static_cast<double>(memory.PeakWorkingSetSize) / 1024.0};
}

double FileKib(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return ::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == FALSE
               ? 0.0
               : static_cast<double>(data.nFileSizeLow) / 1024.0;
}

} // namespace sitekeeper::bench
