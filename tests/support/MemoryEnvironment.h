// An environment in memory, for tests. Names are compared without regard to case, as Windows does.
#pragma once

#include "platform/Environment.h"
#include "text/Text.h"

#include <map>

namespace sitekeeper {

class MemoryEnvironment final : public Environment
{
public:
    [[nodiscard]] std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        const auto found = m_variables.find(ToLowerCase(name));
        return found == m_variables.end() ? std::nullopt : std::optional(found->second);
    }

    void Set(const std::wstring& name, const std::wstring& text) { m_variables[ToLowerCase(name)] = text; }
    void Remove(const std::wstring& name) { m_variables.erase(ToLowerCase(name)); }

private:
    std::map<std::wstring, std::wstring> m_variables; // by name in lower case
};

} // namespace sitekeeper
