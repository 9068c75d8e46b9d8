#include "maindlg/SiteKeeperDlg.h"

#include "app/DialogsLibrary.h"
#include "maindlg/ProgressWindow.h"
#include "platform/PlatformError.h"
#include "res/ResourceIds.h"
#include "text/Text.h"
#include "win32/WindowIds.h"

#include <commctrl.h>

#include <new>
#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

constexpr int SmallIcon = 16;

} // namespace

CSiteKeeperDlg::CSiteKeeperDlg(CWinApp& app, Context context)
    : CDialog(app, IDD_MAIN), m_context(std::move(context)),
      m_icon(static_cast<HICON>(::LoadImageW(app.Instance(), MAKEINTRESOURCEW(IDI_PROGRAM), IMAGE_ICON, SmallIcon,
                                             SmallIcon, LR_DEFAULTCOLOR))),
      m_reminderKey(InstallationSettings::UpdateReminderKey())
{}

CSiteKeeperDlg::~CSiteKeeperDlg()
{
    DestroyWindow();
    try {
        SaveWindowPosition();
        // Without memory the position is lost, and what let go of the dialog is still reported.
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch)
    }
    m_remainingProgressWindows.clear(); // their code is in the library
    m_context.platform.modules.Release(std::exchange(m_context.dialogsLibrary, ModuleId::None));
}

void CSiteKeeperDlg::SaveWindowPosition()
{
    const RECT& r = m_windowRectangle;
    m_context.settings.WriteString(Hive::CurrentUser, App().ProfileKey(L"WindowPosition"), L"Application",
                                   Fill(L"%d,%d,%d,%d", {std::to_wstring(r.left), std::to_wstring(r.top),
                                                         std::to_wstring(r.right), std::to_wstring(r.bottom)}));
}

LRESULT CSiteKeeperDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SYSCOMMAND:
        // Compared as it comes: the numbers are ours, so their low bits mean something.
        if (wParam == ID_SYSTEM_SELECT_PROGRAM_PATH) {
            OnSelectProgramFolder();
            return 0;
        }
        if (wParam == ID_SYSTEM_ABOUT) {
            OnAbout();
            return 0;
        }
        break;
    case WM_PAINT:
        if (::IsIconic(Handle()) != FALSE) {
            PaintMinimised();
            return 0;
        }
        break;
    case WM_QUERYDRAGICON: return reinterpret_cast<LRESULT>(m_icon.get());
    case WM_SIZE:
    case WM_MOVE: {
        const LRESULT result = CDialog::WindowProc(message, wParam, lParam);
        ::GetWindowRect(Handle(), &m_windowRectangle);
        return result;
    }
    case WM_HELP: OnAppHelp(); return TRUE;
    default: break;
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

void CSiteKeeperDlg::DoDataExchange(CDataExchange& exchange)
{
    ExchangeControl(exchange, IDC_OPEN_PROGRAM, m_openProgram);
    ExchangeControl(exchange, IDC_BROWSE_APPLICATION, m_browseApplication);
    ExchangeControl(exchange, IDC_OPEN_APPLICATION, m_openApplication);
    ExchangeControl(exchange, IDC_BROWSE_DATAFILES, m_browseDatafiles);
    ExchangeControl(exchange, IDC_OPEN_DATAFILES, m_openDatafiles);
    ExchangeControl(exchange, IDC_SESSION_LIST, m_sessionList);
    ExchangeControl(exchange, IDC_REMINDER_DATE, m_reminderDate);
    ExchangeText(exchange, IDC_DATAFILES_PATH, m_folders.datafiles);
    ExchangeText(exchange, IDC_PROGRAM_PATH, m_folders.program);
    ExchangeText(exchange, IDC_APPLICATION_PATH, m_folders.application);
    ExchangeNumber(exchange, IDC_REMINDER_DAYS, m_reminderDays);
    ExchangeText(exchange, IDC_PROFILE, m_profile);
    ExchangeControl(exchange, IDC_ICON_SIZE_LIST, m_iconSizeList);
}

bool CSiteKeeperDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    ExtendSystemMenu();
    ::SendMessageW(Handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(m_icon.get()));
    ::SendMessageW(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_icon.get()));

    const Platform& platform = m_context.platform;
    m_context.dialogsLibrary =
        LoadDialogsLibrary(m_context.settings, platform.files, platform.modules, platform.messages);

    const CWaitCursor wait(App());
    m_folders = LoadInstallationFolders(m_context.settings, m_context.programFile);
    ::EnableMenuItem(::GetMenu(Handle()), ID_ADD_TRUSTED_PATHS, MF_BYCOMMAND | MF_GRAYED);
    SetUpButtons();
    RegisterWithResizer();
    LoadReminder();
    UpdateData(ExchangeDirection::ToControls);
    return true;
}

void CSiteKeeperDlg::ExtendSystemMenu()
{
    const HMENU menu = ::GetSystemMenu(Handle(), FALSE);
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(menu, MF_STRING, ID_SYSTEM_SELECT_PROGRAM_PATH, L"Select Program Path");
    if (const std::wstring about = App().ResourceText(IDS_ABOUT); !about.empty()) {
        ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(menu, MF_STRING, ID_SYSTEM_ABOUT, about.c_str());
    }
}

void CSiteKeeperDlg::SetUpButtons()
{
    constexpr const wchar_t* ApplicationTip = L"Select the Application Path";
    constexpr const wchar_t* DatafilesTip = L"Select the Datafiles Path";
    constexpr const wchar_t* OpenTip = L"Open folder in Windows Explorer";
    struct ButtonRow
    {
        CButtonST& button;
        UINT icon;
        const wchar_t* tip;
        const wchar_t* accessibleName; // the picture says it to those who see it
    };
    const std::array<ButtonRow, 5> rows = {{
        {m_browseApplication, IDI_BROWSE, ApplicationTip, ApplicationTip},
        {m_browseDatafiles, IDI_BROWSE, DatafilesTip, DatafilesTip},
        {m_openProgram, IDI_OPEN_FOLDER, OpenTip, L"Open Program Path"},
        {m_openApplication, IDI_OPEN_FOLDER, OpenTip, L"Open Application Path"},
        {m_openDatafiles, IDI_OPEN_FOLDER, OpenTip, L"Open Datafiles Path"},
    }};
    for (const ButtonRow& row : rows) {
        row.button.SetIcon(App().Instance(), row.icon, SmallIcon, SmallIcon);
        row.button.SetAlign(ImageAlignment::BesideText, true);
        row.button.SetFlat(false, true);
        row.button.SetTooltipText(row.tip, true);
        row.button.SetAccessibleName(row.accessibleName);
    }
}

void CSiteKeeperDlg::RegisterWithResizer()
{
    constexpr std::uint32_t Stretch = 1;
    constexpr std::uint32_t Follow = 2;
    struct ResizerRow
    {
        int id;
        std::uint32_t flags;
    };
    static constexpr ResizerRow Rows[] = {
        {IDC_PROGRAM_PATH, Stretch},
        {IDC_APPLICATION_PATH, Stretch},
        {IDC_DATAFILES_PATH, Stretch},
        {IDC_BROWSE_APPLICATION, Follow},
        {IDC_BROWSE_DATAFILES, Follow},
        {IDC_OPEN_PROGRAM, Follow},
        {IDC_OPEN_APPLICATION, Follow},
        {IDC_OPEN_DATAFILES, Follow},
        {IDC_PROFILE, Stretch},
        {IDOK, Follow},
        {IDCANCEL, Follow},
        {IDC_HELP_BUTTON, Follow},
    };
    for (const ResizerRow& row : Rows) {
        m_resizer.AddControl(Item(row.id), row.flags);
    }
}

void CSiteKeeperDlg::LoadReminder()
{
    const Clock& clock = m_context.platform.clock;
    const std::optional<Seconds> fallback = clock.FromLocal(NoUpdateDate);
    if (!fallback) {
        throw PlatformError(ResultCode::InvalidArgument, L"The system's calendar cannot convert dates.");
    }
    const Seconds date = m_context.settings.ReadUpdateDate(m_reminderKey, *fallback);
    if (const std::optional<CalendarTime> local = clock.ToLocal(date)) {
        SYSTEMTIME time{};
        time.wYear = static_cast<WORD>(local->year);
        time.wMonth = static_cast<WORD>(local->month);
        time.wDay = static_cast<WORD>(local->day);
        time.wHour = static_cast<WORD>(local->hour);
        time.wMinute = static_cast<WORD>(local->minute);
        time.wSecond = static_cast<WORD>(local->second);
        DateTime_SetSystemtime(m_reminderDate.Handle(), GDT_VALID, &time);
    }
    m_reminderDays = static_cast<std::int32_t>(m_context.settings.ReadUpdateDays(m_reminderKey, DefaultUpdateDays));
}

void CSiteKeeperDlg::PaintMinimised()
{
    const PaintScope paint(Handle());
    ::SendMessageW(Handle(), WM_ICONERASEBKGND, reinterpret_cast<WPARAM>(paint.Dc()), 0);
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const int left = (static_cast<int>(client.right) - ::GetSystemMetrics(SM_CXICON) + 1) / 2;
    const int top = (static_cast<int>(client.bottom) - ::GetSystemMetrics(SM_CYICON) + 1) / 2;
    ::DrawIcon(paint.Dc(), left, top, m_icon.get());
}

WindowId CSiteKeeperDlg::Id() const
{
    return IdOf(Handle());
}

} // namespace sitekeeper
