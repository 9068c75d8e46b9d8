// Port: the Windows registry, one value at a time. Nothing is cached; every operation opens its key and closes it.
#pragma once

#include "platform/Port.h"

#include <cstddef>
#include <cstdint>
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
};

} // namespace sitekeeper
