// The real printers.
#pragma once

#include "platform/Printer.h"

namespace sitekeeper {

class Win32Printer final : public Printer
{
public:
    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(WindowId owner) override;
};

} // namespace sitekeeper
