#include "contract/PrinterWorld.h"

#include <gtest/gtest.h>
#include <string>

namespace sitekeeper {
namespace {

class PrinterContract : public testing::Test
{
protected:
    /// Prints so many pages and leaves the document as it is.
    std::unique_ptr<PrintDocument> Printed(int pages)
    {
        std::unique_ptr<PrintDocument> document = world->Choose(DialogAnswer::Ok);
        if (document == nullptr || !document->Begin(L"contract test")) {
            ADD_FAILURE() << "no document";
            return nullptr;
        }
        for (int page = 0; page < pages; ++page) {
            document->BeginPage();
            document->Draw(L"\n\tsome\ttext\n");
            EXPECT_TRUE(document->EndPage());
        }
        return document;
    }

    std::unique_ptr<PrinterWorld> world = MakePrinterWorld();
};

TEST_F(PrinterContract, GivesNothingWhenTheDialogIsCancelled)
{
    EXPECT_EQ(world->Choose(DialogAnswer::Cancel), nullptr);
    EXPECT_EQ(world->PagesThatCameOut(), std::nullopt);
}

TEST_F(PrinterContract, PrintsTheDocumentAtItsEnd)
{
    for (const int pages : {1, 3}) {
        const auto document = Printed(pages);
        ASSERT_NE(document, nullptr);
        document->End();
        EXPECT_EQ(world->PagesThatCameOut(), pages);
        world->TakePaperAway();
    }
}

TEST_F(PrinterContract, PrintsNothingOfWhatIsGivenUp)
{
    {
        const auto document = Printed(2);
        ASSERT_NE(document, nullptr);
        document->Abort();
        EXPECT_EQ(world->PagesThatCameOut(), std::nullopt);
    }
    Printed(2).reset(); // neither ended nor given up
    EXPECT_EQ(world->PagesThatCameOut(), std::nullopt);
}

TEST_F(PrinterContract, PrintsAgainAfterGivingUp)
{
    Printed(1).reset();
    const auto document = Printed(1);
    ASSERT_NE(document, nullptr);
    document->End();
    EXPECT_EQ(world->PagesThatCameOut(), 1);
}

TEST_F(PrinterContract, EndsNoPageWithoutADocument)
{
    const auto document = world->Choose(DialogAnswer::Ok);
    ASSERT_NE(document, nullptr);
    EXPECT_FALSE(document->EndPage());
}

TEST_F(PrinterContract, TellsHowHighATextStands)
{
    const auto document = world->Choose(DialogAnswer::Ok);
    ASSERT_NE(document, nullptr);
    const int line = document->Measure(L"one line");
    EXPECT_GT(line, 0);
    EXPECT_GT(document->PageHeight(), 10 * line);
    EXPECT_EQ(document->Measure(L"x"), line);
    EXPECT_EQ(document->Measure(L"\ttabs\tand\ttext"), line);
    EXPECT_EQ(document->Measure(L"one\ntwo"), 2 * line);
    EXPECT_EQ(document->Measure(L"one\n\nthree"), 3 * line);
    EXPECT_EQ(document->Measure(std::wstring_view(L"one\ntwo").substr(0, 3)), line) << "what follows does not count";
}

TEST_F(PrinterContract, BreaksLongLinesAtTheFullWidthEachTime)
{
    const auto document = world->Choose(DialogAnswer::Ok);
    ASSERT_NE(document, nullptr);
    std::wstring words;
    for (int word = 0; word < 500; ++word) {
        words += L"word ";
    }
    const int line = document->Measure(L"x");
    const int whole = document->Measure(words);
    EXPECT_GT(whole, 5 * line);
    EXPECT_LT(whole, 250 * line);
    EXPECT_EQ(document->Measure(L"x"), line);
    EXPECT_EQ(document->Measure(words), whole) << "the narrow text before must not narrow this one";
    EXPECT_GT(document->Measure(words + words), whole);
}

TEST_F(PrinterContract, LeavesNothingBehind)
{
    const auto everyWay = [this] {
        EXPECT_EQ(world->Choose(DialogAnswer::Cancel), nullptr);
        static_cast<void>(world->Choose(DialogAnswer::Ok));
        Printed(1).reset();
        if (const auto document = Printed(1)) {
            EXPECT_GT(document->Measure(L"x"), 0);
            document->End();
        }
    };
    for (int warmUp = 0; warmUp < 3; ++warmUp) { // in which the system sets up what it keeps
        everyWay();
    }
    const PrinterHoldings before = world->Holdings();
    constexpr unsigned Runs = 10;
    for (unsigned run = 0; run < Runs; ++run) {
        everyWay();
    }
    const PrinterHoldings after = world->Holdings();
    EXPECT_EQ(after.drawingObjects, before.drawingObjects);
    EXPECT_EQ(after.handles, before.handles + Runs * world->HandlesLostByGivingUp()); // each run gives up one document
    // Wine's print dialog itself loses some seventy bytes each time; what describes a printer takes three times as
    // many.
    constexpr std::size_t Lost = 5000;
    EXPECT_LT(after.memory, before.memory + Lost);
}

} // namespace
} // namespace sitekeeper
