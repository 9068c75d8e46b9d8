// Port: the accounts of this computer and of its network.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sitekeeper {

/// What the network management of the system answers. Values from winerror.h and lmerr.h.
enum class NetworkStatus : std::uint32_t
{
    /// NERR_Success
    Success = 0,
    /// ERROR_ACCESS_DENIED
    AccessDenied = 5,
    /// ERROR_NOT_SUPPORTED: the system has no network management.
    NotSupported = 50,
    /// ERROR_MORE_DATA: there are further entries.
    MoreData = 234,
};

/// A part of a server's accounts.
struct AccountPage
{
    NetworkStatus status = NetworkStatus::NotSupported;
    /// The account names of the entries, in their order; an entry's name may be empty.
    std::vector<std::wstring> names;
    /// The index that the last entry gives for asking on; 0 without entries.
    std::uint32_t nextIndex = 0;
};

class Accounts : public Port
{
public:
    /// The name of the user whom this process runs as, without a domain. At most 255 characters; empty when the
    /// system does not tell.
    [[nodiscard]] virtual std::wstring UserName() const = 0;

    /// The names of all servers of the primary domain, in the system's order. None when they cannot be had; those that
    /// came where the system has more than it tells. May take many seconds.
    [[nodiscard]] virtual std::vector<std::wstring> Servers() const = 0;

    /// The user accounts that `server` knows, from the entry `index` on, at most `count` of them. The empty name is
    /// this computer. A page may hold entries whatever its status. May take many seconds.
    [[nodiscard]] virtual AccountPage UsersOf(const std::wstring& server, std::uint32_t index,
                                              std::uint32_t count) const = 0;
};

} // namespace sitekeeper
