#include "support/ManageShortcutsPage.h"

#include <array>

namespace sitekeeper {
namespace {

constexpr UINT Unchecked = 0x1000; // the first picture of an item's state
constexpr UINT Checked = 0x2000;   // the second

const wchar_t* BoxOf(UINT state)
{
    if ((state & TVIS_STATEIMAGEMASK) == Checked) {
        return L"[x] ";
    }
    return (state & TVIS_STATEIMAGEMASK) == Unchecked ? L"[ ] " : L"(no box) ";
}

} // namespace

std::vector<std::wstring> ManageShortcutsPage::Rows() const
{
    const HWND tree = Control(ShortcutTree);
    std::vector<std::wstring> rows;
    for (auto* item = TreeView_GetRoot(tree); item != nullptr; item = TreeView_GetNextSibling(tree, item)) {
        std::array<wchar_t, 256> text{};
        TVITEMW asked{};
        asked.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_STATE;
        asked.hItem = item;
        asked.stateMask = TVIS_STATEIMAGEMASK;
        asked.pszText = text.data();
        asked.cchTextMax = static_cast<int>(text.size());
        ::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        rows.push_back(BoxOf(asked.state) + std::wstring(text.data()));
    }
    return rows;
}

HTREEITEM ManageShortcutsPage::ItemOf(int row) const
{
    const HWND tree = Control(ShortcutTree);
    auto* item = TreeView_GetRoot(tree);
    for (int passed = 0; passed < row; ++passed) {
        item = TreeView_GetNextSibling(tree, item);
    }
    return item;
}

POINT ManageShortcutsPage::CheckBoxOf(int row) const
{
    const HWND tree = Control(ShortcutTree);
    RECT text{};
    TreeView_GetItemRect(tree, ItemOf(row), &text, TRUE);
    const int size = text.bottom - text.top;
    POINT point{text.left - size / 2, text.top + size / 2};
    ::ClientToScreen(tree, &point);
    return point;
}

void ManageShortcutsPage::Select(int row) const
{
    const HWND tree = Control(ShortcutTree);
    ::SetFocus(tree);
    TreeView_SelectItem(tree, ItemOf(row));
}

} // namespace sitekeeper
