// The application object: start-up, the access gate, and the process-wide state.
#pragma once

#include "controls/SplashWnd.h"
#include "frame/WinApp.h"
#include "platform/Platform.h"
#include "settings/InstallationSettings.h"

#include <windows.h>

#include <functional>
#include <string>

namespace sitekeeper {

class CSiteKeeperApp final : public CWinApp
{
public:
    /// What start-up does behind the splash, under the wait cursor, before the main dialog: may take its time, may show
    /// message boxes, may raise errors. Empty for nothing.
    using StartupStep = std::function<void()>;

    /// `instance` holds the resources, `programFile` is the program's path as the process was started.
    CSiteKeeperApp(HINSTANCE instance, const Platform& platform, std::wstring programFile, StartupStep reminder);

    /// Prepares the user interface, lets only permitted users in, shows the splash while the reminder runs, and runs
    /// the main dialog. Always false: there is nothing to run afterwards. A refused user sees one message and nothing
    /// else. An error of the reminder is reported and start-up goes on; one of the main dialog's initialisation is
    /// reported and ends the program.
    bool InitInstance() override;

    /// One message with the product's title, owned by the main dialog when that is on screen.
    void ReportError(const std::exception_ptr& error) override;

    /// Opens the help file on its table of contents, or says that it is missing.
    void OnHelp() override;

    /// The help file's path; set by start-up and not changed afterwards.
    [[nodiscard]] const std::wstring& HelpFilePath() const noexcept { return m_helpFilePath; }

private:
    [[nodiscard]] bool IsUserAdmitted();
    void RunReminder();
    void RunMainDialog();

    const Platform& m_platform;
    std::wstring m_programFile;
    StartupStep m_reminder;
    InstallationSettings m_settings;
    SplashScreen m_splash;
    std::wstring m_helpFilePath;
    /// The path that the application's own help command uses; empty until that is first used.
    std::wstring m_ownHelpPath;
    ModuleId m_dialogsLibrary = ModuleId::None;
};

} // namespace sitekeeper
