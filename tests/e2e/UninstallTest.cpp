// The suite's uninstaller: found, started as registered, and left behind by a program that has applied its settings.
#include "e2e/Journey.h"
#include "e2e/support/Recorder.h"

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* SetupProgram = L"C:\\Elsewhere\\Setup\\setup.exe";

class Uninstall : public Journey
{
protected:
    void TearDown() override
    {
        RemoveKey(Hive::Machine, UninstallKey);
        RemoveKey(Hive::Machine, SecondUninstallKey);
    }

    static void Register(const wchar_t* key, const std::wstring& command)
    {
        WriteValue(Hive::Machine, key, L"UninstallString", TextValue(command));
    }
};

} // namespace

TEST_F(Uninstall, StartsWhatIsRegisteredAppliesAndLeaves)
{
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    const Recorder setup(SetupProgram);
    Register(UninstallKey, std::wstring(SetupProgram) + L" -runfromtemp -l0x0409 -removeonly");
    Register(SecondUninstallKey, L"C:\\Elsewhere\\other.exe -x");
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite\\");
    ExpectFolders(expected, L"C:\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\Suite\\Datafiles\\");
    ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\NewServer\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Choose(Command::Uninstall);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(setup.AwaitRecord(), L"\"C:\\Elsewhere\\Setup\\setup.exe\" -runfromtemp -l0x0409\n"
                                   L"1\n"  // SW_SHOWNORMAL
                                   L"32\n" // normal priority
                                   L"C:\\Suite\\Applications");
    EXPECT_TRUE(setup.IsRunning()) << "it outlives the program";
    setup.End();
    EXPECT_TRUE(IsNow(expected));
}

TEST_F(Uninstall, TakesTheSecondUninstallKeyWhereTheFirstIsEmpty)
{
    const Recorder setup(SetupProgram);
    Register(UninstallKey, L"");
    Register(SecondUninstallKey, std::wstring(SetupProgram) + L" -removeonly -silent");
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::Uninstall);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_TRUE(setup.AwaitRecord().starts_with(L"\"C:\\Elsewhere\\Setup\\setup.exe\" -silent\n"));
}

TEST_F(Uninstall, SaysWhereNothingIsRegisteredAndStays)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    main.Choose(Command::Uninstall);
    const MessageWindow message(run);
    EXPECT_EQ(message.Text(), L"Could not find InstallShield uninstall information.\n\n"
                              L"Make sure that program was properly installed.");
    EXPECT_EQ(message.Caption(), L"Site Keeper");
    EXPECT_EQ(message.Owner(), main.Handle());
    EXPECT_TRUE(message.HasOnlyOk());
    EXPECT_TRUE(message.HasIcon());
    SaveMoment(message.Handle(), L"uninstall-missing");
    message.Confirm();
    EXPECT_TRUE(IsNow(expected));
    EXPECT_NE(::IsWindowEnabled(main.Handle()), FALSE);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

TEST_F(Uninstall, LeavesAlsoWhereNothingCanBeStarted)
{
    Register(UninstallKey, L"MsiExec.exe"); // no blank behind the program: taken apart as "Msi" and "Exec.exe"
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectPosition(expected, main.Rectangle());
    main.Choose(Command::Uninstall);
    ExpectEnd(run, expected);
}

} // namespace sitekeeper::e2e
