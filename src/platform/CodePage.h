// Port: the system's narrow code page, in which the suite's text files are kept.
#pragma once

#include "platform/Port.h"

#include <string>
#include <string_view>

namespace sitekeeper {

/// Every code page that a system can have keeps the characters below 128 at their ASCII numbers, and no byte of a
/// longer character is below 48. Readers rely on it for line ends and plain text.
class CodePage : public Port
{
public:
    /// Appends the characters of `bytes` to `text`. Never fails: what the code page cannot decode comes as its
    /// replacement character.
    virtual void Decode(std::string_view bytes, std::wstring& text) const = 0;

    /// Appends the bytes of `text` to `bytes`. False when a character has none in the code page; nothing similar is
    /// taken for it, and `bytes` is then as it was.
    [[nodiscard]] virtual bool Encode(std::wstring_view text, std::string& bytes) const = 0;
};

} // namespace sitekeeper
