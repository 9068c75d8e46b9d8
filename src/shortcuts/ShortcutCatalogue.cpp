#include "shortcuts/ShortcutCatalogue.h"

#include "settings/Product.h"
#include "shortcuts/ShortcutFiles.h"
#include "text/Text.h"

#include <array>
#include <cstddef>

namespace sitekeeper {
namespace {

struct ShortcutRow
{
    const wchar_t* name;
    const wchar_t* programPattern;
    int iconIndex;
};

constexpr std::array<ShortcutRow, 5> Catalogue = {{
    {L"Ledger Composer", L"LedgerComposer%s.exe", 0},
    {L"Site Keeper", L"SiteKeeper%s.exe", 0},
    {L"Sheet Writer", L"SheetWriter%s.exe", 0},
    {L"Norm Keeper", L"NormKeeper%s.exe", 0},
    {L"Assist Web Page", L"Assist%s.exe", 0},
}};

} // namespace

int ShortcutCount() noexcept
{
    return static_cast<int>(Catalogue.size());
}

std::wstring GetShortcutName(int row)
{
    return row >= 0 && row < ShortcutCount() ? Catalogue[static_cast<std::size_t>(row)].name : L"";
}

std::wstring ShortcutPathIn(const std::wstring& shortcutFolder, int row)
{
    const std::wstring name = GetShortcutName(row);
    return shortcutFolder.empty() || name.empty() ? std::wstring() : shortcutFolder + name + L".lnk";
}

void RenewShortcuts(const FileSystem& files, Shell& shell, const std::wstring& shortcutFolder,
                    const std::wstring& applicationFolder)
{
    const std::wstring toolFolder = applicationFolder + L"Applications";
    for (int row = 0; row < ShortcutCount(); ++row) {
        const std::wstring path = ShortcutPathIn(shortcutFolder, row);
        if (files.Exists(path)) {
            const ShortcutRow& tool = Catalogue[static_cast<std::size_t>(row)];
            CreateShortcut(files, shell, path, toolFolder, Fill(tool.programPattern, {PlatformSuffix}), 0,
                           tool.iconIndex);
        }
    }
}

} // namespace sitekeeper
