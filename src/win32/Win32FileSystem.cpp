#include "win32/Win32FileSystem.h"

#include <windows.h>

#include <array>

namespace sitekeeper {

bool Win32FileSystem::Exists(const std::wstring& path) const
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::wstring> Win32FileSystem::FullPath(const std::wstring& path) const
{
    std::array<wchar_t, MAX_PATH> buffer{};
    const DWORD length = ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    // For a buffer that is too small the call gives the room it needs, terminator included.
    if (length == 0 || length >= buffer.size()) {
        return std::nullopt;
    }
    return std::wstring(buffer.data(), length);
}

bool Win32FileSystem::MakeFolder(const std::wstring& path)
{
    return ::CreateDirectoryW(path.c_str(), nullptr) != FALSE;
}

} // namespace sitekeeper
