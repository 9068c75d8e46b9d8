// Processes in memory, for tests: which programs can be started is said beforehand, what was started is remembered.
#pragma once

#include "platform/Processes.h"

#include <set>
#include <string>
#include <vector>

namespace sitekeeper {

class MemoryProcesses final : public Processes
{
public:
    /// A program that was started, and what it was given.
    struct Started
    {
        std::wstring program;
        std::wstring commandLine;

        bool operator==(const Started&) const = default;
    };

    bool Start(const std::wstring& program, const std::wstring& commandLine) override;

    /// From now on a program can be started from `path`. Doubled backslashes in a path are taken for one, as the system
    /// does.
    void AddProgram(const std::wstring& path);

    /// The calls of Start that gave true, in their order.
    [[nodiscard]] const std::vector<Started>& AllStarted() const { return m_started; }

    /// One line for each of them.
    [[nodiscard]] std::vector<std::wstring> Listing() const;

private:
    std::set<std::wstring> m_programs; // paths in lower case with single backslashes
    std::vector<Started> m_started;
};

} // namespace sitekeeper
