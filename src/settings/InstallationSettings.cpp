#include "settings/InstallationSettings.h"

#include "platform/PlatformError.h"
#include "settings/Product.h"
#include "settings/RegistryText.h"
#include "text/Paths.h"
#include "text/Text.h"

#include <array>
#include <optional>
#include <string_view>

namespace sitekeeper {
namespace {

constexpr const wchar_t* UpdateDateValue = L"CheckWebVersionDate";
constexpr const wchar_t* UpdateDaysValue = L"CheckWebVersionDays";
constexpr const wchar_t* SystemFoldersKey = L"Software\\Microsoft\\Windows\\CurrentVersion";
constexpr const wchar_t* DateSeparators = L"- :";

const wchar_t* ValueNameOf(SuiteFolder folder)
{
    switch (folder) {
    case SuiteFolder::Program: return L"LocalAppPath";
    case SuiteFolder::Application: return L"NetworkAppPath";
    case SuiteFolder::Datafiles: break;
    }
    return L"DatafilesPath";
}

/// Six numbers with a separator before each but the first; nothing when a separator is missing.
std::optional<CalendarTime> ParseDate(std::wstring_view text)
{
    std::array<int, 6> fields{LeadingNumber(text)};
    for (std::size_t index = 1; index < fields.size(); ++index) {
        const std::size_t separator = text.find_first_of(DateSeparators);
        if (separator == std::wstring_view::npos) {
            return std::nullopt;
        }
        text.remove_prefix(separator + 1);
        fields[index] = LeadingNumber(text);
    }
    return CalendarTime{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
}

bool IsInRange(const CalendarTime& time)
{
    const auto within = [](int value, int lowest, int highest) { return value >= lowest && value <= highest; };
    return time.year >= 1970 && within(time.month, 1, 12) && within(time.day, 1, 31) && within(time.hour, 0, 23) &&
           within(time.minute, 0, 59) && within(time.second, 0, 59);
}

PlatformError BadStoredDate(ResultCode code, const std::wstring& key, const std::wstring& text)
{
    return {code, Fill(L"The stored date of the next update reminder is not a valid date:\n%s\n\n"
                       L"Please correct or delete the value \"%s\" of the registry key\nHKEY_CURRENT_USER\\%s.",
                       {text, UpdateDateValue, key})};
}

std::wstring MakerFolderIn(const std::wstring& base)
{
    return base.empty() ? std::wstring() : WithBackslash(base) + MakerName + L"\\";
}

} // namespace

std::wstring InstallationSettings::UpdateReminderKey()
{
    return WithBackslash(SuiteKey) + L"Assist";
}

std::wstring InstallationSettings::ReadFolder(SuiteFolder folder) const
{
    const std::wstring path =
        ReadRegistryText(m_registry, Hive::LocalMachine, SuiteKey, ValueNameOf(folder), KeyAccess::QueryValue);
    return path.empty() ? path : WithBackslash(path);
}

std::wstring InstallationSettings::ReadLocalAppPath() const
{
    return ReadFolder(SuiteFolder::Program);
}
std::wstring InstallationSettings::ReadNetworkAppPath() const
{
    return ReadFolder(SuiteFolder::Application);
}
std::wstring InstallationSettings::ReadDatafilesPath() const
{
    return ReadFolder(SuiteFolder::Datafiles);
}

bool InstallationSettings::WriteFolder(SuiteFolder folder, const std::wstring& path)
{
    return WriteString(Hive::LocalMachine, SuiteKey, ValueNameOf(folder), path);
}

std::uint32_t InstallationSettings::ReadUpdateDays(const std::wstring& key, std::uint32_t fallback) const
{
    const auto bytes =
        m_registry.ReadValue(Hive::CurrentUser, key, UpdateDaysValue, KeyAccess::QueryValue, sizeof(std::uint32_t));
    if (!bytes) {
        return fallback;
    }
    std::uint32_t days = 0;
    for (std::size_t index = 0; index < bytes->size(); ++index) {
        days |= std::to_integer<std::uint32_t>((*bytes)[index]) << (8 * index);
    }
    return days;
}

Seconds InstallationSettings::ReadUpdateDate(const std::wstring& key, Seconds fallback) const
{
    const std::wstring text =
        ReadRegistryText(m_registry, Hive::CurrentUser, key, UpdateDateValue, KeyAccess::QueryValue);
    const std::optional<CalendarTime> date = ParseDate(text);
    if (!date) {
        return fallback;
    }
    if (!IsInRange(*date)) {
        throw BadStoredDate(ResultCode::Fail, key, text);
    }
    const std::optional<Seconds> moment = m_clock.FromLocal(*date);
    if (!moment) {
        throw BadStoredDate(ResultCode::InvalidArgument, key, text);
    }
    return *moment;
}

bool InstallationSettings::WriteUpdateDays(const std::wstring& key, std::uint32_t days)
{
    std::array<std::byte, sizeof days> bytes{};
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<std::byte>((days >> (8 * index)) & 0xFFU);
    }
    return m_registry.WriteValue(Hive::CurrentUser, key, UpdateDaysValue, ValueType::Number, bytes);
}

bool InstallationSettings::WriteUpdateDate(const std::wstring& key, Seconds moment)
{
    const std::optional<CalendarTime> date = m_clock.ToLocal(moment);
    if (!date) {
        throw PlatformError(ResultCode::InvalidArgument,
                            L"The date of the next update reminder cannot be converted to local time.");
    }
    return WriteString(Hive::CurrentUser, key, UpdateDateValue,
                       m_clock.Format(L"%Y-%m-%d %H:%M:%S", *date).value_or(std::wstring()));
}

bool InstallationSettings::WriteString(Hive hive, const std::wstring& key, const std::wstring& name,
                                       const std::wstring& text)
{
    return WriteRegistryText(m_registry, hive, key, name, text);
}

std::wstring InstallationSettings::ReadCommonFilesFolder() const
{
    return MakerFolderIn(
        ReadRegistryText(m_registry, Hive::LocalMachine, SystemFoldersKey, L"CommonFilesDir", KeyAccess::QueryValue));
}

std::wstring InstallationSettings::ReadCommonProgramFilesFolder() const
{
    return MakerFolderIn(m_environment.Variable(L"CommonProgramFiles").value_or(std::wstring()));
}

} // namespace sitekeeper
