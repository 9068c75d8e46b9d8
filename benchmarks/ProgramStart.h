// Starts a program, waits for its main window, closes it again, and tells how long and how large it was.
#pragma once

#include <string>

namespace sitekeeper::bench {

struct StartResult
{
    /// From the start of the process to its main window on screen, milliseconds, without the time for which a splash
    /// stood there.
    double milliseconds = 0;
    /// The largest working set of the process, in KiB.
    double peakKib = 0;
};

/// Runs `program` once. Raises std::runtime_error when its main window does not come within ten seconds.
[[nodiscard]] StartResult MeasureStart(const std::wstring& program);

/// The size of a file in KiB; 0 when there is none.
[[nodiscard]] double FileKib(const std::wstring& path);

} // namespace sitekeeper::bench
