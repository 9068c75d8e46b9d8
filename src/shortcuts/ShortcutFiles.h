// Folder trees and shortcut files.
#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <string>

namespace sitekeeper {

/// Makes every folder on the way to the folder that holds `path`, the first component (the drive) excepted. Folders
/// that exist already, or cannot be made, are passed over. A double quote opens a run in which "\" separates nothing;
/// in it two double quotes stand for one. Nothing is done for a path without a folder.
void CreateFolderPath(FileSystem& files, const std::wstring& path);

/// Writes the shortcut file `shortcutPath`, which starts `programFile` in `toolFolder` with the program's icon number
/// `iconIndex`. The working folder is `toolFolder` with a "\" at its end; the icon is taken from there too. The number
/// before the icon index is accepted and ignored.
/// Ok when it was written; Fail when the program's full path takes 260 characters or more; otherwise the shell's code.
/// On failure the file is as it was. The calling thread must have entered the component runtime.
ResultCode CreateShortcut(const FileSystem& files, Shell& shell, const std::wstring& shortcutPath,
                          const std::wstring& toolFolder, const std::wstring& programFile, int ignored, int iconIndex);

} // namespace sitekeeper
