#include "e2e/support/ShortcutsWindow.h"

#include "e2e/support/RemoteMemory.h"
#include "support/Input.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace sitekeeper::e2e {
namespace {

constexpr int TreeId = 1017;
constexpr UINT Unchecked = 0x1000; // the first picture of an item's state
constexpr UINT Checked = 0x2000;   // the second

} // namespace

ShortcutsWindow::ShortcutsWindow(const ProgramRun& run)
    : m_run(run), m_window(run.AwaitWindow("the dialog of the shortcuts",
                                           [](HWND window) { return ::GetDlgItem(window, TreeId) != nullptr; }))
{
    run.BringToFront(m_window);
}

HWND ShortcutsWindow::Tree() const
{
    return ::GetDlgItem(m_window, TreeId);
}

std::vector<HTREEITEM> ShortcutsWindow::Items() const
{
    std::vector<HTREEITEM> items;
    auto* item = reinterpret_cast<HTREEITEM>(Ask(Tree(), TVM_GETNEXTITEM, TVGN_ROOT, 0));
    while (item != nullptr) {
        items.push_back(item);
        item = reinterpret_cast<HTREEITEM>(Ask(Tree(), TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(item)));
    }
    return items;
}

std::wstring ShortcutsWindow::LineOf(HTREEITEM item) const
{
    constexpr std::size_t Room = 260;
    const RemoteMemory text(m_run.Process(), Room * sizeof(wchar_t));
    const RemoteMemory remote(m_run.Process(), sizeof(TVITEMW));
    TVITEMW asked{};
    asked.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_STATE;
    asked.hItem = item;
    asked.stateMask = TVIS_STATEIMAGEMASK;
    asked.pszText = static_cast<wchar_t*>(text.Address());
    asked.cchTextMax = static_cast<int>(Room);
    remote.Write(&asked, sizeof asked);
    Ask(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(remote.Address()));
    remote.Read(&asked, sizeof asked);
    std::array<wchar_t, Room> name{};
    text.Read(name.data(), Room * sizeof(wchar_t));
    name.back() = L'\0';
    const UINT box = asked.state & TVIS_STATEIMAGEMASK;
    const wchar_t* const shown = box == Unchecked ? L"[ ] " : L"(no box) ";
    return (box == Checked ? L"[x] " : shown) + std::wstring(name.data());
}

std::vector<std::wstring> ShortcutsWindow::Rows() const
{
    std::vector<std::wstring> rows;
    for (HTREEITEM item : Items()) {
        rows.push_back(LineOf(item));
    }
    return rows;
}

void ShortcutsWindow::AwaitRows(const std::vector<std::wstring>& rows) const
{
    m_run.Await("the expected check boxes", [&] { return Rows() == rows; });
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a gesture in this window, like the others
void ShortcutsWindow::Press(WORD key) const
{
    PressKey(key);
}

void ShortcutsWindow::ClickCheckBox(int row) const
{
    // The item goes in the rectangle's place; what comes back is the rectangle of its text.
    const auto item = reinterpret_cast<std::uintptr_t>(Items().at(static_cast<std::size_t>(row)));
    RECT text{};
    std::memcpy(&text, &item, sizeof item);
    const RemoteMemory remote(m_run.Process(), sizeof text);
    remote.Write(&text, sizeof text);
    Ask(Tree(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(remote.Address()));
    remote.Read(&text, sizeof text);
    const int size = text.bottom - text.top;
    POINT point{text.left - size / 2, text.top + size / 2};
    ::ClientToScreen(Tree(), &point);
    MoveMouse(point);
    m_run.AwaitOnTop(m_window, point);
    PressMouse();
    ReleaseMouse();
}

void ShortcutsWindow::Leave(int button) const
{
    const HWND window = m_window;
    ::PostMessageW(::GetDlgItem(window, button), BM_CLICK, 0, 0);
    m_run.Await("the dialog of the shortcuts to close", [window] { return ::IsWindow(window) == FALSE; });
}

} // namespace sitekeeper::e2e
