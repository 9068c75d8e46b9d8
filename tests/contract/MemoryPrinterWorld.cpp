#include "contract/PrinterWorld.h"
#include "support/MemoryPrinter.h"

namespace sitekeeper {
namespace {

class MemoryPrinterWorld final : public PrinterWorld
{
public:
    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(DialogAnswer answer) override
    {
        m_printer.Answer(answer == DialogAnswer::Ok ? MemoryPrinter::DialogAnswer::Ok
                                                    : MemoryPrinter::DialogAnswer::Cancel);
        return m_printer.Choose(WindowId{1});
    }

    [[nodiscard]] std::optional<int> PagesThatCameOut() override
    {
        std::optional<int> pages;
        for (std::size_t index = m_taken; index < m_printer.AllDocuments().size(); ++index) {
            const MemoryPrinter::Document& document = m_printer.AllDocuments()[index];
            if (document.state == MemoryPrinter::DocumentState::Ended) {
                pages = static_cast<int>(document.pages.size());
            }
        }
        return pages;
    }
    void TakePaperAway() override { m_taken = m_printer.AllDocuments().size(); }

    [[nodiscard]] PrinterHoldings Holdings() override
    {
        return {static_cast<unsigned>(m_printer.OpenDocuments()), 0, 0};
    }
    [[nodiscard]] unsigned HandlesLostByGivingUp() override { return 0; }

private:
    MemoryPrinter m_printer;
    std::size_t m_taken = 0;
};

} // namespace

std::unique_ptr<PrinterWorld> MakePrinterWorld()
{
    return std::make_unique<MemoryPrinterWorld>();
}

} // namespace sitekeeper
