#include "app/DialogsLibrary.h"

#include "settings/Product.h"
#include "text/Text.h"

#include <optional>

namespace sitekeeper {
namespace {

ModuleId Complain(MessageBoxes& messages, const wchar_t* pattern, const std::wstring& file)
{
    messages.Show(WindowId::None, Fill(pattern, {file}), std::nullopt, MessageStyle::Error);
    return ModuleId::None;
}

} // namespace

ModuleId LoadDialogsLibrary(const InstallationSettings& settings, const FileSystem& files, Modules& modules,
                            MessageBoxes& messages)
{
    const std::wstring name = Fill(L"ORSWDialogsOEM%s.dll", {PlatformSuffix});
    std::wstring path = settings.ReadCommonProgramFilesFolder() + name;
    if (!files.Exists(path)) {
        path = settings.ReadCommonFilesFolder() + name;
        if (!files.Exists(path)) {
            return Complain(messages, L"Couldn't find dll file: \n%s\n\nPlease check software installation.", name);
        }
    }
    const ModuleId library = modules.Load(path);
    if (library == ModuleId::None) {
        return Complain(messages, L"Couldn't load dll file: \n%s\n\nPlease check software installation.", path);
    }
    return library;
}

} // namespace sitekeeper
