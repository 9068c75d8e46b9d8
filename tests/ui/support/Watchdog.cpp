#include "support/Watchdog.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace sitekeeper {
namespace {

/// The enumeration goes from the top down; windows without a size are nobody's to close.
BOOL CALLBACK TakeVisible(HWND window, LPARAM found)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    if (::IsWindowVisible(window) == FALSE || ::IsRectEmpty(&place) != FALSE) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// The text that a window's own thread cannot be asked for: it may be stuck.
std::wstring StoredText(HWND window)
{
    wchar_t text[256]{};
    ::InternalGetWindowText(window, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring ClassName(HWND window)
{
    wchar_t name[256]{};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

} // namespace

Watchdog::Watchdog() : m_watched(::GetCurrentThreadId()), m_thread([this] { Watch(); }) {}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isToEnd = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Watchdog::Guard(std::string name, std::chrono::milliseconds limit)
{
    {
        const std::lock_guard lock(m_mutex);
        m_name = std::move(name);
        m_deadline = std::chrono::steady_clock::now() + limit;
    }
    m_changed.notify_one();
}

void Watchdog::Rest()
{
    const std::lock_guard lock(m_mutex);
    m_deadline = std::chrono::steady_clock::time_point::max();
}

void Watchdog::Watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_isToEnd) {
        if (m_deadline == std::chrono::steady_clock::time_point::max()) {
            m_changed.wait(lock);
        } else if (m_changed.wait_until(lock, m_deadline) == std::cv_status::timeout &&
                   std::chrono::steady_clock::now() >= m_deadline) {
            Bark();
        }
    }
}

void Watchdog::Bark() const
{
    HWND top = nullptr;
    ::EnumThreadWindows(m_watched, &TakeVisible, reinterpret_cast<LPARAM>(&top));
    if (top != nullptr) {
        std::fprintf(stderr, "\nwatchdog: %s left a window open: title \"%ls\", class \"%ls\"\n", m_name.c_str(),
                     StoredText(top).c_str(), ClassName(top).c_str());
    } else {
        std::fprintf(stderr, "\nwatchdog: %s took too long; no window is open\n", m_name.c_str());
    }
    std::fflush(stderr);
    // At once: no destructor may wait for the thread that hangs.
    ::TerminateProcess(::GetCurrentProcess(), top != nullptr ? WindowLeftOpen : TookTooLong);
    std::abort();
}

} // namespace sitekeeper
