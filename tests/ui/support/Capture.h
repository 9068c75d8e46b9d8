// A picture of a window as it is on the screen.
#pragma once

#include "support/MemoryBitmap.h"

#include <windows.h>

namespace sitekeeper {

/// Paints the window and everything in it now, and takes its picture, frame included. Works without a screen, too.
[[nodiscard]] MemoryBitmap CaptureWindow(HWND window);

} // namespace sitekeeper
