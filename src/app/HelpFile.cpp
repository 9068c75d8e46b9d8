#include "app/HelpFile.h"

#include "text/Paths.h"
#include "text/Text.h"

#include <algorithm>
#include <optional>

namespace sitekeeper {

std::wstring FormHelpFilePath(const std::wstring& programHelpPath, const std::wstring& localAppPath)
{
    std::wstring name = GetNameOfPath(programHelpPath);
    name.resize(std::min(name.rfind(L'.'), name.size()));
    // One help file serves the 32-bit and the 64-bit program.
    if (name.ends_with(L"32") || name.ends_with(L"64")) {
        name.resize(name.size() - 2);
    }
    const std::wstring folder = localAppPath.empty() ? localAppPath : localAppPath + L"Help\\";
    return folder + name + L".chm";
}

void ShowHelpContents(const FileSystem& files, HelpViewer& viewer, MessageBoxes& messages, WindowId owner,
                      const std::wstring& helpFile)
{
    if (files.Exists(helpFile)) {
        viewer.ShowContents(owner, helpFile);
        return;
    }
    messages.Show(WindowId::None,
                  Fill(L"Couldn't find help file: \n%s\n\nPlease check software installation.", {helpFile}),
                  std::nullopt, MessageStyle::Error);
}

} // namespace sitekeeper
