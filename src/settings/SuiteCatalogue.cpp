#include "settings/SuiteCatalogue.h"

#include <array>
#include <cstddef>

namespace sitekeeper {
namespace {

/// By number. Other programs of the suite use these very texts, as section names and as folder names.
constexpr std::array Names = {
    L"",                // 0
    L"ELECTRIC",        // 1, drawing module
    L"PID",             // 2, drawing module
    L"ISOMETRIC",       // 3, drawing module
    L"ORTHO",           // 4, drawing module
    L"Ledger Composer", // 5
    L"",                // 6, reserved
    L"SiteKeeper",      // 7, this program
    L"SheetWriter",     // 8
    L"Norm Keeper",     // 9
    L"Record Desk",     // 10, the data-file editor
    L"AutoCAD",         // 11, the host program
};

std::wstring DesignerFolder(const InstallationSettings& settings)
{
    const std::wstring application = settings.ReadNetworkAppPath();
    return application.empty() ? application : application + L"Designer\\";
}

std::wstring SubFolder(const std::wstring& name)
{
    return name.empty() ? name : name + L"\\";
}

} // namespace

std::wstring ToolName(int number)
{
    return number >= 0 && static_cast<std::size_t>(number) < Names.size() ? Names[static_cast<std::size_t>(number)]
                                                                          : L"";
}

std::wstring ToolDesignerFolder(const InstallationSettings& settings, int number, const std::wstring& subFolder)
{
    std::wstring designer = DesignerFolder(settings);
    if (designer.empty() || number == 0) {
        return designer;
    }
    return designer + ToolName(number) + L"\\" + SubFolder(subFolder);
}

std::wstring CommonDesignerFolder(const InstallationSettings& settings, const std::wstring& subFolder)
{
    const std::wstring designer = DesignerFolder(settings);
    return designer.empty() ? designer : designer + L"Common\\" + SubFolder(subFolder);
}

} // namespace sitekeeper
