// The accounts of this computer and of its network.
#pragma once

#include "frame/Handles.h"
#include "platform/Accounts.h"

#include <windows.h>

namespace sitekeeper {

class Win32Accounts final : public Accounts
{
public:
    [[nodiscard]] std::wstring UserName() const override;
    [[nodiscard]] std::vector<std::wstring> Servers() const override;
    [[nodiscard]] AccountPage UsersOf(const std::wstring& server, std::uint32_t index,
                                      std::uint32_t count) const override;

private:
    /// A function of the network management; null when the system has none. Its library is loaded at the first call
    /// for one, since most runs of the program never ask.
    [[nodiscard]] FARPROC Entry(const char* name) const;

    mutable UniqueModule m_library;
};

} // namespace sitekeeper
