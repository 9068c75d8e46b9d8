#include "support/GuiResources.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace sitekeeper {
namespace {

/// One entry of the table of drawing objects that the system maps into each process.
struct GdiEntry
{
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type; // 0 for a free entry
    std::uint8_t flags;
    std::uint64_t user;
};

constexpr std::size_t TableOffset = 0xF8; // in the process's environment block
constexpr std::size_t TableLength = 0x4000;

/// Wine counts nothing when asked, but keeps the table.
unsigned CountTable()
{
    using BlockFunction = const std::byte*(WINAPI*)();
    const FARPROC found = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    const auto* const block = reinterpret_cast<BlockFunction>(reinterpret_cast<void*>(found))();
    const auto* const table = *reinterpret_cast<const GdiEntry* const*>(block + TableOffset);
    if (table == nullptr) {
        return 0;
    }
    return static_cast<unsigned>(
        std::ranges::count_if(std::span(table, TableLength), [](const GdiEntry& entry) { return entry.type != 0; }));
}

} // namespace

unsigned CountGdiObjects()
{
    const DWORD counted = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    return counted != 0 ? counted : CountTable();
}

unsigned CountUserObjects()
{
    return ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS);
}

} // namespace sitekeeper
