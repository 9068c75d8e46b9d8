// What the gate at the program's start says to those whom it does not let in.
#pragma once

#include <string>

namespace sitekeeper {

/// What a refused user is told.
[[nodiscard]] std::wstring RefusalText(const std::wstring& userName);

} // namespace sitekeeper
