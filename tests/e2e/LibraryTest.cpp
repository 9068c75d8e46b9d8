// The dialogs library: where it is looked for, what is asked of it, and the program without it.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/PatchedProgram.h"

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* RecordFile = L"C:\\Elsewhere\\record.txt";
constexpr const wchar_t* SecondPlace = L"C:\\Elsewhere\\Common\\ORIVEL\\ORSWDialogsOEM64.dll";

class Library : public Journey
{
protected:
    void SetUp() override
    {
        MakeFolders(L"C:\\Elsewhere");
        ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_RECORD", RecordFile);
    }
    void TearDown() override
    {
        ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_RECORD", nullptr);
        ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_NO_OBJECT", nullptr);
        ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_CPF", nullptr);
    }

    static void InstallRecorder(const std::wstring& path)
    {
        CopyFileTo(ShippedFile(L"tests\\e2e\\RecordingLibrary.dll"), path);
    }

    static std::string Recorded() { return ReadWholeFile(RecordFile).value_or("nothing"); }

    /// The message about the library, then the main dialog, then OK, which works without a progress window.
    static void ExpectMessageAndWork(const std::wstring& text, const std::wstring& moment)
    {
        Installation::AddOldShortcuts(Installation::DesktopFolder());
        State expected = State::Take();
        const ProgramRun run(Installation::Program());
        {
            const MessageWindow message(run);
            EXPECT_EQ(message.Text(), text);
            EXPECT_EQ(message.Caption(), L"Error"); // the system's own, in the system's language
            EXPECT_EQ(message.Owner(), nullptr);
            EXPECT_TRUE(message.HasOnlyOk());
            EXPECT_NE(message.Icon(), nullptr);
            EXPECT_EQ(run.Windows().size(), 1U) << "before the main window";
            SaveMoment(message.Handle(), moment);
            message.Confirm();
        }
        const MainWindow main(run);
        ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\Suite\\");
        ExpectPosition(expected, main.Rectangle());
        main.Click(Control::Ok);
        ExpectEnd(run, expected);
    }
};

} // namespace

TEST_F(Library, IsMissingInBothPlaces)
{
    RemoveFile(Installation::DialogsLibrary());
    ExpectMessageAndWork(L"Couldn't find dll file: \nORSWDialogsOEM64.dll\n\nPlease check software installation.",
                         L"library-missing");
}

TEST_F(Library, CannotBeLoaded)
{
    WriteWholeFile(Installation::DialogsLibrary(), "This is a text file.");
    ExpectMessageAndWork(L"Couldn't load dll file: \n" + Installation::DialogsLibrary() +
                             L"\n\nPlease check software installation.",
                         L"library-unloadable");
}

TEST_F(Library, IsLookedForInTheCommonFilesFolderOfTheRegistryToo)
{
    RemoveFile(Installation::DialogsLibrary());
    InstallRecorder(SecondPlace);
    Suite().Borrow(Hive::Machine, CurrentVersionKey, L"CommonFilesDir", TextValue(L"C:\\Elsewhere\\Common"));
    const ProgramRun run(ProgramWithOwnCommonProgramFiles());
    const MainWindow main(run);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Recorded(), "loaded\nreleased\n");
}

TEST_F(Library, WithoutBothFoldersIsMissing)
{
    Suite().Borrow(Hive::Machine, CurrentVersionKey, L"CommonFilesDir", std::nullopt);
    const ProgramRun run(ProgramWithOwnCommonProgramFiles());
    const MessageWindow message(run);
    EXPECT_EQ(message.Text(), L"Couldn't find dll file: \nORSWDialogsOEM64.dll\n\nPlease check software installation.");
    message.Confirm();
    const MainWindow main(run);
}

TEST_F(Library, OfTheVariableWinsOverTheRegistrys)
{
    CopyFileTo(Installation::DialogsLibrary(), SecondPlace); // the real one, which records nothing
    InstallRecorder(L"C:\\Elsewhere\\First\\ORIVEL\\ORSWDialogsOEM64.dll");
    ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_CPF", L"C:\\Elsewhere\\First");
    Suite().Borrow(Hive::Machine, CurrentVersionKey, L"CommonFilesDir", TextValue(L"C:\\Elsewhere\\Common"));
    const ProgramRun run(ProgramWithOwnCommonProgramFiles());
    const MainWindow main(run);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Recorded(), "loaded\nreleased\n");
}

TEST_F(Library, IsAskedForOneWindowAndReleasedAtTheEnd)
{
    InstallRecorder(Installation::DialogsLibrary());
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_EQ(Recorded(), "loaded\n");
    main.Click(Control::Ok);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Recorded(), "loaded\nnew\ncreate for the program\ntitle Site Keeper\nmessage Applying changes...\n"
                          "icon 128\ndeleted\nreleased\n");
}

TEST_F(Library, ThatMakesNoObjectIsNoHindrance)
{
    InstallRecorder(Installation::DialogsLibrary());
    ::SetEnvironmentVariableW(L"SITEKEEPER_E2E_NO_OBJECT", L"1");
    Installation::AddOldShortcuts(Installation::DesktopFolder());
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    ExpectRenewed(expected, Installation::DesktopFolder(), L"C:\\Suite\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Recorded(), "loaded\nno object\nreleased\n");
    RemoveFile(RecordFile);
    ExpectEnd(run, expected);
}

TEST_F(Library, CancelAsksForNoWindow)
{
    InstallRecorder(Installation::DialogsLibrary());
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Click(Control::Cancel);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Recorded(), "loaded\nreleased\n");
}

} // namespace sitekeeper::e2e
