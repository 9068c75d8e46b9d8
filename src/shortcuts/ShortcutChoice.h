// Which of the suite's shortcuts exist, and which are to.
#pragma once

#include "platform/FileSystem.h"
#include "platform/Registry.h"

namespace sitekeeper {

/// Whether the shortcut of catalogue row `row` exists on the desktop or, failing that, in the Start menu. False for an
/// unknown row and where neither folder is known.
[[nodiscard]] bool HasShortcut(const FileSystem& files, const Registry& registry, int row);

/// Removes the shortcut of a row from both folders. A file that cannot be removed stays.
void RemoveShortcut(FileSystem& files, const Registry& registry, int row);

/// Puts an empty file in each of the two folders that lacks the shortcut of a row, making the folder where it is
/// missing: the next renewal, which writes what exists, makes it a shortcut. Files that exist are left as they are;
/// where a folder is unknown, or the file cannot be made, there is none.
void PlaceShortcut(FileSystem& files, const Registry& registry, int row);

} // namespace sitekeeper
