// The path fields: choosing folders and opening them.
#include "e2e/Journey.h"
#include "e2e/support/EchoProgram.h"
#include "e2e/support/FileTree.h"

namespace sitekeeper::e2e {
namespace {

class Browse : public Journey
{
protected:
    void SetUp() override { SettleAccessTimes(); }

    /// What the stand-in was given, once it has run.
    static std::wstring AwaitExplored(const EchoProgram& explorer, const ProgramRun& run)
    {
        const std::wstring line = explorer.AwaitCommandLine(run);
        const std::size_t verb = line.find(L"explore ");
        return verb == std::wstring::npos ? line : line.substr(verb);
    }
};

} // namespace

TEST_F(Browse, CancellingThePickerEmptiesTheApplicationPath)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Click(Control::BrowseApplication);
    FolderPicker(run, L"Suite").Cancel();
    run.Await("the emptied field", [&] { return main.Text(Control::ApplicationPath).empty(); });
    EXPECT_EQ(main.Text(Control::ProgramPath), L"C:\\Suite\\");
    EXPECT_EQ(main.Text(Control::DatafilesPath), L"C:\\Suite\\Datafiles\\");

    ExpectFolders(expected, L"C:\\Suite\\", L"", L"C:\\Suite\\Datafiles\\");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Browse, AnEmptyFieldStartsAtTheRootOfTheDrive)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"");
    main.Click(Control::BrowseApplication);
    const FolderPicker picker(run, L"(C:)");
    picker.Choose(L"C:\\");
    run.Await("the chosen root", [&] { return main.Text(Control::ApplicationPath) == L"C:\\"; });
}

TEST_F(Browse, TypedTextIsWhereTheApplicationPickerStarts)
{
    MakeFolders(L"C:\\Elsewhere\\Büro Müller");
    SettleAccessTimes();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\Elsewhere\\Büro Müller");
    main.Type(Control::DatafilesPath, L"D:\\Typed\\");
    main.Click(Control::BrowseApplication);
    const FolderPicker picker(run, L"Büro Müller");
    SaveMoment(picker.Handle(), L"folder-browser");
    picker.Choose(L"C:\\Elsewhere\\Büro Müller");
    run.Await("the chosen folder",
              [&] { return main.Text(Control::ApplicationPath) == L"C:\\Elsewhere\\Büro Müller\\"; });
    EXPECT_EQ(main.Text(Control::DatafilesPath), L"D:\\Typed\\") << "typed text in the other field survives";
}

TEST_F(Browse, TheDatafilesPickerLosesTypedTextAndStartsFromTheLastExchange)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\Typed application\\");
    main.Type(Control::DatafilesPath, L"C:\\NewServer\\");
    main.Click(Control::BrowseDatafiles);
    const FolderPicker picker(run, L"Datafiles"); // not the typed NewServer
    EXPECT_EQ(picker.Title(), L"Choose the datafiles folder");
    picker.Choose(L"C:\\NewServer\\Suite");
    run.Await("the chosen folder", [&] { return main.Text(Control::DatafilesPath) == L"C:\\NewServer\\Suite\\"; });
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\") << "typed text is lost";
}

TEST_F(Browse, CancellingTheDatafilesPickerEmptiesItsPathAndLosesTypedText)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\Typed application\\");
    main.Click(Control::BrowseDatafiles);
    FolderPicker(run, L"Datafiles").Cancel();
    run.Await("the emptied field", [&] { return main.Text(Control::DatafilesPath).empty(); });
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
}

TEST_F(Browse, SelectProgramPathWritesAtOnce)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::SelectProgramPath);
    const FolderPicker picker(run, L"Suite");
    EXPECT_EQ(picker.Title(), L"Choose the program folder");
    picker.Choose(L"C:\\NewServer\\Suite");
    run.Await("the chosen folder", [&] { return main.Text(Control::ProgramPath) == L"C:\\NewServer\\Suite\\"; });
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\Suite\\");
    EXPECT_EQ(main.Text(Control::DatafilesPath), L"C:\\Suite\\Datafiles\\");
    ExpectFolders(expected, L"C:\\NewServer\\Suite\\", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\");
    EXPECT_TRUE(IsNow(expected));

    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected); // Cancel does not take it back
}

TEST_F(Browse, SelectProgramPathFillsTheOtherFieldsWhenTheyAreEmpty)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"");
    main.Type(Control::DatafilesPath, L"");
    main.Choose(Command::SelectProgramPath);
    FolderPicker(run, L"Suite").Choose(L"C:\\NewServer\\Suite");
    run.Await("the derived folder",
              [&] { return main.Text(Control::DatafilesPath) == L"C:\\NewServer\\Suite\\Datafiles"; });
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\NewServer\\Suite\\");

    ExpectFolders(expected, L"C:\\NewServer\\Suite\\", L"C:\\NewServer\\Suite\\", L"C:\\NewServer\\Suite\\Datafiles");
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Browse, CancellingSelectProgramPathEmptiesItWithoutWriting)
{
    State expected = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Choose(Command::SelectProgramPath);
    FolderPicker(run, L"Suite").Cancel();
    run.Await("the emptied field", [&] { return main.Text(Control::ProgramPath).empty(); });
    EXPECT_TRUE(IsNow(expected));

    ExpectFolders(expected, L"", L"C:\\Suite\\", L"C:\\Suite\\Datafiles\\"); // but OK does
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Ok);
    ExpectEnd(run, expected);
}

TEST_F(Browse, TheOpenButtonsExploreWhatTheFieldsSay)
{
    const EchoProgram explorer = StandInForExplorer(Suite());
    const State before = State::Take();
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\NewServer\\Suite");
    main.Type(Control::DatafilesPath, L"C:\\NewServer\\");
    main.Click(Control::OpenProgram);
    EXPECT_EQ(AwaitExplored(explorer, run), L"explore \"C:\\Suite\\\"");
    main.Click(Control::OpenApplication);
    EXPECT_EQ(AwaitExplored(explorer, run), L"explore \"C:\\NewServer\\Suite\"");
    main.Click(Control::OpenDatafiles);
    EXPECT_EQ(AwaitExplored(explorer, run), L"explore \"C:\\NewServer\\\"");
    EXPECT_TRUE(IsNow(before));
    EXPECT_EQ(run.Windows().size(), 1U);
}

TEST_F(Browse, OpeningAMissingOrEmptyFolderSaysNothing)
{
    const EchoProgram explorer = StandInForExplorer(Suite());
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    main.Type(Control::ApplicationPath, L"C:\\No such folder\\");
    main.Type(Control::DatafilesPath, L"");
    main.Click(Control::OpenApplication);
    main.Click(Control::OpenDatafiles);
    main.Click(Control::OpenProgram); // queued behind the two, so its explorer tells that they are through
    std::wstring explored = AwaitExplored(explorer, run);
    while (explored != L"explore \"C:\\Suite\\\"") {
        explored = AwaitExplored(explorer, run); // what the shell makes of an empty folder is its business
    }
    EXPECT_EQ(run.Windows().size(), 1U) << "no message";
    EXPECT_EQ(main.Text(Control::ApplicationPath), L"C:\\No such folder\\");
}

} // namespace sitekeeper::e2e
