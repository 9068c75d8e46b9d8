// Port: pages of the web.
#pragma once

#include "platform/Port.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace sitekeeper {

class WebSession : public Port
{
public:
    /// Takes one piece of a page; false to hear no more.
    using TakePiece = std::function<bool(std::string_view)>;

    /// Reads the page at `address` with the system's own settings for proxies and hands its bytes on in pieces of
    /// `pieceSize`, the last one shorter. Every server's answer counts as a page, also one that says that there is
    /// none. Ends at the page's end, at the first error, or when `take` wants no more; which of them is not told.
    /// Nothing is handed on when the page cannot be opened. May take as long as the system's own time limits.
    virtual void ReadPage(const std::wstring& address, std::size_t pieceSize, const TakePiece& take) = 0;
};

} // namespace sitekeeper
