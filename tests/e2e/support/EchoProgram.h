// A stand-in for a program that the one under test starts: it writes down how it was started.
#pragma once

#include "e2e/support/Installation.h"
#include "e2e/support/ProgramRun.h"

#include <string>

namespace sitekeeper::e2e {

class EchoProgram
{
public:
    /// Puts it there, under any name.
    explicit EchoProgram(std::wstring path = L"C:\\Elsewhere\\EchoCommandLine.exe");

    [[nodiscard]] const std::wstring& Path() const noexcept { return m_path; }

    /// Its command line, exactly, once it has run; then it can run again.
    [[nodiscard]] std::wstring AwaitCommandLine(const ProgramRun& run) const;

    /// Whether it has run since then.
    [[nodiscard]] bool HasRun() const;

private:
    std::wstring m_path;
};

/// Lets the shell explore folders with one: its command line then ends in explore "FOLDER". As long as the installation
/// stands.
[[nodiscard]] EchoProgram StandInForExplorer(Installation& suite);

} // namespace sitekeeper::e2e
