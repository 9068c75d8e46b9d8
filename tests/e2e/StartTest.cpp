// What stands on the screen after the start.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/RemoteMemory.h"

#include <windows.h>

#include <commctrl.h>

#include <vector>

namespace sitekeeper::e2e {
namespace {

struct ShownFolders
{
    std::wstring program;
    std::wstring application;
    std::wstring datafiles;

    bool operator==(const ShownFolders&) const = default;
};

class Start : public Journey
{
protected:
    /// Starts a program, reads its three folders and leaves by Cancel.
    static ShownFolders FoldersShownBy(const std::wstring& program)
    {
        const ProgramRun run(program);
        const MainWindow main(run);
        ShownFolders shown{main.Text(Control::ProgramPath), main.Text(Control::ApplicationPath),
                           main.Text(Control::DatafilesPath)};
        main.Click(Control::Cancel);
        EXPECT_EQ(run.WaitForEnd(), 0U);
        return shown;
    }
};

class NamedStart : public Start, public ::testing::WithParamInterface<std::wstring>
{};

bool IsReadOnly(HWND field)
{
    constexpr LONG ReadOnly = ES_READONLY;
    return (::GetWindowLongW(field, GWL_STYLE) & ReadOnly) != 0;
}

SYSTEMTIME PickedTime(const ProgramRun& run, const MainWindow& main)
{
    SYSTEMTIME time{};
    const RemoteMemory remote(run.Process(), sizeof time);
    Ask(main.Item(Control::ReminderDate), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(remote.Address()));
    remote.Read(&time, sizeof time);
    return time;
}

} // namespace

TEST_F(Start, ShowsTheThreeFoldersOfTheInstallation)
{
    Installation::SetFolders(L"C:\\Suite\\", L"N:\\Shared\\", L"\\\\server\\share\\Data\\");
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);

    EXPECT_EQ(WindowText(main.Handle()), L" ");
    EXPECT_EQ(main.Text(Control::ProgramPath), L"C:\\Suite\\");
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"N:\\Shared\\");
    EXPECT_EQ(main.Text(Control::DatafilesPath), L"\\\\server\\share\\Data\\");
    EXPECT_TRUE(IsReadOnly(main.Item(Control::ProgramPath)));
    EXPECT_FALSE(IsReadOnly(main.Item(Control::ApplicationPath)));
    EXPECT_FALSE(IsReadOnly(main.Item(Control::DatafilesPath)));
    EXPECT_EQ(run.Windows().size(), 1U) << "nothing but the main window";
    EXPECT_TRUE(ProgressWindows(run).empty());
    SaveMoment(main.Handle(), L"main-dialog");
}

TEST_F(Start, ShowsTheFrameOfAFixedDialogOnTheTaskbar)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    constexpr LONG Wanted = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    constexpr LONG Unwanted = WS_THICKFRAME | WS_MAXIMIZEBOX;
    constexpr LONG Taskbar = WS_EX_APPWINDOW;
    EXPECT_EQ(::GetWindowLongW(main.Handle(), GWL_STYLE) & (Wanted | Unwanted), Wanted);
    EXPECT_NE(::GetWindowLongW(main.Handle(), GWL_EXSTYLE) & Taskbar, 0);
}

TEST_F(Start, AFreshInstallationTakesItsFoldersFromTheProgramsPlace)
{
    Installation::RemoveSettings();
    EXPECT_EQ(FoldersShownBy(Installation::Program()),
              (ShownFolders{L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"}));
}

TEST_F(Start, AProgramAtTheRootOfADriveKnowsNoFolder)
{
    Installation::RemoveSettings();
    CopyFileTo(Installation::Program(), L"C:\\SiteKeeper64.exe");
    EXPECT_EQ(FoldersShownBy(L"C:\\SiteKeeper64.exe"), (ShownFolders{L"", L"", L"Datafiles\\"}));
}

TEST_F(Start, MissingFoldersFollowTheOneThatIsKnown)
{
    Installation::SetFolders(L"D:\\Programs\\", L"", L"");
    EXPECT_EQ(FoldersShownBy(Installation::Program()),
              (ShownFolders{L"D:\\Programs\\", L"D:\\Programs\\", L"D:\\Programs\\Datafiles\\"}));

    Installation::SetFolders(L"D:\\Programs\\", L"N:\\Server\\", L"");
    EXPECT_EQ(FoldersShownBy(Installation::Program()),
              (ShownFolders{L"D:\\Programs\\", L"N:\\Server\\", L"N:\\Server\\Datafiles\\"}));
}

TEST_F(Start, ValuesWithoutABackslashAreShownWithOne)
{
    Installation::SetFolders(L"C:\\Suite", L"N:", L"D:\\Data");
    EXPECT_EQ(FoldersShownBy(Installation::Program()), (ShownFolders{L"C:\\Suite\\", L"N:\\", L"D:\\Data\\"}));
}

TEST_F(Start, AValueThatDoesNotFitIsAsGoodAsNone)
{
    constexpr std::size_t Longest = 1023; // with its terminator 2048 bytes
    const std::wstring fits = L"D:\\" + std::wstring(Longest - 3, L'x');
    Installation::SetFolders(L"C:\\Suite\\", L"C:\\Suite\\", fits);
    EXPECT_EQ(FoldersShownBy(Installation::Program()).datafiles, fits + L"\\");

    Installation::SetFolders(L"C:\\Suite\\", L"C:\\Suite\\", fits + L"x");
    EXPECT_EQ(FoldersShownBy(Installation::Program()).datafiles, L"C:\\Suite\\Datafiles\\");
}

TEST_F(Start, HiddenControlsHoldTheReminder)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_EQ(main.Text(Control::ReminderDays), L"14");
    const SYSTEMTIME time = PickedTime(run, main);
    EXPECT_EQ((std::vector<int>{time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond}),
              (std::vector<int>{2094, 5, 6, 7, 8, 9}));
    for (const Control hidden : {Control::SessionList, Control::SessionLabel, Control::Profile, Control::ProfileLabel,
                                 Control::IconSizeList, Control::ReminderDate, Control::ReminderDays}) {
        ASSERT_NE(main.Item(hidden), nullptr) << static_cast<int>(hidden);
        EXPECT_EQ(::IsWindowVisible(main.Item(hidden)), FALSE) << static_cast<int>(hidden);
    }
    EXPECT_EQ(::IsWindowEnabled(main.Item(Control::ReminderDate)), FALSE);
    EXPECT_EQ(::IsWindowEnabled(main.Item(Control::ReminderDays)), FALSE);
}

TEST_F(Start, WithoutAStoredReminderTheHiddenControlsHoldTheDefaults)
{
    // Elsewhere than the program: the reminder would store its own.
    Installation::SetFolders(L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    RemoveKey(Hive::User, ReminderKey);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_EQ(main.Text(Control::ReminderDays), L"7");
    const SYSTEMTIME time = PickedTime(run, main);
    EXPECT_EQ((std::vector<int>{time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond}),
              (std::vector<int>{2000, 1, 1, 0, 0, 0}));
}

TEST_F(Start, TheMainWindowDoesNotComeInTheSecondOfTheStart)
{
    // The splash stands before it, perhaps too short for a look: it is seen where the update reminder holds it.
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_GT(ProgramRun::CurrentSecond(), run.StartSecond());
    EXPECT_EQ(run.Windows().size(), 1U) << "the splash is gone";
}

TEST_P(NamedStart, NamesOfAllKindsAreShownAsStored)
{
    Installation::SetFolders(GetParam(), GetParam(), GetParam());
    EXPECT_EQ(FoldersShownBy(Installation::Program()), (ShownFolders{GetParam(), GetParam(), GetParam()}));
}

INSTANTIATE_TEST_SUITE_P(Names, NamedStart,
                         ::testing::Values(L"\\\\server\\CAD share\\Suite\\", L"C:\\Büro Müller\\Suite\\",
                                           L"C:\\Проекты\\Иван\\", L"C:\\O'Brien & Sons (2023)\\100% %s %d\\",
                                           L"C:\\\\doubled\\\\\\", L"C:\\" + std::wstring(250, L'x') + L"\\"));

} // namespace sitekeeper::e2e
