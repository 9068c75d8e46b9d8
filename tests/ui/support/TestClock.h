// A clock for dialog tests: it can move while the program waits, and refuse dates from some moment on.
#pragma once

#include "support/StillClock.h"

#include <functional>

namespace sitekeeper {

class TestClock final : public Clock
{
public:
    [[nodiscard]] Seconds Now() const override { return onNow ? onNow() : m_calendar.Now(); }
    [[nodiscard]] std::optional<CalendarTime> ToLocal(Seconds moment) const override
    {
        return m_calendar.ToLocal(moment);
    }
    [[nodiscard]] std::optional<Seconds> FromLocal(const CalendarTime& time) const override
    {
        return refusesDates ? std::nullopt : m_calendar.FromLocal(time);
    }
    [[nodiscard]] std::optional<std::wstring> Format(const std::wstring& pattern,
                                                     const CalendarTime& time) const override
    {
        return m_calendar.Format(pattern, time);
    }

    /// What the time is; empty for a clock that stands still.
    std::function<Seconds()> onNow;
    bool refusesDates = false;

private:
    StillClock m_calendar;
};

} // namespace sitekeeper
