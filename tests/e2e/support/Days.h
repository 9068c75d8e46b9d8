// Days of the local calendar, by the C library's own reckoning.
#pragma once

#include <string>

namespace sitekeeper::e2e {

/// The moment at which a day begins, in seconds since 1970.
[[nodiscard]] long long StartOf(int year, int month, int day);

/// As the registry holds the reminder: so many days of 86400 seconds after the beginning of today.
[[nodiscard]] std::wstring DateAfter(int days);

} // namespace sitekeeper::e2e
