// The text of a web page, collected piece by piece.
#pragma once

#include "platform/CodePage.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace sitekeeper {

/// Pages are plain ASCII nearly always, and as long as one is, its bytes are kept as they came: collecting and
/// searching it then costs little more than copying it. From the first other character on it is wide text.
class PageText
{
public:
    PageText() = default;
    explicit PageText(std::wstring text) : m_isPlain(false), m_text(std::move(text)) {}

    /// Appends one piece, converted by itself; a zero byte ends it. Takes time in proportion to the piece, taken over
    /// all pieces.
    void Append(std::string_view piece, const CodePage& codePage);

    /// What stands between the first `key` (in any case) and the first `end` behind it; nothing without either. `key`
    /// has characters below 128 only, and `caseless`, a part of it that is not empty, has no letters.
    [[nodiscard]] std::optional<std::wstring> Between(std::wstring_view key, std::wstring_view caseless,
                                                      wchar_t end) const;

    /// The whole text.
    [[nodiscard]] std::wstring Text() const;

private:
    bool m_isPlain = true;
    std::string m_plain; // all there is, or nothing
    std::wstring m_text; // nothing, or all there is
};

} // namespace sitekeeper
