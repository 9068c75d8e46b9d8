// The system's narrow code page.
#pragma once

#include "platform/CodePage.h"

namespace sitekeeper {

class Win32CodePage final : public CodePage
{
public:
    void Decode(std::string_view bytes, std::wstring& text) const override;
    [[nodiscard]] bool Encode(std::wstring_view text, std::string& bytes) const override;
};

} // namespace sitekeeper
