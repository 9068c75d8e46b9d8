// The real printers.
#pragma once

#include "platform/Printer.h"
#include "win32/SystemLibrary.h"

namespace sitekeeper {

class Win32Printer final : public Printer
{
public:
    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(WindowId owner) override;

private:
    SystemLibrary m_library{L"comdlg32.dll"};
};

} // namespace sitekeeper
