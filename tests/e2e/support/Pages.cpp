#include "e2e/support/Pages.h"

#include "e2e/support/RemoteMemory.h"
#include "e2e/support/Wide.h"

#include <commctrl.h>
#include <shlobj.h>

#include <array>
#include <cwchar>
#include <map>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* DialogClass = L"#32770";
constexpr int MessageText = 0xFFFF;
constexpr int AboutText = 1008; // in the main dialog a button
constexpr int PickerTree = 14145;
constexpr int PickerTitle = 14146;

bool IsDialogWith(HWND window, int control)
{
    return WindowClass(window) == DialogClass && ::GetDlgItem(window, control) != nullptr;
}

/// What the folder picker calls a folder: by its own name, a drive by its letter behind the name of the disk.
std::wstring TreeName(const std::wstring& folder)
{
    return folder.ends_with(L":\\") ? L"(" + folder.substr(0, folder.size() - 1) + L")"
                                    : folder.substr(folder.rfind(L'\\') + 1);
}

bool IsStaticWithIcon(HWND window)
{
    return WindowClass(window) == L"Static" && (::GetWindowLongW(window, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

} // namespace

MainWindow::MainWindow(const ProgramRun& run)
    : m_run(run), m_window(run.AwaitWindow("the main window", [](HWND window) {
          return IsDialogWith(window, static_cast<int>(Control::ProgramPath));
      }))
{}

HWND MainWindow::Item(Control control) const
{
    return ::GetDlgItem(m_window, static_cast<int>(control));
}

std::wstring MainWindow::Text(Control field) const
{
    return WindowText(Item(field));
}

void MainWindow::Type(Control field, const std::wstring& text) const
{
    Ask(Item(field), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

int MainWindow::AddSession(const std::wstring& name) const
{
    return static_cast<int>(Ask(Item(Control::SessionList), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str())));
}

void MainWindow::SelectSession(int place) const
{
    Ask(Item(Control::SessionList), CB_SETCURSEL, static_cast<WPARAM>(place));
}

void MainWindow::Click(Control button) const
{
    ::SetForegroundWindow(m_window);
    ::PostMessageW(Item(button), BM_CLICK, 0, 0);
}

void MainWindow::Choose(Command command) const
{
    const bool isOfSystemMenu = command == Command::SelectProgramPath || command == Command::SystemAbout;
    ::PostMessageW(m_window, isOfSystemMenu ? WM_SYSCOMMAND : WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void MainWindow::Press(Control focus, WPARAM virtualKey) const
{
    ::PostMessageW(Item(focus), WM_KEYDOWN, virtualKey, 1);
}

void MainWindow::PressCloseBox() const
{
    ::PostMessageW(m_window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void MainWindow::AwaitBack() const
{
    m_run.Await("the dialog to come back", [&] {
        return ::IsWindowVisible(m_window) != FALSE && ::IsIconic(m_window) == FALSE &&
               ::IsWindowEnabled(m_window) != FALSE;
    });
}

RECT MainWindow::Rectangle() const
{
    RECT rectangle{};
    ::GetWindowRect(m_window, &rectangle);
    return rectangle;
}

void MainWindow::MoveTo(int left, int top) const
{
    ::SetWindowPos(m_window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    m_run.Await("the window at its new place",
                [&] { return Rectangle().left == left && Rectangle().top == top && Ask(m_window, WM_NULL) == 0; });
}

MessageWindow::MessageWindow(const ProgramRun& run)
    : m_run(run),
      m_window(run.AwaitWindow("a message box", [](HWND window) { return IsDialogWith(window, MessageText); }))
{}

std::wstring MessageWindow::Caption() const
{
    return WindowText(m_window);
}

std::wstring MessageWindow::Text() const
{
    return WindowText(::GetDlgItem(m_window, MessageText));
}

HWND MessageWindow::Owner() const
{
    return ::GetWindow(m_window, GW_OWNER);
}

HWND MessageWindow::Icon() const
{
    for (HWND child = ::GetWindow(m_window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (IsStaticWithIcon(child)) {
            return child;
        }
    }
    return nullptr;
}

bool MessageWindow::HasIcon() const
{
    const HWND place = Icon();
    return place != nullptr && Ask(place, STM_GETICON) != 0;
}

bool MessageWindow::IsTopMost() const
{
    constexpr LONG TopMost = WS_EX_TOPMOST;
    return (::GetWindowLongW(m_window, GWL_EXSTYLE) & TopMost) != 0;
}

std::vector<std::wstring> MessageWindow::Buttons() const
{
    std::map<LONG, std::wstring> buttons; // by their left edges
    for (HWND child = ::GetWindow(m_window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (WindowClass(child) == L"Button" && ::IsWindowVisible(child) != FALSE) {
            RECT place{};
            ::GetWindowRect(child, &place);
            buttons[place.left] = WindowText(child);
        }
    }
    std::vector<std::wstring> texts;
    texts.reserve(buttons.size());
    for (const auto& [left, text] : buttons) {
        texts.push_back(text);
    }
    return texts;
}

bool MessageWindow::HasOnlyOk() const
{
    // A lone OK answers to Escape as well and may bear either number.
    return Buttons().size() == 1 &&
           (::GetDlgItem(m_window, IDOK) != nullptr || ::GetDlgItem(m_window, IDCANCEL) != nullptr);
}

void MessageWindow::Press(int button) const
{
    const HWND window = m_window;
    ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
    m_run.Await("the message box to close", [window] { return ::IsWindow(window) == FALSE; });
}

// By its controls: a menu or a tip that is just closing would not answer what its text is.
AboutWindow::AboutWindow(const ProgramRun& run)
    : m_run(run), m_window(run.AwaitWindow("the About box", [](HWND window) {
          return IsDialogWith(window, AboutText) && !IsDialogWith(window, static_cast<int>(Control::ProgramPath));
      }))
{}

HWND AboutWindow::Owner() const
{
    return ::GetWindow(m_window, GW_OWNER);
}

std::wstring AboutWindow::Caption() const
{
    return WindowText(m_window);
}

std::wstring AboutWindow::Text() const
{
    return WindowText(::GetDlgItem(m_window, AboutText));
}

void AboutWindow::Confirm() const
{
    ::PostMessageW(m_window, WM_COMMAND, IDOK, 0);
    AwaitClosed();
}

void AboutWindow::AwaitClosed() const
{
    const HWND window = m_window;
    m_run.Await("the About box to close", [window] { return ::IsWindow(window) == FALSE; });
}

FolderPicker::FolderPicker(const ProgramRun& run, const std::wstring& startName)
    : m_run(run),
      m_window(run.AwaitWindow("the folder picker", [](HWND window) { return IsDialogWith(window, PickerTree); }))
{
    AwaitSelected(startName);
}

std::wstring FolderPicker::Title() const
{
    return WindowText(::GetDlgItem(m_window, PickerTitle));
}

std::wstring FolderPicker::SelectedName() const
{
    const HWND tree = ::GetDlgItem(m_window, PickerTree);
    auto* const selected = reinterpret_cast<HTREEITEM>(Ask(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    if (selected == nullptr) {
        return {};
    }
    constexpr std::size_t Room = MAX_PATH;
    const RemoteMemory text(m_run.Process(), Room * sizeof(wchar_t));
    const RemoteMemory item(m_run.Process(), sizeof(TVITEMW));
    TVITEMW question{};
    question.mask = TVIF_TEXT | TVIF_HANDLE;
    question.hItem = selected;
    question.pszText = static_cast<wchar_t*>(text.Address());
    question.cchTextMax = static_cast<int>(Room);
    item.Write(&question, sizeof question);
    Ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(item.Address()));
    std::array<wchar_t, Room> name{};
    text.Read(name.data(), Room * sizeof(wchar_t));
    name.back() = L'\0';
    return name.data();
}

void FolderPicker::AwaitSelected(const std::wstring& name) const
{
    m_run.Await("the picker to select " + (name.empty() ? "a folder" : ToUtf8(name)), [&] {
        const std::wstring selected = SelectedName();
        return !selected.empty() && selected.ends_with(name);
    });
}

void FolderPicker::Choose(const std::wstring& folder) const
{
    const std::size_t size = (folder.size() + 1) * sizeof(wchar_t);
    const RemoteMemory path(m_run.Process(), size);
    path.Write(folder.c_str(), size);
    Ask(m_window, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(path.Address()));
    AwaitSelected(TreeName(folder));
    ::PostMessageW(m_window, WM_COMMAND, IDOK, 0);
    AwaitClosed();
}

void FolderPicker::Cancel() const
{
    ::PostMessageW(m_window, WM_COMMAND, IDCANCEL, 0);
    AwaitClosed();
}

void FolderPicker::AwaitClosed() const
{
    const HWND window = m_window;
    m_run.Await("the folder picker to close", [window] { return ::IsWindow(window) == FALSE; });
}

std::vector<HWND> ProgressWindows(const ProgramRun& run)
{
    std::vector<HWND> windows = run.Windows();
    std::erase_if(windows, [](HWND window) {
        std::array<wchar_t, 64> title{};
        ::GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
        return std::wcscmp(title.data(), L"Site Keeper") != 0;
    });
    return windows;
}

bool IsSplash(HWND window)
{
    constexpr int Width = 500;
    constexpr int Height = 300;
    RECT rectangle{};
    ::GetWindowRect(window, &rectangle);
    const LONG style = ::GetWindowLongW(window, GWL_STYLE);
    return (style & WS_CAPTION) == 0 && rectangle.right - rectangle.left == Width &&
           rectangle.bottom - rectangle.top == Height;
}

} // namespace sitekeeper::e2e
