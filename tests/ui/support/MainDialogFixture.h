// The main dialog, and the whole program, on a platform in memory: opened, worked by gestures, and gone again.
#pragma once

#include "app/ShellFolderChooser.h"
#include "app/SiteKeeperApp.h"
#include "maindlg/SiteKeeperDlg.h"
#include "settings/Product.h"
#include "support/BuiltLibrary.h"
#include "support/MainDialogPage.h"
#include "support/MemoryPlatform.h"
#include "support/ModalDriver.h"
#include "support/ObservedProcesses.h"
#include "support/ObservedShell.h"
#include "support/StillClock.h"
#include "support/TestClock.h"
#include "win32/Win32MessageBoxes.h"
#include "win32/Win32Printer.h"
#include "win32/WindowIds.h"

#include <windows.h>

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sitekeeper {

inline constexpr const wchar_t* ReminderKey = L"Software\\ORIVEL\\LX Plus\\2023\\Assist";
inline constexpr const wchar_t* WindowPositionKey = L"Software\\ORIVEL\\LX Plus\\2023\\SiteKeeper\\WindowPosition";
inline constexpr const wchar_t* ProgressClass = L"ORSWSplashMessage";

/// The platform: an installation with all its values, the shell folders with some shortcuts, the dialogs library.
class DialogWorldTest : public testing::Test
{
protected:
    using Gesture = std::function<void(const MainDialogPage&)>;
    using Question = std::function<bool(const MainDialogPage&)>;

    DialogWorldTest();

    /// Steps of a script on the main dialog.
    DriverStep Do(std::string name, Gesture gesture);
    DriverStep Await(std::string name, Question question);
    DriverStep Press(int button);
    DriverStep Choose(int command);
    DriverStep ChooseSystem(int command);
    static DriverStep Key(WORD key);
    /// Waits until so many message boxes have been shown.
    DriverStep AwaitBoxes(std::size_t count);

    /// Where the dialog is open; a page of nothing where it is not.
    [[nodiscard]] virtual MainDialogPage Page() const = 0;

    /// What a text value holds, whatever its type; "(none)" when it is not there.
    [[nodiscard]] std::wstring Stored(Hive hive, const std::wstring& key, const wchar_t* name) const;
    [[nodiscard]] InstallationFolders StoredFolders() const;
    [[nodiscard]] std::wstring StoredPosition() const;
    void StoreFolder(const wchar_t* name, const std::wstring& path);
    void RemoveFolder(const wchar_t* name);

    /// The same platform, but for the ports that put windows of the system on the screen: those are the system's.
    [[nodiscard]] Platform WithSystemWindows();

    TimeZoneScope m_zone{Utc};
    MemoryPlatform memory;
    TestClock m_clock;
    BuiltLibrary m_libraryModules;
    ObservedShell m_shell{memory.shell};
    ObservedProcesses m_processes{memory.processes};
    const Platform m_platform;
    std::wstring m_programFile = L"C:\\Suite\\Tools\\SiteKeeper64.exe";
    std::wstring m_helpFile = L"C:\\Suite\\Help\\SiteKeeper.chm";

private:
    ShellFolderChooser m_systemFolders;
    Win32MessageBoxes m_systemMessages;
    Win32Printer m_systemPrinter;
};

/// The dialog alone.
class MainDialogTest : public DialogWorldTest
{
protected:
    MainDialogTest();

    /// Opens the dialog, runs the steps in it, destroys it. What DoModal gave.
    INT_PTR Run(std::vector<DriverStep> steps) { return RunOn(m_platform, m_settings, std::move(steps)); }
    /// The same on other ports than the fixture's own.
    INT_PTR RunOn(const Platform& platform, InstallationSettings& settings, std::vector<DriverStep> steps);

    /// Tries to open the dialog, whose initialisation must raise an error: its code.
    [[nodiscard]] std::optional<ResultCode> RunRefused();

    [[nodiscard]] MainDialogPage Page() const override;

    CSiteKeeperApp m_app;
    InstallationSettings m_settings;
    ModuleId m_library = ModuleId::None;
    /// How long a script may take.
    DWORD m_patienceMs = ModalDriver::PatienceMs;

private:
    CSiteKeeperDlg* m_dialog = nullptr;
};

/// The program from start-up to its end. Its clock goes one second ahead whenever it is looked at.
class ProgramTest : public DialogWorldTest
{
protected:
    ProgramTest();

    /// Runs the program and the steps in its main dialog; its exit code.
    int Run(std::vector<DriverStep> steps);

    [[nodiscard]] MainDialogPage Page() const override;
    [[nodiscard]] const CSiteKeeperApp& App() const { return *m_app; }

    /// What the program does behind the splash.
    CSiteKeeperApp::StartupStep m_reminder;
    HINSTANCE m_instance = ::GetModuleHandleW(nullptr);

private:
    Seconds m_now = 1000;
    std::optional<CSiteKeeperApp> m_app;
};

} // namespace sitekeeper
