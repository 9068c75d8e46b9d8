#include "win32/Win32Clock.h"

#include <array>
#include <ctime>
#include <cwchar>

namespace sitekeeper {
namespace {

constexpr int FirstTmYear = 1900;

/// The last moment that the C runtime converts (_MAX__TIME64_T of its time.h): the end of the year 3000 in the zone
/// that is farthest behind.
constexpr Seconds LastMoment = 0x793406FFF;

std::tm ToTm(const CalendarTime& time)
{
    std::tm fields{};
    fields.tm_year = time.year - FirstTmYear;
    fields.tm_mon = time.month - 1;
    fields.tm_mday = time.day;
    fields.tm_hour = time.hour;
    fields.tm_min = time.minute;
    fields.tm_sec = time.second;
    fields.tm_isdst = -1; // the system knows
    return fields;
}

} // namespace

Seconds Win32Clock::Now() const
{
    return ::_time64(nullptr);
}

std::optional<CalendarTime> Win32Clock::ToLocal(Seconds moment) const
{
    std::tm fields{};
    if (moment < 0 || moment > LastMoment || ::_localtime64_s(&fields, &moment) != 0) {
        return std::nullopt;
    }
    return CalendarTime{
        fields.tm_year + FirstTmYear, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec};
}

std::optional<Seconds> Win32Clock::FromLocal(const CalendarTime& time) const
{
    constexpr int FirstYear = 1969; // a local time in it may still be a moment of 1970
    constexpr int LastYear = 3000;
    if (time.year < FirstYear || time.year > LastYear) {
        return std::nullopt;
    }
    std::tm fields = ToTm(time);
    const Seconds moment = ::_mktime64(&fields);
    if (moment < 0 || moment > LastMoment) {
        return std::nullopt;
    }
    return moment;
}

std::optional<std::wstring> Win32Clock::Format(const std::wstring& pattern, const CalendarTime& time) const
{
    std::array<wchar_t, 128> buffer{};
    const std::tm fields = ToTm(time);
    const std::size_t length = ::wcsftime(buffer.data(), buffer.size(), pattern.c_str(), &fields);
    if (length == 0 || length >= buffer.size()) {
        return std::nullopt;
    }
    return std::wstring(buffer.data(), length);
}

} // namespace sitekeeper
