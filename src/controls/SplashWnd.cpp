#include "controls/SplashWnd.h"

namespace sitekeeper {

bool CSplashWnd::Show(HINSTANCE resources, UINT bitmapId, HWND parent)
{
    m_bitmap.reset(::LoadBitmapW(resources, MAKEINTRESOURCEW(bitmapId)));
    if (!m_bitmap) {
        return false;
    }
    BITMAP bitmap{};
    ::GetObjectW(m_bitmap.get(), sizeof bitmap, &bitmap);
    m_size = {bitmap.bmWidth, bitmap.bmHeight};
    if (!CreateOfOwnClass(resources, L"SiteKeeperSplash", WS_POPUP | WS_VISIBLE, {0, 0, m_size.cx, m_size.cy},
                          parent)) {
        return false;
    }
    CenterWindow();
    ::UpdateWindow(Handle());
    return true;
}

void CSplashWnd::Paint(HDC dc) const
{
    const UniqueMemoryDc source(::CreateCompatibleDC(dc));
    const SelectScope selected(source.get(), m_bitmap.get());
    ::BitBlt(dc, 0, 0, m_size.cx, m_size.cy, source.get(), 0, 0, SRCCOPY);
}

LRESULT CSplashWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: {
        const PaintScope paint(Handle());
        Paint(paint.Dc());
        return 0;
    }
    case WM_TIMER: m_screen.Remove(); return 0;
    default: return CWnd::WindowProc(message, wParam, lParam);
    }
}

void CSplashWnd::PostNcDestroy()
{
    m_screen.Forget();
} // the last line that runs: it ends this object

bool SplashScreen::ShowSplashScreen(UINT bitmapId, const CWnd* parent)
{
    if (m_current != nullptr) {
        return false;
    }
    m_current = std::make_unique<CSplashWnd>(*this, m_clock.Now());
    CSplashWnd& splash = *m_current;
    if (splash.Show(m_app.Instance(), bitmapId, parent != nullptr ? parent->Handle() : nullptr)) {
        return true;
    }
    if (m_current != nullptr && splash.HasBitmap()) {
        Forget();
    }
    return false;
}

void SplashScreen::HideSplashScreen(int minimumSeconds)
{
    const Seconds start = m_current != nullptr ? m_current->CreationTime() : m_clock.Now();
    Seconds deadline = start + minimumSeconds;
    if (deadline == m_clock.Now()) {
        ++deadline;
    }
    // Busy on purpose: the splash keeps painting and the program answers, without a timer.
    while (m_clock.Now() < deadline) {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            if (message.message == WM_QUIT) {
                ::PostQuitMessage(static_cast<int>(message.wParam)); // the end is for whoever comes next, too
                Remove();
                return;
            }
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    Remove();
}

void SplashScreen::Remove()
{
    if (m_current != nullptr && m_current->Handle() != nullptr) {
        m_current->DestroyWindow();
    } else {
        Forget();
    }
    if (const CWnd* const main = m_app.MainWindow(); main != nullptr && main->Handle() != nullptr) {
        ::UpdateWindow(main->Handle());
    }
}

void SplashScreen::Forget() noexcept
{
    m_current.reset();
}

} // namespace sitekeeper
