// The real registry. The 64-bit program sees the 64-bit view.
#pragma once

#include "platform/Registry.h"

namespace sitekeeper {

class Win32Registry final : public Registry
{
public:
    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                  const std::wstring& name, KeyAccess access,
                                                                  std::size_t limit) const override;
    bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                    std::span<const std::byte> bytes) override;
    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const override;
};

} // namespace sitekeeper
