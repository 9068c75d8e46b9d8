#include "frame/Wnd.h"

#include "frame/AccessibleName.h"

#include <windows.h>

#include <commctrl.h>
#include <olectl.h>

#include <algorithm>
#include <utility>

namespace sitekeeper {
namespace {

/// The window property under which the object of a window is found.
constexpr const wchar_t* ObjectProperty = L"SiteKeeper.Window";
constexpr UINT_PTR SubclassId = 1;

RECT AreaToCentreIn(HWND window)
{
    HMONITOR monitor = ::MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY);
    const HWND owner = ::GetWindow(window, GW_OWNER);
    RECT area{};
    if (owner != nullptr && ::IsWindowVisible(owner) != FALSE && ::IsIconic(owner) == FALSE) {
        ::GetWindowRect(owner, &area);
        return area;
    }
    MONITORINFO information{};
    information.cbSize = sizeof information;
    ::GetMonitorInfoW(monitor, &information);
    return information.rcWork;
}

} // namespace

CWnd::~CWnd()
{
    if (m_handle != nullptr) {
        Detach();
    }
}

CWnd* CWnd::FromHandle(HWND window) noexcept
{
    DWORD process = 0;
    if (window == nullptr || ::GetWindowThreadProcessId(window, &process) == 0 || process != ::GetCurrentProcessId()) {
        return nullptr;
    }
    return static_cast<CWnd*>(::GetPropW(window, ObjectProperty));
}

void CWnd::Attach(HWND window)
{
    m_handle = window;
    ::SetPropW(window, ObjectProperty, this);
}

void CWnd::Detach() noexcept
{
    ::RemovePropW(m_handle, ObjectProperty);
    if (std::exchange(m_isSubclassed, false)) {
        ::RemoveWindowSubclass(m_handle, &SubclassThunk, SubclassId);
    }
    m_handle = nullptr;
}

bool CWnd::SubclassWindow(HWND control)
{
    if (m_handle != nullptr || ::IsWindow(control) == FALSE || FromHandle(control) != nullptr ||
        ::SetWindowSubclass(control, &SubclassThunk, SubclassId, reinterpret_cast<DWORD_PTR>(this)) == FALSE) {
        return false;
    }
    m_isSubclassed = true;
    Attach(control);
    OnAttached();
    return true;
}

CWnd::SubclassPause::SubclassPause(const CWnd& window) : m_window(window)
{
    ::RemoveWindowSubclass(m_window.m_handle, &SubclassThunk, SubclassId);
}

CWnd::SubclassPause::~SubclassPause()
{
    ::SetWindowSubclass(m_window.m_handle, &SubclassThunk, SubclassId, reinterpret_cast<DWORD_PTR>(&m_window));
}

bool CWnd::CreateOfOwnClass(HINSTANCE instance, const wchar_t* className, DWORD style, const RECT& position, HWND owner)
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    if (::GetClassInfoExW(instance, className, &windowClass) == FALSE) {
        windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = &OwnClassThunk;
        windowClass.hInstance = instance;
        windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = className;
        if (::RegisterClassExW(&windowClass) == 0) {
            return false;
        }
    }
    return ::CreateWindowExW(0, className, L"", style, position.left, position.top, position.right - position.left,
                             position.bottom - position.top, owner, nullptr, instance, this) != nullptr;
}

void CWnd::DestroyWindow()
{
    if (m_handle != nullptr) {
        ::DestroyWindow(m_handle);
    }
}

void CWnd::CenterWindow()
{
    RECT window{};
    ::GetWindowRect(m_handle, &window);
    const RECT area = AreaToCentreIn(m_handle);
    const long width = window.right - window.left;
    const long height = window.bottom - window.top;

    MONITORINFO information{};
    information.cbSize = sizeof information;
    ::GetMonitorInfoW(::MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &information);
    const RECT& limits = information.rcWork;
    const long left = std::max(std::min((area.left + area.right - width) / 2, limits.right - width), limits.left);
    const long top = std::max(std::min((area.top + area.bottom - height) / 2, limits.bottom - height), limits.top);
    ::SetWindowPos(m_handle, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool CWnd::PreTranslateMessage(MSG& /*message*/)
{
    return false;
}

void CWnd::KeepError(std::exception_ptr error) noexcept
{
    if (CWnd* const around = m_handle != nullptr ? FromHandle(::GetParent(m_handle)) : nullptr) {
        around->KeepError(std::move(error));
    }
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case OCM_DRAWITEM: DrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case OCM_COMMAND: return OnReflectedCommand(HIWORD(wParam)) ? TRUE : FALSE;
    case WM_DRAWITEM:
    case WM_COMMAND:
        if (Reflect(message, wParam, lParam)) {
            return TRUE;
        }
        break;
    case WM_GETOBJECT:
        // The number is asked for as 32 bits, with or without its sign.
        if (static_cast<LONG>(lParam) == OBJID_CLIENT && !m_accessibleName.empty()) {
            if (const LRESULT answer = AnswerWithName(m_handle, wParam, m_accessibleName); answer != 0) {
                return answer;
            }
        }
        break;
    default: break;
    }
    return Default(message, wParam, lParam);
}

LRESULT CWnd::Default(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_isSubclassed ? ::DefSubclassProc(m_handle, message, wParam, lParam)
                          : ::DefWindowProcW(m_handle, message, wParam, lParam);
}

void CWnd::DrawItem(const DRAWITEMSTRUCT& /*request*/) {}

bool CWnd::OnReflectedCommand(WORD /*notification*/)
{
    return false;
}

void CWnd::OnAttached() {}

void CWnd::PostNcDestroy() {}

bool CWnd::Reflect(UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND control = nullptr;
    if (message == WM_COMMAND) {
        control = reinterpret_cast<HWND>(lParam);
    } else if (message == WM_DRAWITEM && wParam != 0) { // 0 stands for a menu
        control = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->hwndItem;
    }
    return FromHandle(control) != nullptr && ::SendMessageW(control, OCM__BASE + message, wParam, lParam) != FALSE;
}

LRESULT CALLBACK CWnd::OwnClassThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        static_cast<CWnd*>(creation->lpCreateParams)->Attach(window);
    }
    CWnd* const self = FromHandle(window);
    if (self == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    const LRESULT result = self->Guarded(0, [=] { return self->WindowProc(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        self->Detach();
        self->PostNcDestroy();
    }
    return result;
}

LRESULT CALLBACK CWnd::SubclassThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                     DWORD_PTR object) noexcept
{
    auto* const self = reinterpret_cast<CWnd*>(object);
    if (message != WM_NCDESTROY) {
        return self->Guarded(0, [=] { return self->WindowProc(message, wParam, lParam); });
    }
    self->Detach();
    const LRESULT result = ::DefSubclassProc(window, message, wParam, lParam);
    self->PostNcDestroy();
    return result;
}

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

} // namespace sitekeeper
