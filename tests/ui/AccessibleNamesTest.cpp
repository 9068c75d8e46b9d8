// What the program says of its controls to those who do not see them, read back through the accessibility interface.
#include "controls/ButtonST.h"
#include "support/MainDialogFixture.h"
#include "support/Wine.h"
#include "win32/Handles.h"

#include <windows.h>

#include <oleacc.h>

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

// The roles by which the tables below call the kinds of controls.
constexpr long Button = ROLE_SYSTEM_PUSHBUTTON;
constexpr long Field = ROLE_SYSTEM_TEXT;
constexpr long List = ROLE_SYSTEM_LIST;
constexpr long Tree = ROLE_SYSTEM_OUTLINE;

VARIANT Self()
{
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
}

constexpr long NoRole = 0;

long RoleOf(IAccessible& object)
{
    VARIANT role{};
    return SUCCEEDED(object.get_accRole(Self(), &role)) && role.vt == VT_I4 ? role.lVal : NoRole;
}

std::wstring NameOf(IAccessible& object)
{
    BSTR name = nullptr;
    if (object.get_accName(Self(), &name) != S_OK || name == nullptr) {
        return L"(no name)";
    }
    std::wstring text(name, ::SysStringLen(name));
    ::SysFreeString(name);
    return text;
}

/// What a control is said to be.
struct Described
{
    int id;
    long role;
    std::wstring name;

    bool operator==(const Described&) const = default;

    friend void PrintTo(const Described& control, std::ostream* out)
    {
        *out << control.id << " role " << control.role << " " << testing::PrintToString(control.name);
    }
};

/// As a program that reads the screen asks.
Described Describe(HWND control)
{
    ComPtr<IAccessible> object;
    const int id = ::GetDlgCtrlID(control);
    if (FAILED(::AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                            reinterpret_cast<void**>(object.put())))) {
        return {id, NoRole, L"(no answer)"};
    }
    return {id, RoleOf(*object.get()), NameOf(*object.get())};
}

/// The controls of a dialog that take the focus, in the order of the Tab key.
std::vector<Described> ControlsOf(HWND dialog)
{
    std::vector<Described> controls;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto style = static_cast<DWORD>(::GetWindowLongPtrW(child, GWL_STYLE));
        if ((style & (WS_TABSTOP | WS_VISIBLE)) == (WS_TABSTOP | WS_VISIBLE)) {
            controls.push_back(Describe(child));
        }
    }
    return controls;
}

/// Wine 8 knows the role of a field; every other control is a client area to it.
testing::Matcher<std::vector<Described>> Are(std::vector<Described> controls)
{
    if (IsWine()) {
        for (Described& control : controls) {
            control.role = control.role == Field ? Field : ROLE_SYSTEM_CLIENT;
        }
    }
    return testing::ElementsAreArray(controls);
}

class AccessibleNamesTest : public MainDialogTest
{
protected:
    using Look = std::function<void(HWND)>;

    /// Opens a dialog above the main one with its command, looks, and cancels both.
    void LookAbove(int command, const Look& look)
    {
        Run({Choose(command),
             Await("wait for the dialog",
                   [](const MainDialogPage& page) {
                       const HWND top = DialogPage::OnTop().Window();
                       return top != nullptr && top != page.Window();
                   }),
             Do("look",
                [&look](const MainDialogPage&) {
                    const DialogPage box = DialogPage::OnTop();
                    look(box.Window());
                    ::PostMessageW(box.Window(), WM_COMMAND, IDCANCEL, 0);
                }),
             Await("wait for its end",
                   [](const MainDialogPage& page) { return ::IsWindowEnabled(page.Window()) != FALSE; }),
             Press(IDCANCEL)});
    }

    void LookAtMain(const Look& look)
    {
        Run({Do("look", [&look](const MainDialogPage& page) { look(page.Window()); }), Press(IDCANCEL)});
    }
};

TEST_F(AccessibleNamesTest, OfTheMainDialog)
{
    LookAtMain([](HWND dialog) {
        EXPECT_THAT(ControlsOf(dialog), Are({
                                            {1, Button, L"OK"},
                                            {2, Button, L"Cancel"},
                                            {1000, Field, L"Program Path:"},
                                            {1008, Button, L"Open Program Path"},
                                            {1001, Field, L"Application Path:"},
                                            {1002, Button, L"Select the Application Path"},
                                            {1010, Button, L"Open Application Path"},
                                            {1003, Field, L"Datafiles Path:"},
                                            {1004, Button, L"Select the Datafiles Path"},
                                            {1011, Button, L"Open Datafiles Path"},
                                            {1009, Button, L"Help..."},
                                        }));
    });
}

TEST_F(AccessibleNamesTest, OfTheListsOfUsers)
{
    LookAbove(32776, [](HWND dialog) {
        EXPECT_THAT(ControlsOf(dialog), Are({
                                            {1018, List, L"Users"},
                                            {1019, Field, L"New user"},
                                            {1007, Button, L"Add"},
                                            {1013, Button, L"Refresh"},
                                            {1020, List, L"Ledger Composer"},
                                            {1022, List, L"Site Keeper"},
                                            {1023, List, L"Sheet Writer"},
                                            {1024, List, L"Norm Keeper"},
                                            {1, Button, L"OK"},
                                            {2, Button, L"Cancel"},
                                            {1009, Button, L"Help..."},
                                        }));
    });
}

TEST_F(AccessibleNamesTest, OfTheShortcuts)
{
    LookAbove(32777, [](HWND dialog) {
        EXPECT_THAT(ControlsOf(dialog), Are({{1017, Tree, L"Shortcuts"}, {1, Button, L"OK"}, {2, Button, L"Cancel"}}));
    });
}

TEST_F(AccessibleNamesTest, OfTheAboutBox)
{
    LookAbove(32773, [](HWND dialog) { EXPECT_THAT(ControlsOf(dialog), Are({{1, Button, L"OK"}})); });
}

TEST_F(AccessibleNamesTest, ANamedControlIsTheSystemsOwnInEverythingElse)
{
    LookAtMain([](HWND dialog) {
        const HWND button = ::GetDlgItem(dialog, 1002);
        ComPtr<IAccessible> named;
        ComPtr<IAccessible> standard;
        ASSERT_EQ(::AccessibleObjectFromWindow(button, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                               reinterpret_cast<void**>(named.put())),
                  S_OK);
        ASSERT_EQ(::CreateStdAccessibleObject(button, OBJID_CLIENT, IID_IAccessible,
                                              reinterpret_cast<void**>(standard.put())),
                  S_OK);
        EXPECT_EQ(NameOf(*standard.get()), L"(no name)") << "nothing on the button says what it does";
        VARIANT namedState{};
        VARIANT standardState{};
        EXPECT_EQ(named->get_accState(Self(), &namedState), standard->get_accState(Self(), &standardState));
        EXPECT_EQ(namedState.lVal, standardState.lVal);
        std::array<long, 4> place{};
        std::array<long, 4> wanted{};
        named->accLocation(place.data(), &place[1], &place[2], &place[3], Self());
        standard->accLocation(wanted.data(), &wanted[1], &wanted[2], &wanted[3], Self());
        EXPECT_EQ(place, wanted);
        HWND window = nullptr;
        ASSERT_EQ(::WindowFromAccessibleObject(named.get(), &window), S_OK);
        EXPECT_EQ(window, button);
        EXPECT_EQ(TextOf(button), L"") << "the name is not drawn";
    });
}

TEST_F(AccessibleNamesTest, ANamedObjectOutlivesItsControl)
{
    ComPtr<IAccessible> kept;
    LookAtMain([&kept](HWND dialog) {
        ::AccessibleObjectFromWindow(::GetDlgItem(dialog, 1008), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                     reinterpret_cast<void**>(kept.put()));
    });
    ASSERT_TRUE(kept);
    EXPECT_EQ(NameOf(*kept.get()), L"Open Program Path");
    VARIANT state{};
    EXPECT_TRUE(FAILED(kept->get_accState(Self(), &state)) || (state.lVal & STATE_SYSTEM_UNAVAILABLE) != 0 ||
                (state.lVal & STATE_SYSTEM_INVISIBLE) != 0)
        << "there is nothing any more to press";
}

TEST_F(AccessibleNamesTest, AChangeOfTheSystemsColoursReachesTheButtons)
{
    LookAtMain([](HWND dialog) {
        for (const int id : {1002, 1004, 1008, 1010, 1011}) {
            auto* const button = dynamic_cast<CButtonST*>(CWnd::FromHandle(::GetDlgItem(dialog, id)));
            ASSERT_NE(button, nullptr) << id;
            const ButtonColours former{RGB(1, 2, 3), RGB(4, 5, 6)};
            button->SetColors(former, former, former, false);
        }
        ::SendMessageW(dialog, WM_SYSCOLORCHANGE, 0, 0);
        for (const int id : {1002, 1004, 1008, 1010, 1011}) {
            const auto* const button = dynamic_cast<CButtonST*>(CWnd::FromHandle(::GetDlgItem(dialog, id)));
            EXPECT_EQ(button->Style().normal.background, ::GetSysColor(COLOR_BTNFACE)) << id;
            EXPECT_EQ(button->Style().focused.text, ::GetSysColor(COLOR_BTNTEXT)) << id;
        }
    });
}

} // namespace
} // namespace sitekeeper
