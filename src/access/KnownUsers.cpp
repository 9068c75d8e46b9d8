#include "access/KnownUsers.h"

#include <cstdint>
#include <utility>

namespace sitekeeper {
namespace {

constexpr std::uint32_t PageSize = 1000;

std::vector<std::wstring> UsersOf(const Accounts& accounts, const std::wstring& server)
{
    std::vector<std::wstring> users;
    std::uint32_t index = 0;
    for (;;) {
        AccountPage page = accounts.UsersOf(server, index, PageSize);
        for (std::wstring& name : page.names) {
            if (!name.empty()) {
                users.push_back(std::move(name));
            }
        }
        // A server that promises more but does not get on would be asked for ever.
        if (page.status != NetworkStatus::MoreData || page.nextIndex <= index) {
            return users;
        }
        index = page.nextIndex;
    }
}

} // namespace

void CollectUsers(const Accounts& accounts, const std::function<void(const std::vector<std::wstring>&)>& take)
{
    std::vector<std::wstring> servers = accounts.Servers();
    servers.emplace_back(); // this computer
    for (const std::wstring& server : servers) {
        take(UsersOf(accounts, server));
    }
}

} // namespace sitekeeper
