#include "access/EntryOrder.h"

#include "text/Utf16.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <span>
#include <unordered_map>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring_view>;

/// An entry with the next few characters of its key, packed so that numbers compare like the characters do.
struct Item
{
    std::uint64_t prefix = 0;
    std::uint32_t number = 0;
};

/// What the keys of some entries have in common.
struct Likeness
{
    /// How many characters all of them begin with.
    std::size_t common = 0;
    std::size_t longest = 0;
    /// How many bits the widest character takes: 8, 16 or 32.
    unsigned bits = 8;
};

/// Below this size comparing whole keys is quicker than looking for what they have in common.
constexpr std::size_t SmallGroup = 24;
constexpr unsigned PrefixBits = 64;

bool IsAscending(const Texts& sections, const Texts& keys)
{
    for (std::size_t number = 1; number < keys.size(); ++number) {
        const int order =
            sections[number - 1].data() == sections[number].data() ? 0 : sections[number - 1].compare(sections[number]);
        if (order > 0 || (order == 0 && keys[number - 1] > keys[number])) {
            return false;
        }
    }
    return true;
}

Likeness LikenessOf(std::span<const Item> items, const Texts& keys)
{
    const std::wstring_view first = keys[items.front().number];
    Likeness likeness{first.size(), 0, 8};
    std::uint32_t all = 0;
    for (const Item& item : items) {
        const std::wstring_view key = keys[item.number];
        const auto shared =
            std::mismatch(first.begin(), first.begin() + std::min(likeness.common, key.size()), key.begin());
        likeness.common = static_cast<std::size_t>(shared.first - first.begin());
        likeness.longest = std::max(likeness.longest, key.size());
        for (const wchar_t character : key) {
            all |= CodeUnit(character);
        }
    }
    if (all > 0xFF) {
        likeness.bits = all > 0xFFFF ? 32 : 16;
    }
    return likeness;
}

std::uint64_t PrefixOf(std::wstring_view key, std::size_t from, unsigned bits)
{
    const std::size_t count = PrefixBits / bits;
    std::uint64_t prefix = 0;
    for (std::size_t place = from; place < from + count; ++place) {
        prefix = (prefix << bits) | (place < key.size() ? CodeUnit(key[place]) : 0U);
    }
    return prefix;
}

void SortByKey(std::span<Item> items, const Texts& keys);

/// Entries whose keys agree as far as `depth`; behind their end they count as zeros, which only whole keys tell apart.
void SortAlike(std::span<Item> items, const Texts& keys, std::size_t depth, std::size_t longest)
{
    if (items.size() > SmallGroup && longest > depth) {
        SortByKey(items, keys);
        return;
    }
    std::sort(items.begin(), items.end(),
              [&keys](const Item& left, const Item& right) { return keys[left.number] < keys[right.number]; });
}

void SortByKey(std::span<Item> items, const Texts& keys)
{
    if (items.size() < 2) {
        return;
    }
    const Likeness likeness = LikenessOf(items, keys);
    for (Item& item : items) {
        item.prefix = PrefixOf(keys[item.number], likeness.common, likeness.bits);
    }
    std::sort(items.begin(), items.end(),
              [](const Item& left, const Item& right) { return left.prefix < right.prefix; });
    const std::size_t depth = likeness.common + PrefixBits / likeness.bits;
    for (auto begin = items.begin(); begin != items.end();) {
        const auto end = std::find_if(begin, items.end(),
                                      [prefix = begin->prefix](const Item& item) { return item.prefix != prefix; });
        if (end - begin > 1) {
            SortAlike({begin, end}, keys, depth, likeness.longest);
        }
        begin = end;
    }
}

/// For each entry the rank of its section among the names of all sections.
std::vector<std::uint32_t> RanksOf(const Texts& sections, std::size_t& rankCount)
{
    std::unordered_map<const wchar_t*, std::uint32_t> numbers;
    Texts names;
    std::vector<std::uint32_t> ranks(sections.size());
    for (std::size_t number = 0; number < sections.size(); ++number) {
        if (number > 0 && sections[number].data() == sections[number - 1].data()) {
            ranks[number] = ranks[number - 1];
            continue;
        }
        const auto [place, isNew] =
            numbers.try_emplace(sections[number].data(), static_cast<std::uint32_t>(names.size()));
        if (isNew) {
            names.push_back(sections[number]);
        }
        ranks[number] = place->second;
    }
    std::vector<std::uint32_t> byName(names.size());
    std::iota(byName.begin(), byName.end(), 0U);
    std::sort(byName.begin(), byName.end(),
              [&names](std::uint32_t left, std::uint32_t right) { return names[left] < names[right]; });
    std::vector<std::uint32_t> rankOf(names.size());
    for (std::uint32_t rank = 0; rank < byName.size(); ++rank) {
        rankOf[byName[rank]] = rank;
    }
    for (std::uint32_t& rank : ranks) {
        rank = rankOf[rank];
    }
    rankCount = names.size();
    return ranks;
}

} // namespace

std::vector<std::uint32_t> AscendingOrder(const Texts& sections, const Texts& keys)
{
    std::vector<std::uint32_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0U);
    if (IsAscending(sections, keys)) {
        return order;
    }
    std::size_t rankCount = 0;
    const std::vector<std::uint32_t> ranks = RanksOf(sections, rankCount);
    std::vector<std::size_t> ends(rankCount + 1);
    for (const std::uint32_t rank : ranks) {
        ++ends[rank + 1];
    }
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<Item> items(keys.size());
    for (std::uint32_t number = 0; number < ranks.size(); ++number) {
        items[ends[ranks[number]]++].number = number; // from the start of its section's room to the end
    }
    std::size_t begin = 0;
    for (std::size_t rank = 0; rank < rankCount; ++rank) {
        SortByKey(std::span(items).subspan(begin, ends[rank] - begin), keys);
        begin = ends[rank];
    }
    std::transform(items.begin(), items.end(), order.begin(), [](const Item& item) { return item.number; });
    return order;
}

} // namespace sitekeeper
