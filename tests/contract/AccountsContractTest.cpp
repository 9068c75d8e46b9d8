#include "contract/World.h"

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

} // namespace
} // namespace sitekeeper
