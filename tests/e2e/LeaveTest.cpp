// Leaving without applying.
#include "e2e/Journey.h"
#include "e2e/support/Days.h"

namespace sitekeeper::e2e {
namespace {

class Leave : public Journey
{
protected:
    /// Types over the fields, leaves by `gesture`, and expects nothing but the window position to be written.
    static void ExpectNothingButThePosition(const std::function<void(const MainWindow&)>& gesture)
    {
        Installation::AddOldShortcuts(Installation::DesktopFolder());
        Installation::AddOldShortcuts(Installation::ProgramsFolder());
        State expected = State::Take();
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
        main.Type(Control::DatafilesPath, L"C:\\Elsewhere\\");
        ExpectPosition(expected, main.Rectangle());
        gesture(main);
        ExpectEnd(run, expected);
    }
};

} // namespace

TEST_F(Leave, CancelWritesNothingButTheWindowPosition)
{
    ExpectNothingButThePosition([](const MainWindow& main) { main.Click(Control::Cancel); });
}

TEST_F(Leave, TheCloseBoxWritesNothingButTheWindowPosition)
{
    ExpectNothingButThePosition([](const MainWindow& main) { main.PressCloseBox(); });
}

TEST_F(Leave, EscapeWritesNothingButTheWindowPosition)
{
    ExpectNothingButThePosition([](const MainWindow& main) { main.Press(Control::ApplicationPath, VK_ESCAPE); });
}

TEST_F(Leave, AFreshInstallationGetsNoMoreThanItsReminder)
{
    Installation::RemoveSettings();
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectReminder(expected, DateAfter(7), 7);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

TEST_F(Leave, ThePositionIsTheOneAfterTheLastMove)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.MoveTo(31, 47);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

TEST_F(Leave, TheStoredPositionIsNeverUsed)
{
    const auto placeWith = [](const wchar_t* stored) {
        WriteValue(Hive::User, PositionKey, L"Application", TextValue(stored));
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        const RECT place = main.Rectangle();
        main.Click(Control::Cancel);
        EXPECT_EQ(run.WaitForEnd(), 0U);
        return place;
    };
    const RECT one = placeWith(L"5,5,480,405");
    const RECT other = placeWith(L"nonsense");
    EXPECT_TRUE(::EqualRect(&one, &other));
    EXPECT_NE(one.left, 5);
}

TEST_F(Leave, APositionOfAMinimisedWindowIsWhereTheSystemPutIt)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ::PostMessageW(main.Handle(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    run.Await("the minimised window", [&] { return ::IsIconic(main.Handle()) != FALSE; });
    Ask(main.Handle(), WM_NULL);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

} // namespace sitekeeper::e2e
