// An installation on the platform in memory whose reminder is due and whose vendor has published something newer.
#pragma once

#include "settings/RegistryText.h"
#include "support/FaultyPlatform.h"
#include "update/UpdateCheck.h"

#include <gtest/gtest.h>
#include <string>

namespace sitekeeper {

inline constexpr const wchar_t* Address = L"https://updates.example/software-updates/";
inline constexpr const wchar_t* ReminderKey = L"Software\\ORIVEL\\LX Plus\\2023\\Assist";
inline constexpr const char* Newer = "<a>LX_2023_Plus_Update2024_05_06.exe</a>"; // the clock's own day
inline constexpr Seconds Today = 1714953600;                                     // 2024-05-06 00:00:00 UTC
inline constexpr Seconds Day = 86400;

/// What the administrator is asked.
inline ScriptedMessageBoxes::Box Question()
{
    return {WindowId::None,
            L"A newer version of LX Plus 2023 is available.\n\nDo you want to download it from the website?\n\n"
            L"If you Cancel, you will not be prompted again.",
            L"LX Plus 2023", MessageStyle::TopMostQuestion};
}

/// What the administrator is told after the answer.
inline ScriptedMessageBoxes::Box Told(const std::wstring& text)
{
    return {WindowId::None, text, L"LX Plus 2023", MessageStyle::TopMostInformation};
}

/// An installation whose newest file is a day older than the published update.
inline void Install(MemoryPlatform& memory)
{
    InstallationSettings settings = SettingsOn(memory.Ports());
    settings.WriteFolder(SuiteFolder::Program, L"C:\\Suite\\");
    settings.WriteFolder(SuiteFolder::Application, L"c:\\SUITE");
    memory.files.AddFile(L"C:\\Suite\\Applications\\SiteKeeper64.exe");
    memory.files.SetModified(L"C:\\Suite\\Applications\\SiteKeeper64.exe", Today - Day);
    memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", L"2024-05-06 00:00:00");
    memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", 14);
    memory.web.Publish(Address, Newer);
}

inline void Check(const Platform& ports)
{
    InstallationSettings settings = SettingsOn(ports);
    UpdateCheck(ports, settings, Address).RunUpdateCheck();
}

class UpdateFixture : public testing::Test
{
protected:
    UpdateFixture() { Install(memory); }

    void StoreDate(const std::wstring& text)
    {
        memory.registry.SetText(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate", text);
    }
    [[nodiscard]] std::wstring StoredDate() const
    {
        return ReadRegistryText(memory.registry, Hive::CurrentUser, ReminderKey, L"CheckWebVersionDate",
                                KeyAccess::QueryValue);
    }
    void StoreDays(std::uint32_t days)
    {
        memory.registry.SetNumber(Hive::CurrentUser, ReminderKey, L"CheckWebVersionDays", days);
    }
    [[nodiscard]] std::uint32_t StoredDays() { return SettingsOn(memory.Ports()).ReadUpdateDays(ReminderKey, 4711); }
    void Run() { Check(memory.Ports()); }

    TimeZoneScope m_zone{Utc};
    MemoryPlatform memory;
};

} // namespace sitekeeper
