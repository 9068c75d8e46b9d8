// The accounts of a computer in memory, for tests.
#pragma once

#include "platform/Accounts.h"

#include <utility>

namespace sitekeeper {

class MemoryAccounts final : public Accounts
{
public:
    [[nodiscard]] std::wstring UserName() const override { return m_userName.substr(0, LongestName); }

    void SetUserName(std::wstring name) { m_userName = std::move(name); }

private:
    static constexpr std::size_t LongestName = 255;

    std::wstring m_userName = L"keeper";
};

} // namespace sitekeeper
