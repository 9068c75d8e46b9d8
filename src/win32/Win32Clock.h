// The system's clock, and the calendar of the C runtime.
#pragma once

#include "platform/Clock.h"

namespace sitekeeper {

class Win32Clock final : public Clock
{
public:
    [[nodiscard]] Seconds Now() const override;
    [[nodiscard]] std::optional<CalendarTime> ToLocal(Seconds moment) const override;
    [[nodiscard]] std::optional<Seconds> FromLocal(const CalendarTime& time) const override;
    [[nodiscard]] std::optional<std::wstring> Format(const std::wstring& pattern,
                                                     const CalendarTime& time) const override;
};

} // namespace sitekeeper
