#include "app/HelpFile.h"

#include "text/Paths.h"
#include "text/Text.h"

#include <algorithm>

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

void ShowHelp(const Platform& platform, const HelpOwners& owners, HelpPage page, const std::wstring& helpFile)
{
    if (!platform.files.Exists(helpFile)) {
        platform.messages.Show(
            owners.message, Fill(L"Couldn't find help file: \n%s\n\nPlease check software installation.", {helpFile}),
            owners.caption, MessageStyle::Error);
    } else if (page == HelpPage::Introduction) {
        platform.help.ShowTopic(owners.viewer, helpFile + L"::/Introduction.htm");
    } else {
        platform.help.ShowContents(owners.viewer, helpFile);
    }
}

} // namespace sitekeeper
