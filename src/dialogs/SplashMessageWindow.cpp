#include "dialogs/SplashMessageWindow.h"

#include <new>

namespace sitekeeper {
namespace {

constexpr const wchar_t* ClassName = L"ORSWSplashMessage";

// Measures at 96 dpi.
constexpr int ClientWidth = 300;
constexpr int ClientHeight = 72;
constexpr int Margin = 20;
constexpr int IconSize = 32;
constexpr int TextHeight = 15;

constexpr DWORD Style = WS_POPUP | WS_CAPTION;
constexpr DWORD ExtendedStyle = WS_EX_DLGMODALFRAME;

} // namespace

SplashMessageWindow::~SplashMessageWindow()
{
    if (m_window != nullptr) {
        ::DestroyWindow(m_window);
    }
    // With the last window goes its class: the system would keep it beyond the library, with a procedure that is gone.
    ::UnregisterClassW(ClassName, m_library);
    if (m_font != nullptr) {
        ::DeleteObject(m_font);
    }
    if (m_icon != nullptr) {
        ::DestroyIcon(m_icon);
    }
}

int SplashMessageWindow::Scaled(int pixels) const
{
    return ::MulDiv(pixels, m_dpi, USER_DEFAULT_SCREEN_DPI);
}

int SplashMessageWindow::Create(HINSTANCE application)
{
    if (m_window != nullptr) {
        return 0;
    }
    m_application = application;
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &Thunk;
    windowClass.hInstance = m_library;
    windowClass.hCursor = ::LoadCursorW(nullptr, IDC_WAIT);
    windowClass.lpszClassName = ClassName;
    ::RegisterClassExW(&windowClass); // fails when an earlier window registered it, which is as good

    const HWND owner = ::GetActiveWindow();
    m_window = ::CreateWindowExW(ExtendedStyle, ClassName, L"", Style, 0, 0, 0, 0, owner, nullptr, m_library, this);
    if (m_window == nullptr) {
        return 0;
    }
    const HDC dc = ::GetDC(m_window);
    m_dpi = ::GetDeviceCaps(dc, LOGPIXELSY);
    ::ReleaseDC(m_window, dc);
    if (m_font != nullptr) { // of an earlier window, which went with its owner
        ::DeleteObject(m_font);
    }
    m_font = ::CreateFontW(-Scaled(TextHeight), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH, L"Segoe UI");
    Place();
    ::ShowWindow(m_window, SW_SHOWNOACTIVATE);
    PaintNow();
    return 1;
}

void SplashMessageWindow::Place() const
{
    RECT frame{0, 0, Scaled(ClientWidth), Scaled(ClientHeight)};
    ::AdjustWindowRectEx(&frame, Style, FALSE, ExtendedStyle);
    const int width = static_cast<int>(frame.right - frame.left);
    const int height = static_cast<int>(frame.bottom - frame.top);

    RECT area{};
    const HWND owner = ::GetWindow(m_window, GW_OWNER);
    if (owner == nullptr || ::IsIconic(owner) != FALSE || ::GetWindowRect(owner, &area) == FALSE) {
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    }
    ::SetWindowPos(m_window, HWND_TOP, static_cast<int>(area.left + area.right - width) / 2,
                   static_cast<int>(area.top + area.bottom - height) / 2, width, height, SWP_NOACTIVATE);
}

void SplashMessageWindow::SetTitle(const wchar_t* title)
{
    if (m_window != nullptr) {
        ::SetWindowTextW(m_window, title);
        PaintNow();
    }
}

void SplashMessageWindow::SetMessage(const wchar_t* message)
{
    try {
        m_message = message;
        // The program has a runtime of its own and could not catch what this library's raises.
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch)
    }
    PaintNow();
}

void SplashMessageWindow::SetIcon(UINT iconId)
{
    if (m_window == nullptr) {
        return;
    }
    auto* const icon = static_cast<HICON>(::LoadImageW(m_application, MAKEINTRESOURCEW(iconId), IMAGE_ICON,
                                                       Scaled(IconSize), Scaled(IconSize), LR_DEFAULTCOLOR));
    if (m_icon != nullptr) {
        ::DestroyIcon(m_icon);
    }
    m_icon = icon;
    ::SendMessageW(m_window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_icon));
    PaintNow();
}

void SplashMessageWindow::PaintNow() const
{
    if (m_window != nullptr) {
        ::RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    }
}

void SplashMessageWindow::Paint(HDC dc) const
{
    RECT area{};
    ::GetClientRect(m_window, &area);
    ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_WINDOW));
    int left = Scaled(Margin);
    if (m_icon != nullptr) {
        const int size = Scaled(IconSize);
        ::DrawIconEx(dc, left, (static_cast<int>(area.bottom) - size) / 2, m_icon, size, size, 0, nullptr, DI_NORMAL);
        left += size + Scaled(Margin) / 2;
    }
    area.left = left;
    area.right -= Scaled(Margin);
    const HGDIOBJ formerFont = ::SelectObject(dc, m_font);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
    ::DrawTextW(dc, m_message.c_str(), -1, &area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    ::SelectObject(dc, formerFont);
}

LRESULT CALLBACK SplashMessageWindow::Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const self = reinterpret_cast<SplashMessageWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_PAINT) {
        PAINTSTRUCT paint{};
        self->Paint(::BeginPaint(window, &paint));
        ::EndPaint(window, &paint);
        return 0;
    }
    // The owner takes the window with it when it goes.
    if (self != nullptr && message == WM_NCDESTROY) {
        self->m_window = nullptr;
        ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

} // namespace sitekeeper
