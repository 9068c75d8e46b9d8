// What the program says of its controls to those who do not see them, read back through the accessibility interface.
#include "controls/ButtonST.h"
#include "frame/Handles.h"
#include "support/MainDialogFixture.h"

#include <windows.h>

#include <oleacc.h>

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

using testing::ElementsAre;

VARIANT Self()
{
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
}

std::wstring RoleOf(IAccessible& object)
{
    VARIANT role{};
    if (FAILED(object.get_accRole(Self(), &role)) || role.vt != VT_I4) {
        return L"(no role)";
    }
    std::array<wchar_t, 64> text{};
    ::GetRoleTextW(static_cast<DWORD>(role.lVal), text.data(), static_cast<UINT>(text.size()));
    return text.data();
}

std::wstring NameOf(IAccessible& object)
{
    BSTR name = nullptr;
    if (object.get_accName(Self(), &name) != S_OK || name == nullptr) {
        return L"(no name)";
    }
    const std::wstring text(name, ::SysStringLen(name));
    ::SysFreeString(name);
    return text;
}

/// "<id> <role>: <name>", asked as a program that reads the screen asks.
std::wstring LineOf(HWND control)
{
    ComPtr<IAccessible> object;
    const std::wstring id = std::to_wstring(::GetDlgCtrlID(control));
    if (FAILED(::AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                            reinterpret_cast<void**>(object.put())))) {
        return id + L" (no answer)";
    }
    return id + L" " + RoleOf(*object.get()) + L": " + NameOf(*object.get());
}

/// The controls of a dialog that take the focus, in the order of the Tab key.
std::vector<std::wstring> LinesOf(HWND dialog)
{
    std::vector<std::wstring> lines;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto style = static_cast<DWORD>(::GetWindowLongPtrW(child, GWL_STYLE));
        if ((style & (WS_TABSTOP | WS_VISIBLE)) == (WS_TABSTOP | WS_VISIBLE)) {
            lines.push_back(LineOf(child));
        }
    }
    return lines;
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
        EXPECT_THAT(LinesOf(dialog),
                    ElementsAre(L"1 push button: OK", L"2 push button: Cancel",
                                L"1000 editable text: Program Path:", //
                                L"1008 push button: Open Program Path", L"1001 editable text: Application Path:",
                                L"1002 push button: Select the Application Path",
                                L"1010 push button: Open Application Path", L"1003 editable text: Datafiles Path:",
                                L"1004 push button: Select the Datafiles Path",
                                L"1011 push button: Open Datafiles Path", //
                                L"1009 push button: Help..."));
    });
}

TEST_F(AccessibleNamesTest, OfTheListsOfUsers)
{
    LookAbove(32776, [](HWND dialog) {
        EXPECT_THAT(LinesOf(dialog),
                    ElementsAre(L"1018 list: Users", L"1019 editable text: New user", L"1007 push button: Add",
                                L"1013 push button: Refresh", L"1020 list: Ledger Composer", L"1022 list: Site Keeper",
                                L"1023 list: Sheet Writer", L"1024 list: Norm Keeper", L"1 push button: OK",
                                L"2 push button: Cancel", L"1009 push button: Help..."));
    });
}

TEST_F(AccessibleNamesTest, OfTheShortcuts)
{
    LookAbove(32777, [](HWND dialog) {
        EXPECT_THAT(LinesOf(dialog),
                    ElementsAre(L"1017 outline: Shortcuts", L"1 push button: OK", L"2 push button: Cancel"));
    });
}

TEST_F(AccessibleNamesTest, OfTheAboutBox)
{
    LookAbove(32773, [](HWND dialog) { EXPECT_THAT(LinesOf(dialog), ElementsAre(L"1 push button: OK")); });
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
        named->accLocation(&place[0], &place[1], &place[2], &place[3], Self());
        standard->accLocation(&wanted[0], &wanted[1], &wanted[2], &wanted[3], Self());
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
