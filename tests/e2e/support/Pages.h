// What an administrator sees of the program, one class for each window: named controls and gestures instead of handles
// and messages.
#pragma once

#include "e2e/support/ProgramRun.h"

#include <windows.h>

#include <string>
#include <vector>

namespace sitekeeper::e2e {

/// Controls and commands by their published numbers, written down here a second time on purpose: scripts of
/// administrators send them, so renumbering must fail a test.
enum class Control : int
{
    Ok = 1,
    Cancel = 2,
    ProgramPath = 1000,
    ApplicationPath = 1001,
    BrowseApplication = 1002,
    DatafilesPath = 1003,
    BrowseDatafiles = 1004,
    OpenProgram = 1008,
    Help = 1009,
    OpenApplication = 1010,
    OpenDatafiles = 1011,
    SessionList = 1014,
    ReminderDate = 1026,
    ReminderDays = 1027,
    Profile = 1028,
    ProfileLabel = 1029,
    SessionLabel = 1033,
    IconSizeList = 1037
};

enum class Command : int
{
    Print = 57607,
    Exit = 32771,
    HelpContents = 32772,
    About = 32773,
    Uninstall = 32775,
    UserAccess = 32776,
    ManageShortcuts = 32777,
    InstallOem = 32779,
    AddTrustedPaths = 32780,
    Help = 57670, // F1's
    // Of the system menu
    SystemAbout = 16,
    SelectProgramPath = 17
};

/// The main dialog.
class MainWindow
{
public:
    /// Waits until it stands.
    explicit MainWindow(const ProgramRun& run);

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] HWND Item(Control control) const;
    [[nodiscard]] std::wstring Text(Control field) const;
    void Type(Control field, const std::wstring& text) const;

    /// Puts an entry into the list of AutoCAD sessions, which no user sees; its place there.
    [[nodiscard]] int AddSession(const std::wstring& name) const;
    void SelectSession(int place) const;

    /// These return at once: what they cause may be another window.
    void Click(Control button) const;
    void Choose(Command command) const;
    void Press(Control focus, WPARAM virtualKey) const;
    void PressCloseBox() const;

    /// Waits until keys go to it, and have gone there for a moment.
    void BringToFront() const { m_run.BringToFront(m_window); }

    /// Waits until it is to be seen again and can be worked, after it was hidden or below another window.
    void AwaitBack() const;

    [[nodiscard]] RECT Rectangle() const;
    void MoveTo(int left, int top) const;

private:
    const ProgramRun& m_run;
    HWND m_window;
};

/// A message box.
class MessageWindow
{
public:
    /// Waits until one stands.
    explicit MessageWindow(const ProgramRun& run);

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] std::wstring Caption() const;
    [[nodiscard]] std::wstring Text() const;
    [[nodiscard]] HWND Owner() const;
    [[nodiscard]] HWND Icon() const;
    /// Whether there is an icon in that place. (Wine has the place also without one.)
    [[nodiscard]] bool HasIcon() const;

    /// Whether it stays above all other windows.
    [[nodiscard]] bool IsTopMost() const;

    /// Whether OK is the only button.
    [[nodiscard]] bool HasOnlyOk() const;

    /// What the buttons say, from left to right.
    [[nodiscard]] std::vector<std::wstring> Buttons() const;

    /// Presses OK, or the button of that number, and waits until it is gone.
    void Confirm() const { Press(IDOK); }
    void Press(int button) const;

private:
    const ProgramRun& m_run;
    HWND m_window;
};

/// The About box.
class AboutWindow
{
public:
    /// Waits until it stands.
    explicit AboutWindow(const ProgramRun& run);

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] HWND Owner() const;
    [[nodiscard]] std::wstring Caption() const;
    [[nodiscard]] std::wstring Text() const;

    /// Presses OK and waits until it is gone.
    void Confirm() const;
    void AwaitClosed() const;

private:
    const ProgramRun& m_run;
    HWND m_window;
};

/// The shell's folder picker.
class FolderPicker
{
public:
    /// Waits until it stands with a folder of that name selected, or with any when no name is given (a drive may have
    /// more before its name). (It can be seen a moment before the program has told it where to start.)
    explicit FolderPicker(const ProgramRun& run, const std::wstring& startName = {});

    [[nodiscard]] HWND Handle() const noexcept { return m_window; }
    [[nodiscard]] std::wstring Title() const;

    /// Selects a folder and confirms once it is selected; waits until the picker is gone.
    void Choose(const std::wstring& folder) const;
    void Cancel() const;

private:
    /// The name that the tree shows for the selected folder; empty when none is.
    [[nodiscard]] std::wstring SelectedName() const;
    void AwaitSelected(const std::wstring& name) const;
    void AwaitClosed() const;

    const ProgramRun& m_run;
    HWND m_window;
};

/// The progress windows that stand now.
[[nodiscard]] std::vector<HWND> ProgressWindows(const ProgramRun& run);

/// The splash: without frame and title, of the picture's size.
[[nodiscard]] bool IsSplash(HWND window);

} // namespace sitekeeper::e2e
