// Port: the process's environment.
#pragma once

#include <optional>
#include <string>

namespace sitekeeper {

class Environment
{
public:
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    virtual ~Environment() = default;

    /// The text of the variable `name`, of any length; nothing when it is not set.
    [[nodiscard]] virtual std::optional<std::wstring> Variable(const std::wstring& name) const = 0;
};

} // namespace sitekeeper
