// What a control is called for people who do not see it.
#pragma once

#include <windows.h>

#include <string>

namespace sitekeeper {

/// The answer to WM_GETOBJECT for the client area of `control`: the system's own accessible object of the control in
/// everything but the name. Programs that read the screen aloud ask with this message. Nothing is loaded before the
/// first one does. 0, which leaves them to the system's answer, when the system's library for it is missing or fails.
[[nodiscard]] LRESULT AnswerWithName(HWND control, WPARAM request, const std::wstring& name) noexcept;

} // namespace sitekeeper
