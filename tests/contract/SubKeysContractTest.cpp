#include "contract/World.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::wstring Parent = ScratchKey;

class SubKeysContract : public ::testing::TestWithParam<Hive>
{
protected:
    void MakeKey(const std::wstring& key)
    {
        const std::vector<std::byte> bytes{std::byte{1}};
        ASSERT_TRUE(registry.WriteValue(GetParam(), key, L"Value", static_cast<ValueType>(3), bytes));
    }

    /// The names in the registry's order.
    [[nodiscard]] std::vector<std::wstring> NamesOf(const std::wstring& key) const
    {
        const OpenedSubKeys opened = registry.OpenSubKeys(GetParam(), key);
        EXPECT_EQ(opened.status, RegistryStatus::Success);
        std::vector<std::wstring> names;
        for (std::uint32_t index = 0; opened.keys && index < opened.keys->Count(); ++index) {
            EXPECT_EQ(opened.keys->ReadName(index, names.emplace_back()), RegistryStatus::Success);
        }
        return names;
    }

    [[nodiscard]] static std::vector<std::wstring> Sorted(std::vector<std::wstring> names)
    {
        std::sort(names.begin(), names.end());
        return names;
    }

    std::unique_ptr<World> world = MakeWorld();
    Registry& registry = world->TheRegistry();
};

INSTANTIATE_TEST_SUITE_P(Both, SubKeysContract, ::testing::Values(Hive::LocalMachine, Hive::CurrentUser),
                         [](const auto& hive) {
                             return std::string(hive.param == Hive::LocalMachine ? "LocalMachine" : "CurrentUser");
                         });

TEST_P(SubKeysContract, OpensNothingWhereNoKeyIs)
{
    for (const std::wstring& key : {Parent, Parent + L"\\A\\B"}) {
        const OpenedSubKeys opened = registry.OpenSubKeys(GetParam(), key);
        EXPECT_EQ(opened.status, RegistryStatus::NotFound);
        EXPECT_EQ(opened.keys, nullptr);
    }
}

TEST_P(SubKeysContract, GivesTheNamesDirectlyBelow)
{
    MakeKey(Parent + L"\\One\\Below\\Further");
    MakeKey(Parent + L"\\two");
    MakeKey(Parent + L"\\Three \u00E9;:.");
    MakeKey(Parent + L"\\One beside");
    EXPECT_EQ(Sorted(NamesOf(Parent)), (std::vector<std::wstring>{L"One", L"One beside", L"Three \u00E9;:.", L"two"}));
    EXPECT_EQ(NamesOf(L"SOFTWARE\\orivel\\CONTRACTTEST\\ONE"), std::vector<std::wstring>{L"Below"});
    EXPECT_TRUE(NamesOf(Parent + L"\\One\\Below\\Further").empty());
}

TEST_P(SubKeysContract, GivesThemInTheSameOrderEachTime)
{
    for (const wchar_t* const name : {L"R24.0", L"R20.1", L"R23.1", L"r22", L"R21.0", L"R9", L"R100"}) {
        MakeKey(Parent + L"\\" + name);
    }
    const std::vector<std::wstring> names = NamesOf(Parent);
    EXPECT_EQ(names.size(), 7U);
    EXPECT_EQ(NamesOf(Parent), names);
}

TEST_P(SubKeysContract, ReadsNamesInAnyOrderAndTheLongestToo)
{
    const std::wstring longest(255, L'x');
    MakeKey(Parent + L"\\" + longest);
    MakeKey(Parent + L"\\a");
    const OpenedSubKeys opened = registry.OpenSubKeys(GetParam(), Parent);
    ASSERT_NE(opened.keys, nullptr);
    ASSERT_EQ(opened.keys->Count(), 2U);
    std::wstring name;
    for (const std::uint32_t index : {1U, 0U, 1U}) {
        EXPECT_EQ(opened.keys->ReadName(index, name), RegistryStatus::Success);
        EXPECT_EQ(name, index == 1 ? longest : L"a");
    }
}

TEST_P(SubKeysContract, SaysThatThereAreNoMore)
{
    MakeKey(Parent + L"\\a");
    const OpenedSubKeys opened = registry.OpenSubKeys(GetParam(), Parent);
    ASSERT_NE(opened.keys, nullptr);
    for (const std::uint32_t index : {1U, 2U, 1000U}) {
        std::wstring name = L"from before";
        EXPECT_EQ(opened.keys->ReadName(index, name), RegistryStatus::NoMoreItems);
        EXPECT_EQ(name, L"");
    }
}

TEST_P(SubKeysContract, CountsNoneBelowAKeyWithoutAny)
{
    MakeKey(Parent);
    const OpenedSubKeys opened = registry.OpenSubKeys(GetParam(), Parent);
    EXPECT_EQ(opened.status, RegistryStatus::Success);
    ASSERT_NE(opened.keys, nullptr);
    EXPECT_EQ(opened.keys->Count(), 0U);
}

} // namespace
} // namespace sitekeeper
