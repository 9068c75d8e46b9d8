// The maker's dialogs library, from which the progress window comes.
#pragma once

#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/Modules.h"
#include "settings/InstallationSettings.h"

namespace sitekeeper {

/// Loads the dialogs library from the maker's folder of the first of two places in which it exists: below the variable
/// "CommonProgramFiles", below "CommonFilesDir" of the registry. A place that is not known leaves the bare file name,
/// for which the system's rules apply. None, after one message without owner, when the library is in neither place or
/// cannot be loaded. The caller gives a loaded library back with Modules::Release.
[[nodiscard]] ModuleId LoadDialogsLibrary(const InstallationSettings& settings, const FileSystem& files,
                                          Modules& modules, MessageBoxes& messages);

} // namespace sitekeeper
