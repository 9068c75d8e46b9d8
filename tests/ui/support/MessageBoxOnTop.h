// Message boxes that a test meets: reading and answering them.
#pragma once

#include "support/ModalDriver.h"

#include <windows.h>

#include <optional>
#include <string>

namespace sitekeeper {

struct SeenMessageBox
{
    HWND window = nullptr;
    HWND owner = nullptr;
    std::wstring caption;
    std::wstring text;
};

/// The message box on top of this thread's windows; nothing when the window on top is something else.
[[nodiscard]] std::optional<SeenMessageBox> MessageBoxOnTop();

/// Presses the button of the box, IDOK, IDYES ..., when the box has it. Returns at once.
bool Answer(const SeenMessageBox& box, int button);

/// A step of a script: waits for a message box, remembers it in `seen`, which must outlive the script, and presses the
/// button.
[[nodiscard]] DriverStep AnswerMessageBox(int button, SeenMessageBox& seen);

} // namespace sitekeeper
