// Text on pages: what goes on which, and what becomes of a document when a page fails.
#include "maindlg/PrintText.h"

#include "support/MemoryPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace sitekeeper {
namespace {

using Paper = MemoryPrinter::Paper;
using DocumentState = MemoryPrinter::DocumentState;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto Owner = WindowId{42};

std::wstring Joined(const std::vector<std::wstring>& pages)
{
    std::wstring text;
    for (const std::wstring& page : pages) {
        text += page;
    }
    return text;
}

class PrintTextTest : public testing::Test
{
protected:
    bool Print(std::wstring_view text) { return PrintText(printer, Owner, L"SiteKeeper", text); }
    /// The one document that was printed on.
    [[nodiscard]] const MemoryPrinter::Document& Document() const { return printer.AllDocuments().at(0); }

    MemoryPrinter printer;
};

TEST_F(PrintTextTest, AsksForNoPrinterWhereThereIsNothingToPrint)
{
    EXPECT_FALSE(Print(L""));
    EXPECT_THAT(printer.AllAsked(), IsEmpty());
}

TEST_F(PrintTextTest, PrintsNothingWhenTheDialogIsCancelled)
{
    printer.Answer(MemoryPrinter::DialogAnswer::Cancel);
    EXPECT_FALSE(Print(L"text"));
    EXPECT_THAT(printer.AllAsked(), ElementsAre(Owner));
    EXPECT_THAT(printer.Listing(), IsEmpty());
}

TEST_F(PrintTextTest, PutsAShortTextOnOnePage)
{
    EXPECT_TRUE(Print(L"\n\tone\n\ttwo\n"));
    EXPECT_THAT(printer.AllAsked(), ElementsAre(Owner));
    ASSERT_THAT(printer.AllDocuments(), SizeIs(1));
    EXPECT_EQ(Document().name, L"SiteKeeper");
    EXPECT_EQ(Document().state, DocumentState::Ended);
    EXPECT_THAT(Document().pages, ElementsAre(L"\n\tone\n\ttwo\n"));
    EXPECT_EQ(printer.OpenDocuments(), 0);
}

TEST_F(PrintTextTest, GoesOnWhereThePageBeforeEnded)
{
    // Two lines of four are lower; one character more is tried last.
    printer.Load({.height = 25, .lineHeight = 10, .columns = 4});
    EXPECT_TRUE(Print(L"abcdefghijklmnop"));
    EXPECT_EQ(Document().state, DocumentState::Ended);
    EXPECT_THAT(Document().pages, ElementsAre(L"abcdefghi", L"jklmnop"));
}

TEST_F(PrintTextTest, PutsOnAPageWhatIsLowerThanIt)
{
    // Three lines of four characters: 30 high.
    const struct
    {
        int pageHeight;
        std::vector<std::wstring> pages;
    } rows[] = {
        {31, {L"abcdefghijkl"}},      // all of it is lower
        {30, {L"abcdefghi", L"jkl"}}, // as high as the page: what is tried then is taken
        {29, {L"abcdefgh", L"ijkl"}}, // two lines are lower
        {21, {L"abcdefgh", L"ijkl"}},
        {20, {L"abcdef", L"ghijk", L"l"}}, // as high as the page again
        {11, {L"abcde", L"fghi", L"jkl"}}, // one line is lower, and one character more was tried last
        {10, {L"abc", L"defg", L"hi", L"j", L"k", L"l"}},
        {9, {}}, // not even one character
        {0, {}},
        {-1, {}},
    };
    for (const auto& row : rows) {
        MemoryPrinter fresh;
        fresh.Load({.height = row.pageHeight, .lineHeight = 10, .columns = 4});
        EXPECT_TRUE(PrintText(fresh, Owner, L"SiteKeeper", L"abcdefghijkl")) << row.pageHeight;
        const MemoryPrinter::Document& document = fresh.AllDocuments().at(0);
        EXPECT_EQ(document.pages, row.pages) << row.pageHeight;
        EXPECT_EQ(document.state, row.pages.empty() ? DocumentState::Aborted : DocumentState::Ended) << row.pageHeight;
        EXPECT_EQ(fresh.OpenDocuments(), 0);
    }
}

TEST_F(PrintTextTest, AbortsWhereALaterPageTakesNothing)
{
    // A page that begins with the end of a line has two lines at once.
    printer.Load({.height = 15, .lineHeight = 10, .columns = 4});
    EXPECT_TRUE(Print(L"abcd\n\nefgh"));
    EXPECT_EQ(Document().state, DocumentState::Aborted);
    EXPECT_THAT(Document().pages, ElementsAre(L"abcd"));
    EXPECT_EQ(printer.OpenDocuments(), 0);
}

TEST_F(PrintTextTest, PrintsEveryCharacterOnceWhateverThePaper)
{
    std::mt19937 random(20240506);
    for (int round = 0; round < 2'000; ++round) {
        std::wstring text;
        for (std::size_t length = 1 + random() % 300; text.size() < length;) {
            constexpr std::wstring_view Characters = L"abc \t\n";
            text += Characters[random() % Characters.size()];
        }
        const int height = 10 + static_cast<int>(random() % 60);
        MemoryPrinter fresh;
        fresh.Load({.height = height, .lineHeight = 10, .columns = 1 + random() % 30});
        ASSERT_TRUE(PrintText(fresh, Owner, L"SiteKeeper", text));
        const MemoryPrinter::Document& document = fresh.AllDocuments().at(0);
        // A line's break as first character of a page makes that page two lines high.
        if (document.state == DocumentState::Ended) {
            ASSERT_EQ(Joined(document.pages), text) << round;
        } else {
            ASSERT_TRUE(text.starts_with(Joined(document.pages)));
            ASSERT_EQ(text.at(Joined(document.pages).size()), L'\n') << round;
            ASSERT_LT(height, 20) << round;
        }
    }
}

TEST(PrintTextWithoutMeasures, GoesOnOnePage)
{
    MemoryPlatform memory;
    memory.printer.Load({.height = 25, .lineHeight = 0, .columns = 4});
    EXPECT_TRUE(PrintText(memory.printer, Owner, L"Report", std::wstring(100'000, L'x')));
    EXPECT_THAT(memory.printer.AllDocuments().at(0).pages, ElementsAre(std::wstring(100'000, L'x')));
}

} // namespace
} // namespace sitekeeper
