#include "maindlg/ApplyInstallation.h"

#include "shortcuts/ShellFolders.h"
#include "shortcuts/ShortcutCatalogue.h"

#include <optional>

namespace sitekeeper {
namespace {

/// The component runtime, entered for the life of this object.
class ComponentScope
{
public:
    explicit ComponentScope(Shell& shell) : m_shell(shell), m_isEntered(shell.EnterComponents()) {}
    ComponentScope(const ComponentScope&) = delete;
    ComponentScope& operator=(const ComponentScope&) = delete;
    ~ComponentScope()
    {
        if (m_isEntered) {
            m_shell.LeaveComponents();
        }
    }

private:
    Shell& m_shell;
    bool m_isEntered;
};

} // namespace

ApplyResult ApplyInstallation(const Platform& platform, InstallationSettings& settings,
                              const InstallationFolders& folders, const ReminderSchedule& schedule)
{
    settings.WriteFolder(SuiteFolder::Program, folders.program);
    settings.WriteFolder(SuiteFolder::Application, folders.application);
    settings.WriteFolder(SuiteFolder::Datafiles, folders.datafiles);

    const std::wstring desktop = GetDesktopShortcutFolder(platform.registry);
    if (desktop.empty()) {
        return ApplyResult::NoDesktopFolder;
    }
    const std::wstring programs = GetProgramsShortcutFolder(platform.registry);
    if (programs.empty()) {
        return ApplyResult::NoProgramsFolder;
    }
    {
        const ComponentScope components(platform.shell);
        RenewShortcuts(platform.files, platform.shell, desktop, folders.application);
        RenewShortcuts(platform.files, platform.shell, programs, folders.application);
    }

    const std::optional<Seconds> next = platform.clock.FromLocal(schedule.next);
    if (!next) {
        throw PlatformError(ResultCode::InvalidArgument,
                            L"The date of the next update reminder cannot be converted to a time. "
                            L"The folders and shortcuts were applied, the reminder schedule was not stored.");
    }
    const std::wstring key = InstallationSettings::UpdateReminderKey();
    settings.WriteUpdateDate(key, *next);
    settings.WriteUpdateDays(key, schedule.days);
    return ApplyResult::Applied;
}

} // namespace sitekeeper
