// The installer of the AutoCAD OEM engine, started from an install image.
#pragma once

#include "platform/FolderChooser.h"
#include "platform/MessageBoxes.h"
#include "platform/Processes.h"
#include "settings/InstallationSettings.h"

#include <optional>
#include <string>

namespace sitekeeper {

/// How the installer is started.
struct OemSetup
{
    /// The path of the installer in the install image.
    std::wstring program;
    /// All of its command line: what to do quietly, and the engine folder below the program folder.
    std::wstring arguments;

    bool operator==(const OemSetup&) const = default;
};

/// Lets the user choose the folder of the install image that holds the installer, from "c:\" on, after the program
/// folder was read. Nothing when the user chooses none. The doubled backslashes behind both folders stay; without a
/// program folder the engine folder is "\Engine".
[[nodiscard]] std::optional<OemSetup> ChooseOemSetup(const InstallationSettings& settings, FolderChooser& chooser);

/// Starts the installer and does not wait for it. When it could not be started, says so in a message that `owner` owns,
/// with the title `caption`, and waits for its answer.
void StartOemSetup(Processes& processes, MessageBoxes& messages, WindowId owner, const std::wstring& caption,
                   const OemSetup& setup);

} // namespace sitekeeper
