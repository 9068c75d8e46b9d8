#include "e2e/support/ProgramRun.h"

#include "e2e/support/Wide.h"

#include <array>
#include <ctime>
#include <iostream>

namespace sitekeeper::e2e {
namespace {

constexpr DWORD PollMilliseconds = 10;
constexpr UINT AnswerMilliseconds = 5000;

BOOL CALLBACK CollectWindow(HWND window, LPARAM parameter)
{
    reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

} // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR result = 0;
    if (::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerMilliseconds, &result) == 0) {
        throw JourneyError("a window does not answer message " + std::to_string(message));
    }
    return static_cast<LRESULT>(result);
}

bool WaitAnswering(HANDLE handle, DWORD milliseconds)
{
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    const DWORD count = handle != nullptr ? 1 : 0;
    for (;;) {
        const ULONGLONG now = ::GetTickCount64();
        const DWORD left = end > now ? static_cast<DWORD>(end - now) : 0;
        const DWORD result = ::MsgWaitForMultipleObjects(count, &handle, FALSE, left, QS_ALLINPUT);
        if (count == 1 && result == WAIT_OBJECT_0) {
            return true;
        }
        if (result == WAIT_TIMEOUT) {
            return false;
        }
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            ::DispatchMessageW(&message);
        }
    }
}

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::wstring WindowClass(HWND window)
{
    std::array<wchar_t, 256> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

GUITHREADINFO ThreadState(HWND window)
{
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &state);
    return state;
}

long long ProgramRun::CurrentSecond() noexcept
{
    return ::_time64(nullptr);
}

ProgramRun::ProgramRun(const std::wstring& path) : m_startSecond(CurrentSecond())
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    std::wstring commandLine = L"\"" + path + L"\"";
    const std::wstring folder = path.substr(0, path.rfind(L'\\') + 1);
    const auto start = [&] {
        return ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                                &startup, &m_process) != FALSE;
    };
    bool isStarted = start();
    if (!isStarted && ::GetLastError() == ERROR_INTERNAL_ERROR) {
        // On a busy machine Wine loses a process now and then before its first instruction.
        std::cout << "started once more: " << ToUtf8(path) << '\n';
        isStarted = start();
    }
    if (!isStarted) {
        throw JourneyError("cannot start " + ToUtf8(path) + ": error " + std::to_string(::GetLastError()));
    }
}

ProgramRun::~ProgramRun()
{
    if (!HasEnded()) {
        ::TerminateProcess(m_process.hProcess, 1);
        ::WaitForSingleObject(m_process.hProcess, static_cast<DWORD>(PatienceMilliseconds));
    }
    ::CloseHandle(m_process.hThread);
    ::CloseHandle(m_process.hProcess);
}

void ProgramRun::Await(const std::string& what, const std::function<bool()>& condition) const
{
    const ULONGLONG end = ::GetTickCount64() + PatienceMilliseconds;
    while (!condition()) {
        // Waiting on the process paces the polling and notices its end at once.
        const bool hasEnded = WaitAnswering(m_process.hProcess, PollMilliseconds);
        if (hasEnded && !condition()) {
            throw JourneyError("the program ended while waiting for " + what);
        }
        if (::GetTickCount64() > end) {
            throw JourneyError("waited in vain for " + what + "\n" + DescribeWindows());
        }
    }
}

HWND ProgramRun::AwaitWindow(const std::string& what, const WindowCondition& condition) const
{
    HWND found = nullptr;
    Await(what, [&] {
        for (const HWND window : Windows()) {
            if (condition(window)) {
                found = window;
                return true;
            }
        }
        return false;
    });
    return found;
}

void ProgramRun::BringToFront(HWND window, ULONGLONG milliseconds) const
{
    ULONGLONG since = 0; // when it was first found in front; 0 when it is not
    Await("the window to be in front", [&] {
        const GUITHREADINFO state = ThreadState(window);
        const bool hasFocus = state.hwndFocus == window || ::IsChild(window, state.hwndFocus) != FALSE;
        if (::GetForegroundWindow() != window || state.hwndActive != window || !hasFocus) {
            since = 0;
            ::SetForegroundWindow(window);
            return false;
        }
        since = since == 0 ? ::GetTickCount64() : since;
        return ::GetTickCount64() - since >= milliseconds;
    });
}

void ProgramRun::AwaitOnTop(HWND window, POINT point) const
{
    Await("the window to be on top where the mouse is",
          [=] { return ::GetAncestor(::WindowFromPoint(point), GA_ROOT) == window; });
}

std::vector<HWND> ProgramRun::Windows() const
{
    std::vector<HWND> windows;
    ::EnumWindows(&CollectWindow, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [this](HWND window) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        return process != m_process.dwProcessId || ::IsWindowVisible(window) == FALSE;
    });
    return windows;
}

DWORD ProgramRun::WaitForEnd() const
{
    if (!WaitAnswering(m_process.hProcess, static_cast<DWORD>(PatienceMilliseconds))) {
        throw JourneyError("the program does not end\n" + DescribeWindows());
    }
    DWORD code = 0;
    ::GetExitCodeProcess(m_process.hProcess, &code);
    return code;
}

bool ProgramRun::HasEnded() const
{
    return ::WaitForSingleObject(m_process.hProcess, 0) == WAIT_OBJECT_0;
}

std::string ProgramRun::DescribeWindows() const
{
    std::string text = "windows of the program:\n";
    for (const HWND window : Windows()) {
        std::array<wchar_t, 256> title{};
        ::GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
        const HWND message = ::GetDlgItem(window, 0xFFFF);
        text += "  " + ToUtf8(WindowClass(window)) + " \"" + ToUtf8(title.data()) + "\"" +
                (message != nullptr ? " " + ToUtf8(WindowText(message)) : "") + "\n";
    }
    return text;
}

} // namespace sitekeeper::e2e
