#include "support/ThreadWindows.h"

#include "win32/Handles.h"

#include <algorithm>
#include <utility>

namespace sitekeeper {
namespace {

BOOL CALLBACK Collect(HWND window, LPARAM list)
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> ThreadWindows()
{
    std::vector<HWND> windows;
    ::EnumThreadWindows(::GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

MessageWatch*& CurrentWatch()
{
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a hook is told nothing of who set it
    static MessageWatch* watch = nullptr;
    return watch;
}

} // namespace

std::wstring ClassNameOf(HWND window)
{
    wchar_t name[256]{};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

std::vector<HWND> VisibleWindows(const std::wstring& className)
{
    std::vector<HWND> windows = ThreadWindows();
    std::erase_if(windows, [&className](HWND window) {
        return ::IsWindowVisible(window) == FALSE || ClassNameOf(window) != className;
    });
    return windows;
}

std::size_t CountThreadWindows()
{
    return ThreadWindows().size();
}

MemoryBitmap ClientPicture(HWND window)
{
    RECT client{};
    ::GetClientRect(window, &client);
    MemoryBitmap picture(client.right, client.bottom, RGB(255, 0, 255));
    const WindowDc dc(window);
    ::BitBlt(picture.Dc(), 0, 0, picture.Width(), picture.Height(), dc.get(), 0, 0, SRCCOPY);
    return picture;
}

MessageWatch::MessageWatch(Observer observer)
    : m_observer(std::move(observer)),
      m_hook(::SetWindowsHookExW(WH_CALLWNDPROC, &OnCall, nullptr, ::GetCurrentThreadId()))
{
    CurrentWatch() = this;
}

MessageWatch::~MessageWatch()
{
    ::UnhookWindowsHookEx(m_hook);
    CurrentWatch() = nullptr;
}

LRESULT CALLBACK MessageWatch::OnCall(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && CurrentWatch() != nullptr) {
        CurrentWatch()->m_observer(*reinterpret_cast<const CWPSTRUCT*>(lParam));
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

WindowLog::WindowLog(std::vector<std::wstring>& log)
    : m_log(log), m_watch([this](const CWPSTRUCT& call) { Note(call); })
{}

void WindowLog::Note(const CWPSTRUCT& call)
{
    const bool isChild = (::GetWindowLongPtrW(call.hwnd, GWL_STYLE) & WS_CHILD) != 0;
    const auto shown = std::ranges::find(m_shown, call.hwnd);
    if (call.message == WM_SHOWWINDOW && call.wParam != FALSE && !isChild && shown == m_shown.end()) {
        m_shown.push_back(call.hwnd);
        m_log.push_back(L"shown " + ClassNameOf(call.hwnd));
    } else if (call.message == WM_DESTROY && shown != m_shown.end()) {
        m_shown.erase(shown);
        m_log.push_back(L"gone " + ClassNameOf(call.hwnd));
    }
}

} // namespace sitekeeper
