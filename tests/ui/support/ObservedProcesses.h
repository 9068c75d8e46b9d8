// Processes that let a test look at the screen at the moment at which a program is started.
#pragma once

#include "platform/Processes.h"

#include <functional>

namespace sitekeeper {

class ObservedProcesses final : public Processes
{
public:
    explicit ObservedProcesses(Processes& inner) : m_inner(inner) {}

    bool Start(const std::wstring& program, const std::wstring& commandLine) override
    {
        if (onStart) {
            onStart();
        }
        return m_inner.Start(program, commandLine);
    }

    /// Called before each start.
    std::function<void()> onStart;

private:
    Processes& m_inner;
};

} // namespace sitekeeper
