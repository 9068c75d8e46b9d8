#include "shortcuts/ShortcutFiles.h"

#include "text/Paths.h"

#include <optional>
#include <string_view>
#include <vector>

namespace sitekeeper {
namespace {

std::vector<std::wstring> SplitPath(std::wstring_view path)
{
    std::vector<std::wstring> components(1);
    bool isQuoted = false;
    for (std::size_t index = 0; index < path.size(); ++index) {
        const wchar_t character = path[index];
        if (character == L'"') {
            const bool isDoubled = isQuoted && index + 1 < path.size() && path[index + 1] == L'"';
            if (isDoubled) {
                components.back() += character;
                ++index;
            } else {
                isQuoted = !isQuoted;
            }
        } else if (character == L'\\' && !isQuoted) {
            components.emplace_back();
        } else {
            components.back() += character;
        }
    }
    return components;
}

} // namespace

void CreateFolderPath(FileSystem& files, const std::wstring& path)
{
    const std::wstring folder = WithoutTrailingBackslashes(GetFolderOfPath(path));
    if (folder.empty()) {
        return;
    }
    std::wstring reached;
    bool isFirst = true;
    for (const std::wstring& component : SplitPath(folder)) {
        if (isFirst) {
            reached = component;
            isFirst = false;
            continue;
        }
        reached += L"\\" + component;
        files.MakeFolder(reached);
    }
}

ResultCode CreateShortcut(const FileSystem& files, Shell& shell, const std::wstring& shortcutPath,
                          const std::wstring& toolFolder, const std::wstring& programFile, int /*ignored*/,
                          int iconIndex)
{
    const std::wstring folder = WithBackslash(toolFolder);
    const std::optional<std::wstring> target = files.FullPath(folder + programFile);
    if (!target) {
        return ResultCode::Fail;
    }
    return shell.SaveShortcut(shortcutPath, {.target = *target,
                                             .arguments = L"",
                                             .workingFolder = folder,
                                             .iconFile = folder + programFile,
                                             .iconIndex = iconIndex});
}

} // namespace sitekeeper
