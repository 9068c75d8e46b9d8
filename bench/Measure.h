// What the Windows benchmarks share: a stopwatch, medians, and conditions that must hold.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
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

/// Ends a benchmark that would measure something else: raises std::runtime_error with `what`.
inline void Require(bool isDone, const char* what)
{
    if (!isDone) {
        throw std::runtime_error(what);
    }
}

} // namespace sitekeeper::bench
