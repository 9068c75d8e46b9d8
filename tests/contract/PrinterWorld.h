// What the contract tests of the printer stand on: the port, somebody who answers the print dialog, and a look at what
// came out of the printer.
#pragma once

#include "platform/Printer.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace sitekeeper {

enum class DialogAnswer
{
    Ok,
    Cancel
};

/// What the process holds of the system.
struct PrinterHoldings
{
    unsigned drawingObjects = 0;
    /// 0 in memory, where there are none.
    unsigned handles = 0;
    /// Bytes taken from the process's own heap, in which dialogs describe printers.
    std::size_t memory = 0;
};

class PrinterWorld
{
public:
    /// A system with one printer, the default one.
    PrinterWorld() = default;
    PrinterWorld(const PrinterWorld&) = delete;
    PrinterWorld& operator=(const PrinterWorld&) = delete;
    virtual ~PrinterWorld() = default;

    /// Asks for a printer, from a window of the test's own, and answers the dialog. Checks that the window is disabled
    /// meanwhile and enabled afterwards.
    [[nodiscard]] virtual std::unique_ptr<PrintDocument> Choose(DialogAnswer answer) = 0;

    /// How many pages came out with the last document; nothing when none came out.
    [[nodiscard]] virtual std::optional<int> PagesThatCameOut() = 0;
    /// Forgets what came out.
    virtual void TakePaperAway() = 0;

    [[nodiscard]] virtual PrinterHoldings Holdings() = 0;
    /// How many handles the system itself loses with each begun document that is given up.
    [[nodiscard]] virtual unsigned HandlesLostByGivingUp() = 0;
};

[[nodiscard]] std::unique_ptr<PrinterWorld> MakePrinterWorld();

} // namespace sitekeeper
