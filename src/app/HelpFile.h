// The program's help file: where it lies, and opening it.
#pragma once

#include "platform/FileSystem.h"
#include "platform/HelpViewer.h"
#include "platform/MessageBoxes.h"

#include <string>

namespace sitekeeper {

/// The help file's path: "Help\" of the program folder `localAppPath` (no folder when that is empty), the name of
/// `programHelpPath` without its extension and without a "32" or "64" at its end, and ".chm".
[[nodiscard]] std::wstring FormHelpFilePath(const std::wstring& programHelpPath, const std::wstring& localAppPath);

/// Opens the help file on its table of contents, owned by `owner`; when nothing of that path exists, says so in a
/// message without owner instead.
void ShowHelpContents(const FileSystem& files, HelpViewer& viewer, MessageBoxes& messages, WindowId owner,
                      const std::wstring& helpFile);

} // namespace sitekeeper
