#include "maindlg/PageBreak.h"

namespace sitekeeper {

std::size_t FitOnPage(std::size_t remaining, int pageHeight, const MeasureText& measure)
{
    std::size_t low = 0;
    std::size_t high = remaining;
    std::size_t candidate = remaining;
    for (;;) {
        const int height = measure(candidate);
        const std::size_t fit = height < pageHeight ? candidate : low;
        if (height > pageHeight) {
            high = candidate;
        }
        low = fit + 1 == high ? high : fit;
        if (low >= high) {
            return candidate == 1 && height > pageHeight ? 0 : candidate;
        }
        const std::size_t next = low + (high - low) / 2;
        if (next == candidate) {
            return candidate; // as high as the page: no step would change anything any more
        }
        candidate = next;
    }
}

} // namespace sitekeeper
