// The dialog in which an administrator says who may run which tool.
#pragma once

#include "access/AccessLists.h"
#include "access/NameList.h"
#include "frame/Dialog.h"
#include "platform/Clipboard.h"
#include "win32/Handles.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <string>

namespace sitekeeper {

/// The known users on the left, and a list for each tool. Names come onto a list and leave it by mouse or by keyboard;
/// a list that holds nobody shows "Everyone". OK writes all lists, Cancel none.
class CUserAccessDlg final : public CDialog
{
public:
    /// What the dialog works with; everything named must outlive it.
    struct Context
    {
        const AccessLists& lists;
        Clipboard& clipboard;
    };

    CUserAccessDlg(CWinApp& app, const CWnd& owner, Context context);

    CUserAccessDlg(const CUserAccessDlg&) = delete;
    CUserAccessDlg& operator=(const CUserAccessDlg&) = delete;
    ~CUserAccessDlg() override;

    /// A drag takes the keyboard too: Escape ends it.
    bool PreTranslateMessage(MSG& message) override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange& exchange) override;
    bool OnCommand(WORD id) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

private:
    struct ListRow
    {
        CNameList* control;
        AccessList list;
    };

    void NameControls();

    // Buttons
    void OnAdd();
    void OnRefresh();

    // The mouse
    void BeginDrag(CNameList& source, POINT point);
    void OnMouseMove(POINT point);
    void OnLButtonUp(POINT point);
    void EndDrag();

    // The keyboard; each gets the list that has the focus
    bool OnListKey(CNameList& list, WORD key);
    void OnCopy(CNameList& list);
    void OnCut(CNameList& list);
    void OnPaste(CNameList& list);
    void OnDelete(CNameList& list);
    void OnSelectAll(CNameList& list);

    // What mouse and keyboard have in common
    void TakeOff(CNameList& source);
    void ShowEveryoneInAll();
    static void ShowEveryone(CNameList& list);

    void Fill(CNameList& list, AccessList which, Rebuild rebuild);
    [[nodiscard]] CNameList* ListOf(HWND window);
    [[nodiscard]] std::array<ListRow, 5> Lists();
    [[nodiscard]] WindowId Id() const;

    CNameList m_users;
    CNameList m_ledgerComposer;
    CNameList m_siteKeeper;
    CNameList m_sheetWriter;
    CNameList m_normKeeper;
    CWnd m_newUserField;
    std::wstring m_newUser;
    bool m_isDragging = false;
    CNameList* m_dragSource = nullptr;
    UniqueImageList m_dragImage;

    Context m_context;
};

} // namespace sitekeeper
