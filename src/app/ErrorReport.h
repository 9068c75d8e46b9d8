// The one reporter: what the administrator is told of an error that a piece of the program raised.
#pragma once

#include "platform/MessageBoxes.h"

#include <exception>
#include <string>

namespace sitekeeper {

/// The sentence for an error: a PlatformError's own, with its code behind it; for std::bad_alloc that there is not
/// enough memory; for anything else that it was unexpected.
[[nodiscard]] std::wstring DescribeError(const std::exception_ptr& error);

/// Tells the administrator of `error` in one message with the product's title. Called outside any window message, so
/// that the message box's own loop disturbs nothing half done. Where there is no memory for the message either, it is
/// not shown, and no further error comes of it.
void ReportError(MessageBoxes& messages, WindowId owner, const std::exception_ptr& error);

} // namespace sitekeeper
