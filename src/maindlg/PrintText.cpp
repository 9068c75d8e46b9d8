#include "maindlg/PrintText.h"

#include "maindlg/PageBreak.h"

namespace sitekeeper {
namespace {

/// True when every page ended well. Each page takes one character at least, so there is a last one.
bool PrintPages(PrintDocument& document, std::wstring_view text)
{
    const int pageHeight = document.PageHeight();
    while (!text.empty()) {
        document.BeginPage();
        const auto measure = [&](std::size_t count) { return document.Measure(text.substr(0, count)); };
        const std::size_t count = FitOnPage(text.size(), pageHeight, measure);
        if (count == 0) {
            return false;
        }
        document.Draw(text.substr(0, count));
        text.remove_prefix(count);
        if (!document.EndPage()) {
            return false;
        }
    }
    return true;
}

} // namespace

bool PrintText(Printer& printer, WindowId owner, const std::wstring& name, std::wstring_view text)
{
    if (text.empty()) {
        return false;
    }
    const std::unique_ptr<PrintDocument> document = printer.Choose(owner);
    if (document == nullptr) {
        return false;
    }
    if (document->Begin(name) && PrintPages(*document, text)) {
        document->End();
    } else {
        document->Abort();
    }
    return true;
}

} // namespace sitekeeper
