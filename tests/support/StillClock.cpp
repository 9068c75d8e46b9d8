#include "support/StillClock.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <cwchar>

namespace sitekeeper {
namespace {

constexpr int FirstTmYear = 1900;
/// 3000-12-31 23:59:59 UTC.
constexpr Seconds LastMoment = 32535215999;

void SetZone(const char* zone)
{
#ifdef _WIN32
    ::_putenv_s("TZ", zone == nullptr ? "" : zone);
    ::_tzset();
#else
    if (zone == nullptr) {
        ::unsetenv("TZ");
    } else {
        ::setenv("TZ", zone, 1);
    }
    ::tzset();
#endif
}

bool SplitLocally(Seconds moment, std::tm& fields)
{
#ifdef _WIN32
    return ::_localtime64_s(&fields, &moment) == 0;
#else
    const auto time = static_cast<std::time_t>(moment);
    return ::localtime_r(&time, &fields) != nullptr;
#endif
}

Seconds JoinLocally(std::tm& fields)
{
#ifdef _WIN32
    return ::_mktime64(&fields);
#else
    return std::mktime(&fields);
#endif
}

std::tm ToTm(const CalendarTime& time)
{
    std::tm fields{};
    fields.tm_year = time.year - FirstTmYear;
    fields.tm_mon = time.month - 1;
    fields.tm_mday = time.day;
    fields.tm_hour = time.hour;
    fields.tm_min = time.minute;
    fields.tm_sec = time.second;
    fields.tm_isdst = -1; // the zone's rule decides
    return fields;
}

} // namespace

TimeZoneScope::TimeZoneScope(const char* zone)
{
    if (const char* const former = std::getenv("TZ")) {
        m_former = former;
    }
    SetZone(zone);
}

TimeZoneScope::~TimeZoneScope()
{
    SetZone(m_former ? m_former->c_str() : nullptr);
}

std::optional<CalendarTime> StillClock::ToLocal(Seconds moment) const
{
    std::tm fields{};
    if (moment < 0 || moment > LastMoment || !SplitLocally(moment, fields)) {
        return std::nullopt;
    }
    return CalendarTime{
        fields.tm_year + FirstTmYear, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec};
}

std::optional<Seconds> StillClock::FromLocal(const CalendarTime& time) const
{
    // A year on both sides: the zone and fields that carry over may bring such a time back into the range.
    constexpr int FirstYear = 1969;
    constexpr int LastYear = 3001;
    if (time.year < FirstYear || time.year > LastYear) {
        return std::nullopt;
    }
    std::tm fields = ToTm(time);
    const Seconds moment = JoinLocally(fields);
    return moment < 0 || moment > LastMoment ? std::nullopt : std::optional(moment);
}

std::optional<std::wstring> StillClock::Format(const std::wstring& pattern, const CalendarTime& time) const
{
    std::array<wchar_t, 128> buffer{};
    const std::tm fields = ToTm(time);
    const std::size_t length = std::wcsftime(buffer.data(), buffer.size(), pattern.c_str(), &fields);
    return length == 0 ? std::nullopt : std::optional(std::wstring(buffer.data(), length));
}

} // namespace sitekeeper
