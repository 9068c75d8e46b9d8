// Tests of long use: how long, and what must be the same afterwards.
#pragma once

#include "support/Holdings.h"

#include <windows.h>

#include <functional>
#include <string>

namespace sitekeeper {

/// The number, above 0, that the environment variable gives, or `usually`.
[[nodiscard]] int GivenNumber(const wchar_t* variable, int usually);

/// How long a script of so many turns may take.
[[nodiscard]] DWORD PatienceFor(int turns);

/// Compares what the process holds before and after, and says it.
class LongUse
{
public:
    explicit LongUse(std::string what) : m_what(std::move(what)) {}

    /// After a few turns, in which the system sets up what it keeps, and after all of them. The test itself may keep
    /// `notes` bytes of each turn.
    void Begin();
    void End(int turns, std::size_t notes = 0);

private:
    std::string m_what;
    Holdings m_held;
    Memory m_memory;
};

} // namespace sitekeeper
