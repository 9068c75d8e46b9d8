// One run of the shipped program, watched from outside.
#pragma once

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace sitekeeper::e2e {

/// What was waited for did not come in time; says what stood on the screen instead.
class JourneyError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// How long any single wait may take; far beyond what a healthy program needs on a loaded machine.
inline constexpr ULONGLONG PatienceMilliseconds = 20000;

class ProgramRun
{
public:
    /// Starts a program with its own folder as the current one. Throws when it cannot be started.
    explicit ProgramRun(const std::wstring& path);
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// Ends the program, politely or not: no test leaves a process behind.
    ~ProgramRun();

    /// Polls until `condition` holds. Throws when time runs out or the program ends first.
    void Await(const std::string& what, const std::function<bool()>& condition) const;

    /// The first visible top-level window for which `condition` holds.
    using WindowCondition = std::function<bool(HWND)>;
    [[nodiscard]] HWND AwaitWindow(const std::string& what, const WindowCondition& condition) const;

    /// Waits until the keys go to a window of this process, and have gone there for so long without a break. (On a
    /// screen without a window manager Wine may lose the focus again, a moment after it was given.)
    void BringToFront(HWND window, ULONGLONG milliseconds = 50) const;

    /// Waits until a press of the mouse at this point of the screen goes to that window or to something in it.
    void AwaitOnTop(HWND window, POINT point) const;

    /// The visible top-level windows of this process, topmost first.
    [[nodiscard]] std::vector<HWND> Windows() const;

    /// Waits for the end of the process; gives its exit code. Throws when it does not end.
    [[nodiscard]] DWORD WaitForEnd() const;

    [[nodiscard]] bool HasEnded() const;

    /// The start, and the whole second in which it was asked for, as the program's clock counts.
    [[nodiscard]] long long StartSecond() const noexcept { return m_startSecond; }
    [[nodiscard]] static long long CurrentSecond() noexcept;

    [[nodiscard]] HANDLE Process() const noexcept { return m_process.hProcess; }

private:
    [[nodiscard]] std::string DescribeWindows() const;

    PROCESS_INFORMATION m_process{};
    long long m_startSecond;
};

/// Text and class of a window of another process, the text asked with a time limit.
[[nodiscard]] std::wstring WindowText(HWND window);
[[nodiscard]] std::wstring WindowClass(HWND window);

/// What the windows beside this one, of the same thread, share: the active one, the focus, the captured mouse, a menu.
[[nodiscard]] GUITHREADINFO ThreadState(HWND window);

/// Waits a moment, or until `handle` (null for none) is signalled, and answers what other programs send meanwhile: the
/// component runtime gives this thread a window, and a program that asks all windows something would wait for it.
/// Whether the handle is signalled.
bool WaitAnswering(HANDLE handle, DWORD milliseconds);

/// SendMessage that gives up on a window which does not answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

} // namespace sitekeeper::e2e
