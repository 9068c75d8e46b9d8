// The windows of the program opened and closed many times, and names dragged many times: nothing is left behind.
// SITEKEEPER_OPENINGS and SITEKEEPER_DRAGS say how often; scripts/soak.sh runs the long form.
#include "support/LongUse.h"

#include "support/Input.h"
#include "support/MainDialogFixture.h"
#include "support/UserAccessFixture.h"

#include <windows.h>

#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

constexpr int WarmUps = 6;

/// What the ports of the test write down of each opening of the main dialog.
constexpr std::size_t NotesPerOpening = 1024;
/// The same of a window above it, and what Wine keeps: 24 bytes of many, 310 of a refused print dialog.
constexpr std::size_t NotesPerWindow = 512;

int Openings()
{
    return GivenNumber(L"SITEKEEPER_OPENINGS", 15);
}

int Drags()
{
    return GivenNumber(L"SITEKEEPER_DRAGS", 160);
}

// --- the main dialog, and the program as a whole ---------------------------------------------------------------------

class LongUseOfMainDialogTest : public MainDialogTest
{
protected:
    void OpenAndLeaveBy(int button)
    {
        LongUse use("main dialog, button " + std::to_string(button));
        Open(button, WarmUps);
        use.Begin();
        Open(button, Openings());
        use.End(Openings(), NotesPerOpening);
    }

private:
    void Open(int button, int times)
    {
        for (int time = 0; time < times; ++time) {
            Run({Press(button)});
        }
    }
};

TEST_F(LongUseOfMainDialogTest, Cancelled)
{
    OpenAndLeaveBy(IDCANCEL);
}

TEST_F(LongUseOfMainDialogTest, Applied)
{
    OpenAndLeaveBy(IDOK);
}

using LongUseOfProgramTest = ProgramTest;

TEST_F(LongUseOfProgramTest, StartedAndLeftWithItsSplash)
{
    LongUse use("program with splash");
    const auto start = [this](int times) {
        for (int time = 0; time < times; ++time) {
            Run({Press(IDCANCEL)});
        }
    };
    start(WarmUps);
    use.Begin();
    start(Openings());
    use.End(Openings(), NotesPerOpening);
}

// --- what stands above the main dialog -------------------------------------------------------------------------------

/// A window above the main dialog: what opens it, and the commands that close it, in turns.
struct Above
{
    const char* name;
    void (*open)(const MainDialogPage& page);
    std::array<int, 2> close;

    friend void PrintTo(const Above& above, std::ostream* out) { *out << above.name; }
};

const Above Windows[] = {
    {"UserAccess", [](const MainDialogPage& page) { page.Command(32776); }, {IDOK, IDCANCEL}},
    {"ManageShortcuts", [](const MainDialogPage& page) { page.Command(32777); }, {IDOK, IDCANCEL}},
    {"About", [](const MainDialogPage& page) { page.Command(32773); }, {IDOK, IDCANCEL}},
    {"AboutOfTheSystemMenu", [](const MainDialogPage& page) { page.SystemCommand(16); }, {IDOK, IDCANCEL}},
    {"PickerOfTheApplicationFolder", [](const MainDialogPage& page) { page.Click(1002); }, {IDOK, IDCANCEL}},
    {"PickerOfTheProgramFolder", [](const MainDialogPage& page) { page.SystemCommand(17); }, {IDCANCEL, IDCANCEL}},
    {"PrintWithoutAPrinter", [](const MainDialogPage& page) { page.Command(57607); }, {IDOK, IDOK}},
    {"MissingHelp", [](const MainDialogPage& page) { page.Click(1009); }, {IDOK, IDOK}},
    {"TrustedPathsDone", [](const MainDialogPage& page) { page.Command(32780); }, {IDOK, IDOK}},
    {"NoUninstaller", [](const MainDialogPage& page) { page.Command(32775); }, {IDOK, IDOK}},
};

class LongUseOfWindowTest : public MainDialogTest, public testing::WithParamInterface<Above>
{
protected:
    /// Opens the window, waits until it stands, closes it, waits until it is gone; so many times, as one step.
    DriverStep OpenAndClose(int times)
    {
        return Await(std::string("open and close ") + GetParam().name,
                     [this, times](const MainDialogPage& page) { return Turn(page, times); });
    }

    LongUse m_use{GetParam().name};

private:
    enum class Moment
    {
        Closed,
        Opening,
        Closing
    };

    /// As far as it goes now. Whether all turns are over.
    bool Turn(const MainDialogPage& page, int times)
    {
        const HWND top = DialogPage::OnTop().Window();
        switch (m_moment) {
        case Moment::Closed:
            GetParam().open(page);
            m_moment = Moment::Opening;
            return false;
        case Moment::Opening:
            if (top != page.Window()) {
                m_above = top;
                DialogPage(top).Command(GetParam().close.at(static_cast<std::size_t>(m_turns) % 2));
                m_moment = Moment::Closing;
            }
            return false;
        case Moment::Closing: break;
        }
        if (::IsWindow(m_above) != FALSE || top != page.Window() || ::IsWindowEnabled(page.Window()) == FALSE) {
            return false;
        }
        m_moment = Moment::Closed;
        m_turns = m_turns + 1 == times ? 0 : m_turns + 1;
        return m_turns == 0;
    }

    Moment m_moment = Moment::Closed;
    int m_turns = 0;
    HWND m_above = nullptr;
};

TEST_P(LongUseOfWindowTest, LeavesNothingBehind)
{
    StoreFolder(L"LocalAppPath", L"C:\\windows\\");
    StoreFolder(L"NetworkAppPath", L"C:\\windows\\");
    m_patienceMs = PatienceFor(WarmUps + Openings());
    const INT_PTR result = RunOn(
        WithSystemWindows(), m_settings,
        {OpenAndClose(WarmUps), Do("begin", [this](const MainDialogPage&) { m_use.Begin(); }), OpenAndClose(Openings()),
         Do("end", [this](const MainDialogPage&) { m_use.End(Openings(), NotesPerWindow); }), Press(IDCANCEL)});
    EXPECT_EQ(result, IDCANCEL);
}

INSTANTIATE_TEST_SUITE_P(Above, LongUseOfWindowTest, testing::ValuesIn(Windows),
                         [](const auto& above) { return std::string(above.param.name); });

// --- dragging --------------------------------------------------------------------------------------------------------

class LongUseOfDraggingTest : public UserAccessTest
{
protected:
    /// How a drag ends.
    enum class Drop
    {
        OnList,
        Outside,
        Escape
    };
    struct DragRow
    {
        int from;
        const wchar_t* name;
        int to;
        Drop drop;
    };
    /// Together they change nothing, and no two in a row begin at one place, which would be a double click.
    static constexpr DragRow Round[] = {
        {UserList, L"alice", SiteKeeperList, Drop::OnList},
        {SiteKeeperList, L"alice", LedgerComposerList, Drop::OnList},
        {LedgerComposerList, L"alice", NormKeeperList, Drop::Escape},
        {SheetWriterList, L"bob", NormKeeperList, Drop::Outside},
        {LedgerComposerList, L"alice", NormKeeperList, Drop::OnList},
        {SheetWriterList, L"alice", SheetWriterList, Drop::OnList},
        {NormKeeperList, L"alice", UserList, Drop::OnList},
        {UserList, L"carol", UserList, Drop::OnList},
    };
    static constexpr int Rounds = static_cast<int>(std::size(Round));

    LongUseOfDraggingTest()
    {
        Store("[SheetWriter]\r\nalice = alice\r\nbob = bob\r\n\r\n"
              "[User List]\r\nalice = alice\r\nbob = bob\r\ncarol = carol\r\n");
    }

    DriverStep DragTimes(int times)
    {
        return Await("drag", [this, times](const UserAccessPage& page) { return Turn(page, times); });
    }

    LongUse m_use{"names dragged"};

private:
    bool Turn(const UserAccessPage& page, int times)
    {
        const DragRow& row = Round[m_turns % Rounds];
        if (m_moment == 0) {
            m_began = ::GetTickCount64();
        } else if (::GetTickCount64() > m_began + TurnPatienceMs) {
            ADD_FAILURE() << "drag " << m_turns + 1 << " stopped at moment " << m_moment;
            ReleaseMouse();
            return true;
        }
        switch (m_moment++) {
        case 0:
            page.Select(row.from, {row.name});
            m_start = page.PlaceOf(row.from, row.name);
            MoveMouse(m_start);
            PressMouse();
            return false;
        case 1: MoveMouse({m_start.x + 6, m_start.y + 6}); return false;
        case 2: MoveMouse({m_start.x + 16, m_start.y + 8}); return false;
        case 3:
            if (::GetCapture() != page.Window()) {
                m_moment = 3; // not yet: a hand goes on moving
                m_start.x ^= 1;
                MoveMouse({m_start.x + 16, m_start.y + 8});
                return false;
            }
            MoveMouse(row.drop == Drop::Outside ? page.MiddleOf(NewUserField) : page.EmptyPlaceIn(row.to));
            if (row.drop == Drop::Escape) {
                PressKey(VK_ESCAPE);
            }
            return false;
        case 4: ReleaseMouse(); return false;
        default: break;
        }
        if (::GetCapture() != nullptr) {
            return false;
        }
        m_moment = 0;
        m_turns = m_turns + 1 == times ? 0 : m_turns + 1;
        return m_turns == 0;
    }

    static constexpr ULONGLONG TurnPatienceMs = 8000;

    int m_turns = 0;
    int m_moment = 0;
    ULONGLONG m_began = 0;
    POINT m_start{};
};

TEST_F(LongUseOfDraggingTest, LeavesNothingBehind)
{
    const Names nobodyElse{L"Everyone"};
    const Names everybody{L"alice", L"bob", L"carol"};
    const int drags = (Drags() + Rounds - 1) / Rounds * Rounds;
    m_patienceMs = PatienceFor(drags + 2 * Rounds);
    const std::vector<Names> same{everybody, nobodyElse, nobodyElse, {L"alice", L"bob"}, nobodyElse};
    Run({Expect(same), DragTimes(2 * Rounds), Do("begin", [this](const UserAccessPage&) { m_use.Begin(); }),
         DragTimes(drags), Do("end", [this, drags](const UserAccessPage&) { m_use.End(drags); }), Expect(same),
         Press(IDCANCEL)});
}

} // namespace
} // namespace sitekeeper
