// The progress window, as far as the program knows it.
#pragma once

#include "dialogs/SplashMessageDialog.h"
#include "platform/Modules.h"

#include <windows.h>

#include <memory>

namespace sitekeeper {

/// Shows "Applying changes..." in a window of the dialogs library, with icon 128 of `application`. Null when there is
/// no library, it lacks the export, or it cannot make the object; the work then goes on without. Deleting the result
/// removes the window; that must happen before the library is released.
[[nodiscard]] std::unique_ptr<CORSWSplashMsgDlg> ShowProgressWindow(ModuleId library, HINSTANCE application);

} // namespace sitekeeper
