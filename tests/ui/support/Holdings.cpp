#include "support/Holdings.h"

#include "support/GuiResources.h"
#include "support/HandleCount.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <psapi.h>

namespace sitekeeper {
namespace {

constexpr std::size_t KiB = 1024;

std::size_t BytesInUse(HANDLE heap)
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    ::HeapLock(heap);
    while (::HeapWalk(heap, &entry) != FALSE) {
        bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    ::HeapUnlock(heap);
    return bytes;
}

std::size_t CountBlocks()
{
    std::array<HANDLE, 64> heaps{};
    const DWORD count = std::min<DWORD>(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()),
                                        static_cast<DWORD>(heaps.size()));
    std::size_t bytes = 0;
    for (DWORD index = 0; index < count; ++index) {
        bytes += BytesInUse(heaps[index]);
    }
    return bytes;
}

std::size_t CountPages()
{
    PROCESS_MEMORY_COUNTERS counters{};
    EXPECT_NE(::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters), FALSE);
    return counters.WorkingSetSize;
}

} // namespace

Holdings::Holdings()
    : drawingObjects(CountGdiObjects()), userObjects(CountUserObjects()), windows(CountThreadWindows()),
      handles(CountHandles(::GetCurrentProcess()))
{}

std::ostream& operator<<(std::ostream& out, const Holdings& holdings)
{
    return out << holdings.drawingObjects << " drawing objects, " << holdings.userObjects << " user objects, "
               << holdings.windows << " windows, " << holdings.handles << " handles";
}

Memory::Memory() : blocks(CountBlocks()), pages(CountPages()) {}

std::ostream& operator<<(std::ostream& out, const Memory& memory)
{
    return out << memory.blocks / KiB << " KiB in use, " << memory.pages / KiB << " KiB in memory";
}

} // namespace sitekeeper
