#include "autocad/OemInstaller.h"

#include "settings/Product.h"
#include "text/Text.h"

namespace sitekeeper {

std::optional<OemSetup> ChooseOemSetup(const InstallationSettings& settings, FolderChooser& chooser)
{
    const std::wstring engineFolder = Fill(L"%s\\Engine", {settings.ReadLocalAppPath()});
    std::wstring folder = L"c:\\";
    chooser.Choose(Fill(L"Select the location of the ACAD%s folder in the Install Image", {PlatformSuffix}), folder);
    if (folder.empty()) {
        return std::nullopt;
    }
    return OemSetup{Fill(L"%s\\setup.exe", {folder}), Fill(L"/t /qb /c AOEM: INSTALLDIR=\"%s\"", {engineFolder})};
}

void StartOemSetup(Processes& processes, MessageBoxes& messages, WindowId owner, const std::wstring& caption,
                   const OemSetup& setup)
{
    if (!processes.Start(setup.program, setup.arguments)) {
        messages.Show(owner, Fill(L"Error creating process:\n%s", {setup.program}), caption, MessageStyle::Error);
    }
}

} // namespace sitekeeper
