// The two folders that hold the suite's shortcuts, on the desktop and in the Start menu, shared by all users.
#pragma once

#include "platform/Registry.h"

#include <string>

namespace sitekeeper {

/// The suite's folder on the all-users desktop, or on the current user's desktop where the system does not name the
/// former, with a "\" at its end. Empty when neither is known.
[[nodiscard]] std::wstring GetDesktopShortcutFolder(const Registry& registry);

/// The suite's folder in the all-users programs of the Start menu, with a "\" at its end. Empty when the system does
/// not name them; the current user's programs are deliberately no substitute.
[[nodiscard]] std::wstring GetProgramsShortcutFolder(const Registry& registry);

/// The shortcut file of catalogue row `row` in the folder above; empty when the folder or the row is unknown.
[[nodiscard]] std::wstring GetDesktopShortcutPath(const Registry& registry, int row);
[[nodiscard]] std::wstring GetProgramsShortcutPath(const Registry& registry, int row);

} // namespace sitekeeper
