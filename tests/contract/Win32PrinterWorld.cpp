#include "contract/PrinterWorld.h"
#include "support/GuiResources.h"
#include "support/HandleCount.h"
#include "support/ModalDriver.h"
#include "support/TestPrinter.h"
#include "support/Wine.h"
#include "win32/Win32Printer.h"
#include "win32/WindowIds.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <utility>

namespace sitekeeper {
namespace {

namespace fs = std::filesystem;

/// A window that nobody sees, as the owner of a dialog.
class OwnerWindow
{
public:
    OwnerWindow()
        : m_window(
              ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr))
    {}
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    ~OwnerWindow() { ::DestroyWindow(m_window); }
    [[nodiscard]] HWND get() const noexcept { return m_window; }

private:
    HWND m_window;
};

/// The dialog that a window owns; null when none is to be seen.
HWND VisibleDialogOf(HWND owner)
{
    HWND dialog = nullptr;
    do {
        dialog = ::FindWindowExW(nullptr, dialog, L"#32770", nullptr);
    } while (dialog != nullptr && (::GetWindow(dialog, GW_OWNER) != owner || ::IsWindowVisible(dialog) == FALSE));
    return dialog;
}

/// What is taken from the process's heap at the moment.
std::size_t HeapBytes()
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    while (::HeapWalk(::GetProcessHeap(), &entry) != FALSE) {
        bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    return bytes;
}

class Win32PrinterWorld final : public PrinterWorld
{
public:
    Win32PrinterWorld()
        : m_file(fs::temp_directory_path() / (L"SiteKeeper" + std::to_wstring(::GetCurrentProcessId()) + L".ps")),
          m_queue(m_file.wstring())
    {
        TakePaperAway();
    }
    Win32PrinterWorld(const Win32PrinterWorld&) = delete;
    Win32PrinterWorld& operator=(const Win32PrinterWorld&) = delete;
    ~Win32PrinterWorld() override { RemoveFile(); }

    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(DialogAnswer answer) override
    {
        const int button = answer == DialogAnswer::Ok ? IDOK : IDCANCEL;
        std::unique_ptr<PrintDocument> document;
        {
            const ModalDriver driver({{"answer the print dialog", [this, button] {
                                           const HWND dialog = VisibleDialogOf(m_owner.get());
                                           if (dialog == nullptr) {
                                               return false;
                                           }
                                           EXPECT_EQ(::IsWindowEnabled(m_owner.get()), FALSE);
                                           ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
                                           return true;
                                       }}});
            document = m_printer.Choose(IdOf(m_owner.get()));
        }
        EXPECT_NE(::IsWindowEnabled(m_owner.get()), FALSE);
        return document;
    }

    [[nodiscard]] std::optional<int> PagesThatCameOut() override
    {
        std::ifstream file(m_file, std::ios::binary);
        if (!file) {
            return std::nullopt;
        }
        return CountPages(std::string(std::istreambuf_iterator<char>(file), {}));
    }
    void TakePaperAway() override { RemoveFile(); }

    [[nodiscard]] PrinterHoldings Holdings() override
    {
        return {CountGdiObjects(), CountHandles(::GetCurrentProcess()), HeapBytes()};
    }
    /// Wine leaves such a document in the spool folder, and its file open.
    [[nodiscard]] unsigned HandlesLostByGivingUp() override { return IsWine() ? 1 : 0; }

private:
    void RemoveFile() const
    {
        std::error_code ignored; // there may be none
        fs::remove(m_file, ignored);
    }

    fs::path m_file;
    TestPrinter m_queue;
    OwnerWindow m_owner;
    Win32Printer m_printer;
};

} // namespace

std::unique_ptr<PrinterWorld> MakePrinterWorld()
{
    return std::make_unique<Win32PrinterWorld>();
}

} // namespace sitekeeper
