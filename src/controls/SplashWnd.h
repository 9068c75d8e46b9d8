// The picture shown while the program starts.
#pragma once

#include "frame/WinApp.h"
#include "frame/Wnd.h"
#include "platform/Clock.h"
#include "win32/Handles.h"

#include <windows.h>

#include <memory>

namespace sitekeeper {

class SplashScreen;

/// A borderless window that paints a bitmap. Belongs to a SplashScreen, which it tells when the system destroys it.
class CSplashWnd final : public CWnd
{
public:
    CSplashWnd(SplashScreen& screen, Seconds creationTime) : m_screen(screen), m_creationTime(creationTime) {}

    /// Loads bitmap `bitmapId` of `resources` and shows it in the middle of the screen, or over `parent`. False when
    /// the bitmap or the window cannot be had; HasBitmap tells which.
    bool Show(HINSTANCE resources, UINT bitmapId, HWND parent);

    [[nodiscard]] bool HasBitmap() const noexcept { return static_cast<bool>(m_bitmap); }
    [[nodiscard]] Seconds CreationTime() const noexcept { return m_creationTime; }

    /// Copies the bitmap to the upper left corner of `dc` at its full size. Nothing else is drawn.
    void Paint(HDC dc) const;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;

private:
    SplashScreen& m_screen;
    UniqueBitmap m_bitmap;
    SIZE m_size{};
    Seconds m_creationTime;
};

/// The one splash of the process: at most one at a time.
class SplashScreen
{
public:
    /// Keeps both references; they must outlive it.
    SplashScreen(CWinApp& app, const Clock& clock) : m_app(app), m_clock(clock) {}
    SplashScreen(const SplashScreen&) = delete;
    SplashScreen& operator=(const SplashScreen&) = delete;
    ~SplashScreen() { Remove(); }

    /// Shows bitmap `bitmapId` of the application's resources. False when a splash is there already, which stays, or
    /// when nothing can be shown. A splash whose bitmap is missing stays current, unseen, until it is hidden.
    bool ShowSplashScreen(UINT bitmapId, const CWnd* parent);

    /// Takes the splash away once `minimumSeconds` whole seconds have passed since it was made (since now, without a
    /// splash); a deadline in the current second counts as one second later. Meanwhile the thread's messages are
    /// handled. Then the application's main window, if any, is painted at once.
    void HideSplashScreen(int minimumSeconds);

    /// Takes the splash away at once and paints the main window.
    void Remove();

    [[nodiscard]] const CSplashWnd* Current() const noexcept { return m_current.get(); }

private:
    friend class CSplashWnd;
    void Forget() noexcept;

    CWinApp& m_app;
    const Clock& m_clock;
    std::unique_ptr<CSplashWnd> m_current;
};

} // namespace sitekeeper
