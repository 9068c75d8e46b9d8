// Which call of a platform fails, and how.
#pragma once

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {

enum class FaultKind
{
    /// One call fails the way its contract allows; those behind it do not.
    Once,
    /// That call and all behind it fail, as when a network share is lost or a disk is full.
    FromThenOn,
    /// The call raises std::bad_alloc, as every adapter may that keeps something in memory.
    OutOfMemory,
};

/// Counts the calls of one platform and picks the one that fails.
class FaultPlan
{
public:
    /// Call number `failingCall`, from 1, fails; none for 0. `atFailure` is called just before it does.
    explicit FaultPlan(int failingCall, FaultKind kind = FaultKind::Once, std::function<void()> atFailure = {})
        : m_failingCall(failingCall), m_kind(kind), m_atFailure(std::move(atFailure))
    {}

    /// Counts a call; true when it is to fail.
    bool Fails(const std::wstring& call)
    {
        m_calls.push_back(call);
        if (m_calls.size() > MostCalls) {
            throw std::logic_error("an operation that does not come to an end");
        }
        const int number = static_cast<int>(m_calls.size());
        if (number != m_failingCall) {
            return m_kind == FaultKind::FromThenOn && HasFailed();
        }
        if (m_atFailure) {
            m_atFailure();
        }
        if (m_kind == FaultKind::OutOfMemory) {
            throw std::bad_alloc();
        }
        return true;
    }

    [[nodiscard]] const std::vector<std::wstring>& Calls() const { return m_calls; }
    [[nodiscard]] bool HasFailed() const
    {
        return m_failingCall > 0 && static_cast<int>(m_calls.size()) >= m_failingCall;
    }

private:
    /// Far more than any operation of a test needs.
    static constexpr std::size_t MostCalls = 10'000;

    int m_failingCall;
    FaultKind m_kind;
    std::function<void()> m_atFailure;
    std::vector<std::wstring> m_calls;
};

} // namespace sitekeeper
