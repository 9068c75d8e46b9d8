#include "update/UpdateCheck.h"

#include "platform/PlatformError.h"
#include "settings/Product.h"
#include "settings/SuiteCatalogue.h"
#include "text/Text.h"
#include "update/PublishedUpdate.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

constexpr Seconds Day = 86'400;
constexpr Seconds Year = 365 * Day;

constexpr std::uint32_t NoDays = std::numeric_limits<std::uint32_t>::max();

/// The drawing modules of the catalogue, and the folder of the release whose files are looked at.
constexpr int FirstModule = 1;
constexpr int LastModule = 4;
constexpr const wchar_t* ReleaseFolder = L"R23";

Seconds MomentOf(const Clock& clock, const CalendarTime& time)
{
    const std::optional<Seconds> moment = clock.FromLocal(time);
    if (!moment) {
        throw PlatformError(ResultCode::InvalidArgument, L"The system cannot convert a date of the update reminder.");
    }
    return *moment;
}

/// The beginning of the current day.
Seconds TodayOf(const Clock& clock)
{
    const std::optional<CalendarTime> now = clock.ToLocal(clock.Now());
    if (!now) {
        throw PlatformError(ResultCode::InvalidArgument, L"The system does not tell the current date.");
    }
    return MomentOf(clock, {now->year, now->month, now->day, 0, 0, 0});
}

} // namespace

struct UpdateCheck::Schedule
{
    std::wstring key;
    Seconds none = 0;
    Seconds today = 0;
    std::int32_t days = 0;

    [[nodiscard]] Seconds Next() const { return today + Day * days; }
};

UpdateCheck::UpdateCheck(const Platform& platform, InstallationSettings& settings, std::wstring address)
    : m_platform(platform), m_settings(settings), m_address(std::move(address))
{}

void UpdateCheck::RunUpdateCheck()
{
    if (ToLowerCase(m_settings.ReadLocalAppPath()) != ToLowerCase(m_settings.ReadNetworkAppPath())) {
        return; // a workstation whose application folder is elsewhere; that place is kept up to date by its own
    }
    Schedule schedule;
    schedule.key = InstallationSettings::UpdateReminderKey();
    schedule.none = MomentOf(m_platform.clock, NoUpdateDate);
    schedule.today = TodayOf(m_platform.clock);
    std::uint32_t days = m_settings.ReadUpdateDays(schedule.key, NoDays);
    if (days == NoDays) {
        days = DefaultUpdateDays;
        m_settings.WriteUpdateDays(schedule.key, days);
    }
    schedule.days = static_cast<std::int32_t>(days);
    if (!IsDue(schedule)) {
        return;
    }
    const Seconds published = FetchPublishedUpdateDate(schedule.none);
    if (published != schedule.none && published > NewestInstalledFile(schedule.none)) {
        AskAboutUpdate(schedule);
    }
}

bool UpdateCheck::IsDue(const Schedule& schedule)
{
    const Seconds stored = m_settings.ReadUpdateDate(schedule.key, schedule.none);
    if (stored != schedule.none && schedule.today < stored) {
        return false;
    }
    // Before anything else: whatever follows, the next reminder comes. The first run does no more than this.
    m_settings.WriteUpdateDate(schedule.key, schedule.Next());
    return stored != schedule.none;
}

void UpdateCheck::AskAboutUpdate(const Schedule& schedule)
{
    MessageBoxes& messages = m_platform.messages;
    const Answer answer =
        messages.Show(WindowId::None,
                      Fill(L"A newer version of %s is available.\n\nDo you want to download it from the website?\n\n"
                           L"If you Cancel, you will not be prompted again.",
                           {ProductTitle}),
                      ProductTitle, MessageStyle::TopMostQuestion);
    switch (answer) {
    case Answer::No:
        messages.Show(WindowId::None,
                      Fill(L"You will be reminded in %d days of a new update.", {std::to_wstring(schedule.days)}),
                      ProductTitle, MessageStyle::TopMostInformation);
        return;
    case Answer::Cancel:
        // A year, though the message says for ever. Deliberate.
        m_settings.WriteUpdateDate(schedule.key, schedule.today + Year);
        messages.Show(WindowId::None, L"You will not be reminded of any new updates.", ProductTitle,
                      MessageStyle::TopMostInformation);
        return;
    default: m_platform.shell.Open(m_address); return;
    }
}

Seconds UpdateCheck::FetchPublishedUpdateDate(Seconds fallback)
{
    return PublishedDate(ReadPageText(m_platform.web, m_platform.codePage, m_address), fallback, m_platform.clock,
                         m_address);
}

void UpdateCheck::NewestFileTime(Seconds& newest, const std::wstring& pattern) const
{
    m_platform.files.Search(pattern, [&newest](const FoundFile& file) {
        if (file.modified) {
            newest = std::max(newest, *file.modified);
        }
    });
}

std::vector<std::wstring> UpdateCheck::ScanList() const
{
    const std::wstring application = m_settings.ReadNetworkAppPath();
    const std::wstring programs = application.empty() ? L"*.exe" : application + L"Applications\\*.exe";
    const std::wstring common = CommonDesignerFolder(m_settings, ReleaseFolder);
    std::vector<std::wstring> patterns = {programs, common + L"*.arx", CommonDesignerFolder(m_settings, {}) + L"*.exe",
                                          common + L"*.fas"};
    for (int module = FirstModule; module <= LastModule; ++module) {
        patterns.push_back(ToolDesignerFolder(m_settings, module, ReleaseFolder) + L"*.fas");
    }
    constexpr std::size_t Repetitions = 5;
    patterns.insert(patterns.end(), Repetitions, programs);
    return patterns;
}

Seconds UpdateCheck::NewestInstalledFile(Seconds atLeast) const
{
    Seconds newest = atLeast;
    std::vector<std::wstring> scanned;
    for (const std::wstring& pattern : ScanList()) {
        // What was looked at already cannot raise the maximum again.
        if (std::find(scanned.begin(), scanned.end(), pattern) == scanned.end()) {
            NewestFileTime(newest, pattern);
            scanned.push_back(pattern);
        }
    }
    return newest;
}

} // namespace sitekeeper
