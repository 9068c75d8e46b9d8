#include "shortcuts/ShortcutChoice.h"

#include "shortcuts/ShellFolders.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"

#include <string>

namespace sitekeeper {
namespace {

void RemoveIfKnown(FileSystem& files, const std::wstring& path)
{
    if (!path.empty()) {
        files.RemoveFile(path);
    }
}

void PlaceIn(FileSystem& files, const std::wstring& folder, int row)
{
    const std::wstring path = ShortcutPathIn(folder, row);
    if (path.empty() || files.Exists(path)) {
        return;
    }
    CreateFolderPath(files, folder);
    files.MakeEmptyFile(path);
}

} // namespace

bool HasShortcut(const FileSystem& files, const Registry& registry, int row)
{
    return files.Exists(GetDesktopShortcutPath(registry, row)) || files.Exists(GetProgramsShortcutPath(registry, row));
}

void RemoveShortcut(FileSystem& files, const Registry& registry, int row)
{
    RemoveIfKnown(files, GetDesktopShortcutPath(registry, row));
    RemoveIfKnown(files, GetProgramsShortcutPath(registry, row));
}

void PlaceShortcut(FileSystem& files, const Registry& registry, int row)
{
    PlaceIn(files, GetDesktopShortcutFolder(registry), row);
    PlaceIn(files, GetProgramsShortcutFolder(registry), row);
}

} // namespace sitekeeper
