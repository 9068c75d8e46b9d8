#include "update/PublishedUpdate.h"

#include "platform/PlatformError.h"
#include "text/Text.h"

#include <optional>

namespace sitekeeper {
namespace {

constexpr std::size_t PieceSize = 50;
constexpr std::wstring_view CaselessPart = UpdateKey.substr(2, 6);
static_assert(CaselessPart == L"_2023_"); // a part of the key without letters
constexpr int FirstYear = 1970;
constexpr int LastMonth = 12;
constexpr int LastDay = 31;

/// What follows the first `mark` in `text`; nothing without one.
std::optional<std::wstring_view> Behind(std::wstring_view text, wchar_t mark)
{
    const std::size_t place = text.find(mark);
    return place == std::wstring_view::npos ? std::nullopt : std::optional(text.substr(place + 1));
}

PlatformError BadPublishedDate(ResultCode code, const std::wstring& address, std::wstring_view date)
{
    constexpr std::size_t Shown = 40; // a page may hold anything
    return {code, Fill(L"The update page %s names an invalid date: \"%s\".", {address, date.substr(0, Shown)})};
}

} // namespace

PageText ReadPageText(WebSession& web, const CodePage& codePage, const std::wstring& address)
{
    PageText text;
    std::size_t size = 0;
    web.ReadPage(address, PieceSize, [&](std::string_view piece) {
        size += piece.size();
        text.Append(piece, codePage);
        return size < LargestPage;
    });
    return text;
}

Seconds PublishedDate(const PageText& page, Seconds fallback, const Clock& clock, const std::wstring& address)
{
    const std::optional<std::wstring> found = page.Between(UpdateKey, CaselessPart, L'.');
    if (!found) {
        return fallback;
    }
    const std::wstring_view date = *found;
    const std::optional<std::wstring_view> month = Behind(date, L'_');
    const std::optional<std::wstring_view> day = month ? Behind(*month, L'_') : std::nullopt;
    if (!day) {
        return fallback;
    }
    CalendarTime time;
    time.year = LeadingNumber(date);
    time.month = LeadingNumber(*month);
    time.day = LeadingNumber(*day);
    if (time.year < FirstYear || time.month < 1 || time.month > LastMonth || time.day < 1 || time.day > LastDay) {
        throw BadPublishedDate(ResultCode::Fail, address, date);
    }
    const std::optional<Seconds> moment = clock.FromLocal(time);
    if (!moment) {
        throw BadPublishedDate(ResultCode::InvalidArgument, address, date);
    }
    return *moment;
}

} // namespace sitekeeper
