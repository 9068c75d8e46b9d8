// What OK makes durable: the folders, the shortcuts, the reminder schedule.
#pragma once

#include "maindlg/InstallationFolders.h"
#include "platform/Clock.h"
#include "platform/Platform.h"

#include <cstdint>

namespace sitekeeper {

/// When the next update reminder is due and how many days lie between two.
struct ReminderSchedule
{
    CalendarTime next;
    std::uint32_t days = 0;
};

enum class ApplyResult
{
    Applied,
    /// The system names no desktop folder.
    NoDesktopFolder,
    /// The system names no programs folder for all users.
    NoProgramsFolder,
};

/// Writes the three folders as they stand, renews the existing shortcuts on the desktop and then in the programs folder
/// so that they point into the application folder, and writes the reminder schedule, in this order. Registry and
/// shortcut failures are not reported.
/// When a shortcut folder is unknown the folders are written and nothing else happens. Raises PlatformError
/// (InvalidArgument) for a reminder date without a moment; then the schedule alone is not written.
[[nodiscard]] ApplyResult ApplyInstallation(const Platform& platform, InstallationSettings& settings,
                                            const InstallationFolders& folders, const ReminderSchedule& schedule);

} // namespace sitekeeper
