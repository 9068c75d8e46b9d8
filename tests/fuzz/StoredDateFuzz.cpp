// Any bytes as the stored date of the next reminder: read, fallen back from, or refused with a message; a date that was
// read can be stored and read again.
#include "fuzz/FuzzInput.h"
#include "platform/PlatformError.h"
#include "settings/InstallationSettings.h"
#include "support/MemoryEnvironment.h"
#include "support/StillClock.h"

#include <map>

namespace {

using namespace sitekeeper;

constexpr Seconds Fallback = -1; // no stored date can be this moment

/// A registry of one key, with names in one spelling: the folding of letters would take most of the time.
class OneKey final : public Registry
{
public:
    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive /*hive*/, const std::wstring& /*key*/,
                                                                  const std::wstring& name, KeyAccess /*access*/,
                                                                  std::size_t limit) const override
    {
        const auto found = m_values.find(name);
        return found == m_values.end() || found->second.size() > limit ? std::nullopt : std::optional(found->second);
    }
    bool WriteValue(Hive /*hive*/, const std::wstring& /*key*/, const std::wstring& name, ValueType /*type*/,
                    std::span<const std::byte> bytes) override
    {
        m_values[name].assign(bytes.begin(), bytes.end());
        return true;
    }
    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive /*hive*/, const std::wstring& /*key*/) const override { return {}; }

private:
    std::map<std::wstring, std::vector<std::byte>> m_values;
};

void CheckBytes(std::span<const std::byte> bytes)
{
    static const std::wstring key = InstallationSettings::UpdateReminderKey();
    OneKey registry;
    const MemoryEnvironment environment;
    const StillClock clock;
    InstallationSettings settings(registry, environment, clock);
    registry.WriteValue(Hive::CurrentUser, key, L"CheckWebVersionDate", ValueType::Text, bytes);
    registry.WriteValue(Hive::CurrentUser, key, L"CheckWebVersionDays", ValueType::Number, bytes);
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
