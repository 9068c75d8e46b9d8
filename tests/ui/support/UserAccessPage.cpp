#include "support/UserAccessPage.h"

#include <commctrl.h>

#include <algorithm>

namespace sitekeeper {
namespace {

std::wstring ItemText(HWND list, int place)
{
    std::vector<wchar_t> text(4096);
    LVITEMW item{};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    return text.data();
}

int CountOf(HWND list)
{
    return static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

void SetState(HWND list, int place, UINT state, UINT mask)
{
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
}

} // namespace

Names NamesIn(HWND list)
{
    Names names;
    for (int place = 0; place < CountOf(list); ++place) {
        names.push_back(ItemText(list, place));
    }
    return names;
}

Names SelectedIn(HWND list)
{
    Names names;
    for (int place = 0; place < CountOf(list); ++place) {
        if (::SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(place), LVIS_SELECTED) != 0) {
            names.push_back(ItemText(list, place));
        }
    }
    return names;
}

void UserAccessPage::Select(int list, const Names& names) const
{
    const HWND control = Control(list);
    ::SetFocus(control);
    SetState(control, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    for (int place = 0; place < CountOf(control); ++place) {
        if (std::find(names.begin(), names.end(), ItemText(control, place)) != names.end()) {
            SetState(control, place, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        }
    }
}

POINT UserAccessPage::PlaceOf(int list, const std::wstring& name) const
{
    const HWND control = Control(list);
    const Names names = NamesOf(list);
    const auto place = std::find(names.begin(), names.end(), name) - names.begin();
    RECT label{};
    label.left = LVIR_LABEL;
    ::SendMessageW(control, LVM_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&label));
    POINT point{label.left + 8, (label.top + label.bottom) / 2};
    ::ClientToScreen(control, &point);
    return point;
}

POINT UserAccessPage::EmptyPlaceIn(int list) const
{
    RECT client{};
    ::GetClientRect(Control(list), &client);
    POINT point{client.right / 2, client.bottom - 4};
    ::ClientToScreen(Control(list), &point);
    return point;
}

} // namespace sitekeeper
