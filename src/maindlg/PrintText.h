// Text on paper.
#pragma once

#include "platform/Printer.h"

#include <string>
#include <string_view>

namespace sitekeeper {

/// Asks for a printer, with `owner` disabled meanwhile, and prints `text` as the document `name` on as many pages as it
/// takes, each going on where the one before ended, with nothing above or below the text. A document that cannot be
/// begun, a page that cannot be ended, and a page too low for a single character abort the document; nothing is said
/// then. True when a printer was chosen, whatever became of the document; false for an empty text, which asks for none,
/// and when none was chosen.
bool PrintText(Printer& printer, WindowId owner, const std::wstring& name, std::wstring_view text);

} // namespace sitekeeper
