// A platform that forwards every call to another one, and lets the n-th call fail the way its contract allows. With it
// an operation is run through each of its possible failures in turn.
#pragma once

#include "support/FaultPlan.h"
#include "support/MemoryPlatform.h"

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {

class FaultyPlatform
{
public:
    /// The calls that `plan` picks fail without reaching `inner`; what `inner` refers to must outlive it.
    FaultyPlatform(const Platform& inner, FaultPlan plan);
    /// Call number `failingCall`, from 1, fails; 0 lets all pass.
    FaultyPlatform(const Platform& inner, int failingCall) : FaultyPlatform(inner, FaultPlan(failingCall)) {}
    FaultyPlatform(const FaultyPlatform&) = delete;
    FaultyPlatform& operator=(const FaultyPlatform&) = delete;
    ~FaultyPlatform();

    [[nodiscard]] Platform Ports();

    /// Each call that can fail, in order: the operation and what it was about.
    [[nodiscard]] const std::vector<std::wstring>& Calls() const;
    [[nodiscard]] bool HasFailed() const;

private:
    struct Forwarders;
    std::unique_ptr<Forwarders> m_forwarders;
};

/// What a shortcut file's saving gives when it fails on purpose.
inline constexpr ResultCode InjectedFailure = AccessDenied;
/// What a walk over sub-keys gives for a step that fails on purpose.
inline constexpr RegistryStatus InjectedStatus = RegistryStatus::AccessDenied;

/// How one run of an operation ended.
struct FaultedRun
{
    /// The number of the call that failed, from 1, and the line that stands for it in the log.
    int number = 0;
    std::wstring failed;
    std::vector<std::wstring> calls;
    State before;
    /// Just before the failing call; empty without one.
    State atFailure;
    State after;
    /// The code of the PlatformError that came out of the operation.
    std::optional<ResultCode> raised;
};

/// What prepares a platform, what is done on it, and what is looked at afterwards.
struct Sweep
{
    std::function<void(MemoryPlatform&)> prepare;
    std::function<void(const Platform&)> operation;
    std::function<void(const FaultedRun&)> check;
    /// Looks at the runs whose failing call raised std::bad_alloc, where more is promised than for all operations.
    std::function<void(const FaultedRun&)> checkOutOfMemory{};
};

/// Runs the operation on a fresh platform with no failing call.
[[nodiscard]] FaultedRun RunUntouched(const Sweep& sweep);

/// Runs the operation on fresh platforms with the first, the second, the third … call failing, and lets `check` look
/// at each run, until a run has no such call. Gives the number of failure points.
/// What no operation may do is looked at here: raise anything but a PlatformError, keep the component runtime or a
/// document, do anything else before the failing call than a run without one. It holds also where all calls from that
/// one on fail and where the call raises std::bad_alloc; `check` does not see those runs.
int SweepFailures(const Sweep& sweep);

} // namespace sitekeeper
