// How many handles a process has open: what a test of long use compares.
#pragma once

#include <windows.h>

namespace sitekeeper {

/// Files, keys, events, threads. `process` needs the right to be asked about. Never 0 for a process that lives.
[[nodiscard]] unsigned CountHandles(HANDLE process);

} // namespace sitekeeper
