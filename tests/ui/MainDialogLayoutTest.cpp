// The look of the main dialog: what its template, menu and strings say, and what a user sees of them.
#include "app/DlgOccManager.h"
#include "support/Capture.h"
#include "support/IconPixels.h"
#include "support/MainDialogFixture.h"
#include "support/TemplateReader.h"

#include <windows.h>

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Not;

constexpr std::uint32_t NoId = 0xFFFFFFFF;

// Styles of the kinds of controls, as the table below puts them together.
constexpr std::uint32_t Shown = WS_CHILD | WS_VISIBLE;
constexpr std::uint32_t Hidden = WS_CHILD;
constexpr std::uint32_t HiddenAndDisabled = WS_CHILD | WS_DISABLED;
constexpr std::uint32_t Label = SS_LEFT | WS_GROUP;
constexpr std::uint32_t Push = BS_PUSHBUTTON | WS_TABSTOP;
constexpr std::uint32_t Default = BS_DEFPUSHBUTTON | WS_TABSTOP;
constexpr std::uint32_t Edit = ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr std::uint32_t DropDownList = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;
constexpr std::uint32_t DropDown = CBS_DROPDOWN | WS_VSCROLL | WS_TABSTOP;
constexpr std::uint32_t Picker = DTS_RIGHTALIGN | DTS_SHORTDATEFORMAT | WS_TABSTOP;

/// The controls in the order of the Tab key.
const std::vector<TemplateItem>& Controls()
{
    static const std::vector<TemplateItem> Table = {
        {1, L"Button", L"OK", {80, 194, 50, 16}, Shown | Default},
        {2, L"Button", L"Cancel", {140, 194, 50, 16}, Shown | Push},
        {NoId, L"Static", L"Program Path:", {12, 6, 47, 8}, Shown | Label},
        {1000, L"Edit", L"", {12, 18, 210, 12}, Shown | Edit | ES_READONLY},
        {1008, L"Button", L"", {228, 18, 17, 12}, Shown | Push},
        {NoId, L"Static", L"Application Path:", {12, 42, 55, 8}, Shown | Label},
        {1001, L"Edit", L"", {12, 54, 186, 12}, Shown | Edit},
        {1002, L"Button", L"", {204, 54, 17, 12}, Shown | Push},
        {1010, L"Button", L"", {228, 54, 17, 12}, Shown | Push},
        {NoId, L"Static", L"Datafiles Path:", {12, 78, 48, 8}, Shown | Label},
        {1003, L"Edit", L"", {12, 91, 186, 12}, Shown | Edit},
        {1004, L"Button", L"", {204, 90, 17, 12}, Shown | Push},
        {1011, L"Button", L"", {228, 90, 17, 12}, Shown | Push},
        {1009, L"Button", L"Help...", {214, 194, 50, 16}, Shown | Push},
        {1033, L"Static", L"AutoCAD Session:", {7, 116, 59, 8}, Hidden | Label},
        {1014, L"ComboBox", L"", {69, 116, 114, 78}, Hidden | DropDownList},
        {1029, L"Static", L"AutoCAD Profile:", {7, 137, 55, 8}, Hidden | Label},
        {1028, L"Edit", L"", {69, 137, 98, 12}, Hidden | Edit},
        {NoId, L"Static", L"Menu Icon Size:", {7, 161, 52, 8}, Hidden | Label},
        {1037, L"ComboBox", L"", {69, 158, 65, 54}, Hidden | DropDown},
        {NoId, L"Static", L"Check web for updates on", {12, 154, 85, 8}, HiddenAndDisabled | Label},
        {1026, L"SysDateTimePick32", L"", {102, 150, 60, 15}, HiddenAndDisabled | Picker},
        {NoId, L"Static", L"and every", {168, 154, 34, 8}, HiddenAndDisabled | Label},
        {1027, L"Edit", L"", {204, 151, 24, 14}, HiddenAndDisabled | Edit},
        {NoId, L"Static", L"days", {234, 154, 16, 8}, HiddenAndDisabled | Label},
    };
    return Table;
}

class MainDialogLayoutTest : public MainDialogTest
{
protected:
    /// Opens the dialog, looks, and cancels.
    void Look(Gesture gesture) { Run({Do("look", std::move(gesture)), Press(IDCANCEL)}); }

    [[nodiscard]] DialogTemplate Resource() const { return ReadTemplate(m_app.ResourceBytes(RT_DIALOG, 102)); }
};

// --- the template ----------------------------------------------------------------------------------------------------

TEST_F(MainDialogLayoutTest, HasTheControlsOfTheTableInItsOrder)
{
    std::vector<TemplateItem> items = Resource().items;
    for (TemplateItem& item : items) {
        if (item.windowClass == L"Static") {
            item.style |= WS_GROUP; // the resource compiler leaves it out where other styles are named; nobody sees it
        }
    }
    EXPECT_THAT(items, ElementsAreArray(Controls()));
}

TEST_F(MainDialogLayoutTest, IsAFixedDialogWithCaptionAndMinimiseBox)
{
    const DialogTemplate resource = Resource();
    EXPECT_EQ(resource.place, (UnitRectangle{0, 0, 271, 217}));
    EXPECT_EQ(resource.style,
              DWORD{DS_MODALFRAME | DS_SHELLFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX});
    EXPECT_EQ(resource.extendedStyle, DWORD{WS_EX_APPWINDOW});
    EXPECT_EQ(resource.title, L" ");
    EXPECT_EQ(resource.menu, L"#133");
    EXPECT_EQ(resource.windowClass, L"");
    EXPECT_EQ(resource.fontFace, L"MS Shell Dlg");
    EXPECT_EQ(resource.fontSize, 8);
}

TEST_F(MainDialogLayoutTest, IsOnTheScreenAsTheTemplateSays)
{
    Look([](const MainDialogPage& page) {
        EXPECT_EQ(page.Title(), L" ");
        EXPECT_EQ(page.ClientInUnits(), (UnitRectangle{0, 0, 271, 217}));
        const auto style = static_cast<DWORD>(::GetWindowLongPtrW(page.Window(), GWL_STYLE));
        const auto extended = static_cast<DWORD>(::GetWindowLongPtrW(page.Window(), GWL_EXSTYLE));
        constexpr DWORD Wanted = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_POPUP | WS_VISIBLE;
        EXPECT_EQ(style & Wanted, Wanted);
        EXPECT_EQ(style & (WS_THICKFRAME | WS_MAXIMIZEBOX), 0U);
        EXPECT_NE(extended & WS_EX_APPWINDOW, 0U);
        EXPECT_NE(extended & WS_EX_DLGMODALFRAME, 0U);
        EXPECT_EQ(::GetWindow(page.Window(), GW_OWNER), nullptr);
        for (const TemplateItem& item : Controls()) {
            if (item.id == NoId) {
                continue;
            }
            const int id = static_cast<int>(item.id);
            EXPECT_EQ(page.ClassOf(id), item.windowClass) << id;
            EXPECT_EQ(page.IsVisible(id), (item.style & WS_VISIBLE) != 0) << id;
            EXPECT_EQ(page.IsEnabled(id), (item.style & WS_DISABLED) == 0) << id;
            if (item.windowClass != L"ComboBox") { // its height is that of the list
                EXPECT_EQ(page.RectangleInUnits(id), item.place) << id;
            }
        }
    });
}

TEST_F(MainDialogLayoutTest, HasNothingInTheLists)
{
    Look([](const MainDialogPage& page) {
        EXPECT_EQ(::SendMessageW(page.Control(1014), CB_GETCOUNT, 0, 0), 0);
        EXPECT_EQ(::SendMessageW(page.Control(1037), CB_GETCOUNT, 0, 0), 0);
    });
}

// --- the font --------------------------------------------------------------------------------------------------------

TEST_F(MainDialogLayoutTest, HasTheSuitesFontInEveryControl)
{
    Look([](const MainDialogPage& page) {
        auto* const font = reinterpret_cast<HFONT>(::SendMessageW(page.Window(), WM_GETFONT, 0, 0));
        LOGFONTW description{};
        ASSERT_NE(::GetObjectW(font, sizeof description, &description), 0);
        EXPECT_STREQ(description.lfFaceName, L"Segoe UI");
        // A negative size in points is the height of the whole cell: 14 points.
        const WindowDc dc(nullptr);
        EXPECT_EQ(description.lfHeight, ::MulDiv(14, ::GetDeviceCaps(dc.get(), LOGPIXELSY), 72));
        EXPECT_EQ(description.lfWeight, FW_NORMAL);
        for (const TemplateItem& item : Controls()) {
            if (item.id != NoId && item.windowClass != L"SysDateTimePick32") {
                const HWND control = page.Control(static_cast<int>(item.id));
                EXPECT_EQ(reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)), font) << item;
            }
        }
    });
}

TEST_F(MainDialogLayoutTest, GivesEveryDialogTheSuitesFontAndChangesNothingElse)
{
    const std::vector<UINT> dialogs = DialogNumbers(m_app.Instance());
    ASSERT_THAT(dialogs, testing::Contains(102U));
    CDlgOccManager manager;
    for (const UINT id : dialogs) {
        const auto bytes = m_app.ResourceBytes(RT_DIALOG, id);
        const auto changedBytes = manager.PreCreateDialog(bytes);
        ASSERT_TRUE(changedBytes) << id;
        const DialogTemplate before = ReadTemplate(bytes);
        const DialogTemplate after = ReadTemplate(*changedBytes);
        EXPECT_EQ(after.fontFace, L"Segoe UI") << id;
        EXPECT_EQ(after.fontSize, 0xFFF2) << id;
        EXPECT_EQ(after.fontWeight, before.fontWeight) << id;
        EXPECT_EQ(after.style, before.style) << id;
        EXPECT_EQ(after.title, before.title) << id;
        EXPECT_EQ(after.menu, before.menu) << id;
        EXPECT_EQ(after.items, before.items) << id;
    }
}

// --- menus and strings -----------------------------------------------------------------------------------------------

TEST_F(MainDialogLayoutTest, HasItsMenu)
{
    Look([](const MainDialogPage& page) {
        const HMENU menu = ::GetMenu(page.Window());
        EXPECT_THAT(MenuLines(menu), ElementsAre(L"> &File", L"> &Edit", L"> &Help"));
        EXPECT_THAT(MenuLines(::GetSubMenu(menu, 0)), ElementsAre(L"57607 &Print...", L"-", L"32771 Exit"));
        EXPECT_THAT(MenuLines(::GetSubMenu(menu, 1)),
                    ElementsAre(L"32780 &Add File Paths to Trusted Path (grayed)", L"32779 &Install AutoCAD OEM", L"-",
                                L"32777 &Manage Shortcuts..."));
        EXPECT_THAT(MenuLines(::GetSubMenu(menu, 2)), ElementsAre(L"32772 Help...", L"32773 About Site Keeper..."));
    });
}

TEST_F(MainDialogLayoutTest, AddsTwoItemsToTheSystemMenu)
{
    Look([](const MainDialogPage& page) {
        const std::vector<std::wstring> lines = MenuLines(::GetSystemMenu(page.Window(), FALSE));
        ASSERT_GT(lines.size(), 4U) << "the system's own items are still there";
        EXPECT_THAT(std::vector(lines.end() - 4, lines.end()),
                    ElementsAre(L"-", L"17 Select Program Path", L"-", L"16 &About Site Keeper..."));
        EXPECT_THAT(*(lines.end() - 5), Not(L"-"));
    });
}

TEST_F(MainDialogLayoutTest, HasItsStrings)
{
    EXPECT_EQ(m_app.ResourceText(57344), L"SiteKeeper");
    EXPECT_EQ(m_app.ResourceText(101), L"&About Site Keeper...");
    EXPECT_EQ(m_app.AppName(), L"SiteKeeper");
}

// --- icons and tooltips ----------------------------------------------------------------------------------------------

UniqueIcon ProgramIcon(UINT id)
{
    return UniqueIcon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR)));
}

TEST_F(MainDialogLayoutTest, HasTheProgramsIconBigAndSmall)
{
    Look([](const MainDialogPage& page) {
        auto* const big = reinterpret_cast<HICON>(::SendMessageW(page.Window(), WM_GETICON, ICON_BIG, 0));
        ASSERT_NE(big, nullptr);
        EXPECT_EQ(::SendMessageW(page.Window(), WM_GETICON, ICON_SMALL, 0), reinterpret_cast<LRESULT>(big));
        EXPECT_EQ(::SendMessageW(page.Window(), WM_QUERYDRAGICON, 0, 0), reinterpret_cast<LRESULT>(big));
        const IconPixels shown = PixelsOf(big);
        EXPECT_EQ(shown.colours.size(), 16U * 16U);
        EXPECT_EQ(shown.colours, PixelsOf(ProgramIcon(128).get()).colours);
    });
}

/// Some place of the picture shows every opaque pixel of the icon.
bool ShowsIcon(const MemoryBitmap& picture, HICON icon)
{
    const IconPixels pixels = PixelsOf(icon);
    const std::vector<std::uint32_t> shown = picture.Pixels();
    const auto matchesAt = [&](int left, int top) {
        const auto width = static_cast<std::size_t>(picture.Width());
        const std::size_t first = static_cast<std::size_t>(top) * width + static_cast<std::size_t>(left);
        for (std::size_t index = 0; index < std::size_t{16} * 16; ++index) {
            const std::size_t place = first + index / 16 * width + index % 16;
            if (pixels.colours[index] >> 24 == 0xFF && shown[place] != (pixels.colours[index] & 0xFFFFFF)) {
                return false;
            }
        }
        return true;
    };
    for (int top = 0; top + 16 <= picture.Height(); ++top) {
        for (int left = 0; left + 16 <= picture.Width(); ++left) {
            if (matchesAt(left, top)) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(MainDialogLayoutTest, ShowsItsIconsOnTheButtons)
{
    Look([](const MainDialogPage& page) {
        const UniqueIcon browse = ProgramIcon(129);
        const UniqueIcon open = ProgramIcon(130);
        for (const int button : {1002, 1004}) {
            const MemoryBitmap picture = CaptureWindow(page.Control(button));
            EXPECT_TRUE(ShowsIcon(picture, browse.get())) << button;
            EXPECT_FALSE(ShowsIcon(picture, open.get())) << button;
        }
        for (const int button : {1008, 1010, 1011}) {
            const MemoryBitmap picture = CaptureWindow(page.Control(button));
            EXPECT_TRUE(ShowsIcon(picture, open.get())) << button;
            EXPECT_FALSE(ShowsIcon(picture, browse.get())) << button;
        }
        CaptureWindow(page.Window()).Save(L"main-dialog");
    });
}

TEST_F(MainDialogLayoutTest, ExplainsItsButtonsInTooltips)
{
    Look([](const MainDialogPage& page) {
        EXPECT_EQ(page.TipOf(1002), L"Select the Application Path");
        EXPECT_EQ(page.TipOf(1004), L"Select the Datafiles Path");
        for (const int button : {1008, 1010, 1011}) {
            EXPECT_EQ(page.TipOf(button), L"Open folder in Windows Explorer") << button;
        }
    });
}

} // namespace
} // namespace sitekeeper
