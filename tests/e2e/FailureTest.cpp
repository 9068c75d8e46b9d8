// A machine without its shell folders, and stored dates that are none.
#include "e2e/Journey.h"

namespace sitekeeper::e2e {
namespace {

class Failure : public Journey
{
protected:
    /// Whether an error icon stands in the message: mostly red where the screen can be read.
    static void ExpectErrorIcon(const ProgramRun& run, const MessageWindow& message)
    {
        ASSERT_NE(message.Icon(), nullptr);
        if (IsScreenReadable()) {
            run.Await("a red icon in the message", [&] {
                const Picture icon = TakePicture(message.Icon());
                const int red = icon.Count([](COLORREF pixel) {
                    return GetRValue(pixel) > 150 && GetGValue(pixel) < 100 && GetBValue(pixel) < 100;
                });
                return red > static_cast<int>(icon.pixels.size()) / 5;
            });
        }
    }

    /// OK with a shell folder that is not to be had: the message, and what does and does not happen around it.
    /// `takeAway` removes the folder. It comes last, because the shell writes the desktop's value again when this
    /// process first uses shortcuts.
    static void ExpectFolderError(const std::function<void()>& takeAway, const std::wstring& text,
                                  const std::wstring& moment)
    {
        Installation::AddOldShortcuts(Installation::DesktopFolder());
        Installation::AddOldShortcuts(Installation::ProgramsFolder());
        State expected = State::Take();
        takeAway();
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
        ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
        main.Click(Control::Ok);
        {
            const MessageWindow message(run);
            EXPECT_EQ(message.Text(), text);
            EXPECT_EQ(message.Caption(), L"SiteKeeper");
            EXPECT_EQ(message.Owner(), main.Handle());
            EXPECT_TRUE(message.HasOnlyOk());
            ExpectErrorIcon(run, message);
            ExpectProgressOver(run, main);
            SaveMoment(main.Handle(), moment);
            message.Confirm();
        }
        EXPECT_TRUE(IsNow(expected));
        ExpectStaysOpenForASecondTry(run, main, expected);
        ExpectPosition(expected, main.Rectangle());
        main.Click(Control::Cancel);
        ExpectEnd(run, expected);
    }

private:
    /// The progress window stands as long as the message does.
    static void ExpectProgressOver(const ProgramRun& run, const MainWindow& main)
    {
        const std::vector<HWND> windows = ProgressWindows(run);
        ASSERT_EQ(windows.size(), 1U);
        EXPECT_EQ(::GetWindow(windows.front(), GW_OWNER), main.Handle()) << "and thereby above it";
        RECT progress{};
        ::GetWindowRect(windows.front(), &progress);
        const RECT dialog = main.Rectangle();
        EXPECT_NEAR(progress.left + progress.right, dialog.left + dialog.right, 2) << "centred over the dialog";
        EXPECT_NEAR(progress.top + progress.bottom, dialog.top + dialog.bottom, 2);
    }

    static void ExpectStaysOpenForASecondTry(const ProgramRun& run, const MainWindow& main, State& expected)
    {
        EXPECT_NE(::IsWindowVisible(main.Handle()), FALSE);
        ASSERT_EQ(ProgressWindows(run).size(), 1U) << "the progress window stays";
        SaveMoment(main.Handle(), L"progress-window-stays");
        main.Type(Control::ApplicationPath, L"C:\\Elsewhere\\");
        ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Elsewhere\\", L"C:\\Suite\\Datafiles\\");
        run.Await("the dialog to be enabled again", [&] { return ::IsWindowEnabled(main.Handle()) != FALSE; });
        main.Click(Control::Ok);
        const MessageWindow message(run);
        EXPECT_EQ(ProgressWindows(run).size(), 2U) << "a second one joins it";
        message.Confirm();
        EXPECT_TRUE(IsNow(expected));
    }
};

/// A stored reminder date that start-up must complain about.
class BadDate : public Failure, public ::testing::WithParamInterface<std::wstring>
{};

} // namespace

TEST_F(Failure, WithoutAnyDesktopFolder)
{
    const auto takeAway = [this] {
        Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Desktop", std::nullopt);
        Suite().Borrow(Hive::User, ShellFoldersKey, L"Desktop", std::nullopt);
    };
    ExpectFolderError(takeAway, L"Error reading common desktop folder", L"error-desktop");
}

TEST_F(Failure, WithoutTheCommonProgramsFolder)
{
    const auto takeAway = [this] { Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Programs", std::nullopt); };
    ExpectFolderError(takeAway, L"Error reading start menu programs folder", L"error-programs");
}

TEST_F(Failure, AnEmptyFolderValueIsAsGoodAsNone)
{
    const auto takeAway = [this] {
        Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Programs", TextValue(L""));
    };
    ExpectFolderError(takeAway, L"Error reading start menu programs folder", L"error-programs-empty");
}

TEST_F(Failure, WithoutTheCommonDesktopTheUsersOwnIsTaken)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    Installation::AddOldShortcuts(Installation::UserDesktopFolder());
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    State expected = State::Take();
    Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Desktop", std::nullopt);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectRenewed(expected, Installation::UserDesktopFolder(), L"C:\\Suite\\");
    ExpectRenewed(expected, Installation::ProgramsFolder(), L"C:\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Failure, AShellFolderWithABackslashIsTheSameFolder)
{
    Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Desktop", TextValue(L"C:\\Elsewhere\\Desktop\\"));
    Suite().Borrow(Hive::Machine, ShellFoldersKey, L"Common Programs", TextValue(L"C:\\Elsewhere\\Programs"));
    const std::wstring desktop = L"C:\\Elsewhere\\Desktop\\ORIVEL LX Plus 2023\\";
    const std::wstring programs = L"C:\\Elsewhere\\Programs\\ORIVEL\\ORIVEL LX Plus 2023\\";
    Installation::AddOldShortcuts(desktop);
    Installation::AddOldShortcuts(programs);
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectRenewed(expected, desktop, L"C:\\Suite\\");
    ExpectRenewed(expected, programs, L"C:\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_P(BadDate, IsReportedOnceAndEndsTheProgramWithoutWriting)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    // Elsewhere than the program, so that the reminder does not meet the date first.
    Installation::SetFolders(L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(GetParam()));
    const State before = State::Take();
    const ProgramRun run(Installation::Program());
    const MessageWindow message(run);
    EXPECT_EQ(message.Caption(), L"LX Plus 2023");
    EXPECT_NE(message.Text().find(L"CheckWebVersionDate"), std::wstring::npos);
    EXPECT_NE(message.Text().find(ReminderKey), std::wstring::npos);
    EXPECT_NE(message.Text().find(GetParam()), std::wstring::npos);
    EXPECT_TRUE(message.HasOnlyOk());
    ExpectErrorIcon(run, message);
    EXPECT_EQ(run.Windows().size(), 1U) << "no half-filled dialog behind the message";
    SaveMoment(message.Handle(), L"bad-date");
    message.Confirm();

    EXPECT_EQ(run.WaitForEnd(), 0U);
    RemoveKey(Hive::User, PositionKey); // written by every end of the dialog, whatever came before
    EXPECT_TRUE(IsNow(before));
}

INSTANTIATE_TEST_SUITE_P(Dates, BadDate,
                         ::testing::Values(L"2024-13-01 00:00:00", L"1969-12-31 23:59:59", L"2024-01-01 24:00:00",
                                           L"0-0-0 0:0:0", L"99999-01-01 00:00:00"));

} // namespace sitekeeper::e2e
