#include "contract/Win32Clipboards.h"

#include <future>
#include <stdexcept>
#include <string>
#include <thread>

namespace sitekeeper {
namespace {

void RequireClipboard(bool isDone)
{
    if (!isDone) {
        throw std::runtime_error("the test cannot prepare the clipboard: " + std::to_string(::GetLastError()));
    }
}

/// A thread that has the clipboard open, as another program would.
class ClipboardHolder
{
public:
    ClipboardHolder()
        : m_thread([this] {
              const TestWindow window;
              const bool isOpen = ::OpenClipboard(window.get()) != FALSE;
              m_opened.set_value(isOpen);
              m_released.get_future().wait();
              if (isOpen) {
                  ::CloseClipboard();
              }
          })
    {}
    ClipboardHolder(const ClipboardHolder&) = delete;
    ClipboardHolder& operator=(const ClipboardHolder&) = delete;
    ~ClipboardHolder()
    {
        m_released.set_value();
        m_thread.join();
    }
    [[nodiscard]] bool IsOpen() { return m_opened.get_future().get(); }

private:
    std::promise<bool> m_opened;
    std::promise<void> m_released;
    std::thread m_thread;
};

} // namespace

TestWindow::TestWindow()
    : m_window(::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
{
    RequireClipboard(m_window != nullptr);
}

TestWindow::~TestWindow()
{
    ::DestroyWindow(m_window);
}

void EmptyRealClipboard(const TestWindow& window)
{
    RequireClipboard(::OpenClipboard(window.get()) != FALSE);
    const bool isEmptied = ::EmptyClipboard() != FALSE;
    ::CloseClipboard();
    RequireClipboard(isEmptied);
}

void PutPictureOnRealClipboard(const TestWindow& window)
{
    RequireClipboard(::OpenClipboard(window.get()) != FALSE);
    ::EmptyClipboard();
    const HBITMAP picture = ::CreateBitmap(4, 4, 1, 1, nullptr);
    const bool isPut = ::SetClipboardData(CF_BITMAP, picture) != nullptr;
    ::CloseClipboard();
    RequireClipboard(isPut);
}

std::shared_ptr<void> OpenRealClipboard()
{
    auto holder = std::make_shared<ClipboardHolder>();
    RequireClipboard(holder->IsOpen());
    return holder;
}

} // namespace sitekeeper
