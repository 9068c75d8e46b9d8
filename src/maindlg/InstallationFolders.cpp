#include "maindlg/InstallationFolders.h"

#include "text/Paths.h"

namespace sitekeeper {

InstallationFolders LoadInstallationFolders(const InstallationSettings& settings, const std::wstring& programFile)
{
    InstallationFolders folders{settings.ReadLocalAppPath(), settings.ReadNetworkAppPath(),
                                settings.ReadDatafilesPath()};
    if (folders.program.empty()) {
        folders.program = GetFolderOfPath(WithoutTrailingBackslashes(GetFolderOfPath(programFile)));
    }
    if (folders.application.empty()) {
        folders.application = folders.program;
    }
    if (folders.datafiles.empty()) {
        folders.datafiles = folders.application + L"Datafiles\\";
    }
    return folders;
}

void SelectProgramFolder(InstallationFolders& folders, FolderChooser& chooser, InstallationSettings& settings)
{
    chooser.Choose(L"Choose the program folder", folders.program);
    if (folders.program.empty()) {
        return;
    }
    settings.WriteFolder(SuiteFolder::Program, folders.program);
    if (folders.application.empty()) {
        folders.application = folders.program;
    }
    // Unlike the default at start-up: the base is the program folder, and no "\" follows. Deliberate, and not to be
    // brought into line: what is stored here is read by the suite's other tools too.
    if (folders.datafiles.empty()) {
        folders.datafiles = folders.program + L"Datafiles";
    }
}

void BrowseApplicationFolder(InstallationFolders& folders, FolderChooser& chooser)
{
    chooser.Choose(L"Choose the application folder", folders.application);
}

void BrowseDatafilesFolder(InstallationFolders& folders, FolderChooser& chooser)
{
    chooser.Choose(L"Choose the datafiles folder", folders.datafiles);
}

} // namespace sitekeeper
