// What the Windows benchmarks share: a stopwatch, medians, the form of a result, and conditions that must hold.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace sitekeeper::bench {

/// The time since construction.
class Stopwatch
{
public:
    Stopwatch() { ::QueryPerformanceCounter(&m_start); }

    [[nodiscard]] double Milliseconds() const
    {
        LARGE_INTEGER now{};
        LARGE_INTEGER frequency{};
        ::QueryPerformanceCounter(&now);
        ::QueryPerformanceFrequency(&frequency);
        return static_cast<double>(now.QuadPart - m_start.QuadPart) * 1000.0 / static_cast<double>(frequency.QuadPart);
    }

private:
    LARGE_INTEGER m_start{};
};

/// The middle of `values`, which must not be empty.
[[nodiscard]] inline double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// One side of a comparison: who, and the median.
struct Side
{
    const char* name;
    double value;
};

/// Prints one result as `report.py` reads it: what was done, with how many of what (0 where there is no number), the
/// unit, ours, the peer's name and the peer's, with tabs between. Several peers of one result take a line each.
inline void PrintResult(const char* what, double size, const char* unit, double ours, Side peer)
{
    std::printf("%s\t%.0f\t%s\t%.6g\t%s\t%.6g\n", what, size, unit, ours, peer.name, peer.value);
    std::fflush(stdout);
}

/// Ends a benchmark that would measure something else: raises std::runtime_error with `what`.
inline void Require(bool isDone, const char* what)
{
    if (!isDone) {
        throw std::runtime_error(what);
    }
}

} // namespace sitekeeper::bench
