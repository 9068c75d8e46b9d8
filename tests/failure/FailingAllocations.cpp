#include "FailingAllocations.h"

#include <cstddef>
#include <cstdlib>

namespace sitekeeper {
namespace {

struct AllocationCounts
{
    long held = 0;
    int counted = 0;
    int failing = 0;
    int pauses = 0;
    bool isCounting = false;
};

/// There before the first allocation of the process.
AllocationCounts& Counts() noexcept
{
    static constinit AllocationCounts counts;
    return counts;
}

/// Null when this one is to fail, or when there really is no memory.
void* Allocate(std::size_t size) noexcept
{
    AllocationCounts& counts = Counts();
    if (counts.isCounting && counts.pauses == 0 && ++counts.counted == counts.failing) {
        return nullptr;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    void* const memory = std::malloc(size == 0 ? 1 : size);
    counts.held += memory != nullptr ? 1 : 0;
    return memory;
}

void* AllocateOrRaise(std::size_t size)
{
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void GiveBack(void* memory) noexcept
{
    Counts().held -= memory != nullptr ? 1 : 0;
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
}

} // namespace

AllocationFault::AllocationFault(int failing) noexcept
{
    AllocationCounts& counts = Counts();
    counts.counted = 0;
    counts.failing = failing;
    counts.isCounting = true;
}

AllocationFault::~AllocationFault()
{
    Counts().isCounting = false;
}

// There is one fault at a time; who asks has to hold it.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool AllocationFault::HasFailed() const noexcept
{
    return Counts().failing > 0 && Counts().counted >= Counts().failing;
}

AllocationPause::AllocationPause() noexcept
{
    ++Counts().pauses;
}

AllocationPause::~AllocationPause()
{
    --Counts().pauses;
}

long HeldAllocations() noexcept
{
    return Counts().held;
}

} // namespace sitekeeper

void* operator new(std::size_t size)
{
    return sitekeeper::AllocateOrRaise(size);
}
void* operator new[](std::size_t size)
{
    return sitekeeper::AllocateOrRaise(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return sitekeeper::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return sitekeeper::Allocate(size);
}
void operator delete(void* memory) noexcept
{
    sitekeeper::GiveBack(memory);
}
void operator delete[](void* memory) noexcept
{
    sitekeeper::GiveBack(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    sitekeeper::GiveBack(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    sitekeeper::GiveBack(memory);
}
