#include "text/Tokens.h"

#include <algorithm>

namespace sitekeeper {

std::optional<std::wstring_view> NextToken(std::wstring_view text, wchar_t separator, std::ptrdiff_t& position) noexcept
{
    if (position < 0) {
        return std::nullopt;
    }
    const std::size_t begin = text.find_first_not_of(separator, static_cast<std::size_t>(position));
    if (begin == std::wstring_view::npos) {
        position = -1;
        return std::wstring_view();
    }
    const std::size_t end = std::min(text.find(separator, begin), text.size());
    position = static_cast<std::ptrdiff_t>(end) + 1;
    return text.substr(begin, end - begin);
}

} // namespace sitekeeper
