// The process's real environment.
#pragma once

#include "platform/Environment.h"

namespace sitekeeper {

class Win32Environment final : public Environment
{
public:
    [[nodiscard]] std::optional<std::wstring> Variable(const std::wstring& name) const override;
};

} // namespace sitekeeper
