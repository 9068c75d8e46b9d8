// The update reminder: whether it is due, whether there is a newer version, and what the administrator wants.
#pragma once

#include "platform/Platform.h"
#include "settings/InstallationSettings.h"

#include <string>
#include <vector>

namespace sitekeeper {

class UpdateCheck
{
public:
    /// Keeps the references; they must outlive it. `address` is the vendor's software-updates page.
    UpdateCheck(const Platform& platform, InstallationSettings& settings, std::wstring address);

    /// One check, once for each start of the program: when the reminder is due, arms the next one, reads the vendor's
    /// page, compares its date with the newest installed file and asks. Blocks until all is done.
    /// Raises PlatformError for a stored or published date that is none, naming the value, and for a time that cannot
    /// be converted. What was written until then stays.
    void RunUpdateCheck();

    /// The date that the vendor's page publishes, as the beginning of that day; `fallback` when page or date cannot be
    /// found. Raises PlatformError for a date that is none.
    [[nodiscard]] Seconds FetchPublishedUpdateDate(Seconds fallback);

    /// Raises `newest` to the last modification of the newest file or folder that matches `pattern`. Entries whose time
    /// cannot be had do not count.
    void NewestFileTime(Seconds& newest, const std::wstring& pattern) const;

    /// The patterns of the installed files, in the order in which they are looked at. Some stand there more than once.
    [[nodiscard]] std::vector<std::wstring> ScanList() const;

private:
    struct Schedule;

    [[nodiscard]] bool IsDue(const Schedule& schedule);
    void AskAboutUpdate(const Schedule& schedule);
    [[nodiscard]] Seconds NewestInstalledFile(Seconds atLeast) const;

    const Platform& m_platform;
    InstallationSettings& m_settings;
    std::wstring m_address;
};

} // namespace sitekeeper
