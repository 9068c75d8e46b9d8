#include "shortcuts/ManageShortcutsDlg.h"

#include "res/ResourceIds.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutChoice.h"
#include "win32/Handles.h"

#include <windows.h>

#include <commctrl.h>

#include <string>

namespace sitekeeper {
namespace {

/// A tree control has its check boxes as pictures of an item's state: the first unchecked, the second checked.
constexpr UINT Unchecked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT Checked = INDEXTOSTATEIMAGEMASK(2);

/// The control makes the pictures of its check boxes, but leaves their end to who has it.
void DropCheckBoxes(HWND tree)
{
    const UniqueImageList dropped(reinterpret_cast<HIMAGELIST>(::SendMessageW(tree, TVM_SETIMAGELIST, TVSIL_STATE, 0)));
}

/// A control that was made with check boxes shows them only once the style comes to it.
void RenewCheckBoxes(HWND tree)
{
    DropCheckBoxes(tree);
    const LONG_PTR style = ::GetWindowLongPtrW(tree, GWL_STYLE);
    ::SetWindowLongPtrW(tree, GWL_STYLE, style & ~static_cast<LONG_PTR>(TVS_CHECKBOXES));
    ::SetWindowLongPtrW(tree, GWL_STYLE, style | TVS_CHECKBOXES);
}

int RowOf(HWND tree, HTREEITEM item)
{
    TVITEMW asked{};
    asked.mask = TVIF_PARAM;
    asked.hItem = item;
    ::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
    return static_cast<int>(asked.lParam);
}

bool IsChecked(HWND tree, HTREEITEM item)
{
    const auto state =
        static_cast<UINT>(::SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_STATEIMAGEMASK));
    return (state & TVIS_STATEIMAGEMASK) == Checked;
}

} // namespace

CManageShortcutsDlg::CManageShortcutsDlg(CWinApp& app, const CWnd& owner, Context context)
    : CDialog(app, IDD_MANAGE_SHORTCUTS, &owner), m_context(context)
{}

void CManageShortcutsDlg::DoDataExchange(CDataExchange& exchange)
{
    ExchangeControl(exchange, IDC_SHORTCUT_TREE, m_tree);
}

bool CManageShortcutsDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_tree.SetAccessibleName(L"Shortcuts");
    RenewCheckBoxes(m_tree.Handle());
    for (int row = 0; row < ShortcutCount(); ++row) {
        AddRow(row);
    }
    return true;
}

void CManageShortcutsDlg::AddRow(int row)
{
    std::wstring name = GetShortcutName(row);
    TVINSERTSTRUCTW added{};
    added.hParent = TVI_ROOT;
    added.hInsertAfter = TVI_LAST;
    added.item.mask = TVIF_TEXT | TVIF_PARAM;
    added.item.pszText = name.data();
    added.item.lParam = row;
    const auto item = ::SendMessageW(m_tree.Handle(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&added));

    TVITEMW state{};
    state.mask = TVIF_HANDLE | TVIF_STATE;
    state.hItem = reinterpret_cast<HTREEITEM>(item);
    state.stateMask = TVIS_STATEIMAGEMASK;
    state.state = HasShortcut(m_context.files, m_context.registry, row) ? Checked : Unchecked;
    ::SendMessageW(m_tree.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&state));
}

LRESULT CManageShortcutsDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        DropCheckBoxes(m_tree.Handle());
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

void CManageShortcutsDlg::OnOK()
{
    const HWND tree = m_tree.Handle();
    for (auto* item = TreeView_GetRoot(tree); item != nullptr; item = TreeView_GetNextSibling(tree, item)) {
        const int row = RowOf(tree, item);
        if (IsChecked(tree, item)) {
            PlaceShortcut(m_context.files, m_context.registry, row);
        } else {
            RemoveShortcut(m_context.files, m_context.registry, row);
        }
    }
    CDialog::OnOK();
}

} // namespace sitekeeper
