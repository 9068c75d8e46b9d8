// How the file system in memory reads a path: as Windows does, by text alone.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sitekeeper {

/// `path` in full: from the root on, given the current folder, with "." and ".." carried out and "/" read as "\". One
/// "\" at the end stays. Empty for an empty path.
[[nodiscard]] std::wstring ResolvePath(const std::wstring& path, const std::wstring& currentFolder);

/// How much of a full path is its root, without a "\" behind it: "C:", or "\\server\share".
[[nodiscard]] std::size_t RootLength(std::wstring_view path);

/// Whether `name` is what `pattern` means, with "*" and "?"; both in lower case.
[[nodiscard]] bool MatchesPattern(std::wstring_view name, std::wstring_view pattern);

} // namespace sitekeeper
