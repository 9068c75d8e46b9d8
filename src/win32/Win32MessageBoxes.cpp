#include "win32/Win32MessageBoxes.h"

#include "win32/WindowIds.h"

#include <windows.h>

namespace sitekeeper {

static_assert(static_cast<UINT>(MessageStyle::Error) == (MB_OK | MB_ICONERROR));
static_assert(static_cast<UINT>(MessageStyle::TopMostQuestion) == (MB_YESNOCANCEL | MB_ICONQUESTION | MB_TOPMOST));
static_assert(static_cast<UINT>(MessageStyle::TopMostInformation) == (MB_OK | MB_ICONINFORMATION | MB_TOPMOST));
static_assert(static_cast<int>(Answer::Ok) == IDOK && static_cast<int>(Answer::Cancel) == IDCANCEL &&
              static_cast<int>(Answer::Yes) == IDYES && static_cast<int>(Answer::No) == IDNO);

Answer Win32MessageBoxes::Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                               MessageStyle style)
{
    const HWND window = WindowOf(owner);
    const bool isDisabled = window != nullptr && ::IsWindowEnabled(window) == FALSE;
    const int answer =
        ::MessageBoxW(window, text.c_str(), caption ? caption->c_str() : nullptr, static_cast<UINT>(style));
    // Below another dialog the owner stays disabled; Wine enables it at the end of any box.
    if (isDisabled) {
        ::EnableWindow(window, FALSE);
    }
    return static_cast<Answer>(answer);
}

} // namespace sitekeeper
