// What a user sees of a dialog, and can do to it: the base of the page objects, one for each dialog.
#pragma once

#include <windows.h>

#include <ostream>
#include <string>

namespace sitekeeper {

/// A place in dialog units, as a template names it.
struct UnitRectangle
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const UnitRectangle&) const = default;
};
std::ostream& operator<<(std::ostream& out, const UnitRectangle& place);

class DialogPage
{
public:
    explicit DialogPage(HWND dialog) : m_dialog(dialog) {}

    /// The visible dialog on top of all windows of this thread, message boxes among them; a page of nothing when there
    /// is none.
    [[nodiscard]] static DialogPage OnTop();

    [[nodiscard]] HWND Window() const { return m_dialog; }
    [[nodiscard]] bool IsOpen() const { return ::IsWindowVisible(m_dialog) != FALSE; }
    [[nodiscard]] std::wstring Title() const;

    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(m_dialog, id); }
    [[nodiscard]] bool Has(int id) const { return Control(id) != nullptr; }
    [[nodiscard]] std::wstring ClassOf(int id) const;
    [[nodiscard]] std::wstring Text(int id) const;
    [[nodiscard]] bool IsVisible(int id) const;
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    [[nodiscard]] bool HasFocus(int id) const { return ::GetFocus() == Control(id); }

    /// The place of a control in the client area, and the whole client area.
    [[nodiscard]] UnitRectangle RectangleInUnits(int id) const;
    [[nodiscard]] UnitRectangle ClientInUnits() const;
    /// The middle of a control on the screen, where a mouse would click it.
    [[nodiscard]] POINT MiddleOf(int id) const;

    // Gestures. All return at once; what they cause comes with the next messages.

    /// Types a text over what is there; the control tells its dialog.
    void Enter(int id, const std::wstring& text) const;
    /// Presses a button.
    void Click(int id) const { ::PostMessageW(Control(id), BM_CLICK, 0, 0); }
    /// Chooses a menu item, or the command of an accelerator.
    void Command(int id) const { ::PostMessageW(m_dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    void SystemCommand(int id) const { ::PostMessageW(m_dialog, WM_SYSCOMMAND, static_cast<WPARAM>(id), 0); }

private:
    [[nodiscard]] UnitRectangle ToUnits(const RECT& pixels) const;

    HWND m_dialog;
};

} // namespace sitekeeper
