#include "maindlg/AboutText.h"

#include "maindlg/VersionStrings.h"
#include "settings/Product.h"
#include "settings/RegistryText.h"
#include "text/Paths.h"
#include "text/Text.h"

#include <cstddef>

namespace sitekeeper {

std::wstring BuildAboutText(const VersionResources& resources, const Registry& registry,
                            const std::wstring& programFile)
{
    const std::size_t dot = ExtensionStart(programFile);
    VersionStrings strings;
    ReadVersionStrings(resources, strings, programFile.substr(0, dot), programFile.substr(dot));
    const std::wstring& version = strings[VersionString::ProductVersion];
    const std::wstring update =
        ReadRegistryText(registry, Hive::LocalMachine, SuiteKey, L"ProductUpdate", KeyAccess::QueryValue);
    return Fill(L"%s Version %s\n\nORIVEL LX Version %s%s\n\n%s",
                {strings[VersionString::FileDescription], strings[VersionString::FileVersion],
                 version.empty() ? L"2023" : version, update.empty() ? L"" : L"    Update " + update,
                 strings[VersionString::LegalCopyright]});
}

} // namespace sitekeeper
