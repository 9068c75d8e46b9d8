#include "win32/Win32Registry.h"

#include "frame/Handles.h"

#include <windows.h>

namespace sitekeeper {
namespace {

HKEY RootOf(Hive hive)
{
    return hive == Hive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

REGSAM RightsOf(KeyAccess access)
{
    return access == KeyAccess::QueryValue ? KEY_QUERY_VALUE : KEY_READ;
}

} // namespace

std::optional<std::vector<std::byte>> Win32Registry::ReadValue(Hive hive, const std::wstring& key,
                                                               const std::wstring& name, KeyAccess access,
                                                               std::size_t limit) const
{
    UniqueRegistryKey opened;
    if (::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, RightsOf(access), opened.put()) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::vector<std::byte> bytes(limit + 1); // without room at all the query would tell the size and succeed
    auto size = static_cast<DWORD>(limit);
    if (::RegQueryValueExW(opened.get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()),
                           &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

bool Win32Registry::WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                               std::span<const std::byte> bytes)
{
    UniqueRegistryKey root;
    if (::RegOpenKeyExW(RootOf(hive), L"", 0, KEY_WRITE, root.put()) != ERROR_SUCCESS) {
        return false;
    }
    UniqueRegistryKey opened;
    const LSTATUS created = ::RegCreateKeyExW(root.get(), key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                              nullptr, opened.put(), nullptr);
    root.reset();
    return created == ERROR_SUCCESS && ::RegSetValueExW(opened.get(), name.c_str(), 0, static_cast<DWORD>(type),
                                                        reinterpret_cast<const BYTE*>(bytes.data()),
                                                        static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
}

} // namespace sitekeeper
