// Any bytes as the heights of a text's beginnings on a page: what goes on the page is found with few measures, whatever
// the heights, and is right where they grow with the text. The same bytes once more as a text to print: all of it is on
// the pages, or the document was given up where a page took nothing.
#include "fuzz/FuzzInput.h"
#include "maindlg/PageBreak.h"
#include "maindlg/PrintText.h"
#include "support/MemoryPrinter.h"

#include <bit>
#include <vector>

namespace {

using namespace sitekeeper;

/// Heights by the number of characters, from 0.
using Heights = std::vector<int>;

enum class Order
{
    Growing,
    Any
};

void CheckSearch(const Heights& heights, int page, Order order)
{
    const std::size_t characters = heights.size() - 1;
    int measures = 0;
    std::size_t last = 0;
    const std::size_t fit = FitOnPage(characters, page, [&](std::size_t count) {
        ++measures;
        last = count;
        return heights.at(count);
    });
    Require(measures <= static_cast<int>(std::bit_width(characters)) + 2);
    Require(fit == last || (fit == 0 && last == 1 && heights[1] > page)); // what was tried last, or nothing
    Require(fit <= characters);
    if (order == Order::Any) {
        return;
    }
    // Either it is not higher than the page, or it is one character more than what is lower.
    Require(fit == 0 || heights[fit] <= page || heights[fit - 1] < page);
    // Nothing that is lower was left out, unless the page's own height stopped the search.
    Require(fit == characters || heights[fit + 1] >= page || heights[fit] == page);
    Require((fit == 0) == (heights[1] > page));
}

void CheckPages(std::wstring_view text, int pageHeight, std::size_t columns)
{
    MemoryPrinter printer;
    printer.Load({.height = pageHeight, .lineHeight = 10, .columns = columns});
    Require(PrintText(printer, WindowId::None, L"", text) == !text.empty());
    Require(printer.OpenDocuments() == 0);
    if (text.empty()) {
        return;
    }
    const MemoryPrinter::Document& document = printer.AllDocuments().front();
    for (const std::wstring& page : document.pages) {
        Require(!page.empty() && text.starts_with(page));
        text.remove_prefix(page.size());
    }
    Require(document.state ==
            (text.empty() ? MemoryPrinter::DocumentState::Ended : MemoryPrinter::DocumentState::Aborted));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3) {
        return 0;
    }
    const int page = data[0] - 10;
    Heights any(1);
    Heights growing(1);
    std::wstring text;
    for (std::size_t index = 2; index < size; ++index) {
        any.push_back(data[index]);
        growing.push_back(growing.back() + data[index] % 4);
        text += static_cast<wchar_t>(data[index]);
    }
    CheckSearch(any, page, Order::Any);
    CheckSearch(growing, page, Order::Growing);
    CheckPages(text, page, 1U + data[1] % 40U);
    return 0;
}
