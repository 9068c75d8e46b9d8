#include "win32/Win32MessageBoxes.h"

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
    return static_cast<Answer>(::MessageBoxW(reinterpret_cast<HWND>(owner), text.c_str(),
                                             caption ? caption->c_str() : nullptr, static_cast<UINT>(style)));
}

} // namespace sitekeeper
