// Port: paper.
#pragma once

#include "platform/Port.h"
#include "platform/WindowId.h"

#include <memory>
#include <string>
#include <string_view>

namespace sitekeeper {

/// A document for the printer that was chosen, in the one font of all documents: 10 points high, without serifs. A page
/// is all of the printer's printable area, in its own pixels. A document's end leaves nothing behind; one that was
/// begun, and neither ended nor aborted, is aborted then.
class PrintDocument : public Port
{
public:
    /// How high a page is, in pixels.
    [[nodiscard]] virtual int PageHeight() const = 0;

    /// How high `text` stands on a page of full width, in pixels: tabs expanded, lines that are too long broken at
    /// words. 0 when that cannot be told.
    [[nodiscard]] virtual int Measure(std::wstring_view text) const = 0;

    /// Begins the document, which the printer's queue shows as `name`. False for the one answer that says so: what else
    /// keeps a document from being printed is told at the end of its first page.
    virtual bool Begin(const std::wstring& name) = 0;

    /// Begins the next page. Whether it could be begun is told at its end.
    virtual void BeginPage() = 0;

    /// Puts `text` on the page from its upper left corner on, laid out as Measure does. What reaches beyond the page's
    /// lower edge is not cut off.
    virtual void Draw(std::wstring_view text) = 0;

    /// Ends the page. False when the page is not printed: the document is to be aborted.
    virtual bool EndPage() = 0;

    /// Ends the document, which is printed now.
    virtual void End() = 0;

    /// Gives the document up. What the printer has of it may be printed all the same; nothing else is.
    virtual void Abort() = 0;
};

class Printer : public Port
{
public:
    /// Shows the system's print dialog and waits for its answer; `owner` is disabled meanwhile. Null when it is
    /// cancelled, and when there is no printer, which the system itself may say.
    [[nodiscard]] virtual std::unique_ptr<PrintDocument> Choose(WindowId owner) = 0;
};

} // namespace sitekeeper
