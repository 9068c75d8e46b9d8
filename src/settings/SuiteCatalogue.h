// The suite's drawing modules and tools by number, and the shared design folders named after them.
#pragma once

#include "settings/InstallationSettings.h"

#include <string>

namespace sitekeeper {

/// This program's own number in the catalogue.
inline constexpr int SiteKeeperNumber = 7;

/// The name of a module or tool, 1 to 11; empty for the reserved number 6 and every number outside.
[[nodiscard]] std::wstring ToolName(int number);

/// The shared design folder of a module or tool, or its `subFolder` unless that is empty, with a "\" at its end.
/// Number 0 means the folder that holds them all, and the sub-folder is then ignored; another unknown number leaves an
/// empty name and so two backslashes. Empty when no application folder is configured.
[[nodiscard]] std::wstring ToolDesignerFolder(const InstallationSettings& settings, int number,
                                              const std::wstring& subFolder);

/// The design folder that all modules share, or its `subFolder` unless that is empty, with a "\" at its end. Empty
/// when no application folder is configured.
[[nodiscard]] std::wstring CommonDesignerFolder(const InstallationSettings& settings, const std::wstring& subFolder);

} // namespace sitekeeper
