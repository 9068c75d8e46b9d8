// Windows as the ports name them.
#pragma once

#include "platform/WindowId.h"

#include <windows.h>

#include <cstdint>

namespace sitekeeper {

/// Null is WindowId::None, in both directions.
[[nodiscard]] inline WindowId IdOf(HWND window) noexcept
{
    return static_cast<WindowId>(reinterpret_cast<std::uintptr_t>(window));
}

[[nodiscard]] inline HWND WindowOf(WindowId id) noexcept
{
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(id));
}

} // namespace sitekeeper
