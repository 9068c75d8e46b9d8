// The suite's shortcuts, one for each tool, and their renewal.
#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <string>

namespace sitekeeper {

/// The number of rows; a row is identified by its position, from 0.
[[nodiscard]] int ShortcutCount() noexcept;

/// The display name of a row, which is also its file's name before ".lnk"; empty for an unknown row.
[[nodiscard]] std::wstring GetShortcutName(int row);

/// The file of a row's shortcut in `shortcutFolder` (with a "\" at its end); empty when the folder is empty or the row
/// is unknown.
[[nodiscard]] std::wstring ShortcutPathIn(const std::wstring& shortcutFolder, int row);

/// Writes each shortcut file that exists in `shortcutFolder` (with a "\" at its end) anew, in catalogue order, so that
/// it starts its tool in "Applications" of `applicationFolder` (with a "\" at its end). A file that does not exist is
/// not created; one that cannot be written stays as it was and the rest goes on. The calling thread must have entered
/// the component runtime.
void RenewShortcuts(const FileSystem& files, Shell& shell, const std::wstring& shortcutFolder,
                    const std::wstring& applicationFolder);

} // namespace sitekeeper
