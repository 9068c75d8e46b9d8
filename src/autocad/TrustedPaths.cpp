#include "autocad/TrustedPaths.h"

#include "autocad/TrustedPathKeys.h"
#include "platform/PlatformError.h"
#include "settings/Product.h"
#include "settings/RegistryText.h"
#include "text/Paths.h"
#include "text/Text.h"
#include "text/Tokens.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace sitekeeper {
namespace {

constexpr wchar_t Separator = L';';

/// Below the designer folder, each with a folder for every release. The first is the one that is looked for.
constexpr const wchar_t* DesignFolders[] = {L"\\common\\", L"\\electric\\", L"\\pid\\", L"\\isometric\\", L"\\ortho\\"};

std::wstring DesignFolder(const std::wstring& designerFolder, const wchar_t* name, const std::wstring& release)
{
    return designerFolder + name + release;
}

/// Whether one of the paths from `position` on is `folder`; nothing when the search cannot begin there. `position` is
/// moved to where it stopped.
std::optional<bool> Holds(std::wstring_view paths, const std::wstring& folder, std::ptrdiff_t& position)
{
    std::optional<std::wstring_view> path = NextToken(paths, Separator, position);
    while (path && !path->empty() && !EqualIgnoringCase(*path, folder)) {
        path = NextToken(paths, Separator, position);
    }
    return path ? std::optional(!path->empty()) : std::nullopt;
}

std::wstring WithDesignFolders(std::wstring paths, const std::wstring& designerFolder, const std::wstring& release)
{
    if (!paths.empty() && paths.back() != Separator) {
        paths += Separator;
    }
    for (const wchar_t* const name : DesignFolders) {
        paths += DesignFolder(designerFolder, name, release);
        paths += Separator;
    }
    return paths;
}

PlatformError CannotGoOn(const wchar_t* reason, const std::wstring& key, std::size_t productsBefore)
{
    return {
        ResultCode::InvalidArgument,
        Fill(L"The ORIVEL LX file paths could not be added to the trusted paths of all AutoCAD products: %s\n\n"
             L"The product of the registry key\nHKEY_LOCAL_MACHINE\\%s\nand those behind it were left as they were. "
             L"The products before it, %d in number, are done, and what was written for them stays.",
             {reason, key, std::to_wstring(productsBefore)})};
}

} // namespace

std::wstring ReadDesignerFolder(const Registry& registry)
{
    return ReadRegistryText(registry, Hive::LocalMachine, WithBackslash(SuiteKey) + L"Installation",
                            L"Application Path", KeyAccess::QueryValue) +
           L"\\Designer";
}

void ExtendTrustedPaths(Registry& registry, const std::wstring& designerFolder, const std::vector<std::wstring>& keys,
                        const std::vector<std::wstring>& releases)
{
    std::ptrdiff_t position = 0; // not set back for each product, deliberately
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const std::wstring& key = keys[index];
        if (index >= releases.size()) {
            throw CannotGoOn(L"the release of one is not known.", key, index);
        }
        const std::wstring& release = releases[index];
        const std::wstring paths = ReadRegistryText(registry, Hive::LocalMachine, key, L"", KeyAccess::QueryValue);
        const std::optional<bool> isHeld =
            Holds(paths, DesignFolder(designerFolder, DesignFolders[0], release), position);
        if (!isHeld) {
            throw CannotGoOn(L"the search in the product before came to its end, and the next cannot begin there.", key,
                             index);
        }
        if (!*isHeld) {
            WriteRegistryText(registry, Hive::LocalMachine, key, L"",
                              WithDesignFolders(paths, designerFolder, release));
        }
    }
}

void AddTrustedPaths(Registry& registry, std::vector<std::wstring>& keys, std::vector<std::wstring>& releases)
{
    const std::wstring designerFolder = ReadDesignerFolder(registry);
    FindAutoCADTrustedPathKeys(registry, keys, releases);
    ExtendTrustedPaths(registry, designerFolder, keys, releases);
}

} // namespace sitekeeper
