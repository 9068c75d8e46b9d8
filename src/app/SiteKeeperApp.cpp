#include "app/SiteKeeperApp.h"

#include "access/AccessLists.h"
#include "app/DlgOccManager.h"
#include "app/ErrorReport.h"
#include "app/HelpFile.h"
#include "app/RefusalText.h"
#include "maindlg/SiteKeeperDlg.h"
#include "res/ResourceIds.h"
#include "settings/Product.h"
#include "win32/WindowIds.h"

#include <commctrl.h>

#include <memory>
#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

constexpr int SplashSeconds = 1;

} // namespace

CSiteKeeperApp::CSiteKeeperApp(HINSTANCE instance, const Platform& platform, std::wstring programFile,
                               StartupStep reminder)
    : CWinApp(instance), m_platform(platform), m_programFile(std::move(programFile)), m_reminder(std::move(reminder)),
      m_settings(platform.registry, platform.environment, platform.clock), m_splash(*this, platform.clock)
{}

bool CSiteKeeperApp::InitInstance()
{
    ::InitCommonControls();
    CWinApp::InitInstance();
    EnableControlContainer(std::make_unique<CDlgOccManager>());
    m_helpFilePath = FormHelpFilePath(ProgramHelpFile(), m_settings.ReadLocalAppPath());
    SetRegistryKey(ProfileRegistryKey);
    if (!IsUserAdmitted()) {
        return false;
    }
    m_splash.ShowSplashScreen(IDB_SPLASH, nullptr);
    RunReminder();
    m_splash.HideSplashScreen(SplashSeconds);
    RunMainDialog();
    return false;
}

bool CSiteKeeperApp::IsUserAdmitted()
{
    const std::wstring userName = m_platform.accounts.UserName();
    const AccessLists lists(m_platform, m_settings, m_programFile);
    if (lists.IsUserAllowed(userName, AccessList::SiteKeeper) == Admission::Granted) {
        return true;
    }
    m_platform.messages.Show(WindowId::None, RefusalText(userName), ProductTitle, MessageStyle::Error);
    return false;
}

void CSiteKeeperApp::RunReminder()
{
    if (!m_reminder) {
        return;
    }
    std::exception_ptr error;
    {
        const CWaitCursor wait(*this);
        try {
            m_reminder();
        } catch (...) {
            error = std::current_exception();
        }
    }
    // The administrator must get into the program, whatever the reminder met.
    if (error != nullptr) {
        ReportError(error);
    }
}

void CSiteKeeperApp::RunMainDialog()
{
    CSiteKeeperDlg dialog(*this, {m_platform, m_settings, m_dialogsLibrary, m_programFile, m_helpFilePath});
    SetMainWindow(&dialog);
    try {
        dialog.DoModal();
    } catch (...) {
        ReportError(std::current_exception());
    }
    SetMainWindow(nullptr);
}

void CSiteKeeperApp::ReportError(const std::exception_ptr& error)
{
    const HWND main = MainWindow() != nullptr ? MainWindow()->Handle() : nullptr;
    sitekeeper::ReportError(m_platform.messages, IdOf(main), error);
}

void CSiteKeeperApp::OnHelp()
{
    if (m_ownHelpPath.empty()) {
        m_ownHelpPath = m_helpFilePath;
    }
    const HWND main = MainWindow() != nullptr ? MainWindow()->Handle() : nullptr;
    ShowHelp(m_platform, {IdOf(main), WindowId::None, std::nullopt}, HelpPage::Contents, m_ownHelpPath);
}

} // namespace sitekeeper
