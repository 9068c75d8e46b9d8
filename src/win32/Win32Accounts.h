// The accounts of this computer and of its network.
#pragma once

#include "platform/Accounts.h"
#include "win32/SystemLibrary.h"

namespace sitekeeper {

class Win32Accounts final : public Accounts
{
public:
    [[nodiscard]] std::wstring UserName() const override;
    [[nodiscard]] std::vector<std::wstring> Servers() const override;
    [[nodiscard]] AccountPage UsersOf(const std::wstring& server, std::uint32_t index,
                                      std::uint32_t count) const override;

private:
    SystemLibrary m_library{L"netapi32.dll"}; // the network management
};

} // namespace sitekeeper
