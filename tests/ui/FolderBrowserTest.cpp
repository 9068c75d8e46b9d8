// The folder browser on the system's own folder picker.
#include "controls/FolderBrowser.h"

#include "support/DialogPage.h"
#include "support/ModalDriver.h"
#include "support/TestApp.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

// The controls of the system's picker.
constexpr int PickerTitle = 14146;
constexpr int PickerStatus = 14147;
constexpr int PickerNewFolder = 14150;

constexpr const wchar_t* Folder = L"C:\\windows\\system32";
constexpr UINT AppNameString = 57344;
constexpr UINT NoSuchString = 4711;

class FolderBrowserTest : public testing::Test
{
protected:
    using Gesture = std::function<void(const DialogPage&)>;

    static DriverStep WaitForPicker()
    {
        return {"wait for the picker", [] { return DialogPage::OnTop().Has(PickerTitle); }};
    }
    static DriverStep Do(Gesture gesture)
    {
        return {"a gesture", [gesture = std::move(gesture)] {
                    gesture(DialogPage::OnTop());
                    return true;
                }};
    }
    static DriverStep Answer(int button)
    {
        return Do([button](const DialogPage& page) { page.Command(button); });
    }
};

TEST_F(FolderBrowserTest, StartsAtTheGivenFolderAndAppendsABackslash)
{
    std::wstring title;
    std::wstring status;
    std::wstring path = Folder;
    {
        const ModalDriver driver({WaitForPicker(), Do([&](const DialogPage& page) {
                                      title = page.Text(PickerTitle);
                                      status = page.Text(PickerStatus);
                                  }),
                                  Answer(IDOK)});
        BrowseForFolderPath(L"Choose a folder for the test", path);
    }
    EXPECT_EQ(title, L"Choose a folder for the test");
    EXPECT_EQ(status, Folder);
    EXPECT_EQ(path, std::wstring(Folder) + L"\\");
}

TEST_F(FolderBrowserTest, SelectsTheGivenFolderAndShowsItInThisOrderEvenWhenItIsMissing)
{
    constexpr const wchar_t* Missing = L"C:\\no such folder";
    std::vector<std::wstring> sent;
    std::wstring path = Missing;
    {
        const MessageWatch watch([&sent](const CWPSTRUCT& call) {
            if (ClassNameOf(call.hwnd) == L"#32770" && call.message == BFFM_SETSELECTIONW) {
                EXPECT_EQ(call.wParam, WPARAM{TRUE}) << "a path, not an item";
                sent.push_back(std::wstring(L"select ") + reinterpret_cast<const wchar_t*>(call.lParam));
            } else if (ClassNameOf(call.hwnd) == L"#32770" && call.message == BFFM_SETSTATUSTEXTW) {
                sent.push_back(std::wstring(L"status ") + reinterpret_cast<const wchar_t*>(call.lParam));
            }
        });
        const ModalDriver driver({WaitForPicker(), Answer(IDCANCEL)});
        BrowseForFolderPath(L"Choose", path);
    }
    const auto selection = std::ranges::find(sent, std::wstring(L"select ") + Missing);
    ASSERT_NE(selection, sent.end());
    EXPECT_NE(std::find(selection, sent.end(), std::wstring(L"status ") + Missing), sent.end());
}

TEST_F(FolderBrowserTest, OffersNewFoldersAndAsksForAnyItem)
{
    PIDLIST_ABSOLUTE item = nullptr;
    ASSERT_TRUE(SUCCEEDED(::SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &item)));
    bool canMakeFolders = false;
    bool canChooseItem = false;
    std::wstring path = Folder;
    {
        const ModalDriver driver({WaitForPicker(), Do([item](const DialogPage& page) {
                                      ::SendMessageW(page.Window(), BFFM_SETSELECTIONW, FALSE,
                                                     reinterpret_cast<LPARAM>(item));
                                  }),
                                  Do([&](const DialogPage& page) {
                                      canMakeFolders = page.IsVisible(PickerNewFolder);
                                      canChooseItem = page.IsEnabled(IDOK);
                                  }),
                                  Answer(IDOK)});
        BrowseForFolderPath(L"Choose", path);
    }
    ::ILFree(item);
    EXPECT_TRUE(canMakeFolders);
    EXPECT_TRUE(canChooseItem);
    EXPECT_EQ(path, L"") << "it has no path, and no backslash is put behind nothing";
}

TEST_F(FolderBrowserTest, KeepsTheOneBackslashOfADrive)
{
    std::wstring path = L"C:\\";
    const ModalDriver driver({WaitForPicker(), Answer(IDOK)});
    BrowseForFolderPath(L"Choose", path);
    EXPECT_EQ(path, L"C:\\");
}

TEST_F(FolderBrowserTest, StartsAtTheDriveCWithoutAFolder)
{
    std::wstring status;
    std::wstring path;
    const ModalDriver driver(
        {WaitForPicker(), Do([&status](const DialogPage& page) { status = page.Text(PickerStatus); }), Answer(IDOK)});
    BrowseForFolderPath(L"Choose", path);
    EXPECT_EQ(status, L"C:\\");
    EXPECT_EQ(path, L"C:\\");
}

TEST_F(FolderBrowserTest, EmptiesThePathWhenCancelled)
{
    std::wstring path = Folder;
    const ModalDriver driver({WaitForPicker(), Answer(IDCANCEL)});
    BrowseForFolderPath(L"Choose", path);
    EXPECT_EQ(path, L"");
}

TEST_F(FolderBrowserTest, FollowsTheHighlightedFolder)
{
    std::wstring status;
    std::wstring path = Folder;
    const ModalDriver driver(
        {WaitForPicker(), Do([](const DialogPage& page) {
             ::SendMessageW(page.Window(), BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(L"C:\\windows"));
         }),
         Do([&status](const DialogPage& page) { status = page.Text(PickerStatus); }), Answer(IDOK)});
    BrowseForFolderPath(L"Choose", path);
    EXPECT_EQ(status, L"C:\\windows");
    EXPECT_EQ(path, L"C:\\windows\\");
}

TEST_F(FolderBrowserTest, TakesAnItemOutsideTheFileSystemForAChoiceWithoutAPath)
{
    // The list of the drives lies in no folder.
    PIDLIST_ABSOLUTE item = nullptr;
    ASSERT_TRUE(SUCCEEDED(::SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &item)));
    CBrowseForFolder browser;
    browser.SetFlags(BIF_NEWDIALOGSTYLE);
    browser.SetInitialFolder(Folder);
    std::wstring status = L"(not asked)";
    bool isChosen = false;
    {
        const ModalDriver driver(
            {WaitForPicker(), Do([item](const DialogPage& page) {
                 ::SendMessageW(page.Window(), BFFM_SETSELECTIONW, FALSE, reinterpret_cast<LPARAM>(item));
             }),
             Do([&status](const DialogPage& page) { status = page.Text(PickerStatus); }), Answer(IDOK)});
        isChosen = browser.SelectFolder();
    }
    ::ILFree(item);
    EXPECT_TRUE(isChosen);
    EXPECT_EQ(status, L"");
    EXPECT_EQ(browser.GetSelectedFolder(), L"");
}

// --- the parameter block ---------------------------------------------------------------------------------------------

/// Tries to change everything while the picker is open.
class MeddlingBrowser final : public CBrowseForFolder
{
public:
    void OnInit() override
    {
        wasOpen = PickerWindow() != nullptr;
        SetOwner(::GetDesktopWindow());
        SetRoot(reinterpret_cast<PCIDLIST_ABSOLUTE>(this));
        SetTitle(L"meddled");
        SetFlags(BIF_RETURNONLYFSDIRS);
        CBrowseForFolder::OnInit();
    }
    bool wasOpen = false;
};

TEST_F(FolderBrowserTest, IgnoresItsSettersWhileThePickerIsOpen)
{
    MeddlingBrowser browser;
    browser.SetTitle(L"the title");
    browser.SetFlags(BIF_NEWDIALOGSTYLE);
    browser.SetInitialFolder(Folder);
    {
        const ModalDriver driver({WaitForPicker(), Answer(IDCANCEL)});
        EXPECT_FALSE(browser.SelectFolder());
    }
    EXPECT_TRUE(browser.wasOpen);
    EXPECT_EQ(browser.Parameters().hwndOwner, nullptr);
    EXPECT_EQ(browser.Parameters().pidlRoot, nullptr);
    EXPECT_STREQ(browser.Parameters().lpszTitle, L"the title");
    EXPECT_EQ(browser.Parameters().ulFlags, UINT{BIF_NEWDIALOGSTYLE});

    browser.SetFlags(BIF_RETURNONLYFSDIRS);
    EXPECT_EQ(browser.Parameters().ulFlags, UINT{BIF_RETURNONLYFSDIRS}) << "it is closed again";
}

TEST_F(FolderBrowserTest, BeginsWithEmptyParametersOfItsOwn)
{
    const CBrowseForFolder browser;
    const BROWSEINFOW& parameters = browser.Parameters();
    EXPECT_EQ(parameters.hwndOwner, nullptr);
    EXPECT_EQ(parameters.pidlRoot, nullptr);
    EXPECT_EQ(parameters.lpszTitle, nullptr);
    EXPECT_EQ(parameters.ulFlags, 0U);
    EXPECT_NE(parameters.pszDisplayName, nullptr);
    EXPECT_NE(parameters.lpfn, nullptr);
    EXPECT_EQ(parameters.lParam, reinterpret_cast<LPARAM>(&browser));
    EXPECT_EQ(browser.GetSelectedFolder(), L"");
}

TEST_F(FolderBrowserTest, TakesItsTitleFromTheResources)
{
    const HINSTANCE resources = ::GetModuleHandleW(nullptr);
    const CBrowseForFolder titled(nullptr, nullptr, AppNameString, resources);
    EXPECT_TRUE(titled.IsTitleLoaded());
    EXPECT_STREQ(titled.Parameters().lpszTitle, L"SiteKeeper");
    const CBrowseForFolder untitled(nullptr, nullptr, NoSuchString, resources);
    EXPECT_FALSE(untitled.IsTitleLoaded());
    EXPECT_EQ(untitled.Parameters().lpszTitle, nullptr);
}

} // namespace
} // namespace sitekeeper
