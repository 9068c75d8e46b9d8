// Choices that are the same for the same seed, everywhere.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sitekeeper::e2e {

class Dice
{
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}

    /// From 0 to `sides` - 1.
    std::size_t Roll(std::size_t sides) { return static_cast<std::size_t>(Next() % sides); }

    bool OneIn(std::size_t sides) { return Roll(sides) == 0; }

    /// One of a container that is not empty.
    template <typename Container>
    const auto& Of(const Container& container)
    {
        return container[Roll(container.size())];
    }

private:
    /// The steps of SplitMix64.
    std::uint64_t Next()
    {
        std::uint64_t mixed = m_state += 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t m_state;
};

} // namespace sitekeeper::e2e
