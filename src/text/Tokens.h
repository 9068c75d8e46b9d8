// A list held in one text, taken apart piece by piece.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace sitekeeper {

/// The next token of `text` from the character `position` on: the separators there are skipped, the token reaches up to
/// the next separator or the text's end, and `position` becomes one past the token's end, whether or not a separator
/// stands there. No token is empty.
/// When no token is left, also behind the end of `text`, the result is empty and `position` becomes -1.
/// Nothing for a negative `position`: a search that came to its end cannot go on; `position` stays as it is.
[[nodiscard]] std::optional<std::wstring_view> NextToken(std::wstring_view text, wchar_t separator,
                                                         std::ptrdiff_t& position) noexcept;

} // namespace sitekeeper
