// UTF-8 as the narrow code page, for everything that runs without Windows.
#pragma once

#include "platform/CodePage.h"

namespace sitekeeper {

/// Each byte that belongs to no character decodes as U+FFFD. A lone half of a pair has no bytes, nor has a number
/// behind U+10FFFF.
class Utf8CodePage final : public CodePage
{
public:
    void Decode(std::string_view bytes, std::wstring& text) const override;
    [[nodiscard]] bool Encode(std::wstring_view text, std::string& bytes) const override;
};

} // namespace sitekeeper
