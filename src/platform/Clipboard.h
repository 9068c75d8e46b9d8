// Port: the text on the clipboard.
#pragma once

#include "platform/Port.h"
#include "platform/WindowId.h"

#include <optional>
#include <string>

namespace sitekeeper {

class Clipboard : public Port
{
public:
    /// Puts `text` there in place of everything else; `owner` is the window that does it. False when it could not be
    /// put; the clipboard is then as it was, or empty.
    virtual bool PutText(WindowId owner, const std::wstring& text) = 0;

    /// The text on the clipboard up to its first zero character; nothing when there is none or it cannot be had.
    [[nodiscard]] virtual std::optional<std::wstring> Text(WindowId owner) const = 0;
};

} // namespace sitekeeper
