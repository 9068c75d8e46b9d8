// The progress window: what the program asks of the dialogs library, what this build's library makes of it, and how it
// looks while the program works.
#include "maindlg/ProgressWindow.h"

#include "support/BuiltLibrary.h"
#include "support/Capture.h"
#include "support/MainDialogFixture.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

HINSTANCE Resources()
{
    return ::GetModuleHandleW(nullptr);
}

ModuleId IdOf(HMODULE module)
{
    return static_cast<ModuleId>(reinterpret_cast<std::uintptr_t>(module));
}

// --- a library that keeps a record: this very program, which exports the function too ------------------------------

struct Library
{
    std::vector<std::wstring> record;
    bool hasNoObject = false;
};

/// The exported function has no other way to it.
Library& TheLibrary()
{
    static Library library;
    return library;
}

class RecordingWindow final : public CORSWSplashMsgDlg
{
public:
    ~RecordingWindow() override { TheLibrary().record.emplace_back(L"deleted"); }
    int Create(HINSTANCE application) override
    {
        TheLibrary().record.emplace_back(application == Resources() ? L"create with the program"
                                                                    : L"create with something else");
        return 1;
    }
    void SetTitle(const wchar_t* title) override { TheLibrary().record.push_back(std::wstring(L"title ") + title); }
    void SetMessage(const wchar_t* message) override
    {
        TheLibrary().record.push_back(std::wstring(L"message ") + message);
    }
    void SetIcon(UINT iconId) override { TheLibrary().record.push_back(L"icon " + std::to_wstring(iconId)); }
};

} // namespace

extern "C" __declspec(dllexport) CORSWSplashMsgDlg* NewCORSWSplashMsgDlg()
{
    TheLibrary().record.emplace_back(L"new");
    return TheLibrary().hasNoObject ? nullptr : std::make_unique<RecordingWindow>().release();
}

namespace {

class ProgressContractTest : public testing::Test
{
protected:
    ProgressContractTest() { TheLibrary() = {}; }
};

TEST_F(ProgressContractTest, UsesTheOperationsInTheirOrder)
{
    ShowProgressWindow(IdOf(Resources()), Resources()).reset();
    EXPECT_THAT(TheLibrary().record, ElementsAre(L"new", L"create with the program", L"title Site Keeper",
                                                 L"message Applying changes...", L"icon 128", L"deleted"));
}

TEST_F(ProgressContractTest, GoesOnWithoutAnObject)
{
    TheLibrary().hasNoObject = true;
    EXPECT_EQ(ShowProgressWindow(IdOf(Resources()), Resources()), nullptr);
    EXPECT_THAT(TheLibrary().record, ElementsAre(L"new"));
}

TEST_F(ProgressContractTest, GoesOnWithoutALibraryOrWithoutItsExport)
{
    EXPECT_EQ(ShowProgressWindow(ModuleId::None, Resources()), nullptr);
    EXPECT_EQ(ShowProgressWindow(IdOf(::GetModuleHandleW(L"kernel32.dll")), Resources()), nullptr);
    EXPECT_THAT(TheLibrary().record, IsEmpty());
}

// --- the library of this build ---------------------------------------------------------------------------------------

class BuiltProgressTest : public testing::Test
{
protected:
    BuiltProgressTest() : m_library(m_modules.Load(L"")) {}
    ~BuiltProgressTest() override { m_modules.Release(m_library); }

    void SetUp() override { ASSERT_NE(m_library, ModuleId::None) << "no library at " << SITEKEEPER_DIALOGS_LIBRARY; }

    /// A fresh object of the library.
    [[nodiscard]] std::unique_ptr<CORSWSplashMsgDlg> MakeObject() const
    {
        auto* const module = reinterpret_cast<HMODULE>(m_library);
        const auto make = reinterpret_cast<NewCORSWSplashMsgDlgFunction>(
            reinterpret_cast<void*>(::GetProcAddress(module, NewCORSWSplashMsgDlgName)));
        return std::unique_ptr<CORSWSplashMsgDlg>(make != nullptr ? make() : nullptr);
    }

    /// The one progress window there is.
    [[nodiscard]] static HWND Window()
    {
        const std::vector<HWND> windows = VisibleWindows(ProgressClass);
        EXPECT_THAT(windows, SizeIs(1));
        return windows.empty() ? nullptr : windows.front();
    }

    BuiltLibrary m_modules;
    ModuleId m_library;
};

TEST_F(BuiltProgressTest, HasNoWindowBeforeItIsMade)
{
    const auto object = MakeObject();
    ASSERT_NE(object, nullptr);
    object->SetTitle(L"too early");
    object->SetMessage(L"too early");
    object->SetIcon(128);
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

TEST_F(BuiltProgressTest, MakesItsWindowOnceAndRemovesItWhenDeleted)
{
    auto object = MakeObject();
    EXPECT_NE(object->Create(Resources()), 0);
    EXPECT_EQ(object->Create(Resources()), 0) << "it has its window already";
    EXPECT_NE(Window(), nullptr);
    object.reset();
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

TEST_F(BuiltProgressTest, ShowsEachChangeBeforeTheCallReturns)
{
    const auto object = MakeObject();
    object->Create(Resources());
    const MemoryBitmap empty = ClientPicture(Window());
    EXPECT_TRUE(empty.IsAll(empty.Bounds(), ::GetSysColor(COLOR_WINDOW)));

    object->SetTitle(L"A title");
    EXPECT_EQ(TextOf(Window()), L"A title");

    object->SetMessage(L"Working...");
    const MemoryBitmap withMessage = ClientPicture(Window());
    EXPECT_FALSE(withMessage == empty);
    object->SetMessage(L"Still working...");
    const MemoryBitmap withOtherMessage = ClientPicture(Window());
    EXPECT_FALSE(withOtherMessage == withMessage);

    object->SetIcon(128);
    EXPECT_FALSE(ClientPicture(Window()) == withOtherMessage);
    EXPECT_NE(::SendMessageW(Window(), WM_GETICON, ICON_SMALL, 0), 0);
}

TEST_F(BuiltProgressTest, GoesWithItsOwnerAndIsStillDeletedSafely)
{
    const HWND owner = ::CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, 100, 100, 500, 300, nullptr,
                                         nullptr, nullptr, nullptr);
    ::SetActiveWindow(owner);
    auto object = MakeObject();
    object->Create(Resources());
    EXPECT_EQ(::GetWindow(Window(), GW_OWNER), owner);
    EXPECT_EQ(::GetActiveWindow(), owner) << "it does not take the activation";
    ::DestroyWindow(owner);
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
    object->SetTitle(L"too late");
    object->SetMessage(L"too late");
    object->SetIcon(128);
    EXPECT_NE(object->Create(Resources()), 0) << "it knows that it has no window any more";
    object.reset();
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

TEST_F(BuiltProgressTest, LivesBesideAnotherOne)
{
    const auto first = ShowProgressWindow(m_library, Resources());
    auto second = ShowProgressWindow(m_library, Resources());
    EXPECT_THAT(VisibleWindows(ProgressClass), SizeIs(2));
    second.reset();
    EXPECT_EQ(TextOf(Window()), L"Site Keeper");
}

TEST_F(BuiltProgressTest, LeavesNoWindowClassBehind)
{
    const auto isRegistered = [this] {
        WNDCLASSEXW known{};
        known.cbSize = sizeof known;
        return ::GetClassInfoExW(reinterpret_cast<HINSTANCE>(m_library), ProgressClass, &known) != FALSE;
    };
    auto first = ShowProgressWindow(m_library, Resources());
    auto second = ShowProgressWindow(m_library, Resources());
    second.reset();
    EXPECT_TRUE(isRegistered()) << "the other one needs it";
    first.reset();
    EXPECT_FALSE(isRegistered()) << "the library's code may be gone before the class is used again";
}

// --- while the program works -----------------------------------------------------------------------------------------

class ProgressTest : public MainDialogTest
{
protected:
    static constexpr int IconArea = 60; // wider than the icon's column, narrower than where the text ends
};

TEST_F(ProgressTest, IsPaintedOverTheDialogBeforeTheWorkBegins)
{
    int looks = 0;
    m_shell.onWork = [&] {
        ++looks;
        EXPECT_TRUE(m_app.IsWaiting());
        const std::vector<HWND> windows = VisibleWindows(ProgressClass);
        ASSERT_THAT(windows, SizeIs(1));
        const HWND window = windows.front();
        const HWND dialog = Page().Window();
        EXPECT_EQ(TextOf(window), L"Site Keeper");
        EXPECT_EQ(::GetWindow(window, GW_OWNER), dialog);

        RECT place{};
        ::GetWindowRect(window, &place);
        const RECT around = Page().ScreenRectangle();
        EXPECT_NEAR(place.left + place.right, around.left + around.right, 1);
        EXPECT_NEAR(place.top + place.bottom, around.top + around.bottom, 1);

        const MemoryBitmap picture = ClientPicture(window);
        const COLORREF ground = ::GetSysColor(COLOR_WINDOW);
        EXPECT_EQ(picture.Pixel(0, 0), ground);
        const RECT icon = picture.Inked({0, 0, IconArea, picture.Height()}, ground);
        const RECT text = picture.Inked({IconArea, 0, picture.Width(), picture.Height()}, ground);
        EXPECT_EQ(::IsRectEmpty(&icon), FALSE);
        EXPECT_EQ(::IsRectEmpty(&text), FALSE);
        CaptureWindow(window).Save(L"progress-window");
    };
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(looks, 1);
    EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
}

TEST_F(ProgressTest, IsLeftOutWithoutTheLibrary)
{
    memory.environment.Remove(L"CommonProgramFiles");
    memory.messages.Expect();
    int looks = 0;
    m_shell.onWork = [&looks] {
        ++looks;
        EXPECT_THAT(VisibleWindows(ProgressClass), IsEmpty());
    };
    EXPECT_EQ(Run({Press(IDOK)}), IDOK);
    EXPECT_EQ(looks, 1);
    EXPECT_THAT(memory.shell.Saved(), SizeIs(4));
}

} // namespace
} // namespace sitekeeper
