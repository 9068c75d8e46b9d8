// The real version resources.
#pragma once

#include "platform/VersionResources.h"
#include "win32/SystemLibrary.h"

namespace sitekeeper {

class Win32VersionResources final : public VersionResources
{
public:
    [[nodiscard]] std::vector<std::byte> ReadVersionBlock(const std::wstring& path) const override;

private:
    SystemLibrary m_library{L"version.dll"};
};

} // namespace sitekeeper
