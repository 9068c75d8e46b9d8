// The main dialog's commands.
#include "access/AccessLists.h"
#include "access/UserAccessDlg.h"
#include "autocad/OemInstaller.h"
#include "autocad/TrustedPaths.h"
#include "maindlg/AboutDlg.h"
#include "maindlg/ApplyInstallation.h"
#include "maindlg/PrintText.h"
#include "maindlg/ProgressWindow.h"
#include "maindlg/SettingsReport.h"
#include "maindlg/SiteKeeperDlg.h"
#include "maindlg/Uninstaller.h"
#include "res/ResourceIds.h"
#include "shortcuts/ManageShortcutsDlg.h"

#include <commctrl.h>

#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

/// A window is off the screen for the life of this guard.
class HiddenWindow
{
public:
    explicit HiddenWindow(HWND window) : m_window(window) { ::ShowWindow(window, SW_HIDE); }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;
    ~HiddenWindow() { ::ShowWindow(m_window, SW_RESTORE); }

private:
    HWND m_window;
};

} // namespace

bool CSiteKeeperDlg::OnCommand(WORD id)
{
    static constexpr CommandRow<CSiteKeeperDlg> Commands[] = {
        {IDOK, &CSiteKeeperDlg::ApplyChanges},
        {ID_EXIT, &CSiteKeeperDlg::ApplyChanges}, // leaves by applying, deliberately
        {IDC_BROWSE_APPLICATION, &CSiteKeeperDlg::OnBrowseApplicationFolder},
        {IDC_BROWSE_DATAFILES, &CSiteKeeperDlg::OnBrowseDatafilesFolder},
        {IDC_OPEN_PROGRAM, &CSiteKeeperDlg::OnOpenProgramFolder},
        {IDC_OPEN_APPLICATION, &CSiteKeeperDlg::OnOpenApplicationFolder},
        {IDC_OPEN_DATAFILES, &CSiteKeeperDlg::OnOpenDatafilesFolder},
        {ID_ADD_TRUSTED_PATHS, &CSiteKeeperDlg::OnAddTrustedPaths}, // its item is grayed; scripts send it
        {ID_INSTALL_OEM, &CSiteKeeperDlg::OnInstallAutoCADOEM},
        {ID_MANAGE_SHORTCUTS, &CSiteKeeperDlg::OnManageShortcuts},
        {ID_USER_ACCESS, &CSiteKeeperDlg::OnUserAccess}, // this one and the next have no item; scripts send them
        {ID_UNINSTALL, &CSiteKeeperDlg::LaunchUninstaller},
        {ID_ABOUT, &CSiteKeeperDlg::OnAbout},
        {IDC_HELP_BUTTON, &CSiteKeeperDlg::OnHelpButton}, // also the one of the dialogs above this one
        {ID_HELP_CONTENTS, &CSiteKeeperDlg::OnHelpContents},
        {ID_APP_HELP, &CSiteKeeperDlg::OnAppHelp},
        {ID_PRINT, &CSiteKeeperDlg::BuildSettingsReport},
    };
    return RunCommand(*this, Commands, id) || CDialog::OnCommand(id);
}

void CSiteKeeperDlg::ApplyChanges()
{
    UpdateData(ExchangeDirection::ToMembers);
    auto progress = ShowProgressWindow(m_context.dialogsLibrary, App().Instance());
    ApplyResult result{};
    {
        const CWaitCursor wait(App());
        result = ApplyInstallation(m_context.platform, m_context.settings, m_folders,
                                   {PickedDate(), static_cast<std::uint32_t>(m_reminderDays)});
    }
    if (result != ApplyResult::Applied) {
        // The progress window stays on screen until the program ends.
        m_remainingProgressWindows.push_back(std::move(progress));
        m_context.platform.messages.Show(Id(),
                                         result == ApplyResult::NoDesktopFolder
                                             ? L"Error reading common desktop folder"
                                             : L"Error reading start menu programs folder",
                                         App().AppName(), MessageStyle::Error);
        return;
    }
    progress.reset();
    EndDialog(IDOK); // the controls were read above
}

void CSiteKeeperDlg::OnSelectProgramFolder()
{
    UpdateData(ExchangeDirection::ToMembers);
    SelectProgramFolder(m_folders, m_context.platform.folders, m_context.settings);
    UpdateData(ExchangeDirection::ToControls);
}

void CSiteKeeperDlg::OnBrowseApplicationFolder()
{
    UpdateData(ExchangeDirection::ToMembers);
    BrowseApplicationFolder(m_folders, m_context.platform.folders);
    UpdateData(ExchangeDirection::ToControls);
}

void CSiteKeeperDlg::OnBrowseDatafilesFolder()
{
    // Unlike the other two the fields are not read first, so what was typed since the last exchange is lost.
    // Deliberate.
    BrowseDatafilesFolder(m_folders, m_context.platform.folders);
    UpdateData(ExchangeDirection::ToControls);
}

void CSiteKeeperDlg::OnOpenProgramFolder()
{
    OpenFolder(&InstallationFolders::program);
}
void CSiteKeeperDlg::OnOpenApplicationFolder()
{
    OpenFolder(&InstallationFolders::application);
}
void CSiteKeeperDlg::OnOpenDatafilesFolder()
{
    OpenFolder(&InstallationFolders::datafiles);
}

void CSiteKeeperDlg::OpenFolder(Folder folder)
{
    UpdateData(ExchangeDirection::ToMembers);
    m_context.platform.shell.Explore(m_folders.*folder);
}

void CSiteKeeperDlg::OnAddTrustedPaths()
{
    AddTrustedPaths(m_context.platform.registry, m_TrustedPathKeys, m_TrustedPathReleases);
    m_context.platform.messages.Show(Id(), L"The ORIVEL LX file paths have been added to the AutoCAD Trusted Paths. ",
                                     L"Site Keeper", MessageStyle::Ok);
}

void CSiteKeeperDlg::OnInstallAutoCADOEM()
{
    const Platform& platform = m_context.platform;
    if (const std::optional<OemSetup> setup = ChooseOemSetup(m_context.settings, platform.folders)) {
        const HiddenWindow hidden(Handle());
        StartOemSetup(platform.processes, platform.messages, Id(), App().AppName(), *setup);
    }
}

void CSiteKeeperDlg::OnManageShortcuts()
{
    CManageShortcutsDlg(App(), *this, {m_context.platform.files, m_context.platform.registry}).DoModal();
}

void CSiteKeeperDlg::OnUserAccess()
{
    const AccessLists lists(m_context.platform, m_context.settings, m_context.programFile);
    CUserAccessDlg dialog(App(), *this, {lists, m_context.platform.clipboard});
    dialog.DoModal();
}

void CSiteKeeperDlg::LaunchUninstaller()
{
    const Platform& platform = m_context.platform;
    const std::wstring registered = ReadUninstallString(platform.registry);
    if (registered.empty()) {
        platform.messages.Show(Id(),
                               L"Could not find InstallShield uninstall information.\n\n"
                               L"Make sure that program was properly installed.",
                               L"Site Keeper", MessageStyle::Error);
        return;
    }
    const UninstallCommand command = SplitUninstallString(registered);
    platform.shell.OpenProgram(command.program, command.parameters);
    ApplyChanges(); // leaves as Exit does, whatever came of it
}

void CSiteKeeperDlg::OnAbout()
{
    const Platform& platform = m_context.platform;
    CAboutDlg(App(), *this, {platform.versions, platform.registry, m_context.programFile}).DoModal();
}

void CSiteKeeperDlg::OnHelpButton()
{
    OpenHelp(HelpPage::Introduction);
}
void CSiteKeeperDlg::OnHelpContents()
{
    OpenHelp(HelpPage::Contents);
}

void CSiteKeeperDlg::OpenHelp(HelpPage page)
{
    ShowHelp(m_context.platform, {Id(), Id(), App().AppName()}, page, m_context.helpFile);
}

void CSiteKeeperDlg::OnAppHelp()
{
    App().OnHelp();
}

void CSiteKeeperDlg::BuildSettingsReport()
{
    UpdateData(ExchangeDirection::ToMembers); // what was typed is printed, applied or not
    const Platform& platform = m_context.platform;
    const std::wstring timeStamp = PrintTimeStamp(platform.clock, platform.clock.Now());
    PrintText(platform.printer, Id(), App().AppName(),
              ComposeSettingsReport(TextOf(Handle()), timeStamp, m_folders, SelectedSession()));
}

std::wstring CSiteKeeperDlg::SelectedSession() const
{
    const HWND list = m_sessionList.Handle();
    LRESULT selected = ::SendMessageW(list, CB_GETCURSEL, 0, 0);
    if (selected == CB_ERR) {
        selected = ::SendMessageW(list, CB_GETCURSEL, 0, 0); // asked once more, deliberately
    }
    const auto index = static_cast<WPARAM>(selected);
    const LRESULT length = selected == CB_ERR ? CB_ERR : ::SendMessageW(list, CB_GETLBTEXTLEN, index, 0);
    if (length == CB_ERR) {
        return {};
    }
    std::wstring text(static_cast<std::size_t>(length), L'\0'); // with room for the terminator
    ::SendMessageW(list, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

CalendarTime CSiteKeeperDlg::PickedDate() const
{
    SYSTEMTIME time{};
    ::SendMessageW(m_reminderDate.Handle(), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

} // namespace sitekeeper
