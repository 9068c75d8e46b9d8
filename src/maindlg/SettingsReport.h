// The printed report of the settings: its text.
#pragma once

#include "maindlg/InstallationFolders.h"
#include "platform/Clock.h"

#include <string>

namespace sitekeeper {

/// `moment` as the report shows it: day, English month name, year and a blank, then hour and minute in small letters
/// without leading zeros ("05-Jun-2023 9:41am"). A piece that cannot be laid out is empty. Raises PlatformError
/// (InvalidArgument) for a moment without a local time.
[[nodiscard]] std::wstring PrintTimeStamp(const Clock& clock, Seconds moment);

/// The report, its lines begun by "\n" and a tab: `title`, the time stamp, the three folders as they stand, and
/// `session`, which may be empty.
[[nodiscard]] std::wstring ComposeSettingsReport(const std::wstring& title, const std::wstring& timeStamp,
                                                 const InstallationFolders& folders, const std::wstring& session);

} // namespace sitekeeper
