// The OEM engine's installer: chosen, started, and not waited for.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"

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
    void TearDown() override { EndRecorder(); }

    /// A program that notes how it was started and stays until EndRecorder.
    static void AddRecorder()
    {
        CopyFileTo(ShippedFile(L"tests\\e2e\\StartRecorder.exe"), SetupProgram);
        SettleAccessTimes();
    }
    static void EndRecorder()
    {
        if (!Exists(SetupProgram + L".running")) {
            return;
        }
        WriteWholeFile(SetupProgram + L".end", "");
        const ULONGLONG deadline = ::GetTickCount64() + PatienceMilliseconds;
        while (Exists(SetupProgram + L".running") && ::GetTickCount64() < deadline) {
            WaitAnswering(nullptr, 10);
        }
        EXPECT_FALSE(Exists(SetupProgram + L".running"));
    }
    /// What the recorder noted, once it has run.
    static std::wstring AwaitRecord(const ProgramRun& run)
    {
        run.Await("the installer to start", [] { return Exists(SetupProgram + L".txt"); });
        return ReadWideText(SetupProgram + L".txt");
    }

    /// Sends the command and chooses the image.
    static void Install(const ProgramRun& run, const MainWindow& main)
    {
        main.Choose(Command::InstallOem);
        const FolderPicker picker(run, L"(C:)");
        EXPECT_EQ(picker.Title(), L"Select the location of the ACAD64 folder in the Install Image");
        picker.Choose(Image);
    }
    static void ExpectBack(const ProgramRun& run, const MainWindow& main)
    {
        run.Await("the dialog to come back", [&] {
            return ::IsWindowVisible(main.Handle()) != FALSE && ::IsIconic(main.Handle()) == FALSE &&
                   ::IsWindowEnabled(main.Handle()) != FALSE;
        });
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
    AddRecorder();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    Install(run, main);
    EXPECT_EQ(AwaitRecord(run), L"/t /qb /c AOEM: INSTALLDIR=\"C:\\Suite\\\\Engine\"\n" // all of the command line
                                L"5\n"                                                  // SW_SHOW
                                L"32\n"                                                 // normal priority
                                L"C:\\Suite\\Applications");
    ExpectBack(run, main);
    EXPECT_EQ(run.Windows().size(), 1U);
    EXPECT_TRUE(Exists(SetupProgram + L".running"));

    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_TRUE(Exists(SetupProgram + L".running")) << "it outlives the program";
    EndRecorder();
    RemoveFile(SetupProgram + L".txt");
    RemoveFile(SetupProgram + L".end");
    EXPECT_TRUE(IsNow(expected));
}

TEST_F(OemInstaller, IsStartedWithoutAProgramFolderToo)
{
    AddRecorder();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    RemoveValue(Hive::Machine, SuiteKey, L"LocalAppPath");
    Install(run, main);
    EXPECT_TRUE(AwaitRecord(run).starts_with(L"/t /qb /c AOEM: INSTALLDIR=\"\\Engine\"\n"));
    ExpectBack(run, main);
}

TEST_F(OemInstaller, AFolderWithoutItGivesTheMessage)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    Install(run, main);
    ExpectError(run, main);
    ExpectBack(run, main);
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
    ExpectBack(run, main);
}

TEST_F(OemInstaller, CancellingThePickerSaysNothing)
{
    AddRecorder();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    main.Choose(Command::InstallOem);
    FolderPicker(run, L"(C:)").Cancel();
    ExpectBack(run, main);
    EXPECT_EQ(run.Windows().size(), 1U);
    EXPECT_FALSE(Exists(SetupProgram + L".txt"));
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

} // namespace sitekeeper::e2e
