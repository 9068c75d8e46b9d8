// OK and Exit: the main job.
#include "e2e/Journey.h"
#include "e2e/support/Days.h"
#include "e2e/support/FileTree.h"

namespace sitekeeper::e2e {
namespace {

class Apply : public Journey
{};

/// A place for the application folder and where its shortcuts then point.
class ApplyTo : public Apply, public ::testing::WithParamInterface<std::wstring>
{};

} // namespace

TEST_F(Apply, BrowsingAndOkMoveTheSuiteToAnotherFolder)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    SettleAccessTimes();
    State expected = State::Take();

    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Click(Control::BrowseApplication);
    const FolderPicker picker(run, L"Suite");
    EXPECT_EQ(picker.Title(), L"Choose the application folder");
    picker.Choose(L"C:\\NewServer\\Suite");
    run.Await("the chosen folder in its field",
              [&] { return main.Text(Control::ApplicationPath) == L"C:\\NewServer\\Suite\\"; });
    EXPECT_TRUE(IsNow(expected)) << "browsing writes nothing";

    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectReminder(expected, L"2094-05-06 07:08:09", 14);
    ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\NewServer\\Suite\\");
    ExpectRenewed(expected, Installation::ProgramsFolder(), L"C:\\NewServer\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, OkWithoutChangesWritesTheSameAgainAndRenewsTheShortcuts)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, ExitOfTheMenuIsTheSameAsOk)
{
    Installation::AddOldShortcuts(Installation::ProgramsFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
    main.Type(Control::DatafilesPath, L"D:\\Data\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"D:\\Data\\");
    ExpectRenewed(expected, Installation::ProgramsFolder(), L"C:\\NewServer\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Choose(Command::Exit);
    ExpectEnd(run, expected);
}

TEST_F(Apply, EnterIsTheSameAsOk)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::DatafilesPath, L"D:\\Data\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Suite\\", L"D:\\Data\\");
    ExpectPosition(expected, main.Rectangle());
    main.Press(Control::DatafilesPath, VK_RETURN);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AFreshInstallationIsStoredWithItsDefaults)
{
    Installation::RemoveSettings();
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectReminder(expected, DateAfter(7), 7); // armed by the start
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AProgramAtTheRootOfADriveStoresEmptyFolders)
{
    Installation::RemoveSettings();
    CopyFileTo(Installation::Program(), L"C:\\SiteKeeper64.exe");
    State expected = State::Take();
    const ProgramRun run(L"C:\\SiteKeeper64.exe");
    const MainWindow main(run);
    ExpectFolders(expected, L"", L"", L"Datafiles\\");
    ExpectReminder(expected, DateAfter(7), 7); // armed by the start
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, TypedTextIsStoredAsItStands)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"");
    main.Type(Control::DatafilesPath, L" D:/no backslash at the end ");
    ExpectFolders(expected, L"C:\\Suite\\", L"", L" D:/no backslash at the end ");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AnApplicationFolderWithoutABackslashIsJoinedAsItStands)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\NewServer");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer", L"C:\\Suite\\Datafiles\\");
    ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\NewServer"); // C:\NewServerApplications\...
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, WithoutShortcutsNoneIsMade)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AnEmptyPlaceholderBecomesAShortcutAndStrangersAreLeftAlone)
{
    WriteWholeFile(Installation::DesktopFolder() + L"Site Keeper.lnk", "");
    WriteWholeFile(Installation::DesktopFolder() + L"Read me.txt", "not a shortcut");
    WriteWholeFile(Installation::ProgramsFolder() + L"Norm Keeper.lnk.bak", "");
    WriteWholeFile(Installation::ProgramsFolder() + L"Assist Web Page.lnk", "this is no shortcut at all");
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    expected.Set(Installation::DesktopFolder() + L"Site Keeper.lnk", RenewedShortcut(Tools[1], L"C:\\Suite\\"));
    expected.Set(Installation::ProgramsFolder() + L"Assist Web Page.lnk", RenewedShortcut(Tools[4], L"C:\\Suite\\"));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AStoredDateInAnotherNotationIsRewrittenInTheUsualOne)
{
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(L"2094 05:06-07 08 09"));
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectReminder(expected, L"2094-05-06 07:08:09", 14);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, ADateWithoutATimeIsAsGoodAsNone)
{
    Installation::SetFolders(L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\"); // no reminder
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDate", TextValue(L"2024-05-06"));
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectReminder(expected, L"2000-01-01 00:00:00", 14);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, LongReminderIntervalsSurvive)
{
    WriteValue(Hive::User, ReminderKey, L"CheckWebVersionDays", NumberValue(2147483647));
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, ValuesOfOtherTypesAreReplacedByText)
{
    WriteValue(Hive::Machine, SuiteKey, L"NetworkAppPath", RegistryValue{REG_EXPAND_SZ, TextValue(L"C:\\Suite").bytes});
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Apply, AFolderWithADotAtItsEndIsStoredAsItStands)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\Elsewhere\\Dr. Suite.");
    main.Type(Control::DatafilesPath, L"C:\\Elsewhere\\Data.\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\Elsewhere\\Dr. Suite.", L"C:\\Elsewhere\\Data.\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_P(ApplyTo, AnApplicationFolderOfAnyName)
{
    if (GetParam().starts_with(L"C:\\Elsewhere\\")) {
        Installation::AddTools(GetParam());
    }
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, GetParam());
    ExpectFolders(expected, L"C:\\Suite\\", GetParam(), L"C:\\Suite\\Datafiles\\");
    for (const Tool& tool : Tools) {
        const Shortcut renewed = RenewedShortcut(tool, GetParam());
        // A target that does not fit the system's classic limit keeps its old shortcut.
        if (renewed.target.size() < MAX_PATH) {
            expected.Set(Installation::DesktopFolder() + tool.name + L".lnk", renewed);
        }
    }
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

INSTANTIATE_TEST_SUITE_P(Names, ApplyTo,
                         ::testing::Values(L"\\\\server\\CAD share\\Suite\\", L"C:\\Elsewhere\\Büro Müller\\Suite\\",
                                           L"C:\\Elsewhere\\Проекты\\Иван\\",
                                           L"C:\\Elsewhere\\O'Brien & Sons (2023)\\100% %s %d\\",
                                           L"C:\\Elsewhere\\a = b\\[x]\\",
                                           // The longest target is 259, the shortest 252 characters.
                                           L"C:\\" + std::wstring(222, L'x') + L"\\",
                                           // Some targets fit, some do not.
                                           L"C:\\" + std::wstring(225, L'x') + L"\\",
                                           L"C:\\" + std::wstring(260, L'x') + L"\\"));

} // namespace sitekeeper::e2e
