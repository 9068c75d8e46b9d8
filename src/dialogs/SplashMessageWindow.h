// The progress window of the dialogs library. Stands alone: it shares nothing with the program but the contract.
#pragma once

#include "dialogs/SplashMessageDialog.h"

#include <windows.h>

#include <string>

namespace sitekeeper {

class SplashMessageWindow final : public CORSWSplashMsgDlg
{
public:
    /// `library` is this library's own module, which holds the window's procedure.
    explicit SplashMessageWindow(HINSTANCE library) : m_library(library) {}
    SplashMessageWindow(const SplashMessageWindow&) = delete;
    SplashMessageWindow& operator=(const SplashMessageWindow&) = delete;
    ~SplashMessageWindow() override;

    int Create(HINSTANCE application) override;
    void SetTitle(const wchar_t* title) override;
    void SetMessage(const wchar_t* message) override;
    void SetIcon(UINT iconId) override;

private:
    static LRESULT CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    void Paint(HDC dc) const;
    void PaintNow() const;
    void Place() const;
    [[nodiscard]] int Scaled(int pixels) const;

    HINSTANCE m_library;
    HINSTANCE m_application = nullptr;
    HWND m_window = nullptr;
    HFONT m_font = nullptr;
    HICON m_icon = nullptr;
    std::wstring m_message;
    int m_dpi = USER_DEFAULT_SCREEN_DPI;
};

} // namespace sitekeeper
