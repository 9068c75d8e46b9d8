// The registry of the machine the tests run on, value by value, as raw as it is stored.
#pragma once

#include "win32/Handles.h"

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper::e2e {

enum class Hive
{
    Machine,
    User
};

struct RegistryValue
{
    DWORD type = REG_NONE;
    std::vector<std::byte> bytes;
};

/// A REG_SZ with its terminator.
[[nodiscard]] RegistryValue TextValue(const std::wstring& text);

/// A REG_DWORD.
[[nodiscard]] RegistryValue NumberValue(DWORD number);

/// Type, byte count and content, as the reports of differences show them: REG_SZ, 6 bytes, "C:".
[[nodiscard]] std::wstring Describe(const RegistryValue& value);

[[nodiscard]] std::optional<RegistryValue> ReadValue(Hive hive, const std::wstring& key, const std::wstring& name);

/// Makes the key where it is missing. Throws when the system refuses.
void WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, const RegistryValue& value);

/// Nothing happens when there is no such value or key.
void RemoveValue(Hive hive, const std::wstring& key, const std::wstring& name);
void RemoveKey(Hive hive, const std::wstring& key);
/// Nor when it has keys below it.
void RemoveEmptyKey(Hive hive, const std::wstring& key);

/// Calls `visit` with the full name, as HKLM\key\name, of every value below a key.
using ValueVisitor = std::function<void(const std::wstring& fullName, const RegistryValue& value)>;
void VisitValues(Hive hive, const std::wstring& key, const ValueVisitor& visit);

/// A key that nobody may open, until the end of this object; its own handle stays open. The key must be there, and its
/// owner able to give rights back.
class LockedKey
{
public:
    /// Throws when the system refuses, or opens it for us all the same.
    LockedKey(Hive hive, const std::wstring& key);
    LockedKey(const LockedKey&) = delete;
    LockedKey& operator=(const LockedKey&) = delete;
    ~LockedKey();

private:
    UniqueRegistryKey m_key;
    std::vector<std::byte> m_rights; // as they were
};

/// HKLM\key\name or HKCU\key\name.
[[nodiscard]] std::wstring FullValueName(Hive hive, const std::wstring& key, const std::wstring& name);

} // namespace sitekeeper::e2e
