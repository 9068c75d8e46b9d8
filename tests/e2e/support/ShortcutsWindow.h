// The dialog of the shortcuts from outside, worked with the real keyboard and mouse.
#pragma once

#include "e2e/support/ProgramRun.h"

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

namespace sitekeeper::e2e {

class ShortcutsWindow
{
public:
    /// Waits until it stands and takes keys.
    explicit ShortcutsWindow(const ProgramRun& run);

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }

    /// One line for each row: "[x] name" or "[ ] name".
    [[nodiscard]] std::vector<std::wstring> Rows() const;
    void AwaitRows(const std::vector<std::wstring>& rows) const;

    /// A key to whatever has the focus; a click on a row's check box.
    void Press(WORD key) const;
    void ClickCheckBox(int row) const;

    /// Presses OK or Cancel and waits until the dialog is gone.
    void Leave(int button) const;

private:
    [[nodiscard]] HWND Tree() const;
    [[nodiscard]] std::vector<HTREEITEM> Items() const;
    [[nodiscard]] std::wstring LineOf(HTREEITEM item) const;

    const ProgramRun& m_run;
    HWND m_window;
};

} // namespace sitekeeper::e2e
