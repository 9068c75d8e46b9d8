#include "maindlg/SettingsReport.h"

#include "platform/PlatformError.h"
#include "support/StillClock.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(PrintTimeStamp, StripsTheZerosOfTheTimeAlone)
{
    const TimeZoneScope zone(Utc);
    const StillClock clock;
    const struct
    {
        CalendarTime time;
        const wchar_t* stamp = L"";
    } rows[] = {
        {{2023, 6, 5, 9, 41, 0}, L"05-Jun-2023 9:41am"},    {{2023, 6, 5, 22, 5, 59}, L"05-Jun-2023 10:05pm"},
        {{2023, 12, 31, 0, 0, 0}, L"31-Dec-2023 12:00am"},  {{2024, 2, 29, 12, 0, 0}, L"29-Feb-2024 12:00pm"},
        {{2024, 3, 1, 1, 0, 0}, L"01-Mar-2024 1:00am"},     {{2024, 10, 10, 13, 30, 0}, L"10-Oct-2024 1:30pm"},
        {{2000, 1, 1, 11, 59, 59}, L"01-Jan-2000 11:59am"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PrintTimeStamp(clock, clock.FromLocal(row.time).value()), row.stamp);
    }
}

TEST(PrintTimeStamp, LeavesOutWhatCannotBeLaidOut)
{
    class NoForm final : public Clock
    {
    public:
        [[nodiscard]] Seconds Now() const override { return 0; }
        [[nodiscard]] std::optional<CalendarTime> ToLocal(Seconds /*moment*/) const override { return CalendarTime(); }
        [[nodiscard]] std::optional<Seconds> FromLocal(const CalendarTime& /*time*/) const override { return {}; }
        [[nodiscard]] std::optional<std::wstring> Format(const std::wstring& pattern,
                                                         const CalendarTime& /*time*/) const override
        {
            return pattern.starts_with(m_refused) ? std::nullopt : std::optional<std::wstring>(L"00:X");
        }
        std::wstring m_refused;
    } clock;
    clock.m_refused = L"%d";
    EXPECT_EQ(PrintTimeStamp(clock, 0), L":x");
    clock.m_refused = L"%I";
    EXPECT_EQ(PrintTimeStamp(clock, 0), L"00:X");
    clock.m_refused = L"%";
    EXPECT_EQ(PrintTimeStamp(clock, 0), L"");
}

TEST(PrintTimeStamp, RefusesAMomentWithoutALocalTime)
{
    try {
        static_cast<void>(PrintTimeStamp(StillClock(), -1));
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.Code(), ResultCode::InvalidArgument);
    }
}

TEST(SettingsReport, PutsEachItemOnALineOfItsOwn)
{
    EXPECT_EQ(
        ComposeSettingsReport(L" ", L"05-Jun-2023 9:41am", {L"C:\\Suite\\", L"N:\\Suite", L"D:\\Data\\"}, L"Main"),
        L"\n\t \n\tDate:\t05-Jun-2023 9:41am\n\n\tProgram Path:\tC:\\Suite\\\n\tApplication Path:\tN:\\Suite\n"
        L"\tDatafiles Path:\tD:\\Data\\\n\n\tAutoCAD Session:\tMain\n");
    EXPECT_EQ(ComposeSettingsReport(L"", L"", {}, L""), L"\n\t\n\tDate:\t\n\n\tProgram Path:\t\n\tApplication Path:\t\n"
                                                        L"\tDatafiles Path:\t\n\n\tAutoCAD Session:\t\n");
}

} // namespace
} // namespace sitekeeper
