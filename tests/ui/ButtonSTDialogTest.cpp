// Bitmap buttons in a real dialog, worked with the real mouse and keyboard.
#include "controls/ButtonST.h"
#include "frame/Dialog.h"
#include "res/ResourceIds.h"
#include "res/UiTestIds.h"
#include "support/Capture.h"
#include "support/DialogPage.h"
#include "support/IconPixels.h"
#include "support/Input.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A button whose links and sounds are noted, not opened or played.
class NotingButton final : public CButtonST
{
public:
    std::vector<std::wstring> opened;
    std::vector<std::wstring> played;

protected:
    void OpenLink(const std::wstring& url) override { opened.push_back(url); }
    void PlaySoundOf(const std::wstring& name) override { played.push_back(name); }
};

class ButtonDialog final : public CDialog
{
public:
    explicit ButtonDialog(CWinApp& app) : CDialog(app, IDD_TEST_BUTTONS) {}

    NotingButton icon;
    CButtonST second;
    CButtonST check;
    CButtonST ok;
    std::vector<int> commands;

protected:
    void DoDataExchange(CDataExchange& exchange) override
    {
        ExchangeControl(exchange, IDC_TEST_ICON_BUTTON, icon);
        ExchangeControl(exchange, IDC_TEST_SECOND_BUTTON, second);
        ExchangeControl(exchange, IDC_TEST_CHECK_BOX, check);
        ExchangeControl(exchange, IDOK, ok);
    }

    bool OnInitDialog() override
    {
        CDialog::OnInitDialog();
        icon.SetIcon(App().Instance(), IDI_BROWSE, 16, 16);
        second.SetIcon(App().Instance(), IDI_OPEN_FOLDER, 16, 16, CButtonST::DarkerCopy);
        for (CButtonST* const button : {static_cast<CButtonST*>(&icon), &second, &check, &ok}) {
            button->SetFlat(false, true);
        }
        icon.SetTooltipText(L"Browse for a folder", true);
        return true;
    }

    bool OnCommand(WORD id) override
    {
        commands.push_back(id);
        return CDialog::OnCommand(id);
    }
};

class ButtonDialogTest : public testing::Test
{
protected:
    /// Runs the dialog with these steps after it has come up; Cancel ends it, by its command.
    INT_PTR Run(std::vector<DriverStep> steps)
    {
        steps.insert(steps.begin(), {"wait for the dialog", [this] { return Page().IsOpen(); }});
        steps.push_back(Do([this] { Page().Command(IDCANCEL); }));
        ModalDriver driver(std::move(steps));
        const INT_PTR result = m_dialog.DoModal();
        EXPECT_THAT(m_app.Errors(), IsEmpty());
        return result;
    }

    [[nodiscard]] DialogPage Page() const { return DialogPage(m_dialog.Handle()); }

    static DriverStep Do(std::function<void()> action)
    {
        return {"act", [action = std::move(action)] {
                    action();
                    return true;
                }};
    }
    DriverStep MoveTo(int control)
    {
        return Do([this, control] { MoveMouse(Page().MiddleOf(control)); });
    }
    static DriverStep Click()
    {
        return Do([] {
            PressMouse();
            ReleaseMouse();
        });
    }
    DriverStep WaitForCommands(std::size_t count)
    {
        return {"wait for commands", [this, count] { return m_dialog.commands.size() >= count; }};
    }
    static DriverStep WaitUntil(std::string name, std::function<bool()> condition)
    {
        return {std::move(name), std::move(condition)};
    }

    TestApp m_app;
    ButtonDialog m_dialog{m_app};
};

TEST_F(ButtonDialogTest, AClickIsACommandOfTheDialog)
{
    Run({MoveTo(IDC_TEST_ICON_BUTTON), Click(), WaitForCommands(1)});
    EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_ICON_BUTTON, IDCANCEL));
}

TEST_F(ButtonDialogTest, AFastDoubleClickIsTwoClicks)
{
    Run({MoveTo(IDC_TEST_ICON_BUTTON), Do([] {
             for (int i = 0; i < 2; ++i) {
                 PressMouse();
                 ReleaseMouse();
             }
         }),
         WaitForCommands(2)});
    EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_ICON_BUTTON, IDC_TEST_ICON_BUTTON, IDCANCEL));
}

TEST_F(ButtonDialogTest, ShowsThatItIsPressed)
{
    Run({MoveTo(IDC_TEST_ICON_BUTTON), Do([] { PressMouse(); }),
         WaitUntil("wait for the pressed look", [this] { return m_dialog.icon.State().isPressed; }),
         Do([this] { CaptureWindow(m_dialog.Handle()).Save(L"button-dialog-pressed"); }), Do([] { ReleaseMouse(); }),
         WaitUntil("wait for the raised look", [this] { return !m_dialog.icon.State().isPressed; })});
}

TEST_F(ButtonDialogTest, LooksAsItsPaintingSays)
{
    bool isAlike = false;
    const auto compare = [this, &isAlike] {
        const MemoryBitmap window = CaptureWindow(m_dialog.icon.Handle());
        MemoryBitmap painted(window.Width(), window.Height(), RGB(255, 0, 255));
        m_dialog.icon.Paint(painted.Dc(), painted.Bounds(), m_dialog.icon.State().isFocused ? ODS_FOCUS : 0);
        isAlike = painted == window;
        CaptureWindow(m_dialog.Handle()).Save(L"button-dialog");
    };
    Run({Do(compare)});
    EXPECT_TRUE(isAlike);
}

TEST_F(ButtonDialogTest, TheKeyboardPressesIt)
{
    // Enter belongs to the button that has the focus, as to any push button.
    Run({WaitUntil("first focus", [this] { return Page().HasFocus(IDC_TEST_ICON_BUTTON); }),
         Do([] { PressKey(VK_SPACE); }), WaitForCommands(1), Do([] { PressKey(VK_TAB); }),
         WaitUntil("next focus", [this] { return Page().HasFocus(IDC_TEST_SECOND_BUTTON); }),
         Do([] { PressKey(VK_RETURN); }), WaitForCommands(2)});
    EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_ICON_BUTTON, IDC_TEST_SECOND_BUTTON, IDCANCEL));
}

TEST_F(ButtonDialogTest, TheDefaultMarkFollowsTheFocus)
{
    const auto focus = [this](const CButtonST& button) {
        return Do([this, &button] {
            ::SendMessageW(m_dialog.Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button.Handle()), TRUE);
        });
    };
    const auto isMarked = [](const CButtonST& button) {
        return WaitUntil("default mark", [&button] { return button.Style().isDefault; });
    };
    bool isOkMarked = true;
    bool isIconMarked = true;
    Run({isMarked(m_dialog.ok), focus(m_dialog.icon), isMarked(m_dialog.icon),
         Do([&] { isOkMarked = m_dialog.ok.Style().isDefault; }), focus(m_dialog.ok), isMarked(m_dialog.ok),
         Do([&] { isIconMarked = m_dialog.icon.Style().isDefault; })});
    EXPECT_FALSE(isOkMarked);
    EXPECT_FALSE(isIconMarked);
}

TEST_F(ButtonDialogTest, AClickChangesACheckBox)
{
    std::vector<bool> checks;
    const auto note = [this, &checks] { checks.push_back(m_dialog.check.GetCheck()); };
    Run({MoveTo(IDC_TEST_CHECK_BOX), Click(), WaitForCommands(1), Do(note), Click(), WaitForCommands(2), Do(note)});
    EXPECT_THAT(checks, ElementsAre(true, false));
}

TEST_F(ButtonDialogTest, TheTooltipComesUpUnderTheRestingMouse)
{
    bool isShown = false;
    Run({Do([this] { ::SendMessageW(m_dialog.icon.Tooltip(), TTM_SETDELAYTIME, TTDT_INITIAL, 10); }),
         MoveTo(IDC_TEST_ICON_BUTTON),
         WaitUntil("wait for the tip",
                   [this, &isShown] { return isShown = ::IsWindowVisible(m_dialog.icon.Tooltip()) != FALSE; }),
         Do([this] { CaptureWindow(m_dialog.icon.Tooltip()).Save(L"button-tooltip"); }), MoveTo(IDCANCEL)});
    EXPECT_TRUE(isShown);
    EXPECT_EQ(m_dialog.icon.Tooltip(), nullptr); // gone with the dialog
}

TEST_F(ButtonDialogTest, AFlatButtonFollowsTheMouse)
{
    std::vector<bool> hovers;
    Run({Do([this] {
             m_dialog.icon.SetFlat(true, true);
             m_dialog.icon.SetSounds(L"hover.wav", L"click.wav");
         }),
         MoveTo(IDCANCEL), MoveTo(IDC_TEST_ICON_BUTTON),
         WaitUntil("hovered", [this] { return m_dialog.icon.State().isHovered; }),
         Do([this] { CaptureWindow(m_dialog.Handle()).Save(L"button-dialog-hovered"); }), MoveTo(IDCANCEL),
         WaitUntil("no longer hovered", [this] { return !m_dialog.icon.State().isHovered; })});
    EXPECT_THAT(m_dialog.icon.played, ElementsAre(L"hover.wav"));
}

TEST_F(ButtonDialogTest, AClickOpensTheLinkPlaysTheSoundAndTellsTheDialog)
{
    Run({Do([this] {
             m_dialog.icon.SetURL(L"https://example.com/");
             m_dialog.icon.SetSounds(L"hover.wav", L"click.wav");
         }),
         Do([this] { Page().Click(IDC_TEST_ICON_BUTTON); }), WaitForCommands(1)});
    EXPECT_THAT(m_dialog.icon.opened, ElementsAre(L"https://example.com/"));
    EXPECT_THAT(m_dialog.icon.played, ElementsAre(L"click.wav"));
    EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_ICON_BUTTON, IDCANCEL));
}

TEST_F(ButtonDialogTest, AClickShowsTheMenuInstead)
{
    const auto menuWindow = [] { return ::FindWindowW(L"#32768", nullptr); };
    RECT menu{};
    RECT button{};
    Run({Do([this] {
             m_dialog.icon.SetMenu(UniqueMenu(::LoadMenuW(m_app.Instance(), MAKEINTRESOURCEW(IDR_TEST_MENU))),
                                   m_dialog.Handle());
             Page().Click(IDC_TEST_ICON_BUTTON);
         }),
         WaitUntil("menu", [menuWindow] { return ::IsWindowVisible(menuWindow()) != FALSE; }), Do([&, menuWindow] {
             ::GetWindowRect(menuWindow(), &menu);
             ::GetWindowRect(m_dialog.icon.Handle(), &button);
             PressKey(VK_DOWN);
             PressKey(VK_DOWN);
             PressKey(VK_RETURN);
         }),
         WaitForCommands(1)});
    EXPECT_EQ(menu.left, button.left);
    EXPECT_EQ(menu.top, button.bottom);
    EXPECT_THAT(m_dialog.commands, ElementsAre(ID_TEST_SECOND_ITEM, IDCANCEL));
}

TEST_F(ButtonDialogTest, ADisabledButtonAnswersNoClick)
{
    Run({Do([this] { ::EnableWindow(m_dialog.icon.Handle(), FALSE); }), MoveTo(IDC_TEST_ICON_BUTTON), Click(),
         MoveTo(IDC_TEST_SECOND_BUTTON), Click(), WaitForCommands(1)});
    EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_SECOND_BUTTON, IDCANCEL));
}

TEST_F(ButtonDialogTest, CanBeShownAgain)
{
    for (int i = 0; i < 2; ++i) {
        m_dialog.commands.clear();
        Run({MoveTo(IDC_TEST_ICON_BUTTON), Click(), WaitForCommands(1)});
        EXPECT_THAT(m_dialog.commands, ElementsAre(IDC_TEST_ICON_BUTTON, IDCANCEL));
    }
}

} // namespace
} // namespace sitekeeper
