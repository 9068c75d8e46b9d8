// Which call of a platform fails.
#pragma once

#include <string>
#include <vector>

namespace sitekeeper {

/// Counts the calls of one platform and picks the one that fails.
class FaultPlan
{
public:
    explicit FaultPlan(int failingCall) : m_failingCall(failingCall) {}

    bool Fails(const std::wstring& call)
    {
        m_calls.push_back(call);
        return static_cast<int>(m_calls.size()) == m_failingCall;
    }

    [[nodiscard]] const std::vector<std::wstring>& Calls() const { return m_calls; }
    [[nodiscard]] bool HasFailed() const
    {
        return m_failingCall > 0 && static_cast<int>(m_calls.size()) >= m_failingCall;
    }

private:
    int m_failingCall;
    std::vector<std::wstring> m_calls;
};

} // namespace sitekeeper
