// Any bytes as the vendor's page: the date of this product is read, not there, or refused with a message. What is read
// is the beginning of a day, and the page says so itself.
#include "fuzz/FuzzInput.h"
#include "platform/PlatformError.h"
#include "support/MemoryWebSession.h"
#include "support/StillClock.h"
#include "support/Utf8CodePage.h"
#include "update/PublishedUpdate.h"

#include <string>
#include <string_view>

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
    const std::wstring text = ReadPageText(web, Utf8CodePage(), Address);
    Require(text.size() <= size); // no byte becomes two characters
    const StillClock clock;
    try {
        const Seconds moment = PublishedDate(text, Fallback, clock, Address);
        Require(moment == Fallback || (moment >= 0 && moment % Day == 0));
        Require(moment == Fallback || PublishedDate(text + L"._.", Fallback, clock, Address) == moment);
        Require(moment == Fallback || PublishedDate(L"_._" + text, Fallback, clock, Address) == moment);
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
