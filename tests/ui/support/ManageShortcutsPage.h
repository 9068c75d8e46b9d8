// The dialog of the shortcuts as its user sees it.
#pragma once

#include "support/DialogPage.h"

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

namespace sitekeeper {

inline constexpr int ShortcutTree = 1017;

class ManageShortcutsPage : public DialogPage
{
public:
    using DialogPage::DialogPage;

    /// One line for each row: "[x] name" or "[ ] name".
    [[nodiscard]] std::vector<std::wstring> Rows() const;

    /// The middle of a row's check box on the screen.
    [[nodiscard]] POINT CheckBoxOf(int row) const;

    /// Puts the cursor on a row.
    void Select(int row) const;

private:
    [[nodiscard]] HTREEITEM ItemOf(int row) const;
};

} // namespace sitekeeper
