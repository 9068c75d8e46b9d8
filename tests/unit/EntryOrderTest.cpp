// The order of entries against the standard library's stable sort.
#include "access/EntryOrder.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <tuple>

namespace sitekeeper {
namespace {

using Views = std::vector<std::wstring_view>;

/// Entries to be put in order; the texts stay where they are.
class Entries
{
public:
    void Add(const std::wstring& section, const std::wstring& key)
    {
        auto name = std::find(m_names.begin(), m_names.end(), section);
        if (name == m_names.end()) {
            name = m_names.insert(m_names.end(), section);
        }
        sections.emplace_back(name->empty() ? std::wstring_view() : std::wstring_view(*name));
        keys.emplace_back(m_texts.emplace_back(key));
    }

    [[nodiscard]] bool IsOrderedAsByAStableSort() const
    {
        std::vector<std::uint32_t> expected(keys.size());
        std::iota(expected.begin(), expected.end(), 0U);
        std::stable_sort(expected.begin(), expected.end(), [this](std::uint32_t left, std::uint32_t right) {
            return std::tie(sections[left], keys[left]) < std::tie(sections[right], keys[right]);
        });
        return AscendingOrder(sections, keys) == expected;
    }

    Views sections;
    Views keys;

private:
    std::deque<std::wstring> m_names;
    std::deque<std::wstring> m_texts;
};

/// A kind of keys: their characters, how long they are, what they all begin with.
struct KeyKind
{
    const char* name;
    std::wstring characters;
    std::size_t longest;
    std::wstring prefix;
    std::size_t sections;
};

std::vector<KeyKind> Kinds()
{
    const std::wstring zero(1, L'\0');
    return {
        {"plain", L"abcdefgh", 12, L"", 1},
        {"few and equal", L"ab", 3, L"", 2},
        {"one letter", L"a", 40, L"", 1},
        {"long common prefix", L"ab", 6, std::wstring(100, L'p'), 1},
        {"zeros", zero, 60, L"", 1},
        {"zeros behind a letter", zero, 60, L"a", 1},
        {"zeros and letters", zero + L"a", 20, L"", 3},
        {"prefixes of each other", L"x", 200, L"", 1},
        {"above 255", L"a\u00FF\u0100\u0416\uFFFF", 8, L"", 2},
        {"above 65535", L"a\uFFFF\U00010000\U0001F600\U0010FFFF", 8, L"", 2},
        {"wide and zeros", zero + L"a\U0001F600", 10, L"", 2},
        {"many sections", L"ab", 5, L"", 300},
        {"one section each", L"a", 1, L"", 100'000},
        {"empty", L"", 0, L"", 4},
    };
}

TEST(EntryOrderTest, IsThatOfAStableSort)
{
    std::mt19937 random(1);
    for (const KeyKind& kind : Kinds()) {
        SCOPED_TRACE(kind.name);
        for (const std::size_t count : {0U, 1U, 2U, 3U, 24U, 25U, 26U, 100U, 700U}) {
            for (int round = 0; round < 4; ++round) {
                Entries entries;
                for (std::size_t number = 0; number < count; ++number) {
                    std::wstring key = kind.prefix;
                    for (std::size_t left = random() % (kind.longest + 1); left > 0; --left) {
                        key += kind.characters[random() % kind.characters.size()];
                    }
                    const std::size_t section = random() % kind.sections;
                    entries.Add(section == 0 ? L"" : L"s" + std::to_wstring(section), key);
                }
                ASSERT_TRUE(entries.IsOrderedAsByAStableSort()) << count;
            }
        }
    }
}

TEST(EntryOrderTest, IsThatOfAStableSortForTensOfThousands)
{
    std::mt19937 random(2);
    Entries entries;
    for (int number = 0; number < 50'000; ++number) {
        const std::wstring section = L"section " + std::to_wstring(random() % 5);
        entries.Add(section, L"user" + std::to_wstring(random() % 40'000)); // many of them twice
    }
    EXPECT_TRUE(entries.IsOrderedAsByAStableSort());
}

TEST(EntryOrderTest, KeepsAnOrderThatIsAscendingAlready)
{
    Entries entries;
    for (const wchar_t* const section : {L"", L"A", L"B", L"a"}) {
        for (int number = 100; number < 200; ++number) {
            entries.Add(section, std::to_wstring(number / 2));
        }
    }
    const std::vector<std::uint32_t> order = AscendingOrder(entries.sections, entries.keys);
    EXPECT_EQ(order.size(), 400U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(EntryOrderTest, TurnsAroundWhatDescends)
{
    Entries entries;
    for (int number = 999; number > 99; --number) {
        entries.Add(L"s", std::to_wstring(number));
    }
    const std::vector<std::uint32_t> order = AscendingOrder(entries.sections, entries.keys);
    EXPECT_EQ(order.size(), 900U);
    EXPECT_TRUE(std::is_sorted(order.rbegin(), order.rend()));
}

/// A bug that was: keys that differ only in how many zeros follow looked alike for ever.
TEST(EntryOrderTest, EndsForKeysThatDifferInZerosAtTheirEnd)
{
    Entries entries;
    for (std::size_t zeros = 100; zeros > 0; --zeros) {
        entries.Add(L"s", L"a" + std::wstring(zeros, L'\0'));
    }
    const std::vector<std::uint32_t> order = AscendingOrder(entries.sections, entries.keys);
    EXPECT_TRUE(std::is_sorted(order.rbegin(), order.rend()));
}

/// A bug that was: a group of keys without a single character was packed for ever.
TEST(EntryOrderTest, EndsForManyEmptyKeysBesideALongOne)
{
    Entries entries;
    entries.Add(L"s", std::wstring(200, L'b'));
    for (int count = 0; count < 30; ++count) {
        entries.Add(L"s", L"");
    }
    EXPECT_TRUE(entries.IsOrderedAsByAStableSort());
}

} // namespace
} // namespace sitekeeper
