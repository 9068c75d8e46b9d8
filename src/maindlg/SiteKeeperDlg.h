// The main dialog: the three folders of the installation and the commands around them.
#pragma once

#include "app/HelpFile.h"
#include "controls/ButtonST.h"
#include "controls/CtrlResizer.h"
#include "dialogs/SplashMessageDialog.h"
#include "frame/Dialog.h"
#include "maindlg/InstallationFolders.h"
#include "platform/Platform.h"
#include "settings/InstallationSettings.h"
#include "win32/Handles.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sitekeeper {

class CSiteKeeperDlg final : public CDialog
{
public:
    /// What the dialog works with; everything named must outlive it.
    struct Context
    {
        const Platform& platform;
        InstallationSettings& settings;
        /// The process's handle of the dialogs library: loaded by the dialog's initialisation, released by its
        /// destruction.
        ModuleId& dialogsLibrary;
        /// The program's own path, as the process was started.
        std::wstring programFile;
        /// The process's help file.
        const std::wstring& helpFile;
    };

    CSiteKeeperDlg(CWinApp& app, Context context);

    CSiteKeeperDlg(const CSiteKeeperDlg&) = delete;
    CSiteKeeperDlg& operator=(const CSiteKeeperDlg&) = delete;

    /// Writes the window's last position to the application profile and releases the dialogs library. Progress windows
    /// that an unfinished apply left on screen go with it.
    ~CSiteKeeperDlg() override;

protected:
    /// Fills the dialog from the registry. Raises PlatformError for a stored reminder date that is none.
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange& exchange) override;
    bool OnCommand(WORD id) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    using Folder = std::wstring InstallationFolders::*;

    // Commands, in the order of their table
    void ApplyChanges();
    void OnBrowseApplicationFolder();
    void OnBrowseDatafilesFolder();
    void OnOpenProgramFolder();
    void OnOpenApplicationFolder();
    void OnOpenDatafilesFolder();
    void OnAddTrustedPaths();
    void OnInstallAutoCADOEM();
    void OnManageShortcuts();
    void OnUserAccess();
    void LaunchUninstaller();
    void OnAbout();
    void OnHelpButton();
    void OnHelpContents();
    void OnAppHelp();
    void BuildSettingsReport();

    // System menu
    void OnSelectProgramFolder();

    // Initialisation, piece by piece
    void ExtendSystemMenu();
    void SetUpButtons();
    void RegisterWithResizer();
    void LoadReminder();

    void OpenFolder(Folder folder);
    void OpenHelp(HelpPage page);
    void PaintMinimised();
    [[nodiscard]] CalendarTime PickedDate() const;
    void SaveWindowPosition();
    /// What the session list shows; empty when nothing is selected.
    [[nodiscard]] std::wstring SelectedSession() const;
    [[nodiscard]] WindowId Id() const;

    Context m_context;
    UniqueIcon m_icon;
    /// Set and not read: nothing in the dialog follows its size. Kept at their places with the resizer.
    [[maybe_unused]] SIZE m_minimumSize{475, 400};
    RECT m_windowRectangle{};
    CORSWCtrlResizer m_resizer;
    [[maybe_unused]] std::array<std::uint8_t, 9> m_flags{};
    std::wstring m_reminderKey;
    CButtonST m_openProgram;
    CButtonST m_browseApplication;
    CButtonST m_openApplication;
    CButtonST m_browseDatafiles;
    CButtonST m_openDatafiles;
    CWnd m_sessionList;
    CWnd m_reminderDate;
    InstallationFolders m_folders;
    std::int32_t m_reminderDays = 0;
    std::wstring m_profile;
    CWnd m_iconSizeList;
    /// The AutoCAD products that the last OnAddTrustedPaths found: entry by entry the key of the trusted paths and the
    /// release.
    std::vector<std::wstring> m_TrustedPathKeys;
    std::vector<std::wstring> m_TrustedPathReleases;
    std::vector<std::unique_ptr<CORSWSplashMsgDlg>> m_remainingProgressWindows;
};

} // namespace sitekeeper
