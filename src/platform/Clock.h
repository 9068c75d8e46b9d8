// Port: the clock and the calendar of the local time zone.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <optional>
#include <string>

namespace sitekeeper {

/// A moment: seconds since 1970-01-01 00:00:00 UTC.
using Seconds = std::int64_t;

/// A moment as the local calendar shows it. Month and day count from 1.
struct CalendarTime
{
    int year = 0;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const CalendarTime&) const = default;
};

class Clock : public Port
{
public:
    /// The current moment, by the system's clock, which somebody may set back.
    [[nodiscard]] virtual Seconds Now() const = 0;

    /// The local calendar time of a moment from 1970 to the end of the year 3000; nothing outside.
    [[nodiscard]] virtual std::optional<CalendarTime> ToLocal(Seconds moment) const = 0;

    /// The moment of a local calendar time, daylight saving left to the system. Fields beyond their range carry over
    /// (February 30 is March 1 or 2). Nothing for a moment before 1970 or after the year 3000.
    [[nodiscard]] virtual std::optional<Seconds> FromLocal(const CalendarTime& time) const = 0;

    /// `time` laid out by a pattern of the C library's strftime, in at most 127 characters; nothing when it does not
    /// fit.
    [[nodiscard]] virtual std::optional<std::wstring> Format(const std::wstring& pattern,
                                                             const CalendarTime& time) const = 0;
};

} // namespace sitekeeper
