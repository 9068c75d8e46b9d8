#include "shortcuts/ShellFolders.h"

#include "settings/Product.h"
#include "settings/RegistryText.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "text/Paths.h"

namespace sitekeeper {
namespace {

std::wstring ReadShellFolder(const Registry& registry, Hive hive, const wchar_t* name)
{
    return ReadRegistryText(registry, hive, L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                            name, KeyAccess::Read);
}

std::wstring SuiteFolderName()
{
    return std::wstring(MakerName) + L" " + ProductTitle + L"\\";
}

} // namespace

std::wstring GetDesktopShortcutFolder(const Registry& registry)
{
    std::wstring desktop = ReadShellFolder(registry, Hive::LocalMachine, L"Common Desktop");
    if (desktop.empty()) {
        desktop = ReadShellFolder(registry, Hive::CurrentUser, L"Desktop");
    }
    return desktop.empty() ? desktop : WithBackslash(desktop) + SuiteFolderName();
}

std::wstring GetProgramsShortcutFolder(const Registry& registry)
{
    const std::wstring programs = ReadShellFolder(registry, Hive::LocalMachine, L"Common Programs");
    return programs.empty() ? programs : WithBackslash(programs) + MakerName + L"\\" + SuiteFolderName();
}

std::wstring GetDesktopShortcutPath(const Registry& registry, int row)
{
    return ShortcutPathIn(GetDesktopShortcutFolder(registry), row);
}

std::wstring GetProgramsShortcutPath(const Registry& registry, int row)
{
    return ShortcutPathIn(GetProgramsShortcutFolder(registry), row);
}

} // namespace sitekeeper
