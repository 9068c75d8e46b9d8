#include "win32/Win32VersionResources.h"

#include <windows.h>

namespace sitekeeper {

std::vector<std::byte> Win32VersionResources::ReadVersionBlock(const std::wstring& path) const
{
    const auto askSize = m_library.Entry<decltype(&::GetFileVersionInfoSizeW)>("GetFileVersionInfoSizeW");
    const auto read = m_library.Entry<decltype(&::GetFileVersionInfoW)>("GetFileVersionInfoW");
    if (askSize == nullptr || read == nullptr) {
        return {};
    }
    DWORD ignored = 0;
    std::vector<std::byte> block(askSize(path.c_str(), &ignored));
    if (block.empty() || read(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) == FALSE) {
        return {};
    }
    return block;
}

} // namespace sitekeeper
