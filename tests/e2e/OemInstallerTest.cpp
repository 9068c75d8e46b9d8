// The OEM engine's installer: chosen, started, and not waited for.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/Recorder.h"

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* Image = L"C:\\Elsewhere\\Image\\ACAD64";
const std::wstring SetupProgram = std::wstring(Image) + L"\\setup.exe";

class OemInstaller : public Journey
{
protected:
    void SetUp() override
    {
        MakeFolders(Image);
        SettleAccessTimes();
    }

    /// Sends the command and chooses the image.
    static void Install(const ProgramRun& run, const MainWindow& main)
    {
        main.Choose(Command::InstallOem);
        const FolderPicker picker(run, L"(C:)");
        EXPECT_EQ(picker.Title(), L"Select the location of the ACAD64 folder in the Install Image");
        picker.Choose(Image);
    }

    /// The message that says that it could not be started, over a dialog that is off the screen.
    static void ExpectError(const ProgramRun& run, const MainWindow& main)
    {
        const MessageWindow message(run);
        EXPECT_EQ(message.Text(), L"Error creating process:\nC:\\Elsewhere\\Image\\ACAD64\\\\setup.exe");
        EXPECT_EQ(message.Caption(), L"SiteKeeper");
        EXPECT_EQ(message.Owner(), main.Handle());
        EXPECT_TRUE(message.HasOnlyOk());
        EXPECT_TRUE(message.HasIcon());
        EXPECT_EQ(::IsWindowVisible(main.Handle()), FALSE);
        SaveMoment(message.Handle(), L"oem-error");
        message.Confirm();
    }
};

} // namespace

TEST_F(OemInstaller, IsStartedWithTheArgumentsAloneAndNotWaitedFor)
{
    const Recorder installer(SetupProgram);
    SettleAccessTimes();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    Install(run, main);
    EXPECT_EQ(installer.AwaitRecord(),
              L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\"\n" // all of the command line
              L"5\n"                                                  // SW_SHOW
              L"32\n"                                                 // normal priority
              L"C:\\Suite\\Applications");
    main.AwaitBack();
    EXPECT_EQ(run.Windows().size(), 1U);
    EXPECT_TRUE(installer.IsRunning());

    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_TRUE(installer.IsRunning()) << "it outlives the program";
    installer.End();
    EXPECT_TRUE(IsNow(expected));
}

TEST_F(OemInstaller, IsStartedWithoutAProgramFolderToo)
{
    const Recorder installer(SetupProgram);
    SettleAccessTimes();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    RemoveValue(Hive::Machine, SuiteKey, L"LocalAppPath");
    Install(run, main);
    EXPECT_TRUE(installer.AwaitRecord().starts_with(L"/t /qb /c AOEM: INSTALLDIR=\"\\Engine\"\n"));
    main.AwaitBack();
}

TEST_F(OemInstaller, AFolderWithoutItGivesTheMessage)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    Install(run, main);
    ExpectError(run, main);
    main.AwaitBack();
    EXPECT_TRUE(IsNow(expected));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

TEST_F(OemInstaller, AFileThatIsNoProgramGivesTheMessage)
{
    WriteWholeFile(SetupProgram, "this is no program");
    SettleAccessTimes();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    Install(run, main);
    ExpectError(run, main);
    main.AwaitBack();
}

TEST_F(OemInstaller, CancellingThePickerSaysNothing)
{
    const Recorder installer(SetupProgram);
    SettleAccessTimes();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    main.Choose(Command::InstallOem);
    FolderPicker(run, L"(C:)").Cancel();
    main.AwaitBack();
    EXPECT_EQ(run.Windows().size(), 1U);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
    EXPECT_FALSE(installer.HasRun());
}

} // namespace sitekeeper::e2e
