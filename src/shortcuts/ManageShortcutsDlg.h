// The dialog in which an administrator chooses which of the suite's shortcuts exist.
#pragma once

#include "frame/Dialog.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <windows.h>

namespace sitekeeper {

/// A list of check boxes, one for each shortcut of the catalogue, checked where it exists. OK removes what is not
/// checked and puts placeholders where a checked shortcut is missing; Cancel touches nothing.
class CManageShortcutsDlg final : public CDialog
{
public:
    /// What the dialog works with; everything named must outlive it.
    struct Context
    {
        FileSystem& files;
        const Registry& registry;
    };

    CManageShortcutsDlg(CWinApp& app, const CWnd& owner, Context context);

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange& exchange) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

private:
    void AddRow(int row);

    CWnd m_tree;
    Context m_context;
};

} // namespace sitekeeper
