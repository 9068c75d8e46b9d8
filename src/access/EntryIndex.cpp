#include "access/EntryIndex.h"

#include <bit>
#include <chrono>
#include <cstring>
#include <utility>

namespace sitekeeper {
namespace {

constexpr std::size_t SmallestTable = 16;

// Odd numbers without a pattern (digits of pi), for mixing.
constexpr std::uint64_t First = 0x243F'6A88'85A3'08D3U;
constexpr std::uint64_t Second = 0x1319'8A2E'0370'7345U;
constexpr std::uint64_t Third = 0xA409'3822'299F'31D1U;

/// Both halves of a product, so that each bit of either factor reaches the result.
std::uint64_t Mixed(std::uint64_t left, std::uint64_t right) noexcept
{
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

std::uint64_t WordAt(const char* bytes, std::size_t size) noexcept
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, size);
    return word;
}

/// How many slots `count` entries need: at most two thirds are ever taken.
std::size_t SlotsFor(std::size_t count) noexcept
{
    const std::size_t needed = std::bit_ceil(count + count / 2 + 1);
    return needed < SmallestTable ? SmallestTable : needed;
}

} // namespace

EntryIndex::EntryIndex() noexcept
    : m_seed(Mixed(reinterpret_cast<std::uintptr_t>(this) ^ First,
                   static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^ Second))
{}

std::uint32_t EntryIndex::HashOf(std::uintptr_t section, std::wstring_view key) const noexcept
{
    const char* bytes = reinterpret_cast<const char*>(key.data());
    std::size_t size = key.size() * sizeof(wchar_t);
    std::uint64_t hash = m_seed ^ Mixed(section ^ First, size ^ Second);
    for (; size > 16; size -= 16, bytes += 16) {
        hash = Mixed(WordAt(bytes, 8) ^ Third, WordAt(bytes + 8, 8) ^ hash);
    }
    const std::size_t head = size < 8 ? size : 8;
    hash = Mixed(WordAt(bytes, head) ^ Second, WordAt(bytes + head, size - head) ^ hash);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

void EntryIndex::Add(std::uint32_t hash, std::uint32_t number)
{
    if (SlotsFor(m_count + 1) > m_slots.size()) {
        Grow();
    }
    Put({hash, number});
    ++m_count;
}

void EntryIndex::Renumber(std::uint32_t hash, std::uint32_t from, std::uint32_t to) noexcept
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t place = hash & mask; m_slots[place].number != None; place = (place + 1) & mask) {
        if (m_slots[place].number == from) {
            m_slots[place].number = to;
            return;
        }
    }
}

void EntryIndex::Reset(std::size_t count)
{
    m_slots.assign(count == 0 ? 0 : SlotsFor(count), Slot());
    m_count = 0;
}

void EntryIndex::Grow()
{
    const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(SlotsFor(m_slots.size())));
    for (const Slot& slot : old) {
        if (slot.number != None) {
            Put(slot);
        }
    }
}

void EntryIndex::Put(Slot slot) noexcept
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t place = slot.hash & mask;
    while (m_slots[place].number != None) {
        place = (place + 1) & mask;
    }
    m_slots[place] = slot;
}

} // namespace sitekeeper
