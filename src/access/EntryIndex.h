// Finds an entry of a store by its section and key without walking over all of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// A hash table of entry numbers with open addressing. It knows the entries only by their hash and number; whoever uses
/// it compares the texts. Entries are never taken out singly, only in one pass over all of them.
class EntryIndex
{
public:
    static constexpr std::uint32_t None = 0xFFFF'FFFFU;

    EntryIndex() noexcept;

    /// The hash of a key within a section; `section` is a number that differs between sections. Every index mixes in a
    /// number of its own, so that nobody can prepare a file whose keys all collide.
    [[nodiscard]] std::uint32_t HashOf(std::uintptr_t section, std::wstring_view key) const noexcept;

    /// The number of the entry with `hash` for which `isSame(number)` holds; None when there is none.
    template <typename IsSame>
    [[nodiscard]] std::uint32_t Find(std::uint32_t hash, IsSame isSame) const
    {
        if (m_slots.empty()) {
            return None;
        }
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
            const Slot& slot = m_slots[place];
            if (slot.number == None || (slot.hash == hash && isSame(slot.number))) {
                return slot.number;
            }
        }
    }

    /// Lets the part of the table that Find will look at first come from memory meanwhile.
    void Prefetch(std::uint32_t hash) const noexcept
    {
        if (!m_slots.empty()) {
            __builtin_prefetch(&m_slots[hash & (m_slots.size() - 1)], 1);
        }
    }

    /// Adds an entry that Find did not find. `number` is below None.
    void Add(std::uint32_t hash, std::uint32_t number)
    {
        if (m_count == m_room) {
            Reserve(m_count + 1);
        }
        Put({hash, number});
        ++m_count;
    }

    /// The entry with `hash` and the number `from` has the number `to` from now on.
    void Renumber(std::uint32_t hash, std::uint32_t from, std::uint32_t to) noexcept;

    /// Each entry with the number n has the number `numbers[n]` from now on; an entry whose new number is None is gone.
    void RenumberAll(const std::vector<std::uint32_t>& numbers);

    /// How many entries it knows.
    [[nodiscard]] std::size_t Count() const noexcept { return m_count; }

    /// Makes room for `count` entries in all.
    void Reserve(std::size_t count);

    /// Forgets all entries and gives their room back.
    void Clear() noexcept;

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t number = None;
    };

    void Put(Slot slot) noexcept
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t place = slot.hash & mask;
        while (m_slots[place].number != None) {
            place = (place + 1) & mask;
        }
        m_slots[place] = slot;
    }

    std::vector<Slot> m_slots; // a power of two, or none
    std::size_t m_count = 0;
    std::size_t m_room = 0; // how many entries the slots are for
    std::uint64_t m_seed;
};

} // namespace sitekeeper
