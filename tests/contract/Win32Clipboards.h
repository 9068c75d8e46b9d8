// What the contract tests do with the real clipboard behind the back of the port.
#pragma once

#include "platform/MessageBoxes.h"
#include "win32/WindowIds.h"

#include <windows.h>

#include <cstdint>
#include <memory>

namespace sitekeeper {

/// A window that nobody sees, with all that belongs to owning the clipboard.
class TestWindow
{
public:
    TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow();

    [[nodiscard]] HWND get() const noexcept { return m_window; }
    [[nodiscard]] WindowId Id() const noexcept { return IdOf(m_window); }

private:
    HWND m_window;
};

void EmptyRealClipboard(const TestWindow& window);
/// In place of everything else.
void PutPictureOnRealClipboard(const TestWindow& window);

/// The clipboard, open for a window on another thread until the result goes.
[[nodiscard]] std::shared_ptr<void> OpenRealClipboard();

} // namespace sitekeeper
