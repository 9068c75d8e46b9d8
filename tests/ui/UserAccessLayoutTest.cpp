// The look of the user access dialog: what its template says, and what a user sees of it.
#include "support/TemplateReader.h"
#include "support/UserAccessFixture.h"

#include <windows.h>

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr std::uint32_t None = 0xFFFFFFFF;
constexpr std::uint32_t Shown = WS_CHILD | WS_VISIBLE;
constexpr std::uint32_t Label = Shown | SS_LEFT | WS_GROUP;
constexpr std::uint32_t Icon = Shown | SS_ICON;
constexpr std::uint32_t Push = Shown | BS_PUSHBUTTON | WS_TABSTOP;
constexpr std::uint32_t List =
    Shown | LVS_LIST | LVS_SHOWSELALWAYS | LVS_SORTASCENDING | LVS_ALIGNLEFT | WS_BORDER | WS_TABSTOP;

/// The controls in the order of the Tab key. The resource compiler writes class names in capitals.
const std::vector<TemplateItem>& Controls()
{
    static const std::vector<TemplateItem> Table = {
        {None, L"Button", L"Users", {12, 6, 102, 210}, Shown | BS_GROUPBOX},
        {1018, L"SYSLISTVIEW32", L"", {18, 18, 90, 156}, List},
        {1019, L"Edit", L"", {18, 180, 60, 12}, Shown | ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP},
        {1007, L"Button", L"Add", {84, 180, 24, 14}, Push},
        {1013, L"Button", L"Refresh", {36, 198, 50, 14}, Push},
        {None, L"Static", L"Ledger Composer", {150, 12, 72, 8}, Label},
        {None, L"Static", L"#135", {126, 6, 0, 0}, Icon},
        {1020, L"SYSLISTVIEW32", L"", {126, 30, 96, 78}, List},
        {None, L"Static", L"Site Keeper", {366, 12, 66, 8}, Label},
        {None, L"Static", L"#128", {342, 6, 0, 0}, Icon},
        {1022, L"SYSLISTVIEW32", L"", {342, 30, 90, 78}, List},
        {None, L"Static", L"Sheet Writer", {150, 120, 72, 8}, Label},
        {None, L"Static", L"#136", {126, 114, 0, 0}, Icon},
        {1023, L"SYSLISTVIEW32", L"", {126, 138, 96, 78}, List},
        {None, L"Static", L"Norm Keeper", {258, 120, 72, 8}, Label},
        {None, L"Static", L"#137", {234, 114, 0, 0}, Icon},
        {1024, L"SYSLISTVIEW32", L"", {234, 138, 96, 78}, List},
        {1, L"Button", L"OK", {378, 162, 50, 14}, Shown | BS_DEFPUSHBUTTON | WS_TABSTOP},
        {2, L"Button", L"Cancel", {378, 180, 50, 14}, Push},
        {1009, L"Button", L"Help...", {378, 198, 50, 14}, Push},
    };
    return Table;
}

TEST_F(UserAccessTest, HasTheControlsOfTheTableInItsOrder)
{
    const DialogTemplate dialog = ReadTemplate(m_app.ResourceBytes(RT_DIALOG, 134));
    EXPECT_EQ(dialog.title, L"User Access");
    EXPECT_EQ(dialog.place.width, 442);
    EXPECT_EQ(dialog.place.height, 222);
    EXPECT_EQ(dialog.fontFace, L"MS Shell Dlg");
    EXPECT_EQ(dialog.fontSize, 8);
    EXPECT_THAT(dialog.items, testing::ElementsAreArray(Controls()));
}

TEST_F(UserAccessTest, StartsInTheKnownUsersAndTabsThroughTheControls)
{
    Run({Do("look",
            [](const UserAccessPage& page) {
                EXPECT_TRUE(page.HasFocus(UserList));
                std::vector<int> order;
                HWND control = page.Control(UserList);
                do {
                    order.push_back(::GetDlgCtrlID(control));
                    control = ::GetNextDlgTabItem(page.Window(), control, FALSE);
                } while (control != page.Control(UserList) && order.size() < 20);
                EXPECT_EQ(order, (std::vector<int>{UserList, NewUserField, AddButton, RefreshButton, LedgerComposerList,
                                                   SiteKeeperList, SheetWriterList, NormKeeperList, IDOK, IDCANCEL,
                                                   HelpButton}));
            }),
         Press(IDCANCEL)});
}

} // namespace
} // namespace sitekeeper
