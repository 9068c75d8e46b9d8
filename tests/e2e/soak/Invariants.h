// What holds after every gesture.
#pragma once

#include "e2e/soak/Scene.h"

#include <cstddef>
#include <string>

namespace sitekeeper::e2e {

/// Waits a little until all of it holds: the right windows and no other, the right one active, texts, lists and marks
/// as expected, registry and files as expected. What does not, a line each; empty when all is well.
[[nodiscard]] std::string BrokenInvariants(const Scene& scene);

/// What the program holds of the system, measured while it stands in its main dialog.
class Usage
{
public:
    /// Looks at the run; the first look at each run is what the later ones are compared with. What is too much, in a
    /// line; empty when all is well.
    [[nodiscard]] std::string Measure(const Scene& scene);

    /// The figures, for people.
    [[nodiscard]] std::string Summary() const;

private:
    struct Figures
    {
        unsigned handles = 0;
        std::size_t memory = 0;
    };

    DWORD m_process = 0;
    Figures m_first;
    Figures m_last;
    Figures m_most;
    std::size_t m_measured = 0;
    std::size_t m_runs = 0;
};

} // namespace sitekeeper::e2e
