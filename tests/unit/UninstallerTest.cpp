#include "maindlg/Uninstaller.h"

#include "support/MemoryRegistry.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* FirstKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
constexpr const wchar_t* SecondKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\InstallShield_{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";

void Register(MemoryRegistry& registry, const wchar_t* key, const std::wstring& command)
{
    registry.SetText(Hive::LocalMachine, key, L"UninstallString", command);
}

TEST(ReadUninstallString, TakesTheFirstKeyThatTellsOne)
{
    MemoryRegistry registry;
    EXPECT_EQ(ReadUninstallString(registry), L"");
    Register(registry, SecondKey, L"second");
    EXPECT_EQ(ReadUninstallString(registry), L"second");
    Register(registry, FirstKey, L"");
    EXPECT_EQ(ReadUninstallString(registry), L"second");
    Register(registry, FirstKey, L"first");
    EXPECT_EQ(ReadUninstallString(registry), L"first");
    Register(registry, FirstKey, std::wstring(1024, L'x')); // with its end more than is read
    EXPECT_EQ(ReadUninstallString(registry), L"second");
}

TEST(SplitUninstallString, TakesTheCommandApart)
{
    const struct
    {
        const wchar_t* command = L"";
        UninstallCommand expected;
    } rows[] = {
        {L"C:\\Setup\\setup.exe -runfromtemp -removeonly", {L"C:\\Setup\\setup.exe", L"-runfromtemp"}},
        {L"C:\\Setup\\setup.exe -removeonly -runfromtemp -removeonly", {L"C:\\Setup\\setup.exe", L"-runfromtemp"}},
        {L"\"C:\\My Setup\\setup.exe\" -runfromtemp", {L"\"C:", L"\\My Setup\\setup.exe\" -runfromtemp"}},
        {L"C:\\a.exe b.exe c", {L"C:\\a.exe", L"b.exe c"}},
        {L"C:\\a.exe ", {L"C:\\a.exe", L""}},
        {L"C:\\a.exe  two blanks", {L"C:\\a.exe", L" two blanks"}},
        {L".exe x", {L".exe", L"x"}},
        {L"C:\\a.EXE -x", {L"C:\\", L"a.EXE -x"}},       // the case of letters matters
        {L"C:\\a.exe -removeonly", {L"C:\\", L"a.exe"}}, // without the switch no blank is left
        {L"MsiExec /x", {L"Msi", L"Exec /x"}},
        {L"abcd", {L"abc", L"d"}},
        {L"abc", {L"abc", L""}},
        {L"ab", {L"ab", L""}},
        {L"a -REMOVEONLY", {L"a -", L"REMOVEONLY"}},
        {L"", {L"", L""}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SplitUninstallString(row.command), row.expected) << testing::PrintToString(row.command);
    }
}

} // namespace
} // namespace sitekeeper
