// In whatever time zone the process runs: what is asserted holds in each of them.
#include "contract/World.h"
#include "support/Printing.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace sitekeeper {
namespace {

constexpr Seconds Day = 86400;
constexpr Seconds EndOfYear3000 = 32535215999; // in UTC
constexpr const wchar_t* StoredForm = L"%Y-%m-%d %H:%M:%S";

class ClockContract : public ::testing::Test
{
protected:
    std::unique_ptr<World> world = MakeWorld();
    Clock& clock = world->TheClock();
};

TEST_F(ClockContract, KnowsAMomentOfOurDays)
{
    EXPECT_GT(clock.Now(), 1704067200); // the beginning of 2024
    EXPECT_TRUE(clock.ToLocal(clock.Now()));
    const Seconds before = clock.Now();
    EXPECT_GE(clock.Now(), before);
}

TEST_F(ClockContract, TurnsMomentsIntoCalendarTimesAndBack)
{
    // Noon in UTC, in each of twelve months and far from any change of clocks.
    for (Seconds moment = 2 * Day + Day / 2; moment < EndOfYear3000 - 2 * Day; moment += 3001 * Day) {
        const std::optional<CalendarTime> time = clock.ToLocal(moment);
        ASSERT_TRUE(time) << moment;
        EXPECT_EQ(clock.FromLocal(*time), moment);
    }
}

TEST_F(ClockContract, ShowsTheCalendar)
{
    const std::optional<CalendarTime> time = clock.ToLocal(1714996800); // noon of 2024-05-06 in UTC
    ASSERT_TRUE(time);
    EXPECT_EQ(time->year, 2024);
    EXPECT_EQ(time->month, 5);
    EXPECT_GE(time->day, 6);
    EXPECT_LE(time->day, 7);
    EXPECT_EQ(time->second, 0);
    CalendarTime later = *time;
    later.second += 1;
    EXPECT_EQ(clock.ToLocal(1714996801), later);
}

TEST_F(ClockContract, ReachesFrom1970ToTheYear3000)
{
    EXPECT_TRUE(clock.ToLocal(0));
    EXPECT_TRUE(clock.ToLocal(EndOfYear3000));
    EXPECT_FALSE(clock.ToLocal(-1));
    EXPECT_FALSE(clock.ToLocal(std::numeric_limits<Seconds>::min()));
    // Whose midnight ends the year, differs between runtimes by hours.
    EXPECT_FALSE(clock.ToLocal(EndOfYear3000 + Day));
    EXPECT_FALSE(clock.ToLocal(std::numeric_limits<Seconds>::max()));
}

TEST_F(ClockContract, FindsNoMomentOutsideItsRange)
{
    EXPECT_TRUE(clock.FromLocal({1970, 1, 2, 12, 0, 0}));
    EXPECT_TRUE(clock.FromLocal({3000, 12, 30, 12, 0, 0}));
    EXPECT_FALSE(clock.FromLocal({1969, 12, 30, 12, 0, 0}));
    EXPECT_FALSE(clock.FromLocal({3001, 1, 3, 12, 0, 0}));
    for (const int year : {std::numeric_limits<int>::min(), -1, 0, 1601, 1900, 1968, 3002, 9999, 30827,
                           std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(clock.FromLocal({year, 6, 1, 12, 0, 0})) << year;
    }
}

TEST_F(ClockContract, CarriesFieldsBeyondTheirRangeOver)
{
    const struct
    {
        CalendarTime beyond;
        CalendarTime within;
    } rows[] = {
        {{2024, 2, 30, 12, 0, 0}, {2024, 3, 1, 12, 0, 0}}, {{2023, 2, 30, 12, 0, 0}, {2023, 3, 2, 12, 0, 0}},
        {{2024, 4, 31, 12, 0, 0}, {2024, 5, 1, 12, 0, 0}}, {{2023, 13, 1, 12, 0, 0}, {2024, 1, 1, 12, 0, 0}},
        {{2024, 6, 1, 12, 60, 0}, {2024, 6, 1, 13, 0, 0}}, {{2024, 6, 1, 12, 0, 60}, {2024, 6, 1, 12, 1, 0}},
        {{2024, 6, 30, 36, 0, 0}, {2024, 7, 1, 12, 0, 0}}, {{2024, 0, 15, 12, 0, 0}, {2023, 12, 15, 12, 0, 0}},
        {{2024, 6, 0, 12, 0, 0}, {2024, 5, 31, 12, 0, 0}},
    };
    for (const auto& row : rows) {
        const std::optional<Seconds> moment = clock.FromLocal(row.beyond);
        ASSERT_TRUE(moment);
        EXPECT_EQ(moment, clock.FromLocal(row.within));
        EXPECT_EQ(clock.ToLocal(*moment), row.within);
    }
}

/// The beginnings of all days of a year, and of the day after it.
std::vector<Seconds> Midnights(const Clock& clock, int year)
{
    std::vector<Seconds> midnights;
    for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day <= 31; ++day) {
            const std::optional<Seconds> noon = clock.FromLocal({year, month, day, 12, 0, 0});
            if (!noon || clock.ToLocal(*noon)->day != day) {
                continue; // no such day
            }
            const std::optional<Seconds> midnight = clock.FromLocal({year, month, day, 0, 0, 0});
            EXPECT_TRUE(midnight) << year << '-' << month << '-' << day;
            midnights.push_back(midnight.value_or(0));
        }
    }
    midnights.push_back(clock.FromLocal({year + 1, 1, 1, 0, 0, 0}).value_or(0));
    return midnights;
}

// Days of 23 and 25 hours, and midnights that the clocks leave out: each is some moment near by.
TEST_F(ClockContract, KnowsTheBeginningOfEachDay)
{
    constexpr Seconds Hour = 3600;
    for (const int year : {1971, 2018, 2024, 2037, 2038, 2039, 2106, 2999}) {
        const std::vector<Seconds> midnights = Midnights(clock, year);
        for (std::size_t day = 1; day < midnights.size(); ++day) {
            const Seconds length = midnights[day] - midnights[day - 1];
            EXPECT_GE(length, 23 * Hour) << year << ", day " << day;
            EXPECT_LE(length, 25 * Hour) << year << ", day " << day;
            const std::optional<CalendarTime> time = clock.ToLocal(midnights[day]);
            ASSERT_TRUE(time);
            EXPECT_TRUE(time->hour <= 1 || time->hour == 23) << year << ", day " << day;
        }
    }
}

TEST_F(ClockContract, LaysTimesOut)
{
    const CalendarTime time{2024, 5, 6, 7, 8, 9};
    EXPECT_EQ(clock.Format(StoredForm, time), L"2024-05-06 07:08:09");
    EXPECT_EQ(clock.Format(L"%d.%m.%y", time), L"06.05.24");
    EXPECT_EQ(clock.Format(L"100%%", time), L"100%");
    EXPECT_EQ(clock.Format(StoredForm, {1970, 1, 1, 0, 0, 0}), L"1970-01-01 00:00:00");
    EXPECT_EQ(clock.Format(StoredForm, {3000, 12, 31, 23, 59, 59}), L"3000-12-31 23:59:59");
}

TEST_F(ClockContract, LaysOutAtMost127Characters)
{
    const CalendarTime time{2024, 5, 6, 7, 8, 9};
    EXPECT_EQ(clock.Format(std::wstring(127, L'x'), time), std::wstring(127, L'x'));
    EXPECT_EQ(clock.Format(std::wstring(128, L'x'), time), std::nullopt);
    EXPECT_EQ(clock.Format(std::wstring(123, L'x') + L"%Y", time), std::wstring(123, L'x') + L"2024");
    EXPECT_EQ(clock.Format(std::wstring(124, L'x') + L"%Y", time), std::nullopt);
    EXPECT_EQ(clock.Format(std::wstring(5000, L'x'), time), std::nullopt);
}

} // namespace
} // namespace sitekeeper
