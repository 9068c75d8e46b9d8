// A registry in memory, for tests: keys and values as the port's contract describes them, plus what only a test can do,
// such as planting odd bytes, refusing access and listing everything.
#pragma once

#include "platform/Registry.h"

#include <map>
#include <set>
#include <utility>

namespace sitekeeper {

class MemoryRegistry final : public Registry
{
public:
    struct Value
    {
        std::wstring name;
        ValueType type = ValueType::Text;
        std::vector<std::byte> bytes;

        bool operator==(const Value&) const = default;
    };

    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                  const std::wstring& name, KeyAccess access,
                                                                  std::size_t limit) const override;
    bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                    std::span<const std::byte> bytes) override;
    /// The names sorted without regard to case, unless a test has set another order. What a walk sees does not change
    /// while it goes on.
    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const override;

    /// Plant a value, whatever access is refused. SetText stores the terminating zero too.
    void SetText(Hive hive, const std::wstring& key, const std::wstring& name, const std::wstring& text);
    void SetNumber(Hive hive, const std::wstring& key, const std::wstring& name, std::uint32_t number);
    void SetBytes(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                  std::span<const std::byte> bytes);
    void RemoveValue(Hive hive, const std::wstring& key, const std::wstring& name);
    /// Makes a key without values, and those above it.
    void AddKey(Hive hive, const std::wstring& key);

    /// From now on the sub-keys of `key` are enumerated in this order, as long as `names` are those that it has.
    void SetOrder(Hive hive, const std::wstring& key, std::vector<std::wstring> names);

    [[nodiscard]] bool HasKey(Hive hive, const std::wstring& key) const;
    [[nodiscard]] std::optional<Value> Find(Hive hive, const std::wstring& key, const std::wstring& name) const;

    /// From now on the key cannot be opened with `access`; without QueryValue it grants no Read either, and without
    /// either of them no enumerating.
    void RefuseReading(Hive hive, const std::wstring& key, KeyAccess access);
    /// From now on nothing can be written into the key, and it cannot be made where it is missing. The empty path is
    /// the hive's root.
    void RefuseWriting(Hive hive, const std::wstring& key);

    /// One line for each key and each value, sorted, for comparing before and after.
    [[nodiscard]] std::vector<std::wstring> Listing() const;

    /// "HKLM\key" or "HKCU\key", as Listing and the log of calls write it.
    [[nodiscard]] static std::wstring PathText(Hive hive, const std::wstring& key);

private:
    struct Key
    {
        std::wstring path;
        std::map<std::wstring, Value> values; // by name in lower case
    };
    using KeyId = std::pair<Hive, std::wstring>; // path in lower case

    [[nodiscard]] const Key* FindKey(Hive hive, const std::wstring& key) const;
    [[nodiscard]] std::vector<std::wstring> NamesBelow(Hive hive, const std::wstring& key) const;
    [[nodiscard]] bool IsWritingRefused(Hive hive, const std::wstring& key) const;
    Key& MakeKey(Hive hive, const std::wstring& key);

    std::map<KeyId, Key> m_keys;
    std::set<std::pair<KeyId, KeyAccess>> m_refusedReading;
    std::set<KeyId> m_refusedWriting;
    std::map<KeyId, std::vector<std::wstring>> m_orders;
};

} // namespace sitekeeper
