// The vendor's software-updates page: how it is collected, and which date it publishes for this product.
#pragma once

#include "platform/Clock.h"
#include "platform/WebSession.h"
#include "update/PageText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace sitekeeper {

/// What marks this product's update on the page, in any case; the date follows it directly.
inline constexpr std::wstring_view UpdateKey = L"LX_2023_Plus_Update";

/// A page is cut off here, as if an error had come: no page that publishes a date is nearly so long.
inline constexpr std::size_t LargestPage = std::size_t{16} * 1024 * 1024;

/// The text of a page, as far as it can be read: collected in pieces of 50 bytes, each converted from the narrow code
/// page by itself. Empty when the page cannot be opened.
[[nodiscard]] PageText ReadPageText(WebSession& web, const CodePage& codePage, const std::wstring& address);

/// The moment at which the day published on `page` begins by the local calendar: year "_" month "_" day and "." after
/// the update key, each number read up to its first other character. `fallback` without the key, without a "." after
/// it, or with fewer than two "_" between. Raises PlatformError naming `address`: Fail for a year before 1970, a month
/// outside 1 to 12 or a day outside 1 to 31, InvalidArgument for a day that cannot be converted.
[[nodiscard]] Seconds PublishedDate(const PageText& page, Seconds fallback, const Clock& clock,
                                    const std::wstring& address);

} // namespace sitekeeper
