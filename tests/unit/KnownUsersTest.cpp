// The accounts of the network, collected from servers that answer well and badly.
#include "access/KnownUsers.h"

#include "support/MemoryAccounts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>

namespace sitekeeper {

inline void PrintTo(const MemoryAccounts::Request& request, std::ostream* out)
{
    *out << ::testing::PrintToString(request.server) << " from " << request.index;
}

namespace {

using Names = std::vector<std::wstring>;
using Requests = std::vector<MemoryAccounts::Request>;

class KnownUsersTest : public ::testing::Test
{
protected:
    /// What is handed over, server by server.
    [[nodiscard]] std::vector<Names> Collect() const
    {
        std::vector<Names> taken;
        CollectUsers(accounts, [&taken](const Names& names) { taken.push_back(names); });
        return taken;
    }

    static Names Numbered(std::size_t count)
    {
        Names names(count);
        std::size_t number = 0;
        std::generate(names.begin(), names.end(), [&number] { return L"user" + std::to_wstring(number++); });
        return names;
    }

    MemoryAccounts accounts;
};

TEST_F(KnownUsersTest, AsksTheServersInTheirOrderAndThisComputerLast)
{
    accounts.AddServer(L"", {L"local"});
    accounts.AddServer(L"ZEUS", {L"zoe", L"adam"});
    accounts.AddServer(L"ARES", {L"bob"});
    EXPECT_EQ(Collect(), (std::vector<Names>{{L"zoe", L"adam"}, {L"bob"}, {L"local"}}));
    EXPECT_EQ(accounts.Requests(), (Requests{{L"ZEUS", 0}, {L"ARES", 0}, {L"", 0}}));
}

TEST_F(KnownUsersTest, AsksThisComputerWhereThereIsNoServer)
{
    accounts.AddServer(L"", {L"local"});
    EXPECT_EQ(Collect(), std::vector<Names>{{L"local"}});
}

TEST_F(KnownUsersTest, HandsOverNothingForAServerThatRefuses)
{
    accounts.Script(L"ARES", 0, {NetworkStatus::AccessDenied, {}, 0});
    accounts.AddServer(L"ZEUS", {L"zoe"});
    EXPECT_EQ(Collect(), (std::vector<Names>{{}, {L"zoe"}, {}})); // this computer refuses too
    EXPECT_EQ(accounts.Requests(), (Requests{{L"ARES", 0}, {L"ZEUS", 0}, {L"", 0}}));
}

TEST_F(KnownUsersTest, AsksForPagesOfAThousandEachFromTheLastEntrysNextIndex)
{
    accounts.AddServer(L"", Numbered(2500));
    EXPECT_EQ(Collect(), std::vector<Names>{Numbered(2500)});
    EXPECT_EQ(accounts.Requests(), (Requests{{L"", 0}, {L"", 1000}, {L"", 2000}}));
}

TEST_F(KnownUsersTest, AsksNoFurtherAfterAFullLastPage)
{
    accounts.AddServer(L"", Numbered(1000));
    EXPECT_EQ(Collect(), std::vector<Names>{Numbered(1000)});
    EXPECT_EQ(accounts.Requests().size(), 1U);
}

TEST_F(KnownUsersTest, FollowsAnIndexThatIsNoCount)
{
    accounts.Script(L"", 0, {NetworkStatus::MoreData, {L"a", L"b"}, 500});
    accounts.Script(L"", 500, {NetworkStatus::MoreData, {L"c"}, 0xFFFF'FFFFU});
    accounts.Script(L"", 0xFFFF'FFFFU, {NetworkStatus::Success, {L"d"}, 0});
    EXPECT_EQ(Collect(), (std::vector<Names>{{L"a", L"b", L"c", L"d"}}));
}

TEST_F(KnownUsersTest, KeepsWhatAServerGaveBeforeItFailed)
{
    accounts.Script(L"ZEUS", 0, {NetworkStatus::MoreData, {L"a"}, 1000});
    accounts.Script(L"ZEUS", 1000, {NetworkStatus::AccessDenied, {}, 0});
    accounts.Script(L"ARES", 0, {NetworkStatus::NotSupported, {L"came all the same"}, 5});
    accounts.AddServer(L"", {L"local"});
    EXPECT_EQ(Collect(), (std::vector<Names>{{L"a"}, {L"came all the same"}, {L"local"}}));
}

TEST_F(KnownUsersTest, EndsWithAServerThatPromisesMoreButDoesNotGetOn)
{
    struct Case
    {
        const char* name;
        AccountPage second;
        Names names;
    };
    const Case cases[] = {
        {"nothing", {NetworkStatus::MoreData, {}, 0}, {L"a"}},
        {"the same index", {NetworkStatus::MoreData, {L"b"}, 7}, {L"a", L"b"}},
        {"an earlier index", {NetworkStatus::MoreData, {L"b"}, 6}, {L"a", L"b"}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        MemoryAccounts fresh;
        fresh.Script(L"", 0, {NetworkStatus::MoreData, {L"a"}, 7});
        fresh.Script(L"", 7, each.second);
        Names collected;
        CollectUsers(fresh, [&collected](const Names& names) { collected = names; });
        EXPECT_EQ(collected, each.names);
        EXPECT_EQ(fresh.Requests(), (Requests{{L"", 0}, {L"", 7}}));
    }
}

TEST_F(KnownUsersTest, EndsWithMoreDataThatHoldsNoEntryAtOnce)
{
    accounts.Script(L"", 0, {NetworkStatus::MoreData, {}, 0});
    EXPECT_EQ(Collect(), std::vector<Names>{{}});
    EXPECT_EQ(accounts.Requests().size(), 1U);
}

TEST_F(KnownUsersTest, SkipsEmptyNamesOnly)
{
    accounts.AddServer(L"", {L"", L"a", L"", L" ", L"a", L""});
    EXPECT_EQ(Collect(), (std::vector<Names>{{L"a", L" ", L"a"}}));
}

} // namespace
} // namespace sitekeeper
