#include "support/MemoryRegistry.h"

#include "text/Text.h"
#include "text/Utf16.h"

#include <algorithm>
#include <array>

namespace sitekeeper {
namespace {

/// "A", "A\B", "A\B\C" of "A\B\C".
std::vector<std::wstring> KeysDownTo(const std::wstring& key)
{
    std::vector<std::wstring> keys;
    for (std::size_t end = key.find(L'\\'); end != std::wstring::npos; end = key.find(L'\\', end + 1)) {
        keys.push_back(key.substr(0, end));
    }
    keys.push_back(key);
    return keys;
}

std::wstring Hexadecimal(std::span<const std::byte> bytes)
{
    std::wstring digits;
    for (const std::byte byte : bytes) {
        const auto value = std::to_integer<unsigned>(byte);
        digits += {L' ', L"0123456789abcdef"[value >> 4U], L"0123456789abcdef"[value & 0xFU]};
    }
    return digits;
}

std::vector<std::byte> WithTerminator(std::vector<std::byte> text)
{
    text.resize(text.size() + 2);
    return text;
}

/// Texts in their usual form are shown as such; all else byte by byte, so that no difference is lost.
std::wstring Shown(const MemoryRegistry::Value& value)
{
    const std::wstring text = DecodeUtf16(value.bytes);
    if (value.type == ValueType::Text && WithTerminator(EncodeUtf16(text)) == value.bytes) {
        return L"\"" + text + L"\"";
    }
    return L"type " + std::to_wstring(static_cast<std::uint32_t>(value.type)) + L":" + Hexadecimal(value.bytes);
}

class MemorySubKeys final : public SubKeys
{
public:
    explicit MemorySubKeys(std::vector<std::wstring> names) : m_names(std::move(names)) {}

    [[nodiscard]] std::uint32_t Count() const override { return static_cast<std::uint32_t>(m_names.size()); }
    [[nodiscard]] RegistryStatus ReadName(std::uint32_t index, std::wstring& name) const override
    {
        name = index < m_names.size() ? m_names[index] : std::wstring();
        return index < m_names.size() ? RegistryStatus::Success : RegistryStatus::NoMoreItems;
    }

private:
    std::vector<std::wstring> m_names;
};

} // namespace

std::optional<std::vector<std::byte>> MemoryRegistry::ReadValue(Hive hive, const std::wstring& key,
                                                                const std::wstring& name, KeyAccess access,
                                                                std::size_t limit) const
{
    const KeyId id{hive, ToLowerCase(key)};
    if (m_refusedReading.contains({id, KeyAccess::QueryValue}) || m_refusedReading.contains({id, access})) {
        return std::nullopt;
    }
    const std::optional<Value> value = Find(hive, key, name);
    if (!value || value->bytes.size() > limit) {
        return std::nullopt;
    }
    return value->bytes;
}

bool MemoryRegistry::WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                                std::span<const std::byte> bytes)
{
    if (IsWritingRefused(hive, L"")) {
        return false;
    }
    std::wstring above;
    for (const std::wstring& reached : KeysDownTo(key)) {
        const bool isMissing = !HasKey(hive, reached);
        if (isMissing && (IsWritingRefused(hive, reached) || IsWritingRefused(hive, above))) {
            return false;
        }
        MakeKey(hive, reached);
        above = reached;
    }
    if (IsWritingRefused(hive, key)) {
        return false;
    }
    SetBytes(hive, key, name, type, bytes);
    return true;
}

OpenedSubKeys MemoryRegistry::OpenSubKeys(Hive hive, const std::wstring& key) const
{
    const KeyId id{hive, ToLowerCase(key)};
    if (m_refusedReading.contains({id, KeyAccess::QueryValue}) || m_refusedReading.contains({id, KeyAccess::Read})) {
        return {RegistryStatus::AccessDenied, nullptr};
    }
    if (!HasKey(hive, key)) {
        return {RegistryStatus::NotFound, nullptr};
    }
    std::vector<std::wstring> names = NamesBelow(hive, key);
    if (const auto order = m_orders.find(id);
        order != m_orders.end() && std::is_permutation(names.begin(), names.end(), order->second.begin(),
                                                       order->second.end(), EqualIgnoringCase)) {
        names = order->second;
    }
    return {RegistryStatus::Success, std::make_unique<MemorySubKeys>(std::move(names))};
}

void MemoryRegistry::SetText(Hive hive, const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    SetBytes(hive, key, name, ValueType::Text, WithTerminator(EncodeUtf16(text)));
}

void MemoryRegistry::SetNumber(Hive hive, const std::wstring& key, const std::wstring& name, std::uint32_t number)
{
    const std::array bytes{
        static_cast<std::byte>(number & 0xFFU),
        static_cast<std::byte>((number >> 8U) & 0xFFU),
        static_cast<std::byte>((number >> 16U) & 0xFFU),
        static_cast<std::byte>(number >> 24U),
    };
    SetBytes(hive, key, name, ValueType::Number, bytes);
}

void MemoryRegistry::SetBytes(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                              std::span<const std::byte> bytes)
{
    AddKey(hive, key);
    std::map<std::wstring, Value>& values = MakeKey(hive, key).values;
    const auto [place, isNew] = values.try_emplace(ToLowerCase(name), Value{name, type, {}});
    place->second.type = type; // a name keeps the case in which it was first written
    place->second.bytes.assign(bytes.begin(), bytes.end());
}

void MemoryRegistry::RemoveValue(Hive hive, const std::wstring& key, const std::wstring& name)
{
    if (const auto found = m_keys.find({hive, ToLowerCase(key)}); found != m_keys.end()) {
        found->second.values.erase(ToLowerCase(name));
    }
}

void MemoryRegistry::AddKey(Hive hive, const std::wstring& key)
{
    for (const std::wstring& reached : KeysDownTo(key)) {
        MakeKey(hive, reached);
    }
}

void MemoryRegistry::SetOrder(Hive hive, const std::wstring& key, std::vector<std::wstring> names)
{
    m_orders[{hive, ToLowerCase(key)}] = std::move(names);
}

bool MemoryRegistry::HasKey(Hive hive, const std::wstring& key) const
{
    return key.empty() || FindKey(hive, key) != nullptr;
}

std::optional<MemoryRegistry::Value> MemoryRegistry::Find(Hive hive, const std::wstring& key,
                                                          const std::wstring& name) const
{
    const Key* const found = FindKey(hive, key);
    if (found == nullptr) {
        return std::nullopt;
    }
    const auto value = found->values.find(ToLowerCase(name));
    return value == found->values.end() ? std::nullopt : std::optional(value->second);
}

void MemoryRegistry::RefuseReading(Hive hive, const std::wstring& key, KeyAccess access)
{
    m_refusedReading.insert({{hive, ToLowerCase(key)}, access});
}

void MemoryRegistry::RefuseWriting(Hive hive, const std::wstring& key)
{
    m_refusedWriting.insert({hive, ToLowerCase(key)});
}

std::vector<std::wstring> MemoryRegistry::Listing() const
{
    std::vector<std::wstring> lines;
    for (const auto& [id, key] : m_keys) {
        const std::wstring path = PathText(id.first, key.path);
        lines.push_back(path);
        for (const auto& [folded, value] : key.values) {
            lines.push_back(path + L" : " + value.name + L" = " + Shown(value));
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::wstring MemoryRegistry::PathText(Hive hive, const std::wstring& key)
{
    return (hive == Hive::LocalMachine ? L"HKLM\\" : L"HKCU\\") + key;
}

const MemoryRegistry::Key* MemoryRegistry::FindKey(Hive hive, const std::wstring& key) const
{
    const auto found = m_keys.find({hive, ToLowerCase(key)});
    return found == m_keys.end() ? nullptr : &found->second;
}

std::vector<std::wstring> MemoryRegistry::NamesBelow(Hive hive, const std::wstring& key) const
{
    const std::wstring above = key.empty() ? key : ToLowerCase(key) + L"\\";
    std::vector<std::wstring> names;
    for (auto found = m_keys.lower_bound({hive, above});
         found != m_keys.end() && found->first.first == hive && found->first.second.starts_with(above); ++found) {
        if (found->first.second.find(L'\\', above.size()) == std::wstring::npos) {
            names.push_back(found->second.path.substr(above.size()));
        }
    }
    return names;
}

bool MemoryRegistry::IsWritingRefused(Hive hive, const std::wstring& key) const
{
    return m_refusedWriting.contains({hive, ToLowerCase(key)});
}

MemoryRegistry::Key& MemoryRegistry::MakeKey(Hive hive, const std::wstring& key)
{
    return m_keys.try_emplace({hive, ToLowerCase(key)}, Key{key, {}}).first->second;
}

} // namespace sitekeeper
