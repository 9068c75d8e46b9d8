// The About box, and the commands that lead to it.
#include "app/DlgOccManager.h"
#include "maindlg/AboutDlg.h"
#include "support/Capture.h"
#include "support/MainDialogFixture.h"
#include "support/TemplateReader.h"
#include "support/VersionBlockBuilder.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;

constexpr int AboutCommand = 32773;
constexpr int AboutSystemCommand = 16;
constexpr int AboutText = 1008;
constexpr std::uint32_t None = 0xFFFFFFFF;

std::vector<std::byte> Block()
{
    return VersionNode(
        L"VS_VERSION_INFO", ValueKind::Binary, std::vector<std::byte>(52),
        {VersionNode(L"StringFileInfo", ValueKind::Text, {},
                     {VersionNode(L"040904b0", ValueKind::Text, {},
                                  {TextNode(L"FileDescription", L"Keeper & Co"), TextNode(L"FileVersion", L"5.1.0.0"),
                                   TextNode(L"ProductVersion", L"2023"), TextNode(L"LegalCopyright", L"\u00A9 X")})}),
         VersionNode(L"VarFileInfo", ValueKind::Text, {},
                     {VersionNode(L"Translation", ValueKind::Binary, Translations({0x0409, 0x04B0}))})});
}

class AboutTest : public MainDialogTest
{
protected:
    /// Opens the box with `open`, lets `look` see it, closes it and the dialog.
    void ShowAbout(const DriverStep& open, const std::function<void(const DialogPage&)>& look)
    {
        EXPECT_EQ(Run({open,
                       Await("wait for the box",
                             [](const MainDialogPage& page) {
                                 return DialogPage::OnTop().Window() != page.Window() &&
                                        DialogPage::OnTop().Title() == L"About Site Keeper";
                             }),
                       Do("look at the box",
                          [&look](const MainDialogPage& page) {
                              EXPECT_EQ(::IsWindowEnabled(page.Window()), FALSE);
                              EXPECT_EQ(::GetWindow(DialogPage::OnTop().Window(), GW_OWNER), page.Window());
                              look(DialogPage::OnTop());
                              DialogPage::OnTop().Click(IDOK);
                          }),
                       Await("wait for its end",
                             [](const MainDialogPage& page) { return ::IsWindowEnabled(page.Window()) != FALSE; }),
                       Press(IDCANCEL)}),
                  IDCANCEL);
    }
    [[nodiscard]] std::wstring ShownText()
    {
        std::wstring text;
        ShowAbout(Choose(AboutCommand), [&text](const DialogPage& box) {
            text = box.Text(AboutText);
            CaptureWindow(box.Window()).Save(L"about");
        });
        return text;
    }
};

TEST_F(AboutTest, HasTheControlsOfTheTable)
{
    constexpr std::uint32_t Shown = WS_CHILD | WS_VISIBLE;
    const DialogTemplate dialog = ReadTemplate(m_app.ResourceBytes(RT_DIALOG, 100));
    EXPECT_EQ(dialog.title, L"About Site Keeper");
    EXPECT_EQ(dialog.place.width, 250);
    EXPECT_EQ(dialog.place.height, 82);
    EXPECT_EQ(dialog.fontFace, L"MS Shell Dlg");
    EXPECT_EQ(dialog.fontSize, 8);
    EXPECT_THAT(
        dialog.items,
        ElementsAre(TemplateItem{None, L"STATIC", L"#128", {11, 17, 20, 20}, Shown | SS_ICON},
                    TemplateItem{1008, L"Static", L"Version 1.0", {40, 10, 206, 44}, Shown | SS_LEFT | SS_NOPREFIX},
                    TemplateItem{1, L"Button", L"OK", {102, 60, 50, 16}, Shown | BS_DEFPUSHBUTTON | WS_TABSTOP}));
}

TEST_F(AboutTest, TellsProgramSuiteAndCopyright)
{
    memory.versions.Set(m_programFile, Block());
    EXPECT_EQ(ShownText(), L"Keeper & Co Version 5.1.0.0\n\nORIVEL LX Version 2023\n\n\u00A9 X");
    memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"ProductUpdate", L"3");
    EXPECT_EQ(ShownText(), L"Keeper & Co Version 5.1.0.0\n\nORIVEL LX Version 2023    Update 3\n\n\u00A9 X");
}

TEST_F(AboutTest, OpensWithoutAVersionResource)
{
    EXPECT_EQ(ShownText(), L" Version \n\nORIVEL LX Version 2023\n\n");
}

TEST_F(AboutTest, OpensFromTheSystemMenu)
{
    std::wstring text;
    bool hasFocus = false;
    ShowAbout(ChooseSystem(AboutSystemCommand), [&](const DialogPage& box) {
        text = box.Text(AboutText);
        hasFocus = box.HasFocus(IDOK);
    });
    EXPECT_EQ(text, L" Version \n\nORIVEL LX Version 2023\n\n");
    EXPECT_TRUE(hasFocus);
}

} // namespace
} // namespace sitekeeper
