// The stored date of the next update reminder: reading it.
#include "settings/InstallationSettings.h"
#include "support/MemoryPlatform.h"
#include "text/Utf16.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr Seconds Fallback = 946684800; // 2000-01-01 00:00:00 UTC
constexpr Seconds Moment = 1714979289;  // 2024-05-06 07:08:09 UTC
const std::wstring Key = InstallationSettings::UpdateReminderKey();

class UpdateDate : public ::testing::Test
{
protected:
    void Store(const std::wstring& text)
    {
        memory.registry.SetText(Hive::CurrentUser, Key, L"CheckWebVersionDate", text);
    }

    Seconds Read(const std::wstring& text)
    {
        Store(text);
        return settings.ReadUpdateDate(Key, Fallback);
    }

    /// The code that reading the text raises; Ok when it raises none.
    ResultCode Refusal(const std::wstring& text, const std::wstring& key = Key)
    {
        memory.registry.SetText(Hive::CurrentUser, key, L"CheckWebVersionDate", text);
        try {
            static_cast<void>(settings.ReadUpdateDate(key, Fallback));
        } catch (const PlatformError& error) {
            message = error.Message();
            return error.Code();
        }
        return ResultCode::Ok;
    }

    TimeZoneScope zone{Utc};
    MemoryPlatform memory;
    InstallationSettings settings = SettingsOn(memory.Ports());
    std::wstring message;
};

TEST_F(UpdateDate, IsReadFromItsSixNumbers)
{
    const struct
    {
        const wchar_t* text;
        Seconds moment;
    } rows[] = {
        {L"2024-05-06 07:08:09", Moment},     {L"1970-01-01 00:00:00", 0},          {L"2000-01-01 00:00:00", Fallback},
        {L"2024-12-31 23:59:59", 1735689599}, {L"2024-02-29 00:00:00", 1709164800},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Read(row.text), row.moment) << row.text;
    }
}

TEST_F(UpdateDate, AcceptsAnySeparatorInAnyPlace)
{
    const wchar_t* const texts[] = {
        L"2024 05:06-07 08 09",           L"2024:05:06:07:08:09",  L"2024-05-06-07-08-09",
        L"2024 05 06 07 08 09",           L"2024-5-6 7:8:9",       L"2024x-05y-06 07:08:9",
        L"2024-05-06 07:08:09.999-1:2 3", L"+2024-+5-+6 +7:+8:+9", L"2024-\t05-\t06 07:08:09 ",
    };
    for (const wchar_t* const text : texts) {
        EXPECT_EQ(Read(text), Moment) << '"' << text << '"';
    }
}

// A blank before a number is skipped when the number is read, and is then found again as the next separator.
TEST_F(UpdateDate, CountsEachBlankAsASeparator)
{
    EXPECT_EQ(Read(L"2024- 5-6 7:8:9"), Moment - Seconds{25} * 3600 - 60 - 1); // 2024-05-05 06:07:08
    EXPECT_EQ(Refusal(L"  2024-05-06 07:08:09"), ResultCode::Fail);            // month 2024
}

TEST_F(UpdateDate, IsTheFallbackWhereASeparatorIsMissing)
{
    const wchar_t* const texts[] = {
        L"",
        L"2024",
        L"2024-05",
        L"2024-05-06",
        L"2024-05-06 07",
        L"2024-05-06 07:08",
        L"2024/05/06",
        L"20240506070809",
        L"soon",
        L"9999-99-99 99:99", // out of range, but not looked at before all six are there
    };
    for (const wchar_t* const text : texts) {
        EXPECT_EQ(Read(text), Fallback) << '"' << text << '"';
    }
}

TEST_F(UpdateDate, TakesAMissingNumberForZero)
{
    EXPECT_EQ(Refusal(L"-----"), ResultCode::Fail);
    EXPECT_EQ(Refusal(L"-01-01 00:00:00"), ResultCode::Fail);
    EXPECT_EQ(Read(L"2024-05-06 ::"), Moment - Seconds{7} * 3600 - Seconds{8} * 60 - 9);
}

TEST_F(UpdateDate, IsRefusedOutsideItsRanges)
{
    const struct
    {
        const wchar_t* lowest;
        const wchar_t* tooLow;
        const wchar_t* highest;
        const wchar_t* tooHigh;
    } rows[] = {
        {L"1970-01-01 00:00:00", L"1969-12-31 23:59:59", L"2024-01-01 00:00:00", nullptr},
        {L"2024-01-01 00:00:00", L"2024-00-01 00:00:00", L"2024-12-01 00:00:00", L"2024-13-01 00:00:00"},
        {L"2024-01-01 00:00:00", L"2024-01-00 00:00:00", L"2024-01-31 00:00:00", L"2024-01-32 00:00:00"},
        {L"2024-01-01 00:00:00", nullptr, L"2024-01-01 23:00:00", L"2024-01-01 24:00:00"},
        {L"2024-01-01 00:00:00", nullptr, L"2024-01-01 00:59:00", L"2024-01-01 00:60:00"},
        {L"2024-01-01 00:00:00", nullptr, L"2024-01-01 00:00:59", L"2024-01-01 00:00:60"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Refusal(row.lowest), ResultCode::Ok) << row.lowest;
        EXPECT_EQ(Refusal(row.highest), ResultCode::Ok) << row.highest;
        for (const wchar_t* const outside : {row.tooLow, row.tooHigh}) {
            if (outside != nullptr) {
                EXPECT_EQ(Refusal(outside), ResultCode::Fail) << outside;
            }
        }
    }
}

// Such numbers are held at the bounds of 32 bits, so that none of them comes round into its range.
TEST_F(UpdateDate, IsRefusedForNumbersOutside32Bits)
{
    EXPECT_EQ(Refusal(L"2024-4294967297-01 00:00:00"), ResultCode::Fail);
    EXPECT_EQ(Refusal(L"2024-01-01 00:00:99999999999999999999"), ResultCode::Fail);
    EXPECT_EQ(Refusal(L"4294969320-01-01 00:00:00"), ResultCode::InvalidArgument);
}

TEST_F(UpdateDate, IsRefusedWhereThereIsNoSuchTime)
{
    EXPECT_EQ(Refusal(L"3000-12-31 23:59:59"), ResultCode::Ok);
    EXPECT_EQ(Refusal(L"3002-01-01 00:00:00"), ResultCode::InvalidArgument);
    EXPECT_EQ(Refusal(L"99999-01-01 00:00:00"), ResultCode::InvalidArgument);
    const TimeZoneScope east(Berlin); // midnight there is eleven in the evening of 1969 in UTC
    EXPECT_EQ(Refusal(L"1970-01-01 00:00:00"), ResultCode::InvalidArgument);
    EXPECT_EQ(Read(L"1970-01-01 01:00:00"), 0);
}

TEST_F(UpdateDate, CarriesADayThatTheMonthLacksIntoTheNext)
{
    EXPECT_EQ(Read(L"2024-02-30 00:00:00"), Read(L"2024-03-01 00:00:00"));
    EXPECT_EQ(Read(L"2023-02-29 00:00:00"), Read(L"2023-03-01 00:00:00"));
    EXPECT_EQ(Read(L"2023-04-31 00:00:00"), Read(L"2023-05-01 00:00:00"));
}

TEST_F(UpdateDate, NamesValueTextAndKeyInBothRefusals)
{
    const std::wstring key = L"Software\\Somewhere";
    for (const wchar_t* const text : {L"2024-13-01 00:00:00", L"9999-01-01 00:00:00"}) {
        ASSERT_NE(Refusal(text, key), ResultCode::Ok);
        EXPECT_NE(message.find(text), std::wstring::npos) << message;
        EXPECT_NE(message.find(L"CheckWebVersionDate"), std::wstring::npos) << message;
        EXPECT_NE(message.find(L"HKEY_CURRENT_USER\\Software\\Somewhere"), std::wstring::npos) << message;
    }
}

TEST_F(UpdateDate, IsTheFallbackWhenItCannotBeRead)
{
    EXPECT_EQ(settings.ReadUpdateDate(Key, Fallback), Fallback);
    memory.registry.SetText(Hive::LocalMachine, Key, L"CheckWebVersionDate", L"2024-05-06 07:08:09");
    EXPECT_EQ(settings.ReadUpdateDate(Key, Fallback), Fallback);
    EXPECT_EQ(Read(L"2024-05-06 07:08:09" + std::wstring(1100, L' ')), Fallback);
    Store(L"2024-05-06 07:08:09");
    EXPECT_EQ(settings.ReadUpdateDate(L"Software\\Elsewhere", Fallback), Fallback);
    memory.registry.RefuseReading(Hive::CurrentUser, Key, KeyAccess::Read);
    EXPECT_EQ(settings.ReadUpdateDate(Key, Fallback), Moment);
    memory.registry.RefuseReading(Hive::CurrentUser, Key, KeyAccess::QueryValue);
    EXPECT_EQ(settings.ReadUpdateDate(Key, Fallback), Fallback);
}

TEST_F(UpdateDate, IsReadFromBytesOfAnyTypeWithOrWithoutTerminator)
{
    constexpr auto Binary = static_cast<ValueType>(3);
    memory.registry.SetBytes(Hive::CurrentUser, Key, L"CheckWebVersionDate", Binary,
                             EncodeUtf16(L"2024-05-06 07:08:09"));
    EXPECT_EQ(settings.ReadUpdateDate(Key, Fallback), Moment);
}

TEST_F(UpdateDate, FollowsDaylightSaving)
{
    const TimeZoneScope there(Berlin);
    EXPECT_EQ(Read(L"2024-01-15 12:00:00"), 1705316400); // 11:00 UTC
    EXPECT_EQ(Read(L"2024-07-15 12:00:00"), 1721037600); // 10:00 UTC
    EXPECT_EQ(Read(L"2024-03-31 01:59:59"), 1711846799);
    EXPECT_EQ(Read(L"2024-03-31 03:00:00"), 1711846800); // one second later
}

TEST_F(UpdateDate, FindsAMomentForTimesThatDoNotExistOrExistTwice)
{
    const struct
    {
        const char* rule;
        const wchar_t* text;
        Seconds inSummerTime;
        Seconds inWinterTime;
    } rows[] = {
        {Berlin, L"2024-03-31 02:30:00", 1711845000, 1711848600},   // skipped
        {Berlin, L"2024-10-27 02:30:00", 1729989000, 1729992600},   // came twice
        {SaoPaulo, L"2018-11-04 00:00:00", 1541296800, 1541300400}, // a midnight that was skipped
        {SaoPaulo, L"2018-02-17 23:30:00", 1518917400, 1518921000}, // came twice
    };
    for (const auto& row : rows) {
        const TimeZoneScope there(row.rule);
        EXPECT_THAT(Read(row.text), ::testing::AnyOf(row.inSummerTime, row.inWinterTime)) << row.text;
    }
}

} // namespace
} // namespace sitekeeper
