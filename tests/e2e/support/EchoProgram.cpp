#include "e2e/support/EchoProgram.h"

#include "e2e/support/FileTree.h"

#include <utility>

namespace sitekeeper::e2e {

EchoProgram::EchoProgram(std::wstring path) : m_path(std::move(path))
{
    CopyFileTo(ShippedFile(L"tests\\e2e\\EchoCommandLine.exe"), m_path);
}

std::wstring EchoProgram::AwaitCommandLine(const ProgramRun& run) const
{
    run.Await("the program's stand-in to run", [this] { return HasRun(); });
    std::wstring line = ReadWideText(m_path + L".txt");
    RemoveFile(m_path + L".txt");
    return line;
}

bool EchoProgram::HasRun() const
{
    return Exists(m_path + L".txt");
}

EchoProgram StandInForExplorer(Installation& suite)
{
    EchoProgram echo;
    suite.Borrow(Hive::Machine, L"Software\\Classes\\Folder\\shell\\explore\\command", L"",
                 TextValue(L"\"" + echo.Path() + L"\" explore \"%1\""));
    return echo;
}

} // namespace sitekeeper::e2e
