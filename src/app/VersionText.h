// Version texts as version resources hold them.
#pragma once

#include <string>

namespace sitekeeper {

/// Brings a version text into the short form that is shown: "1, 2, 0, 0" and "1.2.0.0" become "1.2", "5.0.0.0"
/// becomes "5.0". A text without "." (after commas followed by a blank became dots) stays as it is.
void NormalizeVersionText(std::wstring& text);

} // namespace sitekeeper
