// Port: the accounts of this computer and of its network.
#pragma once

#include "platform/Port.h"

#include <string>

namespace sitekeeper {

class Accounts : public Port
{
public:
    /// The name of the user whom this process runs as, without a domain. At most 255 characters; empty when the
    /// system does not tell.
    [[nodiscard]] virtual std::wstring UserName() const = 0;
};

} // namespace sitekeeper
