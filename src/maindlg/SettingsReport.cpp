#include "maindlg/SettingsReport.h"

#include "platform/PlatformError.h"
#include "text/Text.h"

#include <algorithm>
#include <optional>

namespace sitekeeper {

std::wstring PrintTimeStamp(const Clock& clock, Seconds moment)
{
    const std::optional<CalendarTime> local = clock.ToLocal(moment);
    if (!local) {
        throw PlatformError(ResultCode::InvalidArgument, L"The system does not tell the current date.");
    }
    const std::wstring date = clock.Format(L"%d-%b-%Y ", *local).value_or(L"");
    const std::wstring time = ToLowerCase(clock.Format(L"%I:%M%p", *local).value_or(L""));
    return date + time.substr(std::min(time.find_first_not_of(L'0'), time.size()));
}

std::wstring ComposeSettingsReport(const std::wstring& title, const std::wstring& timeStamp,
                                   const InstallationFolders& folders, const std::wstring& session)
{
    return L"\n\t" + title + L"\n\tDate:\t" + timeStamp + L"\n" + L"\n\tProgram Path:\t" + folders.program +
           L"\n\tApplication Path:\t" + folders.application + L"\n\tDatafiles Path:\t" + folders.datafiles + L"\n" +
           L"\n\tAutoCAD Session:\t" + session + L"\n";
}

} // namespace sitekeeper
