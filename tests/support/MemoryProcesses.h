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
    /// A program that was started, or handed to the shell, and what it was given.
    struct Started
    {
        std::wstring program;
        std::wstring commandLine;

        bool operator==(const Started&) const = default;
    };

    bool Start(const std::wstring& program, const std::wstring& commandLine) override;
    void Open(const std::wstring& file, const std::wstring& parameters) override;

    /// From now on a program can be started from `path`. Doubled backslashes in a path are taken for one, as the system
    /// does.
    void AddProgram(const std::wstring& path);

    /// The calls of Start that gave true, and those of Open, in their order.
    [[nodiscard]] const std::vector<Started>& AllStarted() const { return m_started; }
    [[nodiscard]] const std::vector<Started>& AllOpened() const { return m_opened; }

    /// One line for each of both.
    [[nodiscard]] std::vector<std::wstring> Listing() const;

private:
    std::set<std::wstring> m_programs; // paths in lower case with single backslashes
    std::vector<Started> m_started;
    std::vector<Started> m_opened;
};

} // namespace sitekeeper
