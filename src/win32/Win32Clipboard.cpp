#include "win32/Win32Clipboard.h"

#include "win32/Handles.h"
#include "win32/WindowIds.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace sitekeeper {
namespace {

/// The clipboard, open for one window. Other programs hold it for moments only.
class OpenedClipboard
{
public:
    explicit OpenedClipboard(WindowId owner)
    {
        constexpr int Attempts = 5;
        constexpr DWORD Pause = 20; // milliseconds
        for (int attempt = 0; attempt < Attempts && !m_isOpen; ++attempt) {
            ::Sleep(attempt == 0 ? 0 : Pause);
            m_isOpen = ::OpenClipboard(WindowOf(owner)) != FALSE;
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard()
    {
        if (m_isOpen) {
            ::CloseClipboard();
        }
    }
    explicit operator bool() const noexcept { return m_isOpen; }

private:
    bool m_isOpen = false;
};

} // namespace

bool Win32Clipboard::PutText(WindowId owner, const std::wstring& text)
{
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    UniqueGlobalMemory memory(::GlobalAlloc(GMEM_MOVEABLE, size));
    auto* const place = memory ? static_cast<wchar_t*>(::GlobalLock(memory.get())) : nullptr;
    if (place == nullptr) {
        return false;
    }
    std::copy_n(text.c_str(), text.size() + 1, place);
    ::GlobalUnlock(memory.get());
    const OpenedClipboard clipboard(owner);
    if (!clipboard || ::EmptyClipboard() == FALSE || ::SetClipboardData(CF_UNICODETEXT, memory.get()) == nullptr) {
        return false;
    }
    static_cast<void>(memory.release()); // the clipboard's from now on
    return true;
}

std::optional<std::wstring> Win32Clipboard::Text(WindowId owner) const
{
    const OpenedClipboard clipboard(owner);
    const HANDLE memory = clipboard ? ::GetClipboardData(CF_UNICODETEXT) : nullptr;
    const auto* const text = memory == nullptr ? nullptr : static_cast<const wchar_t*>(::GlobalLock(memory));
    if (text == nullptr) {
        return std::nullopt;
    }
    // Another program made it: its end is the memory's, should it lack a terminator.
    const wchar_t* const end = text + ::GlobalSize(memory) / sizeof(wchar_t);
    std::wstring copy(text, std::find(text, end, L'\0'));
    ::GlobalUnlock(memory);
    return copy;
}

} // namespace sitekeeper
