// Text values of the registry, read and written the one way the whole program does it.
#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <optional>
#include <string>

namespace sitekeeper {

/// The room for a text value, in bytes: 1024 wide characters. A rule of the suite: longer values count as unreadable.
inline constexpr std::size_t TextValueLimit = 2048;

/// The text of a value, whatever its type says, up to its first zero character. Empty when the value cannot be read
/// or is longer than TextValueLimit bytes, its terminator counted where it has one.
[[nodiscard]] std::wstring ReadRegistryText(const Registry& registry, Hive hive, const std::wstring& key,
                                            const std::wstring& name, KeyAccess access);

/// The same, but nothing when the value cannot be read, for callers to whom an empty text means something.
[[nodiscard]] std::optional<std::wstring> FindRegistryText(const Registry& registry, Hive hive, const std::wstring& key,
                                                           const std::wstring& name, KeyAccess access);

/// Stores `text` as a text value with its terminating zero: an empty text takes two bytes. Creates the key where it
/// is missing. False when it could not be stored.
bool WriteRegistryText(Registry& registry, Hive hive, const std::wstring& key, const std::wstring& name,
                       const std::wstring& text);

} // namespace sitekeeper
