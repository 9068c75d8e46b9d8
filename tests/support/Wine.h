// Wine differs from Windows here and there; a test that meets such a difference says so and is skipped.
#pragma once

#include <windows.h>

namespace sitekeeper {

/// Whether this runs under Wine: its system library says so, by a function that Windows has not.
[[nodiscard]] inline bool IsWine()
{
    return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

} // namespace sitekeeper
