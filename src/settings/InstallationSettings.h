// The registry layout of the installation: which value stands where, in which form, with which default.
// The one place that knows it. Every operation reads or writes one value and keeps nothing.
#pragma once

#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/Registry.h"

#include <cstdint>
#include <string>

namespace sitekeeper {

/// The folders of the installation, as the suite key holds them.
enum class SuiteFolder
{
    /// "LocalAppPath": the program folder.
    Program,
    /// "NetworkAppPath": the application folder, possibly on the network.
    Application,
    /// "DatafilesPath": the data-files folder.
    Datafiles,
};

/// The reminder date of an installation that has none, in local time; a rule of ours.
inline constexpr CalendarTime NoUpdateDate{2000, 1, 1, 0, 0, 0};

/// The reminder interval in days of an installation that has none; a rule of ours.
inline constexpr std::uint32_t DefaultUpdateDays = 7;

class InstallationSettings
{
public:
    /// Keeps the three references; they must outlive it.
    InstallationSettings(Registry& registry, const Environment& environment, const Clock& clock)
        : m_registry(registry), m_environment(environment), m_clock(clock)
    {}

    /// The path of the update-reminder key below HKEY_CURRENT_USER.
    [[nodiscard]] static std::wstring UpdateReminderKey();

    /// The folders of the installation, from the suite key in HKEY_LOCAL_MACHINE, each with a "\" at its end.
    /// Empty when the value is missing, empty, or longer than 2048 bytes with its terminator; the value's type does not
    /// matter.
    [[nodiscard]] std::wstring ReadLocalAppPath() const;
    [[nodiscard]] std::wstring ReadNetworkAppPath() const;
    [[nodiscard]] std::wstring ReadDatafilesPath() const;

    /// Writes a folder of the installation as it stands, also when empty. False when it could not be stored.
    bool WriteFolder(SuiteFolder folder, const std::wstring& path);

    /// The reminder interval in days, "CheckWebVersionDays" of `key` in HKEY_CURRENT_USER: a value of any type
    /// and of at most four bytes (missing ones are 0). `fallback` when the value cannot be read or is longer.
    [[nodiscard]] std::uint32_t ReadUpdateDays(const std::wstring& key, std::uint32_t fallback) const;

    /// The next reminder, "CheckWebVersionDate" of `key` in HKEY_CURRENT_USER: year, month, day, hour, minute and
    /// second, each pair separated by one of "-", " " and ":", in local time.
    /// `fallback` when the value cannot be read, is empty or lacks a separator. Raises PlatformError, naming the value
    /// and its key: Fail when a field is out of range (year from 1970, month 1 to 12, day 1 to 31, hour to 23, minute
    /// and second to 59), InvalidArgument when there is no such time.
    [[nodiscard]] Seconds ReadUpdateDate(const std::wstring& key, Seconds fallback) const;

    /// Writes the two values that the operations above read; the date as "%Y-%m-%d %H:%M:%S" in local time, or empty
    /// when it cannot be laid out. False when it could not be stored. WriteUpdateDate raises PlatformError
    /// (InvalidArgument) for a moment without a local time; then nothing is written.
    bool WriteUpdateDays(const std::wstring& key, std::uint32_t days);
    bool WriteUpdateDate(const std::wstring& key, Seconds moment);

    /// Writes one text value with its terminating zero, creating the key where it is missing. False when a step
    /// failed; the callers that the program has do not look at the result.
    bool WriteString(Hive hive, const std::wstring& key, const std::wstring& name, const std::wstring& text);

    /// The maker's folder below the system's common files, from "CommonFilesDir" in HKEY_LOCAL_MACHINE and from the
    /// variable "CommonProgramFiles", each with a "\" at its end. Empty when the system does not tell.
    [[nodiscard]] std::wstring ReadCommonFilesFolder() const;
    [[nodiscard]] std::wstring ReadCommonProgramFilesFolder() const;

private:
    [[nodiscard]] std::wstring ReadFolder(SuiteFolder folder) const;

    Registry& m_registry;
    const Environment& m_environment;
    const Clock& m_clock;
};

} // namespace sitekeeper
