// The accounts of a network in memory, for tests: servers answer page by page as they are told to.
#pragma once

#include "platform/Accounts.h"

#include <map>
#include <utility>

namespace sitekeeper {

class MemoryAccounts final : public Accounts
{
public:
    /// One request for a page: which server, from where on.
    struct Request
    {
        std::wstring server;
        std::uint32_t index = 0;

        bool operator==(const Request&) const = default;
    };

    [[nodiscard]] std::wstring UserName() const override { return m_userName.substr(0, LongestName); }
    [[nodiscard]] std::vector<std::wstring> Servers() const override { return m_servers; }

    /// The page scripted for this request; otherwise one page of the server's users, as many as were asked for, whose
    /// entries are numbered from 1. A server that nobody added refuses.
    [[nodiscard]] AccountPage UsersOf(const std::wstring& server, std::uint32_t index,
                                      std::uint32_t count) const override;

    void SetUserName(std::wstring name) { m_userName = std::move(name); }
    /// A server of the domain with these users; the empty name is this computer, which is no server of the domain.
    void AddServer(const std::wstring& server, std::vector<std::wstring> users);
    /// What `server` answers when it is asked from `index` on.
    void Script(const std::wstring& server, std::uint32_t index, AccountPage page);

    [[nodiscard]] const std::vector<Request>& Requests() const { return m_requests; }

private:
    static constexpr std::size_t LongestName = 255;

    std::wstring m_userName = L"keeper";
    std::vector<std::wstring> m_servers;
    std::map<std::wstring, std::vector<std::wstring>> m_users;
    std::map<std::pair<std::wstring, std::uint32_t>, AccountPage> m_script;
    mutable std::vector<Request> m_requests;
};

} // namespace sitekeeper
