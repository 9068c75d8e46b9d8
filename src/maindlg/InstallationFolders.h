// The three folders that the main dialog shows, and the ways in which they are filled and chosen.
#pragma once

#include "platform/FolderChooser.h"
#include "settings/InstallationSettings.h"

#include <string>

namespace sitekeeper {

struct InstallationFolders
{
    std::wstring program;
    std::wstring application;
    std::wstring datafiles;

    bool operator==(const InstallationFolders&) const = default;
};

/// The folders as stored. What is missing is derived: the program folder is the parent of the folder that holds
/// `programFile` (the program's own path), the application folder is the program folder, and the data files lie in
/// "Datafiles\" of the application folder.
[[nodiscard]] InstallationFolders LoadInstallationFolders(const InstallationSettings& settings,
                                                          const std::wstring& programFile);

/// Lets the user choose the program folder. A chosen one is written to the registry at once (whether that succeeds is
/// not looked at) and fills the other two folders where they are empty, the data files with "Datafiles" and no "\" at
/// its end. When nothing is chosen the program folder is empty and nothing is written.
void SelectProgramFolder(InstallationFolders& folders, FolderChooser& chooser, InstallationSettings& settings);

/// Lets the user choose the application or the data-files folder. When nothing is chosen it is empty. Nothing is
/// written and nothing is derived.
void BrowseApplicationFolder(InstallationFolders& folders, FolderChooser& chooser);
void BrowseDatafilesFolder(InstallationFolders& folders, FolderChooser& chooser);

} // namespace sitekeeper
