#include "support/DialogPage.h"

#include "frame/Wnd.h"

namespace sitekeeper {
namespace {

/// The enumeration goes from the top down.
BOOL CALLBACK TakeVisibleDialog(HWND window, LPARAM found)
{
    wchar_t className[16]{};
    ::GetClassNameW(window, className, static_cast<int>(std::size(className)));
    if (::IsWindowVisible(window) == FALSE || std::wstring_view(className) != L"#32770") {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const UnitRectangle& place)
{
    return out << place.left << ", " << place.top << ", " << place.width << ", " << place.height;
}

DialogPage DialogPage::OnTop()
{
    HWND found = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &TakeVisibleDialog, reinterpret_cast<LPARAM>(&found));
    return DialogPage(found);
}

std::wstring DialogPage::Title() const
{
    return TextOf(m_dialog);
}

std::wstring DialogPage::ClassOf(int id) const
{
    wchar_t name[256]{};
    ::GetClassNameW(Control(id), name, static_cast<int>(std::size(name)));
    return name;
}

std::wstring DialogPage::Text(int id) const
{
    return TextOf(Control(id));
}

bool DialogPage::IsVisible(int id) const
{
    // By its own style: the dialog may not be on the screen yet.
    return (::GetWindowLongPtrW(Control(id), GWL_STYLE) & WS_VISIBLE) != 0;
}

UnitRectangle DialogPage::ToUnits(const RECT& pixels) const
{
    // A unit is a quarter of the font's average width and an eighth of its height. The system rounds position and size
    // each by itself.
    RECT base{0, 0, 4, 8};
    ::MapDialogRect(m_dialog, &base);
    const auto across = [&base](LONG value) { return ::MulDiv(value, 4, base.right); };
    const auto down = [&base](LONG value) { return ::MulDiv(value, 8, base.bottom); };
    return {across(pixels.left), down(pixels.top), across(pixels.right - pixels.left),
            down(pixels.bottom - pixels.top)};
}

UnitRectangle DialogPage::RectangleInUnits(int id) const
{
    RECT place{};
    ::GetWindowRect(Control(id), &place);
    ::MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&place), 2);
    return ToUnits(place);
}

UnitRectangle DialogPage::ClientInUnits() const
{
    RECT client{};
    ::GetClientRect(m_dialog, &client);
    return ToUnits(client);
}

POINT DialogPage::MiddleOf(int id) const
{
    RECT place{};
    ::GetWindowRect(Control(id), &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

void DialogPage::Enter(int id, const std::wstring& text) const
{
    ::SetDlgItemTextW(m_dialog, id, text.c_str());
}

} // namespace sitekeeper
