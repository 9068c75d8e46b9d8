// AutoCAD products in a registry in memory, as the tests of the trusted paths begin with them.
#pragma once

#include "support/MemoryRegistry.h"

#include <string>

namespace sitekeeper {

inline constexpr const wchar_t* AutoCADTree = L"Software\\Autodesk\\AutoCAD";
inline constexpr const wchar_t* InstallationKey = L"Software\\ORIVEL\\LX Plus\\2023\\Installation";

inline std::wstring ProductKey(const std::wstring& release, const std::wstring& product)
{
    return std::wstring(AutoCADTree) + L"\\" + release + L"\\" + product;
}

/// The key that holds the product's trusted paths, as its unnamed value.
inline std::wstring PathsKey(const std::wstring& release, const std::wstring& product)
{
    return ProductKey(release, product) + L"\\Variables\\TRUSTEDPATHS";
}

inline void AddProduct(MemoryRegistry& registry, const std::wstring& release, const std::wstring& product,
                       const std::wstring& paths)
{
    registry.SetText(Hive::LocalMachine, PathsKey(release, product), L"", paths);
}

/// The five folders of the suite below `application`, for the release that begins with `prefix`, as they are appended.
inline std::wstring FiveFolders(const std::wstring& application, const std::wstring& prefix)
{
    std::wstring text;
    for (const wchar_t* const name : {L"common", L"electric", L"pid", L"isometric", L"ortho"}) {
        text += application + L"\\Designer\\" + name + L"\\" + prefix + L";";
    }
    return text;
}

} // namespace sitekeeper
