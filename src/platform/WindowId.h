// How the ports name a window.
#pragma once

#include <cstdint>

namespace sitekeeper {

/// A window of the system, as an opaque number (HWND).
enum class WindowId : std::uintptr_t
{
    None = 0
};

} // namespace sitekeeper
