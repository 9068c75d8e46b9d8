#include "access/EntryOrder.h"

#include "text/Utf16.h"

#include <algorithm>
#include <array>
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

/// How some keys become numbers that compare like them, from the first character on in which they differ.
struct Packing
{
    /// How many characters all of them begin with, and how many follow in one number.
    std::size_t common = 0;
    std::size_t count = 1;
    std::size_t longest = 0;
    /// Each character is one digit, the greater the later it comes in the alphabet; zero stands behind a key's end.
    std::uint64_t base = 1;
    /// The digits where no character is above 254: then only those that occur are counted, and more of them fit in.
    std::array<std::uint8_t, 256> digits{};
    bool isNarrow = true;
};

/// Below this size comparing first characters and whole keys is quicker than looking for what they have in common.
constexpr std::size_t SmallGroup = 24;

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

/// With how many of `first`'s first `most` characters `key` begins.
std::size_t SharedLength(std::wstring_view first, std::wstring_view key, std::size_t most)
{
    const auto shared = std::mismatch(first.begin(), first.begin() + std::min(most, key.size()), key.begin());
    return static_cast<std::size_t>(shared.first - first.begin());
}

Packing PackingFor(std::span<const Item> items, const Texts& keys)
{
    constexpr std::uint32_t LastNarrow = 254; // 255 digits and the zero are what a byte can tell apart
    const std::wstring_view first = keys[items.front().number];
    Packing packing{.common = first.size()};
    std::uint32_t greatest = 0;
    for (const Item& item : items) {
        const std::wstring_view key = keys[item.number];
        packing.common = SharedLength(first, key, packing.common);
        packing.longest = std::max(packing.longest, key.size());
        for (const wchar_t character : key) {
            const std::uint32_t unit = CodeUnit(character);
            greatest = std::max(greatest, unit);
            packing.digits[unit % packing.digits.size()] = 1;
        }
    }
    packing.isNarrow = greatest <= LastNarrow;
    packing.base = std::uint64_t{greatest} + 2;
    if (packing.isNarrow) {
        packing.base = 1;
        for (std::uint8_t& digit : packing.digits) {
            digit = digit == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(packing.base++);
        }
        packing.base = std::max<std::uint64_t>(packing.base, 2); // also where all keys are empty
    }
    for (std::uint64_t power = packing.base; power <= ~std::uint64_t{0} / packing.base; power *= packing.base) {
        ++packing.count;
    }
    return packing;
}

std::uint64_t PrefixOf(std::wstring_view key, const Packing& packing)
{
    std::uint64_t prefix = 0;
    for (std::size_t place = packing.common; place < packing.common + packing.count; ++place) {
        prefix *= packing.base;
        if (place < key.size()) {
            const std::uint32_t unit = CodeUnit(key[place]);
            prefix += packing.isNarrow ? packing.digits[unit] : std::uint64_t{unit} + 1;
        }
    }
    return prefix;
}

/// The eight characters of each key behind those that all begin with, a byte for each, which decide nearly always;
/// nothing where one of them needs more than a byte.
void PackFirstCharacters(std::span<Item> items, const Texts& keys)
{
    std::size_t common = keys[items.front().number].size();
    for (const Item& item : items) {
        common = SharedLength(keys[items.front().number], keys[item.number], common);
    }
    std::uint32_t all = 0;
    for (Item& item : items) {
        const std::wstring_view key = keys[item.number].substr(common);
        for (std::size_t place = 0; place < sizeof item.prefix; ++place) {
            const std::uint32_t unit = place < key.size() ? CodeUnit(key[place]) : 0;
            all |= unit;
            item.prefix = item.prefix << 8U | (unit & 0xFFU);
        }
    }
    if (all > 0xFF) {
        for (Item& item : items) {
            item.prefix = 0;
        }
    }
}

void SortSmallGroup(std::span<Item> items, const Texts& keys)
{
    if (items.size() < 2) {
        return;
    }
    PackFirstCharacters(items, keys);
    std::sort(items.begin(), items.end(), [&keys](const Item& left, const Item& right) {
        if (left.prefix != right.prefix) {
            return left.prefix < right.prefix;
        }
        const int order = keys[left.number].compare(keys[right.number]);
        return order != 0 ? order < 0 : left.number < right.number;
    });
}

void SortByKey(std::span<Item> items, const Texts& keys)
{
    if (items.size() <= SmallGroup) {
        SortSmallGroup(items, keys);
        return;
    }
    const Packing packing = PackingFor(items, keys);
    for (Item& item : items) {
        item.prefix = PrefixOf(keys[item.number], packing);
    }
    std::sort(items.begin(), items.end(), [](const Item& left, const Item& right) {
        return left.prefix != right.prefix ? left.prefix < right.prefix : left.number < right.number;
    });
    if (packing.longest <= packing.common + packing.count) {
        return; // the numbers told all there is
    }
    for (auto begin = items.begin(); begin != items.end();) {
        const auto end = std::find_if(begin, items.end(),
                                      [prefix = begin->prefix](const Item& item) { return item.prefix != prefix; });
        if (end - begin > 1) {
            SortByKey({begin, end}, keys);
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
