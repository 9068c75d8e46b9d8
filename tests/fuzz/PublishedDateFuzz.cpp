// Any bytes as the vendor's page: the date of this product is read, not there, or refused with a message. What is read
// is the beginning of a day, and the page says so itself.
#include "fuzz/FuzzInput.h"
#include "platform/PlatformError.h"
#include "support/MemoryWebSession.h"
#include "support/StillClock.h"
#include "support/Utf8CodePage.h"
#include "text/Text.h"
#include "update/PublishedUpdate.h"

#include <algorithm>
#include <string>

namespace {

using namespace sitekeeper;

constexpr Seconds Fallback = -1; // no published day begins at this moment
constexpr const wchar_t* Address = L"https://updates.example/software-updates/";

void CheckPage(std::string page)
{
    constexpr Seconds Day = 86400;
    const std::size_t size = page.size();
    MemoryWebSession web;
    web.Publish(Address, std::move(page));
    const PageText collected = ReadPageText(web, Utf8CodePage(), Address);
    const std::wstring text = collected.Text();
    Require(text.size() <= size); // no byte becomes two characters
    const StillClock clock;
    try {
        const Seconds moment = PublishedDate(collected, Fallback, clock, Address);
        Require(moment == Fallback || (moment >= 0 && moment % Day == 0));
        // The naive way to the same date.
        const std::wstring lower = ToLowerCase(text);
        const std::size_t key = lower.find(ToLowerCase(UpdateKey));
        const std::size_t stop = key == std::wstring::npos ? key : lower.find(L'.', key + UpdateKey.size());
        Require(moment == Fallback || stop != std::wstring::npos);
        const std::wstring alone = L"\u00E9" + lower.substr(std::min(key, lower.size()));
        Require(PublishedDate(PageText(alone), Fallback, clock, Address) == moment);
    } catch (const PlatformError& error) {
        Require(error.Code() == ResultCode::Fail || error.Code() == ResultCode::InvalidArgument);
        Require(error.Message().find(Address) != std::wstring::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TimeZoneScope zone(Utc);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CheckPage(bytes);
    // The same input once more where the date stands: mutations then reach the numbers more often.
    CheckPage("LX_2023_Plus_Update" + bytes + ".");
    return 0;
}
