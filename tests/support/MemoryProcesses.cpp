#include "support/MemoryProcesses.h"

#include "text/Text.h"

namespace sitekeeper {
namespace {

std::wstring Comparable(const std::wstring& path)
{
    return ReplaceAll(ToLowerCase(path), L"\\\\", L"\\");
}

} // namespace

bool MemoryProcesses::Start(const std::wstring& program, const std::wstring& commandLine)
{
    if (!m_programs.contains(Comparable(program))) {
        return false;
    }
    m_started.push_back({program, commandLine});
    return true;
}

void MemoryProcesses::AddProgram(const std::wstring& path)
{
    m_programs.insert(Comparable(path));
}

std::vector<std::wstring> MemoryProcesses::Listing() const
{
    std::vector<std::wstring> lines;
    for (const Started& each : m_started) {
        lines.push_back(each.program + L" : " + each.commandLine);
    }
    return lines;
}

} // namespace sitekeeper
