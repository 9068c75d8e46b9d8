// Port: the Windows registry, one value at a time. Nothing is cached; every operation opens its key and closes it, but
// for the walk over a key's sub-keys.
#pragma once

#include "platform/Port.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sitekeeper {

enum class Hive
{
    LocalMachine,
    CurrentUser
};

/// Value types, numbered as in winnt.h (REG_SZ, REG_DWORD).
enum class ValueType : std::uint32_t
{
    Text = 1,
    Number = 4
};

/// How much of a key is asked for; a key may grant one and refuse the other.
enum class KeyAccess
{
    /// KEY_QUERY_VALUE: the values only.
    QueryValue,
    /// KEY_READ: values, sub-keys and notifications.
    Read,
};

/// How a step of a walk over sub-keys ended. Values from winerror.h; others come as they are.
enum class RegistryStatus : std::uint32_t
{
    /// ERROR_SUCCESS
    Success = 0,
    /// ERROR_FILE_NOT_FOUND: there is no such key.
    NotFound = 2,
    /// ERROR_ACCESS_DENIED
    AccessDenied = 5,
    /// ERROR_NO_MORE_ITEMS: the index is behind the last sub-key.
    NoMoreItems = 259,
};

/// The sub-keys of a key that is open for enumerating. Its end closes the key.
class SubKeys : public Port
{
public:
    /// How many there were when the key was opened.
    [[nodiscard]] virtual std::uint32_t Count() const = 0;

    /// Puts the name of the sub-key at `index`, from 0, into `name`: of any length, and in the case in which the key
    /// was made. The order is the system's and stays the same while no sub-key is made or removed. Otherwise gives the
    /// reason, and `name` is empty.
    [[nodiscard]] virtual RegistryStatus ReadName(std::uint32_t index, std::wstring& name) const = 0;
};

/// What opening a key for enumerating gives.
struct OpenedSubKeys
{
    RegistryStatus status = RegistryStatus::NotFound;
    /// Null unless `status` is Success.
    std::unique_ptr<SubKeys> keys;
};

class Registry : public Port
{
public:
    /// The bytes of one value, whatever its type, when they are at most `limit` bytes.
    /// `key` is a path below the hive without a leading "\"; key and value names are compared without regard to case.
    /// Nothing when the key cannot be opened with `access`, the value is missing, or it is longer than `limit`.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                          const std::wstring& name, KeyAccess access,
                                                                          std::size_t limit) const = 0;

    /// Stores `bytes` under `name` with `type`, replacing an older value of any type, and creates the key and the keys
    /// above it where missing (non-volatile). The hive's root must grant KEY_WRITE. Bytes of the type Text end with a
    /// terminating zero unit.
    /// False when a step failed; then the value is as it was, though keys may have been created.
    virtual bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                            std::span<const std::byte> bytes) = 0;

    /// Opens a key for enumerating, with KEY_QUERY_VALUE and KEY_ENUMERATE_SUB_KEYS, and asks it how many sub-keys it
    /// has. When a step fails, its status and no keys.
    [[nodiscard]] virtual OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const = 0;
};

} // namespace sitekeeper
