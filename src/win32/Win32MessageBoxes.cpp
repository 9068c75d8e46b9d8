#include "win32/Win32MessageBoxes.h"

#include <windows.h>

namespace sitekeeper {

static_assert(static_cast<UINT>(MessageStyle::Error) == (MB_OK | MB_ICONERROR));
static_assert(static_cast<int>(Answer::Ok) == IDOK);

Answer Win32MessageBoxes::Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                               MessageStyle style)
{
    return static_cast<Answer>(::MessageBoxW(reinterpret_cast<HWND>(owner), text.c_str(),
                                             caption ? caption->c_str() : nullptr, static_cast<UINT>(style)));
}

} // namespace sitekeeper
