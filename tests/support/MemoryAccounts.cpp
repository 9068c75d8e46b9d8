#include "support/MemoryAccounts.h"

#include <algorithm>

namespace sitekeeper {

AccountPage MemoryAccounts::UsersOf(const std::wstring& server, std::uint32_t index, std::uint32_t count) const
{
    m_requests.push_back({server, index});
    if (const auto scripted = m_script.find({server, index}); scripted != m_script.end()) {
        return scripted->second;
    }
    const auto found = m_users.find(server);
    if (found == m_users.end()) {
        return {NetworkStatus::AccessDenied, {}, 0};
    }
    const std::vector<std::wstring>& users = found->second;
    const std::size_t begin = std::min<std::size_t>(index, users.size());
    const std::size_t end = std::min<std::size_t>(begin + count, users.size());
    AccountPage page;
    page.status = end < users.size() ? NetworkStatus::MoreData : NetworkStatus::Success;
    page.names.assign(users.begin() + static_cast<std::ptrdiff_t>(begin),
                      users.begin() + static_cast<std::ptrdiff_t>(end));
    page.nextIndex = static_cast<std::uint32_t>(end);
    return page;
}

void MemoryAccounts::AddServer(const std::wstring& server, std::vector<std::wstring> users)
{
    if (!server.empty() && !m_users.contains(server)) {
        m_servers.push_back(server);
    }
    m_users[server] = std::move(users);
}

void MemoryAccounts::Script(const std::wstring& server, std::uint32_t index, AccountPage page)
{
    if (!server.empty() && std::find(m_servers.begin(), m_servers.end(), server) == m_servers.end()) {
        m_servers.push_back(server);
    }
    m_script[{server, index}] = std::move(page);
}

} // namespace sitekeeper
