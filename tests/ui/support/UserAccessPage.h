// The user access dialog as its user sees it.
#pragma once

#include "support/DialogPage.h"

#include <windows.h>

#include <string>
#include <vector>

namespace sitekeeper {

/// The five lists.
inline constexpr int UserList = 1018;
inline constexpr int LedgerComposerList = 1020;
inline constexpr int SiteKeeperList = 1022;
inline constexpr int SheetWriterList = 1023;
inline constexpr int NormKeeperList = 1024;

/// The field for a new name, and the buttons.
inline constexpr int NewUserField = 1019;
inline constexpr int AddButton = 1007;
inline constexpr int RefreshButton = 1013;
inline constexpr int HelpButton = 1009;

using Names = std::vector<std::wstring>;

/// What a list shows that lets everybody in.
inline const Names NobodyElse{L"Everyone"};

/// The texts of a list control's items, from the first to the last, and those of the selected ones.
[[nodiscard]] Names NamesIn(HWND list);
[[nodiscard]] Names SelectedIn(HWND list);

class UserAccessPage : public DialogPage
{
public:
    using DialogPage::DialogPage;

    [[nodiscard]] Names NamesOf(int list) const { return NamesIn(Control(list)); }
    [[nodiscard]] Names SelectionOf(int list) const { return SelectedIn(Control(list)); }

    /// Selects these names of a list and no others, and gives the list the focus.
    void Select(int list, const Names& names) const;

    /// A place on a name, on the screen; and a place in a list below all its names.
    [[nodiscard]] POINT PlaceOf(int list, const std::wstring& name) const;
    [[nodiscard]] POINT EmptyPlaceIn(int list) const;
};

} // namespace sitekeeper
