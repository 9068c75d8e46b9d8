#include "win32/Win32Processes.h"

#include "win32/Handles.h"

#include <windows.h>

namespace sitekeeper {

bool Win32Processes::Start(const std::wstring& program, const std::wstring& commandLine)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOW;
    std::wstring writable = commandLine; // the call may write into it
    PROCESS_INFORMATION started{};
    const BOOL hasStarted = ::CreateProcessW(program.c_str(), writable.data(), nullptr, nullptr, FALSE,
                                             NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup, &started);
    const UniqueProcess process(started.hProcess);
    const UniqueThread thread(started.hThread);
    return hasStarted != FALSE;
}

} // namespace sitekeeper
