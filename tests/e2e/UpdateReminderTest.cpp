// The update reminder: the program with its vendor's page on the loopback, real files of known times, real boxes.
#include "e2e/Journey.h"
#include "e2e/support/Days.h"
#include "e2e/support/EchoProgram.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/UpdatesPage.h"
#include "support/Wine.h"

#include <algorithm>

namespace sitekeeper::e2e {
namespace {

constexpr const char* Page =
    "<html><body><a href=\"downloads/LX_2023_Plus_Update2023_06_15.exe\">LX Plus 2023</a></body></html>";
constexpr DWORD Interval = 14;
constexpr int OneYear = 365;

class UpdateReminder : public Journey
{
protected:
    /// A suite that is older than the published update, and a reminder that is due since today.
    UpdateReminder()
    {
        CopyFileTo(ShippedFile(L"loopback\\SiteKeeper64.exe"), Installation::Program());
        SetModified(Installation::Program(), StartOf(2023, 6, 14));
        page.Publish(Page);
        StoreDate(DateAfter(0));
    }

    static void StoreDate(const std::wstring& date)
    {
        WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(date));
    }

    /// Lets the shell open web pages with a program that writes its command line down.
    void StandInForBrowser(const EchoProgram& echo)
    {
        Suite().Borrow(Hive::Machine, L"Software\\Classes\\http\\shell\\open\\command", L"",
                       TextValue(L"\"" + echo.Path() + L"\" browse \"%1\""));
    }

    /// Alone, without a title, in the middle of what the taskbar leaves of the screen.
    static void ExpectSplash(const ProgramRun& run)
    {
        const std::vector<HWND> windows = run.Windows();
        ASSERT_EQ(windows.size(), 1U);
        const HWND splash = windows.front();
        ASSERT_TRUE(IsSplash(splash));
        EXPECT_EQ(::GetWindowTextLengthW(splash), 0); // of the system: the program waits for its page
        RECT place{};
        ::GetWindowRect(splash, &place);
        RECT work{};
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        EXPECT_NEAR(place.left + place.right, work.left + work.right, 1) << "centred";
        EXPECT_NEAR(place.top + place.bottom, work.top + work.bottom, 1) << "centred";
        SaveMoment(splash, L"splash");
    }

    static bool HasSplash(const ProgramRun& run)
    {
        const std::vector<HWND> windows = run.Windows();
        return std::any_of(windows.begin(), windows.end(), IsSplash);
    }

    /// The main dialog comes without a question; Cancel leaves it, and the machine is as expected.
    static void ExpectQuietStart(const ProgramRun& run, State& expected)
    {
        const MainWindow main(run);
        EXPECT_EQ(run.Windows().size(), 1U) << "nothing but the main window";
        ExpectPosition(expected, main.Rectangle());
        main.Click(Control::Cancel);
        ExpectEnd(run, expected);
    }

    /// A start without a question that leaves this date, and visits the page so often.
    void ExpectNoQuestion(const std::wstring& storedDate, std::size_t visits) const
    {
        State expected = State::Take();
        ExpectReminder(expected, storedDate, Interval);
        const ProgramRun run(Installation::Program());
        ExpectQuietStart(run, expected);
        EXPECT_EQ(page.Visits(), visits);
    }

    /// The question as it must stand there.
    static void ExpectQuestion(const ProgramRun& run, const MessageWindow& question)
    {
        EXPECT_EQ(question.Caption(), L"LX Plus 2023");
        EXPECT_EQ(question.Text(), L"A newer version of LX Plus 2023 is available.\n\nDo you want to download it from "
                                   L"the website?\n\nIf you Cancel, you will not be prompted again.");
        EXPECT_EQ(question.Buttons(), (std::vector<std::wstring>{L"&Yes", L"&No", L"Cancel"}));
        EXPECT_EQ(question.Owner(), nullptr);
        EXPECT_TRUE(question.HasIcon());
        EXPECT_TRUE(HasSplash(run)) << "behind the question";
        EXPECT_EQ(run.Windows().size(), 2U) << "and nothing else";
    }

    /// A start whose question gets that answer; what is told then, and the next date, so many days after today.
    void ExpectPutOff(int answer, const std::wstring& told, int days, const std::wstring& moment) const
    {
        State expected = State::Take();
        ExpectReminder(expected, DateAfter(days), Interval);
        const ProgramRun run(Installation::Program());
        MessageWindow(run).Press(answer);
        {
            const MessageWindow message(run);
            EXPECT_EQ(message.Caption(), L"LX Plus 2023");
            EXPECT_EQ(message.Text(), told);
            EXPECT_TRUE(message.HasOnlyOk());
            EXPECT_EQ(message.Owner(), nullptr);
            EXPECT_TRUE(message.HasIcon());
            EXPECT_TRUE(HasSplash(run)) << "until all is done";
            SaveMoment(message.Handle(), moment);
            message.Confirm();
        }
        ExpectQuietStart(run, expected);
        EXPECT_EQ(page.Visits(), 1U);
    }

    UpdatesPage page;
};

} // namespace

TEST_F(UpdateReminder, YesOpensThePage)
{
    const EchoProgram browser;
    StandInForBrowser(browser);
    State expected = State::Take();
    ExpectReminder(expected, DateAfter(Interval), Interval);
    const ProgramRun run(Installation::Program());
    const MessageWindow question(run);
    ExpectQuestion(run, question);
    SaveMoment(question.Handle(), L"update-question");
    EXPECT_EQ(page.Visits(), 1U);
    question.Press(IDYES);
    const std::wstring line = browser.AwaitCommandLine(run);
    EXPECT_TRUE(line.ends_with(L" browse \"" + UpdatesPage::Address() + L"\"")) << ::testing::PrintToString(line);
    ExpectQuietStart(run, expected);
    EXPECT_EQ(page.Visits(), 1U);
}

TEST_F(UpdateReminder, NoTellsWhenItComesAgain)
{
    ExpectPutOff(IDNO, L"You will be reminded in 14 days of a new update.", Interval, L"update-later");
}

TEST_F(UpdateReminder, CancelPutsItOffForAYear)
{
    ExpectPutOff(IDCANCEL, L"You will not be reminded of any new updates.", OneYear, L"update-never");
}

TEST_F(UpdateReminder, TheBoxesStayAboveOtherWindows)
{
    if (IsWine()) {
        GTEST_SKIP() << "Wine's message boxes do not know that style";
    }
    const ProgramRun run(Installation::Program());
    const MessageWindow question(run);
    EXPECT_TRUE(question.IsTopMost());
    question.Press(IDNO);
    EXPECT_TRUE(MessageWindow(run).IsTopMost());
}

TEST_F(UpdateReminder, IsArmedBeforeThePageIsAskedForBehindTheSplash)
{
    State expected = State::Take();
    ExpectReminder(expected, DateAfter(Interval), Interval);
    page.Hold();
    const ProgramRun run(Installation::Program());
    run.Await("a visit to the page", [this] { return page.Visits() == 1; });
    ExpectSplash(run);
    EXPECT_TRUE(IsNow(expected)) << "whatever becomes of the page";
    page.LetGo();
    MessageWindow(run).Press(IDNO);
    MessageWindow(run).Confirm();
    ExpectQuietStart(run, expected);
}

TEST_F(UpdateReminder, IsNotDueBeforeItsDay)
{
    StoreDate(DateAfter(1));
    ExpectNoQuestion(DateAfter(1), 0);
}

TEST_F(UpdateReminder, TheFirstStartOnlyArmsIt)
{
    RemoveKey(Hive::User, ReminderKey);
    State expected = State::Take();
    constexpr DWORD DefaultInterval = 7;
    ExpectReminder(expected, DateAfter(DefaultInterval), DefaultInterval);
    const ProgramRun run(Installation::Program());
    ExpectQuietStart(run, expected);
    EXPECT_EQ(page.Visits(), 0U);
}

TEST_F(UpdateReminder, DoesNotComeWhereTheApplicationLiesElsewhere)
{
    Installation::SetFolders(L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectNoQuestion(DateAfter(0), 0);
}

TEST_F(UpdateReminder, APageThatIsNotThereIsNotMissed)
{
    page.Withdraw();
    ExpectNoQuestion(DateAfter(Interval), 1);
}

TEST_F(UpdateReminder, APageWithoutAnEndIsCutOff)
{
    page.PublishEndless();
    ExpectNoQuestion(DateAfter(Interval), 1);
}

TEST_F(UpdateReminder, AFileOfTheSameDayIsNewEnough)
{
    WriteWholeFile(L"C:\\Suite\\Designer\\ORTHO\\R23\\tools.fas", "");
    SetModified(L"C:\\Suite\\Designer\\ORTHO\\R23\\tools.fas", StartOf(2023, 6, 15));
    ExpectNoQuestion(DateAfter(Interval), 1);
}

TEST_F(UpdateReminder, AFileOfTheDayBeforeIsNot)
{
    WriteWholeFile(L"C:\\Suite\\Designer\\ORTHO\\R23\\tools.fas", "");
    SetModified(L"C:\\Suite\\Designer\\ORTHO\\R23\\tools.fas", StartOf(2023, 6, 15) - 1);
    const ProgramRun run(Installation::Program());
    const MessageWindow question(run);
    ExpectQuestion(run, question);
}

TEST_F(UpdateReminder, ABadDateOnThePageTroublesOneStartOnly)
{
    page.Publish("LX_2023_Plus_Update_2023_06_15.");
    State expected = State::Take();
    ExpectReminder(expected, DateAfter(Interval), Interval);
    {
        const ProgramRun run(Installation::Program());
        const MessageWindow message(run);
        EXPECT_EQ(message.Caption(), L"LX Plus 2023");
        EXPECT_EQ(message.Text(), L"The update page " + UpdatesPage::Address() +
                                      L" names an invalid date: \"_2023_06_15\".\n\n(Error 0x80004005)");
        SaveMoment(message.Handle(), L"update-bad-page");
        message.Confirm();
        ExpectQuietStart(run, expected);
    }
    const ProgramRun next(Installation::Program());
    ExpectQuietStart(next, expected);
    EXPECT_EQ(page.Visits(), 1U);
}

TEST_F(UpdateReminder, ABadStoredDateTroublesEveryStart)
{
    StoreDate(L"2023-13-01 00:00:00");
    for (int start = 1; start <= 2; ++start) {
        const ProgramRun run(Installation::Program());
        for (int message = 1; message <= 2; ++message) { // the reminder's, then the main dialog's
            const MessageWindow box(run);
            EXPECT_NE(box.Text().find(L"CheckWebVersionDate"), std::wstring::npos);
            EXPECT_NE(box.Text().find(ReminderKey), std::wstring::npos);
            EXPECT_NE(box.Text().find(L"2023-13-01 00:00:00"), std::wstring::npos);
            box.Confirm();
        }
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
    EXPECT_EQ(page.Visits(), 0U);
}

} // namespace sitekeeper::e2e
