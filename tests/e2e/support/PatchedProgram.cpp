#include "e2e/support/PatchedProgram.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"

#include <stdexcept>
#include <string_view>

namespace sitekeeper::e2e {
namespace {

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

std::wstring ProgramWithFakeUser()
{
    std::wstring path = Patch("ADVAPI32.dll", "FakeUser.dll");
    CopyFileTo(ShippedFile(L"tests\\e2e\\FakeUser.dll"), path.substr(0, path.rfind(L'\\')) + L"\\FakeUser.dll");
    return path;
}

std::wstring ProgramWithOwnCommonProgramFiles()
{
    return Patch(Utf16Bytes("CommonProgramFiles"), Utf16Bytes("SITEKEEPER_E2E_CPF"));
}

} // namespace sitekeeper::e2e
