// What the main dialog takes from the registry, and what it leaves there when it ends without applying.
#include "platform/PlatformError.h"
#include "support/MainDialogFixture.h"
#include "support/Printing.h"
#include "support/ThreadWindows.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::wstring PositionText(const RECT& r)
{
    return std::to_wstring(r.left) + L"," + std::to_wstring(r.top) + L"," + std::to_wstring(r.right) + L"," +
           std::to_wstring(r.bottom);
}

class MainDialogStateTest : public MainDialogTest
{
protected:
    struct Shown
    {
        InstallationFolders folders;
        CalendarTime reminderDate;
        std::wstring reminderDays;
        std::wstring profile;
        RECT rectangle;
    };

    /// Opens the dialog, reads it, and cancels.
    Shown Open()
    {
        Shown shown{};
        Run({Do("read",
                [&shown](const MainDialogPage& page) {
                    shown = {page.Folders(), page.ReminderDate(), page.ReminderDays(), page.Text(1028),
                             page.ScreenRectangle()};
                }),
             Press(IDCANCEL)});
        return shown;
    }

    void StoreDate(const std::wstring& text)
    {
        memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", text);
    }

    /// Each line of the platform's state that the run added or took away, but for what the window's position needs.
    [[nodiscard]] State ChangesBy(const std::function<void()>& run) const
    {
        const State before = memory.CurrentState();
        run();
        const State after = memory.CurrentState();
        State changes = Added(before, after);
        const State removed = Removed(before, after);
        changes.insert(changes.end(), removed.begin(), removed.end());
        return changes;
    }

    /// What a run that only writes the window's position changes.
    [[nodiscard]] State OnlyThePosition() const
    {
        const std::wstring profile = L"registry HKCU\\Software\\ORIVEL\\LX Plus\\2023\\SiteKeeper";
        return {profile, profile + L"\\WindowPosition",
                profile + L"\\WindowPosition : Application = \"" + StoredPosition() + L"\""};
    }
};

TEST_F(MainDialogStateTest, ShowsTheStoredFolders)
{
    StoreFolder(L"LocalAppPath", L"C:\\Suite");
    StoreFolder(L"NetworkAppPath", L"\\\\server\\share\\Süite");
    StoreFolder(L"DatafilesPath", L"N:\\Data\\");
    const InstallationFolders expected{L"C:\\Suite\\", L"\\\\server\\share\\Süite\\", L"N:\\Data\\"};
    EXPECT_EQ(Open().folders, expected);
}

TEST_F(MainDialogStateTest, DerivesTheFoldersOfAFreshInstallation)
{
    RemoveFolder(L"LocalAppPath");
    RemoveFolder(L"NetworkAppPath");
    RemoveFolder(L"DatafilesPath");
    const InstallationFolders expected{L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"};
    EXPECT_EQ(Open().folders, expected);
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"(none)", L"(none)", L"(none)"}));
}

TEST_F(MainDialogStateTest, DerivesOnlyWhatIsMissing)
{
    RemoveFolder(L"NetworkAppPath");
    RemoveFolder(L"DatafilesPath");
    StoreFolder(L"LocalAppPath", L"D:\\Elsewhere\\");
    const InstallationFolders expected{L"D:\\Elsewhere\\", L"D:\\Elsewhere\\", L"D:\\Elsewhere\\Datafiles\\"};
    EXPECT_EQ(Open().folders, expected);
}

TEST_F(MainDialogStateTest, HasNoProgramFolderForAProgramInTheRoot)
{
    RemoveFolder(L"LocalAppPath");
    RemoveFolder(L"NetworkAppPath");
    RemoveFolder(L"DatafilesPath");
    m_programFile = L"C:\\SiteKeeper64.exe";
    EXPECT_EQ(Open().folders, (InstallationFolders{L"", L"", L"Datafiles\\"}));
}

TEST_F(MainDialogStateTest, LoadsTheScheduleIntoTheHiddenControls)
{
    const Shown shown = Open();
    EXPECT_EQ(shown.reminderDate, (CalendarTime{2024, 5, 6, 7, 8, 9}));
    EXPECT_EQ(shown.reminderDays, L"14");
    EXPECT_EQ(shown.profile, L"");
}

TEST_F(MainDialogStateTest, HasAScheduleWhereNoneIsStored)
{
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate");
    memory.registry.RemoveValue(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays");
    const Shown shown = Open();
    EXPECT_EQ(shown.reminderDate, (CalendarTime{2000, 1, 1, 0, 0, 0}));
    EXPECT_EQ(shown.reminderDays, L"7");
}

TEST_F(MainDialogStateTest, TakesADateWithoutATimeForNone)
{
    StoreDate(L"2024-05-06");
    EXPECT_EQ(Open().reminderDate, (CalendarTime{2000, 1, 1, 0, 0, 0}));
}

TEST_F(MainDialogStateTest, ShowsTheDaysAsASignedNumber)
{
    memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", 0xFFFFFFFE);
    EXPECT_EQ(Open().reminderDays, L"-2");
}

TEST_F(MainDialogStateTest, OpensAndShowsThePickersDateInTheLocalZone)
{
    const TimeZoneScope zone(Berlin);
    StoreDate(L"2024-07-01 12:30:00");
    EXPECT_EQ(Open().reminderDate, (CalendarTime{2024, 7, 1, 12, 30, 0}));
}

// --- an initialisation that fails ----------------------------------------------------------------------------------

TEST_F(MainDialogStateTest, DoesNotOpenOverAStoredDateThatIsNone)
{
    StoreDate(L"2024-13-01 00:00:00");
    std::vector<std::wstring> windows;
    const State changes = ChangesBy([&] {
        const WindowLog log(windows);
        EXPECT_EQ(RunRefused(), ResultCode::Fail);
    });
    EXPECT_THAT(windows, IsEmpty());
    EXPECT_EQ(changes, OnlyThePosition());
    EXPECT_EQ(m_libraryModules.Asked().size(), 1U);
    EXPECT_EQ(m_libraryModules.Held(), 0);
    EXPECT_EQ(m_library, ModuleId::None);
    EXPECT_FALSE(m_app.IsWaiting());
}

TEST_F(MainDialogStateTest, DoesNotOpenWhereTheCalendarRefusesDates)
{
    m_clock.refusesDates = true;
    EXPECT_EQ(RunRefused(), ResultCode::InvalidArgument);
    EXPECT_EQ(m_libraryModules.Held(), 0);
}

// --- ending without applying -----------------------------------------------------------------------------------------

class MainDialogLeaveTest : public MainDialogStateTest, public testing::WithParamInterface<const char*>
{
protected:
    DriverStep Leave()
    {
        const std::string way = GetParam();
        if (way == "Escape") {
            return Key(VK_ESCAPE);
        }
        return way == "CloseBox" ? ChooseSystem(SC_CLOSE) : Press(IDCANCEL);
    }
};

TEST_P(MainDialogLeaveTest, WritesNothingButThePosition)
{
    INT_PTR result = 0;
    const State changes = ChangesBy([&] {
        result = Run({Do("type into the fields",
                         [](const MainDialogPage& page) {
                             page.Enter(ApplicationField, L"X:\\Typed");
                             page.Enter(DatafilesField, L"X:\\Typed\\Data");
                         }),
                      Leave()});
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(changes, OnlyThePosition());
}

INSTANTIATE_TEST_SUITE_P(By, MainDialogLeaveTest, testing::Values("Cancel", "CloseBox", "Escape"),
                         [](const auto& way) { return std::string(way.param); });

// --- the window's position -------------------------------------------------------------------------------------------

TEST_F(MainDialogStateTest, WritesThePositionAtWhichItOpened)
{
    const RECT rectangle = Open().rectangle;
    EXPECT_EQ(StoredPosition(), PositionText(rectangle));
}

TEST_F(MainDialogStateTest, WritesThePositionToWhichItWasMoved)
{
    RECT last{};
    Run({Do("move",
            [](const MainDialogPage& page) {
                ::SetWindowPos(page.Window(), nullptr, 37, 41, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            }),
         Do("look", [&last](const MainDialogPage& page) { last = page.ScreenRectangle(); }), Press(IDCANCEL)});
    EXPECT_EQ(last.left, 37);
    EXPECT_EQ(last.top, 41);
    EXPECT_EQ(StoredPosition(), PositionText(last));
}

TEST_F(MainDialogStateTest, OpensInTheMiddleWhateverPositionIsStored)
{
    const RECT first = Open().rectangle;
    memory.registry.SetText(Hive::CurrentUser, WindowPositionKey, L"Application", L"1,2,301,202");
    const RECT second = Open().rectangle;
    EXPECT_NE(::EqualRect(&first, &second), FALSE);
    RECT area{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    EXPECT_NEAR(first.left + first.right, area.left + area.right, 1);
    EXPECT_NEAR(first.top + first.bottom, area.top + area.bottom, 1);
}

TEST_F(MainDialogStateTest, WritesZerosForAWindowThatNeverWas)
{
    {
        const CSiteKeeperDlg dialog(m_app, {m_platform, m_settings, m_library, m_programFile, m_helpFile});
    }
    EXPECT_EQ(StoredPosition(), L"0,0,0,0");
}

TEST_F(MainDialogStateTest, MovesNoControlWhenItsSizeChanges)
{
    std::vector<RECT> before;
    std::vector<RECT> after;
    RECT last{};
    Run({Do("resize",
            [&](const MainDialogPage& page) {
                before = page.ControlRectangles();
                const RECT place = page.ScreenRectangle();
                ::SetWindowPos(page.Window(), nullptr, 0, 0, place.right - place.left + 120,
                               place.bottom - place.top + 80, SWP_NOMOVE | SWP_NOZORDER);
                after = page.ControlRectangles();
                last = page.ScreenRectangle();
            }),
         Press(IDCANCEL)});
    ASSERT_EQ(before.size(), 25U);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_NE(::EqualRect(&before[i], &after[i]), FALSE) << "control number " << i;
    }
    EXPECT_EQ(StoredPosition(), PositionText(last)) << "the new size belongs to the position";
}

// --- the dialogs library ---------------------------------------------------------------------------------------------

TEST_F(MainDialogStateTest, HoldsTheDialogsLibraryWhileItLives)
{
    int held = 0;
    Run({Do("look", [&](const MainDialogPage& /*page*/) { held = m_libraryModules.Held(); }), Press(IDCANCEL)});
    EXPECT_EQ(held, 1);
    EXPECT_EQ(m_libraryModules.Held(), 0);
    EXPECT_EQ(m_library, ModuleId::None);
    EXPECT_THAT(m_libraryModules.Asked(), ElementsAre(L"C:\\Common\\ORIVEL\\ORSWDialogsOEM64.dll"));
}

TEST_F(MainDialogStateTest, OpensWithoutTheDialogsLibraryAfterOneMessage)
{
    memory.environment.Remove(L"CommonProgramFiles");
    memory.messages.Expect();
    Open();
    EXPECT_THAT(
        memory.messages.Shown(),
        ElementsAre(ScriptedMessageBoxes::Box{
            WindowId::None, L"Couldn't find dll file: \nORSWDialogsOEM64.dll\n\nPlease check software installation.",
            std::nullopt, MessageStyle::Error}));
    EXPECT_THAT(m_libraryModules.Asked(), IsEmpty());
}

} // namespace
} // namespace sitekeeper
