// What the list file's store is made of, with each allocation failing in turn.
#include "access/EntryIndex.h"
#include "access/EntryOrder.h"
#include "access/TextPool.h"
#include "access/TextReader.h"
#include "AllocationFailures.h"
#include "FailingAllocations.h"
#include "support/Utf8CodePage.h"

#include <algorithm>
#include <array>

namespace sitekeeper {
namespace {

constexpr std::wstring_view Lines[] = {L"short", L"", L"a line that is longer than those that came before it",
                                       L"\u00E9t\u00E9, \u0418\u0432\u0430\u043D and whatever else takes more bytes",
                                       L"the last one, which has no end and is again a little longer than the others"};

struct ReaderWorld
{
    Utf8CodePage codePage;
    TextReader reader{"short\n\na line that is longer than those that came before it\r\n"
                      "\xC3\xA9t\xC3\xA9, \xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD and whatever else takes more bytes\n"
                      "the last one, which has no end and is again a little longer than the others",
                      codePage};
    std::array<std::wstring_view, std::size(Lines)> kept;
    std::size_t count = 0;
};

/// A line that could not be given is the next one again: none is lost.
int ReadLines()
{
    return SweepAllocations<ReaderWorld>(
        [](ReaderWorld& world) {
            std::wstring_view line;
            while (world.reader.ReadLine(line)) {
                if (line != Lines[world.count]) {
                    return; // seen by the check
                }
                ++world.count;
            }
        },
        [](ReaderWorld& world, Ending ending) {
            EXPECT_TRUE(ending == Ending::Raised || world.count == std::size(Lines));
            std::wstring_view line;
            for (; world.count < std::size(Lines); ++world.count) {
                ASSERT_TRUE(world.reader.ReadLine(line));
                EXPECT_EQ(line, Lines[world.count]);
            }
            EXPECT_FALSE(world.reader.ReadLine(line));
        });
}

struct PoolWorld
{
    PoolWorld() { first = pool.Keep(L"kept before"); }

    TextPool pool;
    std::wstring_view first;
    std::wstring_view second;
    std::wstring_view third;
};

int KeepTexts()
{
    static const std::wstring large(100'000, L'x');
    return SweepAllocations<PoolWorld>(
        [](PoolWorld& world) {
            world.second = world.pool.Keep(large);
            world.third = world.pool.Keep(large);
        },
        [](PoolWorld& world, Ending ending) {
            EXPECT_EQ(world.first, L"kept before");
            EXPECT_TRUE(world.second.empty() || world.second == large);
            EXPECT_EQ(world.third == large, ending == Ending::Done);
            EXPECT_EQ(world.pool.Keep(L"kept afterwards"), L"kept afterwards");
        });
}

std::uint32_t HashOf(std::uint32_t number)
{
    return number * 2654435761U;
}

struct IndexWorld
{
    IndexWorld()
    {
        for (std::uint32_t number = 0; number < 10; ++number) {
            index.Add(HashOf(number), number);
        }
    }

    /// Whether the entry has this number.
    [[nodiscard]] bool Has(std::uint32_t entry, std::uint32_t number) const
    {
        return index.Find(HashOf(entry), [number](std::uint32_t each) { return each == number; }) == number;
    }

    EntryIndex index;
    std::vector<std::uint32_t> numbers{1, 0, 3, 2, EntryIndex::None, 5, 6, 7, 8, 9};
};

int GrowAnIndex()
{
    return SweepAllocations<IndexWorld>([](IndexWorld& world) { world.index.Reserve(1000); },
                                        [](IndexWorld& world, Ending) {
                                            EXPECT_EQ(world.index.Count(), 10U);
                                            for (std::uint32_t number = 0; number < 10; ++number) {
                                                EXPECT_TRUE(world.Has(number, number));
                                            }
                                            world.index.Add(HashOf(10), 10);
                                            EXPECT_TRUE(world.Has(10, 10));
                                        });
}

int RenumberAnIndex()
{
    return SweepAllocations<IndexWorld>([](IndexWorld& world) { world.index.RenumberAll(world.numbers); },
                                        [](IndexWorld& world, Ending ending) {
                                            const bool isDone = ending == Ending::Done;
                                            EXPECT_EQ(world.index.Count(), isDone ? 9U : 10U);
                                            for (std::uint32_t entry = 0; entry < 10; ++entry) {
                                                const std::uint32_t number = isDone ? world.numbers[entry] : entry;
                                                if (number != EntryIndex::None) {
                                                    EXPECT_TRUE(world.Has(entry, number));
                                                }
                                            }
                                        });
}

struct OrderWorld
{
    OrderWorld()
    {
        for (std::size_t number = 0; number < 100; ++number) {
            texts.push_back(L"key " + std::to_wstring(number * 37 % 100) + L" with a long tail that all have");
        }
        for (std::size_t number = 0; number < texts.size(); ++number) {
            sections.emplace_back(Sections[number % 3]);
            keys.emplace_back(texts[number]);
        }
    }

    static constexpr std::array<std::wstring_view, 3> Sections{L"b", L"a", L"c"};
    std::vector<std::wstring> texts;
    std::vector<std::wstring_view> sections;
    std::vector<std::wstring_view> keys;
    std::vector<std::uint32_t> order;
};

int OrderEntries()
{
    return SweepAllocations<OrderWorld>(
        [](OrderWorld& world) { world.order = AscendingOrder(world.sections, world.keys); },
        [](OrderWorld& world, Ending ending) {
            EXPECT_EQ(world.order.size(), ending == Ending::Done ? world.keys.size() : 0U);
            EXPECT_TRUE(
                std::is_sorted(world.order.begin(), world.order.end(), [&](std::uint32_t left, std::uint32_t right) {
                    return std::pair(world.sections[left], world.keys[left]) <
                           std::pair(world.sections[right], world.keys[right]);
                }));
        });
}

} // namespace

SweptOperations StorePartAllocations()
{
    return {{"read a file's lines", ReadLines},
            {"keep texts in a pool", KeepTexts},
            {"grow an index", GrowAnIndex},
            {"renumber an index", RenumberAnIndex},
            {"put 100 entries in order", OrderEntries}};
}

} // namespace sitekeeper
