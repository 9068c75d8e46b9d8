// The date that the vendor's page publishes.
#include "update/PublishedUpdate.h"

#include "platform/PlatformError.h"
#include "support/MemoryWebSession.h"
#include "support/StillClock.h"
#include "support/Utf8CodePage.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>

namespace sitekeeper {
namespace {

constexpr Seconds UnpublishedDate = 12345;
constexpr const wchar_t* PageAddress = L"https://updates.example/software-updates/";

class PublishedUpdate : public testing::Test
{
protected:
    /// The date, read from the page as it comes and from the same page behind a character that is not plain.
    [[nodiscard]] Seconds Read(const std::wstring& page) const
    {
        PageText plain;
        plain.Append(std::string(page.begin(), page.end()), Utf8CodePage());
        const Seconds wide = PublishedDate(PageText(L"\u00E9" + page), UnpublishedDate, m_clock, PageAddress);
        EXPECT_EQ(PublishedDate(plain, UnpublishedDate, m_clock, PageAddress), wide) << testing::PrintToString(page);
        return wide;
    }

    /// The code that the page raises; Ok when it raises none.
    ResultCode Refusal(const std::wstring& page)
    {
        try {
            static_cast<void>(Read(page));
        } catch (const PlatformError& error) {
            m_message = error.Message();
            return error.Code();
        }
        return ResultCode::Ok;
    }

    TimeZoneScope m_zone{Utc};
    StillClock m_clock;
    std::wstring m_message;
};

TEST_F(PublishedUpdate, IsTheBeginningOfTheDayBehindTheKey)
{
    constexpr Seconds June15 = 1686787200; // 2023-06-15 00:00:00 UTC
    EXPECT_EQ(Read(L"<a href=\"LX_2023_Plus_Update2023_06_15.exe\">"), June15);
    EXPECT_EQ(Read(L"lx_2023_plus_update2023_6_15."), June15);
    EXPECT_EQ(Read(L"LX_2023_PLUS_UPDATE \t2023_ 06_ 15 and more._"), June15);
    EXPECT_EQ(Read(L"LX_2023_Plus_Update2023x_06y_15z_99."), June15);
    EXPECT_EQ(Read(L"LX_2023_Plus_Update2023_06_15.LX_2023_Plus_Update2024_01_01."), June15);
    EXPECT_EQ(Read(L"_2023_LX_2023_LX_2023_2023_LX_2023_Plus_Update2023_06_15."), June15);
}

TEST_F(PublishedUpdate, IsTheFallbackWhereThePageNamesNone)
{
    for (const wchar_t* const page :
         {L"", L"no such key", L"LX_2023_Plus_Updat2023_06_15.", L"LX_2023_Plus_Update2023_06_15",
          L"LX_2023_Plus_Update.2023_06_15", L"LX_2023_Plus_Update2023_06.15", L"LX_2023_Plus_Update2023.",
          L"LX_2022_Plus_Update2023_06_15.", L"_2023_Plus_Update2023_06_15.", L"X_2023_Plus_Update2023_06_15.",
          L"LX_2023_", L"LX_2023_Plus_Update"}) {
        EXPECT_EQ(Read(page), UnpublishedDate) << testing::PrintToString(page);
    }
}

TEST_F(PublishedUpdate, RefusesADateThatIsNone)
{
    for (const wchar_t* const page :
         {L"LX_2023_Plus_Update_2023_06_15.", L"LX_2023_Plus_Update1969_06_15.", L"LX_2023_Plus_Update2023_0_15.",
          L"LX_2023_Plus_Update2023_13_15.", L"LX_2023_Plus_Update2023_06_0.", L"LX_2023_Plus_Update2023_06_32.",
          L"LX_2023_Plus_Update-2023_06_15.", L"LX_2023_Plus_Update2023_-6_15.", L"LX_2023_Plus_Update__."}) {
        EXPECT_EQ(Refusal(page), ResultCode::Fail) << testing::PrintToString(page);
    }
    EXPECT_EQ(m_message, std::wstring(L"The update page ") + PageAddress + L" names an invalid date: \"__\".");
}

TEST_F(PublishedUpdate, RefusesADayThatCannotBeConverted)
{
    EXPECT_EQ(Refusal(L"LX_2023_Plus_Update3001_06_15."), ResultCode::InvalidArgument);
    EXPECT_EQ(Refusal(L"LX_2023_Plus_Update99999999999_06_15."), ResultCode::InvalidArgument);
    EXPECT_EQ(Read(L"LX_2023_Plus_Update2023_02_31."), 1677801600); // 3 March: days beyond the month carry over
}

TEST_F(PublishedUpdate, BeginsByTheLocalCalendar)
{
    const TimeZoneScope berlin(Berlin);
    EXPECT_EQ(Read(L"LX_2023_Plus_Update2023_06_15."), 1686787200 - 2 * 3600);
    const TimeZoneScope saoPaulo(SaoPaulo);
    // Midnight of that day does not exist; the system makes of it what it makes of it, but no error.
    EXPECT_EQ(Refusal(L"LX_2023_Plus_Update2018_11_04."), ResultCode::Ok);
}

TEST(ReadPageText, TakesThePageInPiecesOfFiftyBytes)
{
    MemoryWebSession web;
    const Utf8CodePage codePage;
    web.Publish(PageAddress, std::string(49, 'a') + "\xC3\xA9" + std::string(48, 'b') + "c");
    // A character cut in two by the end of a piece is lost, and nothing else.
    EXPECT_EQ(ReadPageText(web, codePage, PageAddress).Text(),
              std::wstring(49, L'a') + L"\uFFFD\uFFFD" + std::wstring(48, L'b') + L"c");
    EXPECT_EQ(ReadPageText(web, codePage, L"https://elsewhere.example/").Text(), L"");
}

TEST(ReadPageText, KeepsPlainPiecesBesideOthers)
{
    MemoryWebSession web;
    const Utf8CodePage codePage;
    std::string page(50, 'a'); // a piece for each kind
    page += "\xC3\xA9" + std::string(48, 'b') + std::string(50, 'c') + "\xC3\xA9";
    web.Publish(PageAddress, page);
    EXPECT_EQ(ReadPageText(web, codePage, PageAddress).Text(),
              std::wstring(50, L'a') + L"\u00E9" + std::wstring(48, L'b') + std::wstring(50, L'c') + L"\u00E9");
    for (std::size_t place = 0; place < 20; ++place) { // each place of a word and its rest
        std::string piece(20, 'x');
        piece[place] = '\x80';
        PageText text;
        text.Append(piece, codePage);
        EXPECT_EQ(text.Text()[place], L'\uFFFD') << place;
    }
}

TEST(ReadPageText, EndsAPieceAtAZeroByte)
{
    MemoryWebSession web;
    const Utf8CodePage codePage;
    web.Publish(PageAddress, std::string("ab\0cd", 5) + std::string(45, 'x') + "next");
    EXPECT_EQ(ReadPageText(web, codePage, PageAddress).Text(), L"abnext");
}

TEST(ReadPageText, CutsAPageThatNeverEnds)
{
    MemoryWebSession web;
    web.PublishEndless(PageAddress);
    const Utf8CodePage codePage;
    const std::wstring text = ReadPageText(web, codePage, PageAddress).Text();
    EXPECT_GE(text.size(), LargestPage);
    EXPECT_LT(text.size(), LargestPage + 50);
}

} // namespace
} // namespace sitekeeper
