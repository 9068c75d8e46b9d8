#include "settings/RegistryText.h"

#include "text/Utf16.h"

namespace sitekeeper {

std::wstring ReadRegistryText(const Registry& registry, Hive hive, const std::wstring& key, const std::wstring& name,
                              KeyAccess access)
{
    return FindRegistryText(registry, hive, key, name, access).value_or(std::wstring());
}

std::optional<std::wstring> FindRegistryText(const Registry& registry, Hive hive, const std::wstring& key,
                                             const std::wstring& name, KeyAccess access)
{
    const auto bytes = registry.ReadValue(hive, key, name, access, TextValueLimit);
    return bytes ? std::optional(DecodeUtf16(*bytes)) : std::nullopt;
}

bool WriteRegistryText(Registry& registry, Hive hive, const std::wstring& key, const std::wstring& name,
                       const std::wstring& text)
{
    auto bytes = EncodeUtf16(text);
    bytes.resize(bytes.size() + 2);
    return registry.WriteValue(hive, key, name, ValueType::Text, bytes);
}

} // namespace sitekeeper
