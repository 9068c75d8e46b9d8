// Help by the three commands and from another dialog: the shipped help file in the system's viewer, what the viewer is
// asked for, and the message where the file is missing.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/UserAccessWindow.h"
#include "support/Input.h"

#include <array>
#include <cwchar>
#include <ostream>
#include <string>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* HelpFile = L"C:\\Suite\\Help\\SiteKeeper.chm";
constexpr const wchar_t* CallsFile = L"C:\\Elsewhere\\help-calls.txt";
constexpr const wchar_t* ControlKey =
    L"Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

/// The ways to the help file, and what each asks for.
struct Way
{
    const char* name;
    void (*ask)(const MainWindow& main);
    unsigned command; // of the HTML Help interface
    const wchar_t* topic;
    /// Of the message that the file is missing: whether the dialog owns it, and its caption.
    bool isOwned;
    const wchar_t* caption;

    /// How a failing test calls it.
    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};

const Way Ways[] = {
    {"Button", [](const MainWindow& main) { main.Click(Control::Help); }, 0, L"::/Introduction.htm", true,
     L"SiteKeeper"},
    {"MenuItem", [](const MainWindow& main) { main.Choose(Command::HelpContents); }, 1, L"", true, L"SiteKeeper"},
    {"Command", [](const MainWindow& main) { main.Choose(Command::Help); }, 1, L"", false, L"Error"},
    {"F1",
     [](const MainWindow& main) {
         main.BringToFront();
         PressKey(VK_F1);
     },
     1, L"", false, L"Error"},
};

class HelpJourney : public Journey
{
protected:
    void SetUp() override { MakeFolders(L"C:\\Elsewhere"); }
    void TearDown() override { ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_CALLS", nullptr); }

    static void InstallHelp() { CopyFileTo(ShippedFile(L"SiteKeeper.chm"), HelpFile); }

    /// In the place of the system's viewer: writes down what it is asked for.
    void InstallRecorder()
    {
        Suite().Borrow(Hive::Machine, ControlKey, L"", TextValue(ShippedFile(L"tests\\e2e\\FakeHelpControl.dll")));
        ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_CALLS", CallsFile);
    }
    /// Waits for one call to that, and expects it to be this.
    static void ExpectCall(const ProgramRun& run, const MainWindow& main, unsigned command, const std::wstring& address)
    {
        run.Await("the viewer to be asked", [] { return ReadWideText(CallsFile).ends_with(L"\n"); });
        std::array<wchar_t, 32> owner{};
        ::swprintf(owner.data(), owner.size(), L"%llx", reinterpret_cast<unsigned long long>(main.Handle()));
        EXPECT_EQ(ReadWideText(CallsFile),
                  std::wstring(owner.data()) + L" " + std::to_wstring(command) + L" 0 " + address + L"\n");
    }

    static void Leave(const ProgramRun& run, const MainWindow& main)
    {
        main.Click(Control::Cancel);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
};

class Help : public HelpJourney, public ::testing::WithParamInterface<Way>
{};

class HelpFromUserAccess : public HelpJourney
{};

} // namespace

TEST_P(Help, ShowsTheShippedFileInTheSystemsViewer)
{
    InstallHelp();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    GetParam().ask(main);
    const HWND viewer =
        run.AwaitWindow("the help viewer", [](HWND window) { return WindowClass(window) == L"HH Parent"; });
    EXPECT_EQ(WindowText(viewer), L"Site Keeper Help");
    EXPECT_EQ(::GetWindow(viewer, GW_OWNER), main.Handle());
    EXPECT_NE(::IsWindowEnabled(main.Handle()), FALSE) << "help stands beside the program, which goes on";
    SaveMoment(viewer, L"help-viewer");
    Leave(run, main);
}

TEST_P(Help, AsksTheViewerForThePage)
{
    InstallHelp();
    InstallRecorder();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    GetParam().ask(main);
    ExpectCall(run, main, GetParam().command, std::wstring(HelpFile) + GetParam().topic);
    Leave(run, main);
}

TEST_P(Help, SaysThatTheFileIsMissingAndGoesOn)
{
    InstallRecorder();
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    for (int time = 0; time < 2; ++time) {
        GetParam().ask(main);
        const MessageWindow message(run);
        EXPECT_EQ(message.Text(),
                  std::wstring(L"Couldn't find help file: \n") + HelpFile + L"\n\nPlease check software installation.");
        EXPECT_EQ(message.Caption(), GetParam().caption); // "Error" is the system's own, in the system's language
        EXPECT_EQ(message.Owner(), GetParam().isOwned ? main.Handle() : nullptr);
        EXPECT_TRUE(message.HasOnlyOk());
        EXPECT_NE(message.Icon(), nullptr);
        SaveMoment(message.Handle(), L"help-missing");
        message.Confirm();
    }
    EXPECT_FALSE(Exists(CallsFile));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

INSTANTIATE_TEST_SUITE_P(By, Help, ::testing::ValuesIn(Ways),
                         [](const auto& way) { return std::string(way.param.name); });

TEST_F(HelpFromUserAccess, ShowsTheIntroductionAndLeavesTheDialogOpen)
{
    InstallHelp();
    InstallRecorder();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::UserAccess);
    const UserAccessWindow access(run);
    access.Push(AccessControl::Help);
    ExpectCall(run, main, 0, std::wstring(HelpFile) + L"::/Introduction.htm");
    EXPECT_EQ(::IsWindowEnabled(main.Handle()), FALSE);
    RemoveFile(HelpFile);
    access.Push(AccessControl::Help);
    {
        const MessageWindow message(run);
        EXPECT_EQ(message.Owner(), main.Handle());
        message.Confirm();
    }
    EXPECT_EQ(::IsWindowEnabled(main.Handle()), FALSE) << "User Access still stands above it";
    access.Leave(AccessControl::Cancel);
    Leave(run, main);
}

} // namespace sitekeeper::e2e
