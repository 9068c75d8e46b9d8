#include "controls/ButtonTip.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

namespace sitekeeper {
namespace {

constexpr int WidestTip = 400;
constexpr UINT_PTR ToolNumber = 1;

} // namespace

void ButtonTip::Ensure(HWND button)
{
    if (m_handle != nullptr || button == nullptr) {
        return;
    }
    m_handle = ::CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                 CW_USEDEFAULT, button, nullptr, nullptr, nullptr);
    ::SendMessageW(m_handle, TTM_ACTIVATE, FALSE, 0);
    ::SendMessageW(m_handle, TTM_SETMAXTIPWIDTH, 0, WidestTip);
}

void ButtonTip::SetText(HWND button, const std::wstring& text, bool activate)
{
    Ensure(button);
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // every version of the common controls knows this one
    tool.hwnd = button;
    tool.uId = ToolNumber;
    tool.lpszText = const_cast<wchar_t*>(text.c_str()); // only read
    if (::SendMessageW(m_handle, TTM_GETTOOLCOUNT, 0, 0) == 0) {
        ::GetClientRect(button, &tool.rect);
        ::SendMessageW(m_handle, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    ::SendMessageW(m_handle, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    ::SendMessageW(m_handle, TTM_ACTIVATE, activate ? TRUE : FALSE, 0);
}

void ButtonTip::Relay(MSG& message) const
{
    ::SendMessageW(m_handle, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

void ButtonTip::Drop() noexcept
{
    // Where the window it belongs to went first, the system has destroyed it already.
    if (const HWND tip = std::exchange(m_handle, nullptr); ::IsWindow(tip) != FALSE) {
        ::DestroyWindow(tip);
    }
}

} // namespace sitekeeper
