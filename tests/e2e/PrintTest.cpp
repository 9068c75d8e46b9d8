// The settings report on paper: through a real queue, whose documents read_prints.py takes apart afterwards.
#include "e2e/Journey.h"
#include "e2e/support/FileTree.h"
#include "support/TestPrinter.h"

#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

const std::wstring PrintsFolder = L"C:\\SiteKeeper prints\\";

/// The system's print dialog.
class PrintDialog
{
public:
    /// Waits until it stands.
    explicit PrintDialog(const ProgramRun& run)
        : m_run(run), m_window(run.AwaitWindow("the print dialog", [](HWND window) {
              return WindowClass(window) == L"#32770" && ::GetDlgItem(window, Printers) != nullptr;
          }))
    {}

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] std::wstring Printer() const { return WindowText(::GetDlgItem(m_window, Printers)); }
    [[nodiscard]] bool Offers(int control) const
    {
        const HWND item = ::GetDlgItem(m_window, control);
        return item != nullptr && ::IsWindowVisible(item) != FALSE && ::IsWindowEnabled(item) != FALSE;
    }

    /// Presses a button and waits until the dialog is gone.
    void Press(int button) const
    {
        const HWND window = m_window;
        ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
        m_run.Await("the print dialog to close", [window] { return ::IsWindow(window) == FALSE; });
    }

    // Controls by their numbers in the published template (prnsetup.dlg, dlgs.h).
    static constexpr int ToFile = 1040;
    static constexpr int AllPages = 1056;
    static constexpr int Selection = 1057;
    static constexpr int SomePages = 1058;
    static constexpr int Printers = 1139;
    static constexpr int Copies = 1154;

private:
    const ProgramRun& m_run;
    HWND m_window;
};

void ExpectBack(const ProgramRun& run, const MainWindow& main)
{
    run.Await("the dialog to be free again",
              [&] { return ::IsWindowEnabled(main.Handle()) != FALSE && Ask(main.Handle(), WM_NULL) == 0; });
    EXPECT_EQ(run.Windows().size(), 1U);
}

/// Whether a document came out as a whole.
bool IsWhole(const std::wstring& file)
{
    try {
        return ReadWholeFile(file).value_or("").find("%%EOF") != std::string::npos;
    } catch (const std::runtime_error&) {
        return false; // being written
    }
}

void AwaitDocument(const ProgramRun& run, const std::wstring& file)
{
    run.Await("the document to come out", [&] { return IsWhole(file); });
}

} // namespace

class Print : public Journey
{};

/// What these leave is read with Linux's own tools.
class PrintedReport : public Journey
{
protected:
    PrintedReport() { MakeFolders(PrintsFolder); }

    /// The file that a document comes out in, and beside it the text that it must hold but for the time.
    static std::wstring FileFor(const std::wstring& name)
    {
        RemoveFile(PrintsFolder + name + L".ps");
        return PrintsFolder + name + L".ps";
    }
    static void LeaveExpected(const std::wstring& name, const std::string& application, const std::string& session)
    {
        WriteWholeFile(PrintsFolder + name + L".txt",
                       "\n\t \n\tDate:\t<time>\n\n\tProgram Path:\tC:\\Suite\\\n\tApplication Path:\t" + application +
                           "\n\tDatafiles Path:\tC:\\Suite\\Datafiles\\\n\n\tAutoCAD Session:\t" + session + "\n");
    }
};

TEST_F(PrintedReport, OnOnePage)
{
    const std::wstring file = FileFor(L"one page");
    const TestPrinter printer(file);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    main.Type(Control::ApplicationPath, L"C:\\Not saved\\B\u00FCro");
    main.Choose(Command::Print);
    const PrintDialog dialog(run);
    EXPECT_EQ(::GetWindow(dialog.Handle(), GW_OWNER), main.Handle());
    EXPECT_EQ(::IsWindowEnabled(main.Handle()), FALSE);
    EXPECT_EQ(dialog.Printer(), TestPrinter::Name);
    EXPECT_TRUE(dialog.Offers(PrintDialog::AllPages));
    EXPECT_TRUE(dialog.Offers(PrintDialog::Copies));
    EXPECT_FALSE(dialog.Offers(PrintDialog::Selection));
    EXPECT_FALSE(dialog.Offers(PrintDialog::SomePages));
    EXPECT_FALSE(dialog.Offers(PrintDialog::ToFile));
    SaveMoment(dialog.Handle(), L"print-dialog");
    EXPECT_FALSE(Exists(file));
    dialog.Press(IDOK);
    AwaitDocument(run, file);
    ExpectBack(run, main);
    EXPECT_EQ(CountPages(ReadWholeFile(file).value_or("")), 1);
    LeaveExpected(L"one page", "C:\\Not saved\\B\xC3\xBCro", "");

    ExpectPosition(expected, main.Rectangle()); // nothing typed was stored
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

TEST_F(PrintedReport, OnSeveralPages)
{
    std::string session;
    for (int word = 1; word <= 3000; ++word) {
        session += "session" + std::to_string(word) + " "; // Wine breaks no line behind a tab near its end
    }
    const std::wstring file = FileFor(L"several pages");
    const TestPrinter printer(file);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    EXPECT_EQ(main.AddSession(L"another"), 0);
    main.SelectSession(main.AddSession(std::wstring(session.begin(), session.end())));
    main.Choose(Command::Print);
    PrintDialog(run).Press(IDOK);
    AwaitDocument(run, file);
    ExpectBack(run, main);
    EXPECT_GE(CountPages(ReadWholeFile(file).value_or("")), 3);
    LeaveExpected(L"several pages", "C:\\Suite\\", session);
}

TEST_F(Print, CancellingTheDialogPrintsNothing)
{
    MakeFolders(PrintsFolder);
    const std::wstring file = PrintsFolder + L"cancelled.ps";
    RemoveFile(file);
    const TestPrinter printer(file);
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    for (int time = 0; time < 2; ++time) { // and asks again
        main.Choose(Command::Print);
        PrintDialog(run).Press(IDCANCEL);
        ExpectBack(run, main);
    }
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
    EXPECT_FALSE(Exists(file));
}

TEST_F(Print, WithoutAPrinterOnlyTheSystemSaysSo)
{
    const ProgramRun run(Installation::Program());
    const MainWindow main(run);
    State expected = State::Take();
    main.Choose(Command::Print);
    const MessageWindow message(run);
    EXPECT_EQ(message.Caption(), L"Print");
    EXPECT_TRUE(message.HasOnlyOk());
    EXPECT_EQ(message.Text().find(L"SiteKeeper"), std::wstring::npos) << "the text is the system's";
    SaveMoment(message.Handle(), L"print-without-printer");
    message.Confirm();
    ExpectBack(run, main);
    ExpectPosition(expected, main.Rectangle());
    main.Click(Control::Cancel);
    ExpectEnd(run, expected);
}

} // namespace sitekeeper::e2e
