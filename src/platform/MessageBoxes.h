// Port: message boxes.
#pragma once

#include "platform/Port.h"
#include "platform/WindowId.h"

#include <cstdint>
#include <optional>
#include <string>

namespace sitekeeper {

/// Buttons, icon and behaviour of a message box, added up. Values from winuser.h (MB_…).
enum class MessageStyle : std::uint32_t
{
    Ok = 0x00000000,
    Error = 0x00000010,
    /// Yes, No and Cancel; above all other windows.
    TopMostQuestion = 0x00040023,
    TopMostInformation = 0x00040040,
};

/// The button that ended a message box. Values from winuser.h (ID…).
enum class Answer : int
{
    None = 0,
    Ok = 1,
    Cancel = 2,
    Yes = 6,
    No = 7
};

class MessageBoxes : public Port
{
public:
    /// Shows a message and waits for its answer. `owner` is disabled meanwhile; WindowId::None shows it alone. Without
    /// `caption` the system puts its own ("Error"). Answer::None when the box could not be shown.
    virtual Answer Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                        MessageStyle style) = 0;
};

} // namespace sitekeeper
