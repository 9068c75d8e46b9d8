// The windows of this thread as they come, show themselves and go.
#pragma once

#include "support/MemoryBitmap.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace sitekeeper {

/// The window class of the splash, a name of ours.
inline constexpr const wchar_t* SplashClass = L"SiteKeeperSplash";

[[nodiscard]] std::wstring ClassNameOf(HWND window);

/// The visible top-level windows of a class, from the top down.
[[nodiscard]] std::vector<HWND> VisibleWindows(const std::wstring& className);

/// All top-level windows of this thread, visible or not.
[[nodiscard]] std::size_t CountThreadWindows();

/// The client area as it stands on the screen, without painting it first.
[[nodiscard]] MemoryBitmap ClientPicture(HWND window);

/// Lets the test see each message that is sent to a window of this thread, before the window does, for the life of this
/// object. One at a time.
class MessageWatch
{
public:
    using Observer = std::function<void(const CWPSTRUCT&)>;

    explicit MessageWatch(Observer observer);
    MessageWatch(const MessageWatch&) = delete;
    MessageWatch& operator=(const MessageWatch&) = delete;
    ~MessageWatch();

private:
    static LRESULT CALLBACK OnCall(int code, WPARAM wParam, LPARAM lParam);

    Observer m_observer;
    HHOOK m_hook;
};

/// Writes "shown <class>" and "gone <class>" into a log for each top-level window that appears on the screen, for the
/// life of this object.
class WindowLog
{
public:
    explicit WindowLog(std::vector<std::wstring>& log);

private:
    void Note(const CWPSTRUCT& call);

    std::vector<std::wstring>& m_log;
    std::vector<HWND> m_shown;
    MessageWatch m_watch;
};

} // namespace sitekeeper
