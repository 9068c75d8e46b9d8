#include "e2e/support/PatchedProgram.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"

#include <windows.h>

#include <stdexcept>
#include <string_view>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* NameVariable = L"SITEKEEPER_E2E_USER"; // where the stand-in looks

std::string Utf16Bytes(std::string_view text)
{
    std::string bytes;
    for (const char character : text) {
        bytes += character;
        bytes += '\0';
    }
    return bytes;
}

std::wstring Patch(const std::string& from, const std::string& to)
{
    std::string program = ReadWholeFile(Installation::Program()).value();
    const std::size_t place = program.find(from);
    if (place == std::string::npos || program.find(from, place + 1) != std::string::npos) {
        throw std::runtime_error("the program does not hold exactly once: " + from);
    }
    program.replace(place, from.size(), to);
    std::wstring path = L"C:\\Suite\\Patched\\SiteKeeper64.exe";
    WriteWholeFile(path, program);
    return path;
}

} // namespace

NamedUser::NamedUser(const std::wstring& name) : m_program(Patch("ADVAPI32.dll", "FakeUser.dll"))
{
    CopyFileTo(ShippedFile(L"tests\\e2e\\FakeUser.dll"),
               m_program.substr(0, m_program.rfind(L'\\')) + L"\\FakeUser.dll");
    Rename(name);
}

NamedUser::~NamedUser()
{
    ::SetEnvironmentVariableW(NameVariable, nullptr);
}

void NamedUser::Rename(const std::wstring& name)
{
    ::SetEnvironmentVariableW(NameVariable, name.c_str());
}

std::wstring ProgramWithOwnCommonProgramFiles()
{
    return Patch(Utf16Bytes("CommonProgramFiles"), Utf16Bytes("SITEKEEPER_E2E_CPF"));
}

} // namespace sitekeeper::e2e
