// The stored schedule of the update reminder: its days, and writing its date.
#include "settings/InstallationSettings.h"
#include "support/MemoryPlatform.h"
#include "text/Utf16.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::wstring ScheduleKey = InstallationSettings::UpdateReminderKey();

class UpdateSchedule : public ::testing::Test
{
protected:
    void StoreDays(ValueType type, std::initializer_list<int> values)
    {
        std::vector<std::byte> bytes;
        for (const int value : values) {
            bytes.push_back(static_cast<std::byte>(value));
        }
        memory.registry.SetBytes(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDays", type, bytes);
    }
    [[nodiscard]] std::wstring StoredDate() const
    {
        const auto value = memory.registry.Find(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDate");
        return value ? DecodeUtf16(value->bytes) : L"(none)";
    }

    TimeZoneScope zone{Utc};
    MemoryPlatform memory;
    InstallationSettings settings = SettingsOn(memory.Ports());
};

TEST_F(UpdateSchedule, StandsInTheAssistKey)
{
    EXPECT_EQ(ScheduleKey, L"Software\\ORIVEL\\LX Plus\\2023\\Assist");
}

TEST_F(UpdateSchedule, HasTheCallersDaysWhenNoneAreStored)
{
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 7U);
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 0xFFFFFFFF), 0xFFFFFFFF);
    memory.registry.SetNumber(Hive::LocalMachine, ScheduleKey, L"CheckWebVersionDays", 3);
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 7U);
}

TEST_F(UpdateSchedule, ReadsStoredDays)
{
    for (const std::uint32_t days : {0U, 1U, 7U, 365U, 0x12345678U, 0x80000000U, 0xFFFFFFFFU}) {
        memory.registry.SetNumber(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDays", days);
        EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), days);
    }
}

TEST_F(UpdateSchedule, ReadsUpToFourBytesOfAnyType)
{
    constexpr auto Binary = static_cast<ValueType>(3);
    StoreDays(Binary, {5, 1, 0, 0});
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 261U);
    StoreDays(Binary, {5, 1});
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 261U);
    StoreDays(ValueType::Text, {0x31, 0});
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 0x31U);
    StoreDays(Binary, {});
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 0U);
    StoreDays(Binary, {5, 0, 0, 0, 0});
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 7U);
    memory.registry.SetText(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDays", L"14");
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 7U);
}

TEST_F(UpdateSchedule, OpensItsKeyForQueryingOnly)
{
    memory.registry.SetNumber(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDays", 3);
    memory.registry.RefuseReading(Hive::CurrentUser, ScheduleKey, KeyAccess::Read);
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 3U);
    memory.registry.RefuseReading(Hive::CurrentUser, ScheduleKey, KeyAccess::QueryValue);
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 7U);
}

TEST_F(UpdateSchedule, WritesDaysAsANumberOfFourBytes)
{
    EXPECT_TRUE(settings.WriteUpdateDays(ScheduleKey, 0x01020304));
    const auto value = memory.registry.Find(Hive::CurrentUser, ScheduleKey, L"CheckWebVersionDays");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->type, ValueType::Number);
    EXPECT_EQ(value->bytes, (std::vector{std::byte{4}, std::byte{3}, std::byte{2}, std::byte{1}}));
    EXPECT_EQ(settings.ReadUpdateDays(ScheduleKey, 7), 0x01020304U);
}

TEST_F(UpdateSchedule, WritesTheDateInLocalTime)
{
    EXPECT_TRUE(settings.WriteUpdateDate(ScheduleKey, 1714979289));
    EXPECT_EQ(StoredDate(), L"2024-05-06 07:08:09");
    const TimeZoneScope there(Berlin);
    EXPECT_TRUE(settings.WriteUpdateDate(ScheduleKey, 1714979289));
    EXPECT_EQ(StoredDate(), L"2024-05-06 09:08:09");
    EXPECT_TRUE(settings.WriteUpdateDate(ScheduleKey, 0));
    EXPECT_EQ(StoredDate(), L"1970-01-01 01:00:00");
}

TEST_F(UpdateSchedule, ReadsBackTheDateItWrote)
{
    // Around both changes of the year; the hour that comes twice is left out, since its text does not tell which it is.
    for (const char* const rule : {Utc, Berlin, SaoPaulo}) {
        const TimeZoneScope there(rule);
        for (const Seconds moment : {Seconds{10800}, Seconds{1711846799}, Seconds{1711846800}, Seconds{1541300399},
                                     Seconds{1541300400}, Seconds{32503680000}}) {
            EXPECT_TRUE(settings.WriteUpdateDate(ScheduleKey, moment));
            EXPECT_EQ(settings.ReadUpdateDate(ScheduleKey, 1), moment) << rule;
        }
    }
}

TEST_F(UpdateSchedule, WritesNoDateWithoutALocalTime)
{
    for (const Seconds moment : {Seconds{-1}, Seconds{33000000000}}) {
        try {
            settings.WriteUpdateDate(ScheduleKey, moment);
            ADD_FAILURE() << moment;
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.Code(), ResultCode::InvalidArgument);
            EXPECT_FALSE(error.Message().empty());
        }
        EXPECT_EQ(StoredDate(), L"(none)");
    }
}

TEST_F(UpdateSchedule, ReportsThatNothingCouldBeStored)
{
    memory.registry.RefuseWriting(Hive::CurrentUser, ScheduleKey);
    EXPECT_FALSE(settings.WriteUpdateDate(ScheduleKey, 1714979289));
    EXPECT_FALSE(settings.WriteUpdateDays(ScheduleKey, 7));
    EXPECT_EQ(StoredDate(), L"(none)");
}

} // namespace
} // namespace sitekeeper
