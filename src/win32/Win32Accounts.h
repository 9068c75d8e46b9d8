// The accounts of this computer.
#pragma once

#include "platform/Accounts.h"

namespace sitekeeper {

class Win32Accounts final : public Accounts
{
public:
    [[nodiscard]] std::wstring UserName() const override;
};

} // namespace sitekeeper
