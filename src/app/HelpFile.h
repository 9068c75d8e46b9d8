// The program's help file: where it lies, and opening it.
#pragma once

#include "platform/Platform.h"

#include <optional>
#include <string>

namespace sitekeeper {

/// The help file's path: "Help\" of the program folder `localAppPath` (no folder when that is empty), the name of
/// `programHelpPath` without its extension and without a "32" or "64" at its end, and ".chm".
[[nodiscard]] std::wstring FormHelpFilePath(const std::wstring& programHelpPath, const std::wstring& localAppPath);

/// Where the help file opens: on its table of contents, or on the page "Introduction.htm".
enum class HelpPage
{
    Contents,
    Introduction
};

/// Who owns the viewer, and who the message that the file is missing, with its caption; nullopt leaves the caption to
/// the system.
struct HelpOwners
{
    WindowId viewer = WindowId::None;
    WindowId message = WindowId::None;
    std::optional<std::wstring> caption;
};

/// Opens the help file; when nothing of that path exists, says so in a message instead. A folder of that path is handed
/// to the viewer like a file.
void ShowHelp(const Platform& platform, const HelpOwners& owners, HelpPage page, const std::wstring& helpFile);

} // namespace sitekeeper
