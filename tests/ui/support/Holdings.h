// What the process holds of the system: what a test of long use compares before and after.
#pragma once

#include <cstddef>
#include <ostream>

namespace sitekeeper {

/// Counted when it is made.
struct Holdings
{
    Holdings();

    unsigned drawingObjects;
    unsigned userObjects;
    std::size_t windows;
    unsigned handles;

    bool operator==(const Holdings&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Holdings& holdings);

/// Memory, which moves a little by itself.
struct Memory
{
    Memory();

    std::size_t blocks; // bytes in use in all heaps of the process
    std::size_t pages;  // bytes of the process that stand in memory
};
std::ostream& operator<<(std::ostream& out, const Memory& memory);

} // namespace sitekeeper
