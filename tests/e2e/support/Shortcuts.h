// Shortcut files, read and written through the shell.
#pragma once

#include <optional>
#include <string>

namespace sitekeeper::e2e {

struct Shortcut
{
    std::wstring target;
    std::wstring arguments;
    std::wstring description;
    std::wstring workingFolder;
    std::wstring iconFile;
    int iconIndex = 0;
};

/// Nothing when the file is not a shortcut. The target is the text that the file holds, whether it exists or not.
[[nodiscard]] std::optional<Shortcut> ReadShortcut(const std::wstring& path);

/// Makes the folder, too. Throws when the shell refuses.
void WriteShortcut(const std::wstring& path, const Shortcut& shortcut);

/// All of it in one line, for the reports of differences.
[[nodiscard]] std::wstring Describe(const Shortcut& shortcut);

} // namespace sitekeeper::e2e
