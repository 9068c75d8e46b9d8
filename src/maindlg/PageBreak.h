// How much of a text goes on a printed page.
#pragma once

#include <cstddef>
#include <functional>

namespace sitekeeper {

/// The height that the first `count` characters of a text take on the page, in the unit of the page's own height.
using MeasureText = std::function<int(std::size_t count)>;

/// How many of `remaining` characters (one at least) go on a page of that height, by halving between what is lower than
/// the page and what is higher. What is tried last is taken: for heights that grow with the text that is the most that
/// stays lower, or one character more, deliberately. A height that equals the page's moves neither bound, deliberately;
/// where that would try the same number for ever, that number is taken. 0 when it comes down to one character and even
/// that is higher than the page. Measures at most about as often as `remaining` can be halved, and once more.
[[nodiscard]] std::size_t FitOnPage(std::size_t remaining, int pageHeight, const MeasureText& measure);

} // namespace sitekeeper
