// Port: the accounts of this computer and of its network.
#pragma once

#include <string>

namespace sitekeeper {

class Accounts
{
public:
    Accounts() = default;
    Accounts(const Accounts&) = delete;
    Accounts& operator=(const Accounts&) = delete;
    virtual ~Accounts() = default;

    /// The name of the user whom this process runs as, without a domain. At most 255 characters; empty when the
    /// system does not tell.
    [[nodiscard]] virtual std::wstring UserName() const = 0;
};

} // namespace sitekeeper
