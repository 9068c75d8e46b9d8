#include "e2e/support/UserAccessWindow.h"

#include "e2e/support/RemoteMemory.h"
#include "support/Input.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

namespace sitekeeper::e2e {

UserAccessWindow::UserAccessWindow(const ProgramRun& run)
    : m_run(run), m_window(run.AwaitWindow("the user access dialog", [](HWND window) {
          return ::GetDlgItem(window, static_cast<int>(AccessControl::NormKeeper)) != nullptr;
      }))
{
    run.BringToFront(m_window);
}

HWND UserAccessWindow::Item(AccessControl control) const
{
    return ::GetDlgItem(m_window, static_cast<int>(control));
}

std::size_t UserAccessWindow::CountOf(AccessControl list) const
{
    return static_cast<std::size_t>(Ask(Item(list), LVM_GETITEMCOUNT));
}

std::wstring UserAccessWindow::NameAt(HWND list, int place) const
{
    constexpr std::size_t Room = 300;
    const RemoteMemory text(m_run.Process(), Room * sizeof(wchar_t));
    const RemoteMemory remote(m_run.Process(), sizeof(LVITEMW));
    LVITEMW item{};
    item.pszText = static_cast<wchar_t*>(text.Address());
    item.cchTextMax = static_cast<int>(Room);
    remote.Write(&item, sizeof item);
    Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(remote.Address()));
    std::array<wchar_t, Room> name{};
    text.Read(name.data(), Room * sizeof(wchar_t));
    name.back() = L'\0';
    return name.data();
}

Names UserAccessWindow::NamesIn(AccessControl list) const
{
    Names names;
    for (std::size_t place = 0; place < CountOf(list); ++place) {
        names.push_back(NameAt(Item(list), static_cast<int>(place)));
    }
    return names;
}

void UserAccessWindow::AwaitNames(AccessControl list, const Names& names) const
{
    m_run.Await("list " + std::to_string(static_cast<int>(list)) + " with " + std::to_string(names.size()) +
                    " expected names",
                [&] { return NamesIn(list) == names; });
}

POINT UserAccessWindow::PointOf(AccessControl list, const std::wstring& name) const
{
    const Names names = NamesIn(list);
    const auto place = std::find(names.begin(), names.end(), name) - names.begin();
    Ask(Item(list), LVM_ENSUREVISIBLE, static_cast<WPARAM>(place), FALSE);
    const RemoteMemory remote(m_run.Process(), sizeof(RECT));
    RECT label{};
    label.left = LVIR_LABEL;
    remote.Write(&label, sizeof label);
    Ask(Item(list), LVM_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(remote.Address()));
    remote.Read(&label, sizeof label);
    POINT point{label.left + 8, (label.top + label.bottom) / 2};
    ::ClientToScreen(Item(list), &point);
    return point;
}

POINT UserAccessWindow::Below(AccessControl list) const
{
    RECT area{};
    ::GetWindowRect(Item(list), &area);
    return {(area.left + area.right) / 2, area.bottom - 8};
}

void UserAccessWindow::Settle() const
{
    // Input comes through the system's queue: asked a little later, the dialog has taken it.
    for (int times = 0; times < 3; ++times) {
        WaitAnswering(nullptr, 20);
        Ask(m_window, WM_NULL);
    }
}

void UserAccessWindow::PointAt(POINT point) const
{
    MoveMouse(point);
    Settle();
    m_run.AwaitOnTop(m_window, point);
}

void UserAccessWindow::Select(AccessControl list, const Names& names) const
{
    const HWND control = Item(list);
    const RemoteMemory remote(m_run.Process(), sizeof(LVITEMW));
    const auto set = [&](WPARAM place, UINT state) {
        LVITEMW item{};
        item.state = state;
        item.stateMask = LVIS_SELECTED;
        remote.Write(&item, sizeof item);
        Ask(control, LVM_SETITEMSTATE, place, reinterpret_cast<LPARAM>(remote.Address()));
    };
    set(static_cast<WPARAM>(-1), 0);
    const Names shown = NamesIn(list);
    for (std::size_t place = 0; place < shown.size(); ++place) {
        if (std::ranges::find(names, shown[place]) != names.end()) {
            set(place, LVIS_SELECTED);
        }
    }
    Ask(m_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void UserAccessWindow::Click(AccessControl list, const std::wstring& name) const
{
    PointAt(PointOf(list, name));
    PressMouse();
    ReleaseMouse();
    m_run.Await("the click on a name",
                [&] { return Captured() == nullptr && Ask(Item(list), LVM_GETSELECTEDCOUNT) > 0; });
    Settle();
}

void UserAccessWindow::ClickWithControl(AccessControl list, const std::wstring& name) const
{
    // There first: a screen that sees the mouse move and no key held down corrects the key.
    PointAt(PointOf(list, name));
    const LRESULT before = Ask(Item(list), LVM_GETSELECTEDCOUNT);
    HoldKey(VK_CONTROL);
    PressMouse();
    ReleaseMouse();
    m_run.Await("one more selected name", [&] { return Ask(Item(list), LVM_GETSELECTEDCOUNT) == before + 1; });
    ReleaseKey(VK_CONTROL);
    Settle();
}

void UserAccessWindow::ClickBelow(AccessControl list) const
{
    PointAt(Below(list));
    PressMouse();
    ReleaseMouse();
    m_run.Await("the focus in list " + std::to_string(static_cast<int>(list)),
                [&] { return Captured() == nullptr && ThreadState(m_window).hwndFocus == Item(list); });
    Settle();
}

HWND UserAccessWindow::Captured() const
{
    return ThreadState(m_window).hwndCapture;
}

void UserAccessWindow::StartDrag(AccessControl list, const std::wstring& name, POINT target) const
{
    const POINT start = PointOf(list, name);
    PointAt(start);
    PressMouse();
    Settle();
    MoveMouse({start.x + 8, start.y + 2}); // still on the name: the list itself must see the drag begin
    m_run.Await("the drag to begin in list " + std::to_string(static_cast<int>(list)),
                [&] { return Captured() == m_window; });
    for (int step = 1; step <= 8; ++step) {
        MoveMouse({start.x + (target.x - start.x) * step / 8, start.y + (target.y - start.y) * step / 8});
        WaitAnswering(nullptr, 10);
    }
    Settle();
}

void UserAccessWindow::FinishDrag() const
{
    ReleaseMouse();
    m_run.Await("the drag to end", [&] { return Captured() == nullptr; });
    Settle();
}

void UserAccessWindow::Drag(AccessControl list, const std::wstring& name, AccessControl target) const
{
    DragTo(list, name, Below(target));
}

void UserAccessWindow::DragTo(AccessControl list, const std::wstring& name, POINT target) const
{
    StartDrag(list, name, target);
    FinishDrag();
}

void UserAccessWindow::DragAndEscape(AccessControl list, const std::wstring& name, AccessControl target) const
{
    StartDrag(list, name, Below(target));
    Press(VK_ESCAPE);
    m_run.Await("the drag to be given up", [&] { return Captured() == nullptr; });
    FinishDrag();
}

void UserAccessWindow::Press(WORD key) const
{
    PressKey(key);
    Settle();
}

void UserAccessWindow::PressWithControl(WORD key) const
{
    HoldKey(VK_CONTROL);
    Press(key);
    ReleaseKey(VK_CONTROL);
    Settle();
}

void UserAccessWindow::Type(const std::wstring& name) const
{
    Ask(Item(AccessControl::NewUser), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void UserAccessWindow::Push(AccessControl button) const
{
    ::PostMessageW(Item(button), BM_CLICK, 0, 0);
}

void UserAccessWindow::Leave(AccessControl button) const
{
    const HWND window = m_window;
    Push(button);
    m_run.Await("the user access dialog to close", [window] { return ::IsWindow(window) == FALSE; });
}

} // namespace sitekeeper::e2e
