// The tooltip of a bitmap button.
#pragma once

#include <windows.h>

#include <string>

namespace sitekeeper {

/// A tooltip control with one tool, number 1: the client area of a button. The button's messages must be relayed to it.
class ButtonTip
{
public:
    ButtonTip() noexcept = default;
    ButtonTip(const ButtonTip&) = delete;
    ButtonTip& operator=(const ButtonTip&) = delete;
    ~ButtonTip() { Drop(); }

    /// Makes the control at the first call; it shows nothing yet.
    void Ensure(HWND button);

    /// Changes the text, and whether the tip is shown. Makes the control when it is not there.
    void SetText(HWND button, const std::wstring& text, bool activate);

    /// Lets the tip see a message of the button.
    void Relay(MSG& message) const;

    /// Destroys the control; nothing happens when there is none. The next use makes it anew, without a text.
    void Drop() noexcept;

    /// Null before it is made.
    [[nodiscard]] HWND Handle() const noexcept { return m_handle; }

private:
    HWND m_handle = nullptr;
};

} // namespace sitekeeper
