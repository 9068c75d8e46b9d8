#include "contract/World.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(AccountsContract, TellsTheUsersNameWithoutDomain)
{
    const std::unique_ptr<World> world = MakeWorld();
    const std::wstring name = world->TheAccounts().UserName();
    EXPECT_FALSE(name.empty()); // the systems that tests run on all tell
    EXPECT_LE(name.size(), 255U);
    EXPECT_EQ(name.find(L'\\'), std::wstring::npos) << name;
    EXPECT_EQ(name.find(L'\0'), std::wstring::npos);
    EXPECT_EQ(world->TheAccounts().UserName(), name);
}

constexpr std::uint32_t PageSize = 1000;

bool HasName(const std::vector<std::wstring>& names, const std::wstring& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(AccountsContract, TellsTheAccountsOfThisComputer)
{
    const std::unique_ptr<World> world = MakeWorld();
    const AccountPage page = world->TheAccounts().UsersOf(L"", 0, PageSize);
    EXPECT_EQ(page.status, NetworkStatus::Success);
    EXPECT_TRUE(HasName(page.names, L"Administrator"));
    EXPECT_TRUE(HasName(page.names, L"Guest"));
    EXPECT_TRUE(HasName(page.names, world->TheAccounts().UserName()));
}

TEST(AccountsContract, TellsTheAccountsPageByPage)
{
    const std::unique_ptr<World> world = MakeWorld();
    const std::vector<std::wstring> all = world->TheAccounts().UsersOf(L"", 0, PageSize).names;
    std::vector<std::wstring> collected;
    std::uint32_t index = 0;
    for (std::size_t turn = 0; turn <= all.size(); ++turn) {
        const AccountPage page = world->TheAccounts().UsersOf(L"", index, 1);
        collected.insert(collected.end(), page.names.begin(), page.names.end());
        if (page.status != NetworkStatus::MoreData) {
            EXPECT_EQ(page.status, NetworkStatus::Success);
            break;
        }
        ASSERT_GT(page.nextIndex, index);
        index = page.nextIndex;
    }
    EXPECT_EQ(collected, all);
}

TEST(AccountsContract, TellsNothingOfAServerThatIsNotThere)
{
    const std::unique_ptr<World> world = MakeWorld();
    const AccountPage page = world->TheAccounts().UsersOf(L"no-such-server.invalid", 0, PageSize);
    EXPECT_NE(page.status, NetworkStatus::Success);
    EXPECT_NE(page.status, NetworkStatus::MoreData);
    EXPECT_TRUE(page.names.empty());
    EXPECT_EQ(page.nextIndex, 0U);
}

TEST(AccountsContract, NamesTheServersOfTheDomain)
{
    const std::unique_ptr<World> world = MakeWorld();
    const std::vector<std::wstring> servers = world->TheAccounts().Servers(); // none without a domain
    EXPECT_EQ(std::count(servers.begin(), servers.end(), std::wstring()), 0);
    EXPECT_EQ(world->TheAccounts().Servers(), servers);
}

} // namespace
} // namespace sitekeeper
