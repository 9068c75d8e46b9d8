// What tests say about a file beside its content.
#pragma once

#include <cstdint>

namespace sitekeeper {

/// Attributes of a file, added up. Values from winnt.h (FILE_ATTRIBUTE_…).
enum class FileAttributes : std::uint32_t
{
    None = 0x00,
    ReadOnly = 0x01,
    Hidden = 0x02,
    System = 0x04,
    Archive = 0x20,
};

[[nodiscard]] constexpr FileAttributes operator|(FileAttributes a, FileAttributes b)
{
    return static_cast<FileAttributes>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}

[[nodiscard]] constexpr FileAttributes operator&(FileAttributes a, FileAttributes b)
{
    return static_cast<FileAttributes>(static_cast<std::uint32_t>(a) & static_cast<std::uint32_t>(b));
}

/// Another program that has a file open: what it does with the file, and what it lets others do meanwhile.
enum class FileHolder
{
    /// Reads; others may read, write and remove.
    TolerantReader,
    /// Reads, as most programs do; others may read and write.
    OrdinaryReader,
    /// Reads; others may only read.
    StrictReader,
    /// Writes; others may read, write and remove.
    TolerantWriter,
};

} // namespace sitekeeper
