// The user access dialog from outside, worked with the real mouse and keyboard.
#pragma once

#include "e2e/support/ProgramRun.h"

#include <windows.h>

#include <string>
#include <vector>

namespace sitekeeper::e2e {

/// The lists and buttons by their published numbers.
enum class AccessControl : int
{
    Ok = 1,
    Cancel = 2,
    Add = 1007,
    Help = 1009,
    Refresh = 1013,
    Users = 1018,
    NewUser = 1019,
    LedgerComposer = 1020,
    SiteKeeper = 1022,
    SheetWriter = 1023,
    NormKeeper = 1024
};

using Names = std::vector<std::wstring>;

class UserAccessWindow
{
public:
    /// Waits until it stands and takes keys.
    explicit UserAccessWindow(const ProgramRun& run);

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] HWND Item(AccessControl control) const;
    [[nodiscard]] std::size_t CountOf(AccessControl list) const;
    [[nodiscard]] Names NamesIn(AccessControl list) const;

    /// Waits until a list shows exactly these names.
    void AwaitNames(AccessControl list, const Names& names) const;

    /// Selects these names of a list and no others, and gives the list the focus; by messages.
    void Select(AccessControl list, const Names& names) const;

    /// The mouse on a name: a click, or one with Ctrl held down.
    void Click(AccessControl list, const std::wstring& name) const;
    void ClickWithControl(AccessControl list, const std::wstring& name) const;

    /// The mouse in the lower part of a list, which is taken to be empty: a click that gives the focus.
    void ClickBelow(AccessControl list) const;

    /// A drag from a name to a list, or to a point of the screen; with Escape pressed before the button is released.
    void Drag(AccessControl list, const std::wstring& name, AccessControl target) const;
    void DragTo(AccessControl list, const std::wstring& name, POINT target) const;
    void DragAndEscape(AccessControl list, const std::wstring& name, AccessControl target) const;

    /// Keys to whatever has the focus.
    void Press(WORD key) const;
    void PressWithControl(WORD key) const;

    void Type(const std::wstring& name) const;
    void Push(AccessControl button) const;
    /// Presses a button that opens and ends nothing, and comes back when its work is done.
    void PushAndWait(AccessControl button) const { Ask(Item(button), BM_CLICK); }

    /// Presses a button that ends the dialog, and waits until it is gone.
    void Leave(AccessControl button) const;

private:
    [[nodiscard]] std::wstring NameAt(HWND list, int place) const;
    [[nodiscard]] POINT PointOf(AccessControl list, const std::wstring& name) const;
    [[nodiscard]] POINT Below(AccessControl list) const;
    /// The mouse is there, and what it presses is of this dialog.
    void PointAt(POINT point) const;
    void StartDrag(AccessControl list, const std::wstring& name, POINT target) const;
    void FinishDrag() const;
    [[nodiscard]] HWND Captured() const;
    void Settle() const;

    const ProgramRun& m_run;
    HWND m_window;
};

} // namespace sitekeeper::e2e
