// A clock that stands still, for tests; its calendar is the C library's in the process's time zone.
#pragma once

#include "platform/Clock.h"

namespace sitekeeper {

/// Time zones as rules that the C library reads without its zone files.
inline constexpr const char* Utc = "UTC0";
/// Clocks go from 02:00 to 03:00 on the last Sunday of March and back at 03:00 on the last Sunday of October.
inline constexpr const char* Berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
/// The Brazilian rule of 2018: clocks go from 00:00 to 01:00 on the first Sunday of November, so that that midnight
/// does not exist, and back at 00:00 on the third Sunday of February.
inline constexpr const char* SaoPaulo = "<-03>3<-02>,M11.1.0/0,M2.3.0/0";

/// The process's time zone for the life of this object; afterwards the former one is back.
class TimeZoneScope
{
public:
    explicit TimeZoneScope(const char* zone);
    TimeZoneScope(const TimeZoneScope&) = delete;
    TimeZoneScope& operator=(const TimeZoneScope&) = delete;
    ~TimeZoneScope();

private:
    std::optional<std::string> m_former;
};

class StillClock final : public Clock
{
public:
    [[nodiscard]] Seconds Now() const override { return m_now; }
    [[nodiscard]] std::optional<CalendarTime> ToLocal(Seconds moment) const override;
    [[nodiscard]] std::optional<Seconds> FromLocal(const CalendarTime& time) const override;
    [[nodiscard]] std::optional<std::wstring> Format(const std::wstring& pattern,
                                                     const CalendarTime& time) const override;

    void SetNow(Seconds moment) { m_now = moment; }

private:
    /// 2024-05-06 07:08:09 UTC.
    Seconds m_now = 1714979289;
};

} // namespace sitekeeper
