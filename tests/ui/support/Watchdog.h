// Ends a test run that hangs: a modal box that nobody closes would wait for ever.
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace sitekeeper {

/// Watches the thread that made it, from another one. When a guarded stretch of work takes too long, it says so on the
/// standard error output, with the window on top, and ends the process.
class Watchdog
{
public:
    /// The process's exit codes: a window was left open, or there was none and the work did not come to its end.
    static constexpr UINT WindowLeftOpen = 86;
    static constexpr UINT TookTooLong = 87;

    Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    /// Work called `name` starts and must be over within `limit`.
    void Guard(std::string name, std::chrono::milliseconds limit);
    /// It is over.
    void Rest();

private:
    void Watch();
    [[noreturn]] void Bark() const;

    DWORD m_watched;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_name;
    std::chrono::steady_clock::time_point m_deadline = std::chrono::steady_clock::time_point::max();
    bool m_isToEnd = false;
    std::thread m_thread;
};

} // namespace sitekeeper
