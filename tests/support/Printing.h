// How the framework prints the program's own types when a comparison fails.
#pragma once

#include "maindlg/InstallationFolders.h"
#include "platform/Clock.h"
#include "platform/Shell.h"

#include <gtest/gtest.h>
#include <ostream>

namespace sitekeeper {

inline void PrintTo(const ShortcutFile& shortcut, std::ostream* out)
{
    *out << ::testing::PrintToString(shortcut.target) << ' ' << ::testing::PrintToString(shortcut.arguments) << " in "
         << ::testing::PrintToString(shortcut.workingFolder) << ", icon " << shortcut.iconIndex << " of "
         << ::testing::PrintToString(shortcut.iconFile);
}

inline void PrintTo(const InstallationFolders& folders, std::ostream* out)
{
    *out << ::testing::PrintToString(folders.program) << ", " << ::testing::PrintToString(folders.application) << ", "
         << ::testing::PrintToString(folders.datafiles);
}

inline void PrintTo(const CalendarTime& time, std::ostream* out)
{
    *out << time.year << '-' << time.month << '-' << time.day << ' ' << time.hour << ':' << time.minute << ':'
         << time.second;
}

} // namespace sitekeeper
