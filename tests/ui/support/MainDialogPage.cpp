#include "support/MainDialogPage.h"

#include "controls/ButtonST.h"

#include <windows.h>

#include <commctrl.h>

namespace sitekeeper {

InstallationFolders MainDialogPage::Folders() const
{
    return {Text(ProgramField), Text(ApplicationField), Text(DatafilesField)};
}

CalendarTime MainDialogPage::ReminderDate() const
{
    SYSTEMTIME time{};
    ::SendMessageW(Control(1026), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

std::wstring MainDialogPage::TipOf(int button) const
{
    const auto* const object = dynamic_cast<CButtonST*>(CWnd::FromHandle(Control(button)));
    if (object == nullptr || object->Tooltip() == nullptr) {
        return L"(no tooltip)";
    }
    wchar_t text[128]{};
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = object->Handle();
    tool.uId = 1;
    tool.lpszText = text;
    ::SendMessageW(object->Tooltip(), TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
    return text;
}

RECT MainDialogPage::ScreenRectangle() const
{
    RECT place{};
    ::GetWindowRect(Window(), &place);
    return place;
}

std::vector<RECT> MainDialogPage::ControlRectangles() const
{
    std::vector<RECT> places;
    for (HWND child = ::GetWindow(Window(), GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        ::GetWindowRect(child, &places.emplace_back());
    }
    return places;
}

std::vector<std::wstring> MenuLines(HMENU menu)
{
    std::vector<std::wstring> lines;
    for (int position = 0; position < ::GetMenuItemCount(menu); ++position) {
        wchar_t text[128]{};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
        item.dwTypeData = text;
        item.cch = static_cast<UINT>(std::size(text));
        ::GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &item);
        std::wstring line = std::to_wstring(item.wID) + L" " + text;
        if (item.hSubMenu != nullptr) {
            line = std::wstring(L"> ") + text;
        }
        if ((item.fState & MFS_GRAYED) != 0) {
            line += L" (grayed)";
        }
        lines.push_back((item.fType & MFT_SEPARATOR) != 0 ? L"-" : line);
    }
    return lines;
}

} // namespace sitekeeper
