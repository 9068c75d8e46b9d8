// The application object: start-up and end of the process, and what belongs to the process as a whole.
#pragma once

#include "frame/OccManager.h"
#include "frame/Wnd.h"

#include <windows.h>

#include <exception>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace sitekeeper {

class CWinApp
{
public:
    /// `instance` is the module that holds the program's resources; string 57344 in it is the application's name.
    explicit CWinApp(HINSTANCE instance);
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    /// Runs the process: InitInstance, the message loop when that gives true, ExitInstance. The result is the process's
    /// exit code. An error that InitInstance raises is reported and ends the process like false.
    int Run();

    /// Start-up. True lets the message loop run. The inherited start-up registers the common controls and gives true.
    virtual bool InitInstance();

    /// The process's exit code: 0.
    virtual int ExitInstance();

    /// Tells the user of an error that reached the end of a message or of start-up. Called outside any message.
    virtual void ReportError(const std::exception_ptr& error) = 0;

    /// The application's help command, whatever topic is asked for. The inherited one does nothing.
    virtual void OnHelp();

    [[nodiscard]] HINSTANCE Instance() const noexcept { return m_instance; }
    [[nodiscard]] const std::wstring& AppName() const noexcept { return m_appName; }

    /// The program's own full path.
    [[nodiscard]] static std::wstring ProgramFile();

    /// The program's full path with a help extension in place of its own.
    [[nodiscard]] static std::wstring ProgramHelpFile();

    /// String `id` of the resources, of any length; empty when there is none.
    [[nodiscard]] std::wstring ResourceText(UINT id) const { return ResourceText(m_instance, id); }
    [[nodiscard]] static std::wstring ResourceText(HINSTANCE instance, UINT id);

    /// The bytes of a resource; empty when there is none. They live as long as the module.
    [[nodiscard]] std::span<const std::byte> ResourceBytes(const wchar_t* type, UINT id) const;

    /// The registry profile lies below "Software", `key` and the application's name in HKEY_CURRENT_USER.
    void SetRegistryKey(std::wstring key) { m_registryKey = std::move(key); }
    [[nodiscard]] std::wstring ProfileKey(const std::wstring& section) const;

    /// Every dialog made from now on passes through `manager`.
    void EnableControlContainer(std::unique_ptr<COccManager> manager) { m_occManager = std::move(manager); }
    [[nodiscard]] COccManager* OccManager() const noexcept { return m_occManager.get(); }

    [[nodiscard]] CWnd* MainWindow() const noexcept { return m_mainWindow; }
    void SetMainWindow(CWnd* window) noexcept { m_mainWindow = window; }

    /// The wait cursor, shown from the first Begin to the matching last End.
    void BeginWaitCursor();
    void EndWaitCursor();

    /// True while the wait cursor is to be shown; windows put it back when the mouse moves over them.
    [[nodiscard]] bool IsWaiting() const noexcept { return m_waiting > 0; }

    /// One message from the queue: looked at by the windows from its target up to `last`, then dispatched.
    static void Dispatch(MSG& message, const CWnd* last);

private:
    HINSTANCE m_instance;
    std::wstring m_appName;
    std::wstring m_registryKey;
    std::unique_ptr<COccManager> m_occManager;
    CWnd* m_mainWindow = nullptr;
    int m_waiting = 0;
    HCURSOR m_formerCursor = nullptr;
};

/// The wait cursor for the life of this object.
class CWaitCursor
{
public:
    explicit CWaitCursor(CWinApp& app) : m_app(app) { m_app.BeginWaitCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor() { m_app.EndWaitCursor(); }

private:
    CWinApp& m_app;
};

} // namespace sitekeeper
