#include "win32/Win32Registry.h"

#include "win32/Handles.h"

#include <windows.h>

#include <array>
#include <utility>

namespace sitekeeper {
namespace {

static_assert(static_cast<LSTATUS>(RegistryStatus::Success) == ERROR_SUCCESS &&
              static_cast<LSTATUS>(RegistryStatus::NotFound) == ERROR_FILE_NOT_FOUND &&
              static_cast<LSTATUS>(RegistryStatus::AccessDenied) == ERROR_ACCESS_DENIED &&
              static_cast<LSTATUS>(RegistryStatus::NoMoreItems) == ERROR_NO_MORE_ITEMS);

/// For values of at most 2048 bytes, the suite's limit.
constexpr std::size_t UsualRoom = 2049;

HKEY RootOf(Hive hive)
{
    return hive == Hive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

REGSAM RightsOf(KeyAccess access)
{
    return access == KeyAccess::QueryValue ? KEY_QUERY_VALUE : KEY_READ;
}

class Win32SubKeys final : public SubKeys
{
public:
    /// `longest` is the length of the longest name.
    Win32SubKeys(UniqueRegistryKey key, DWORD count, DWORD longest)
        : m_key(std::move(key)), m_count(count), m_room(longest + 1)
    {}

    [[nodiscard]] std::uint32_t Count() const override { return m_count; }

    [[nodiscard]] RegistryStatus ReadName(std::uint32_t index, std::wstring& name) const override
    {
        name.resize(m_room);
        DWORD length = m_room;
        const LSTATUS status =
            ::RegEnumKeyExW(m_key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        name.resize(status == ERROR_SUCCESS ? length : 0);
        return static_cast<RegistryStatus>(status);
    }

private:
    UniqueRegistryKey m_key;
    DWORD m_count;
    DWORD m_room;
};

} // namespace

std::optional<std::vector<std::byte>> Win32Registry::ReadValue(Hive hive, const std::wstring& key,
                                                               const std::wstring& name, KeyAccess access,
                                                               std::size_t limit) const
{
    UniqueRegistryKey opened;
    if (::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, RightsOf(access), opened.put()) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    // What the suite allows its texts is asked for thousands of times; memory of its own each time would cost more than
    // all else here.
    std::array<std::byte, UsualRoom> usual{};
    std::vector<std::byte> larger(limit < usual.size() ? 0 : limit + 1);
    std::byte* const room = larger.empty() ? usual.data() : larger.data(); // never none: the query would tell the size
    auto size = static_cast<DWORD>(limit);
    if (::RegQueryValueExW(opened.get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(room), &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return std::vector<std::byte>(room, room + size);
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

OpenedSubKeys Win32Registry::OpenSubKeys(Hive hive, const std::wstring& key) const
{
    UniqueRegistryKey opened;
    LSTATUS status =
        ::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS, opened.put());
    DWORD count = 0;
    DWORD longest = 0;
    if (status == ERROR_SUCCESS) {
        status = ::RegQueryInfoKeyW(opened.get(), nullptr, nullptr, nullptr, &count, &longest, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr);
    }
    if (status != ERROR_SUCCESS) {
        return {static_cast<RegistryStatus>(status), nullptr};
    }
    return {RegistryStatus::Success, std::make_unique<Win32SubKeys>(std::move(opened), count, longest)};
}

} // namespace sitekeeper
