// The clipboard.
#pragma once

#include "platform/Clipboard.h"

namespace sitekeeper {

class Win32Clipboard final : public Clipboard
{
public:
    bool PutText(WindowId owner, const std::wstring& text) override;
    [[nodiscard]] std::optional<std::wstring> Text(WindowId owner) const override;
};

} // namespace sitekeeper
