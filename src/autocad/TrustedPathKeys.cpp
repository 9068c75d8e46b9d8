#include "autocad/TrustedPathKeys.h"

#include "settings/RegistryText.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace sitekeeper {
namespace {

constexpr const wchar_t* AutoCADKey = L"Software\\Autodesk\\AutoCAD";
constexpr const wchar_t* TrustedPathsKey = L"\\Variables\\TRUSTEDPATHS";

constexpr std::size_t PrefixLength = 3;
constexpr std::wstring_view AcceptedReleases[] = {L"R20", L"R21", L"R22", L"R23", L"R24"};

/// What a product without the setting is taken to say; one that really says so is treated alike, deliberately.
constexpr const wchar_t* NoSetting = L"DEFAULT";

bool IsAccepted(const std::wstring& release)
{
    const std::wstring_view prefix = std::wstring_view(release).substr(0, PrefixLength);
    return std::find(std::begin(AcceptedReleases), std::end(AcceptedReleases), prefix) != std::end(AcceptedReleases);
}

} // namespace

RegistryStatus EnumRegistrySubKeys(const Registry& registry, const std::wstring& key, std::vector<std::wstring>& names)
{
    names.clear();
    const OpenedSubKeys opened = registry.OpenSubKeys(Hive::LocalMachine, key);
    RegistryStatus status = opened.status;
    const std::uint32_t count = opened.keys ? opened.keys->Count() : 0;
    std::wstring name;
    for (std::uint32_t index = 0; index < count; ++index) {
        status = opened.keys->ReadName(index, name);
        if (status == RegistryStatus::Success) {
            names.push_back(name);
        }
    }
    return status;
}

void FindAutoCADTrustedPathKeys(const Registry& registry, std::vector<std::wstring>& keys,
                                std::vector<std::wstring>& releases)
{
    keys.clear();
    releases.clear();
    const std::wstring root = AutoCADKey;
    std::vector<std::wstring> names;
    EnumRegistrySubKeys(registry, root, names);
    std::vector<std::wstring> accepted;
    std::copy_if(names.begin(), names.end(), std::back_inserter(accepted), IsAccepted);

    // Entries of the two belong together: without memory for all of them there are none.
    std::vector<std::wstring> foundKeys;
    std::vector<std::wstring> foundReleases;
    std::wstring releaseKey;
    std::wstring key;
    for (const std::wstring& release : accepted) {
        releaseKey.assign(root).append(L"\\").append(release);
        EnumRegistrySubKeys(registry, releaseKey, names);
        for (const std::wstring& product : names) {
            key.assign(releaseKey).append(L"\\").append(product).append(TrustedPathsKey);
            const std::wstring paths =
                FindRegistryText(registry, Hive::LocalMachine, key, L"", KeyAccess::QueryValue).value_or(NoSetting);
            if (paths != NoSetting) {
                foundKeys.push_back(key);
                foundReleases.push_back(release.substr(0, PrefixLength));
            }
        }
    }
    keys = std::move(foundKeys);
    releases = std::move(foundReleases);
}

} // namespace sitekeeper
