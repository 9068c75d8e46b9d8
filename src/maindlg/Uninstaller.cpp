#include "maindlg/Uninstaller.h"

#include "settings/RegistryText.h"
#include "text/Text.h"

#include <algorithm>
#include <cstddef>

namespace sitekeeper {
namespace {

/// What the suite's installer knows the product by.
constexpr const wchar_t* ProductCode = L"{6C1F2A3B-4D5E-4F60-8A71-92B3C4D5E6F7}";
constexpr const wchar_t* UninstallKeys[] = {
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\%s",
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\InstallShield_%s",
};

} // namespace

std::wstring ReadUninstallString(const Registry& registry)
{
    std::wstring command;
    for (const wchar_t* const key : UninstallKeys) {
        if (command.empty()) {
            command = ReadRegistryText(registry, Hive::LocalMachine, Fill(key, {ProductCode}), L"UninstallString",
                                       KeyAccess::QueryValue);
        }
    }
    return command;
}

UninstallCommand SplitUninstallString(const std::wstring& command)
{
    const std::wstring kept = ReplaceAll(command, L" -removeonly", L"");
    constexpr std::size_t EndingLength = 4; // of ".exe", the blank behind it not counted
    constexpr std::size_t CutWithoutEnding = 3;
    const std::size_t place = kept.find(L".exe ");
    if (place == std::wstring::npos) {
        return {kept.substr(0, CutWithoutEnding), kept.substr(std::min(CutWithoutEnding, kept.size()))};
    }
    const std::size_t end = place + EndingLength;
    return {kept.substr(0, end), kept.substr(end + 1)};
}

} // namespace sitekeeper
