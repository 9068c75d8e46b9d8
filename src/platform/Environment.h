// Port: the process's environment.
#pragma once

#include "platform/Port.h"

#include <optional>
#include <string>

namespace sitekeeper {

class Environment : public Port
{
public:
    /// The text of the variable `name`, of any length; nothing when it is not set.
    [[nodiscard]] virtual std::optional<std::wstring> Variable(const std::wstring& name) const = 0;
};

} // namespace sitekeeper
