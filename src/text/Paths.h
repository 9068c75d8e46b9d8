// Rules for Windows paths held as text. Paths are joined by plain concatenation throughout the program; doubled
// backslashes are tolerated and never tidied up.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sitekeeper {

/// `path` with one "\" added unless it already ends in one. An empty path becomes "\"; callers for whom an empty
/// path means "unknown" test for it first.
[[nodiscard]] std::wstring WithBackslash(std::wstring_view path);

/// `path` up to and including its last "\"; empty when it has none.
[[nodiscard]] std::wstring GetFolderOfPath(std::wstring_view path);

/// What follows the last "\" of `path`; all of it when it has none.
[[nodiscard]] std::wstring GetNameOfPath(std::wstring_view path);

/// Where the extension of `path` begins, at its last "."; its length when the name has none.
[[nodiscard]] std::size_t ExtensionStart(std::wstring_view path);

/// `path` without the "\" characters at its end.
[[nodiscard]] std::wstring WithoutTrailingBackslashes(std::wstring_view path);

} // namespace sitekeeper
