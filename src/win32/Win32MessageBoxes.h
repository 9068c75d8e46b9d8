// The system's message boxes.
#pragma once

#include "platform/MessageBoxes.h"

namespace sitekeeper {

class Win32MessageBoxes final : public MessageBoxes
{
public:
    Answer Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                MessageStyle style) override;
};

} // namespace sitekeeper
