// Any bytes as the stored date of the next reminder: read, fallen back from, or refused with a message; a date that was
// read can be stored and read again.
#include "fuzz/FuzzInput.h"
#include "platform/PlatformError.h"
#include "settings/InstallationSettings.h"
#include "support/MemoryEnvironment.h"
#include "support/MemoryRegistry.h"
#include "support/StillClock.h"

namespace {

using namespace sitekeeper;

constexpr Seconds Fallback = -1; // no stored date can be this moment

void CheckBytes(std::span<const std::byte> bytes)
{
    const std::wstring key = InstallationSettings::UpdateReminderKey();
    MemoryRegistry registry;
    const MemoryEnvironment environment;
    const StillClock clock;
    InstallationSettings settings(registry, environment, clock);
    registry.SetBytes(Hive::CurrentUser, key, L"CheckWebVersionDate", ValueType::Text, bytes);
    registry.SetBytes(Hive::CurrentUser, key, L"CheckWebVersionDays", ValueType::Number, bytes);
    constexpr std::size_t NumberSize = 4;
    constexpr std::uint32_t DaysFallback = 7;
    Require(bytes.size() <= NumberSize || settings.ReadUpdateDays(key, DaysFallback) == DaysFallback);
    try {
        const Seconds moment = settings.ReadUpdateDate(key, Fallback);
        if (moment != Fallback) {
            Require(moment >= 0);
            Require(settings.WriteUpdateDate(key, moment));
            Require(settings.ReadUpdateDate(key, Fallback) == moment);
        }
    } catch (const PlatformError& error) {
        Require(error.Code() == ResultCode::Fail || error.Code() == ResultCode::InvalidArgument);
        Require(error.Message().find(L"CheckWebVersionDate") != std::wstring::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TimeZoneScope zone(Utc);
    CheckBytes(AsBytes(data, size));
    // The same input once more as narrow text: mutations then reach the parser more often.
    std::vector<std::byte> widened;
    for (const std::byte byte : AsBytes(data, size)) {
        widened.push_back(byte);
        widened.push_back(std::byte{0});
    }
    CheckBytes(widened);
    return 0;
}
