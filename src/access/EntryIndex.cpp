#include "access/EntryIndex.h"

#include "text/Utf16.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace sitekeeper {
namespace {

constexpr std::size_t SmallestTable = 16;

// Odd numbers without a pattern (digits of pi), for mixing.
constexpr std::uint64_t First = 0x243F'6A88'85A3'08D3U;
constexpr std::uint64_t Second = 0x1319'8A2E'0370'7345U;

/// Both halves of a product, so that each bit of either factor reaches the result.
std::uint64_t Mixed(std::uint64_t left, std::uint64_t right) noexcept
{
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

template <typename Word>
std::uint64_t WordAt(const char* bytes) noexcept
{
    Word word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

/// How many entries so many slots are for: two thirds, so that a look goes past few of them.
std::size_t RoomIn(std::size_t slots) noexcept
{
    return slots / 3 * 2;
}

} // namespace

EntryIndex::EntryIndex() noexcept
    : m_seed(Mixed(reinterpret_cast<std::uintptr_t>(this) ^ First,
                   static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^ Second))
{}

std::uint32_t EntryIndex::HashOf(std::uintptr_t section, std::wstring_view key) const noexcept
{
    const char* const bytes = reinterpret_cast<const char*>(key.data());
    const std::size_t size = key.size() * sizeof(wchar_t);
    // Each step takes the seed in twice. A fixed number in its place would be a factor that a key can bring to zero.
    std::uint64_t hash = Mixed(section ^ First, size ^ m_seed);
    const auto mix = [&hash, this](std::uint64_t left, std::uint64_t right) {
        hash = Mixed(left ^ m_seed, right ^ hash);
    };
    // The last step may look again at what the one before has seen, so that no step has an odd size.
    if (size >= 16) {
        for (std::size_t place = 0; place + 16 < size; place += 16) {
            mix(WordAt<std::uint64_t>(bytes + place), WordAt<std::uint64_t>(bytes + place + 8));
        }
        mix(WordAt<std::uint64_t>(bytes + size - 16), WordAt<std::uint64_t>(bytes + size - 8));
    } else if (size >= 8) {
        mix(WordAt<std::uint64_t>(bytes), WordAt<std::uint64_t>(bytes + size - 8));
    } else if (size >= 4) {
        mix(WordAt<std::uint32_t>(bytes), WordAt<std::uint32_t>(bytes + size - 4));
    } else if (size > 0) {
        mix(CodeUnit(key.front()), 0);
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
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

void EntryIndex::RenumberAll(const std::vector<std::uint32_t>& numbers)
{
    const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.size()));
    m_count = 0;
    for (const Slot& slot : old) {
        if (slot.number != None && numbers[slot.number] != None) {
            Put({slot.hash, numbers[slot.number]});
            ++m_count;
        }
    }
}

void EntryIndex::Clear() noexcept
{
    m_slots = {};
    m_count = 0;
    m_room = 0;
}

void EntryIndex::Reserve(std::size_t count)
{
    if (count <= m_room) {
        return;
    }
    std::size_t size = std::max(m_slots.size(), SmallestTable);
    while (RoomIn(size) < count) {
        size *= 2;
    }
    const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(size));
    m_room = RoomIn(size);
    for (const Slot& slot : old) {
        if (slot.number != None) {
            Put(slot);
        }
    }
}

} // namespace sitekeeper
