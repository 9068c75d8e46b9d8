// Printing: what the report says, and what comes of it when nothing can be printed.
#include "support/MainDialogFixture.h"

#include <windows.h>

#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int PrintCommand = 57607;
constexpr int SessionList = 1014;

class MainDialogPrintTest : public MainDialogTest
{
protected:
    /// Sends the command and waits until a printer was asked for.
    std::vector<DriverStep> PrintAnd(std::vector<DriverStep> before)
    {
        before.push_back(Choose(PrintCommand));
        before.push_back(Await("wait for the print dialog", [this](const MainDialogPage&) {
            return !memory.printer.AllAsked().empty() && memory.printer.OpenDocuments() == 0;
        }));
        before.push_back(Do("look at the owner", [this](const MainDialogPage& page) {
            EXPECT_EQ(memory.printer.AllAsked().back(), IdOf(page.Window()));
            EXPECT_TRUE(page.IsOpen());
        }));
        before.push_back(Press(IDCANCEL));
        return before;
    }

    DriverStep AddSession(const std::wstring& name, bool isSelected)
    {
        return Do("add a session", [name, isSelected](const MainDialogPage& page) {
            const HWND list = page.Control(SessionList);
            const LRESULT index = ::SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
            if (isSelected) {
                ::SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
            }
        });
    }

    /// All that was printed, page after page, in the one document.
    [[nodiscard]] std::wstring Printed() const
    {
        std::wstring text;
        EXPECT_THAT(memory.printer.AllDocuments(), SizeIs(1));
        for (const MemoryPrinter::Document& document : memory.printer.AllDocuments()) {
            EXPECT_EQ(document.state, MemoryPrinter::DocumentState::Ended);
            EXPECT_EQ(document.name, L"SiteKeeper");
            for (const std::wstring& page : document.pages) {
                text += page;
            }
        }
        return text;
    }

    [[nodiscard]] static std::wstring Report(const std::wstring& session)
    {
        return L"\n\t \n\tDate:\t06-May-2024 7:08am\n\n\tProgram Path:\tC:\\Suite\\\n"
               L"\tApplication Path:\tN:\\Suite\\\n\tDatafiles Path:\tN:\\Suite\\Data\\\n\n"
               L"\tAutoCAD Session:\t" +
               session + L"\n";
    }
};

TEST_F(MainDialogPrintTest, PrintsTheSettingsWithoutASession)
{
    EXPECT_EQ(Run(PrintAnd({})), IDCANCEL);
    EXPECT_EQ(Printed(), Report(L""));
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_F(MainDialogPrintTest, PrintsWhatStandsOnTheScreen)
{
    Run(PrintAnd({Do("type",
                     [](const MainDialogPage& page) {
                         page.Enter(ApplicationField, L"N:\\New");
                         page.Enter(DatafilesField, L"");
                         ::SetWindowTextW(page.Window(), L"Site Keeper (shown)");
                     }),
                  AddSession(L"another", false), AddSession(L"Main \u0416", true)}));
    EXPECT_EQ(Printed(), L"\n\tSite Keeper (shown)\n\tDate:\t06-May-2024 7:08am\n\n\tProgram Path:\tC:\\Suite\\\n"
                         L"\tApplication Path:\tN:\\New\n\tDatafiles Path:\t\n\n\tAutoCAD Session:\tMain \u0416\n");
    EXPECT_EQ(StoredFolders(), (InstallationFolders{L"C:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Data\\"}));
}

TEST_F(MainDialogPrintTest, PrintsNoSessionThatIsOnlyListed)
{
    Run(PrintAnd({AddSession(L"listed", false)}));
    EXPECT_EQ(Printed(), Report(L""));
}

TEST_F(MainDialogPrintTest, PrintsASessionOfAnyLengthOnAsManyPagesAsItTakes)
{
    std::wstring session;
    for (int word = 0; word < 5000; ++word) {
        session += L"word" + std::to_wstring(word) + L" ";
    }
    Run(PrintAnd({AddSession(session, true)}));
    EXPECT_TRUE(Printed() == Report(session));
    EXPECT_GT(memory.printer.AllDocuments().front().pages.size(), 10U);
}

/// Answers the first question for the selected session with "none".
LRESULT CALLBACK ForgetOnce(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR /*data*/)
{
    if (message == CB_GETCURSEL) {
        ::RemoveWindowSubclass(window, &ForgetOnce, id);
        return CB_ERR;
    }
    return ::DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(MainDialogPrintTest, AsksTheSessionListASecondTime)
{
    Run(PrintAnd({AddSession(L"second", true), Do("forget once", [](const MainDialogPage& page) {
                      EXPECT_NE(::SetWindowSubclass(page.Control(SessionList), &ForgetOnce, 7, 0), FALSE);
                  })}));
    EXPECT_EQ(Printed(), Report(L"second"));
}

TEST_F(MainDialogPrintTest, AsksForTheTimeOnce)
{
    int asked = 0;
    m_clock.onNow = [&asked] { return 60 * ++asked; };
    Run(PrintAnd({Do("count", [&asked](const MainDialogPage&) { asked = 0; })}));
    EXPECT_EQ(asked, 1);
    EXPECT_THAT(Printed(), HasSubstr(L"Date:\t01-Jan-1970 12:01am\n"));
}

TEST_F(MainDialogPrintTest, SaysNothingWhenTheDialogIsCancelled)
{
    memory.printer.Answer(MemoryPrinter::DialogAnswer::Cancel);
    const State before = memory.CurrentState();
    State during;
    std::vector<DriverStep> steps = PrintAnd({});
    steps.insert(steps.end() - 1, Do("look", [&](const MainDialogPage&) { during = memory.CurrentState(); }));
    EXPECT_EQ(Run(std::move(steps)), IDCANCEL);
    EXPECT_EQ(Removed(before, during), State());
    EXPECT_THAT(memory.printer.AllDocuments(), IsEmpty());
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_F(MainDialogPrintTest, SaysNothingWhenAPageTakesNothing)
{
    memory.printer.Load({.height = 9, .lineHeight = 10, .columns = 80});
    Run(PrintAnd({}));
    EXPECT_EQ(memory.printer.AllDocuments().front().state, MemoryPrinter::DocumentState::Aborted);
    EXPECT_THAT(memory.messages.Shown(), IsEmpty());
}

TEST_F(MainDialogPrintTest, PrintsAgainAndAgain)
{
    std::vector<DriverStep> steps;
    for (std::size_t time = 1; time <= 3; ++time) {
        steps.push_back(Choose(PrintCommand));
        steps.push_back(Await("wait for the document", [this, time](const MainDialogPage&) {
            return memory.printer.AllDocuments().size() == time && memory.printer.OpenDocuments() == 0;
        }));
    }
    steps.push_back(Press(IDCANCEL));
    Run(std::move(steps));
    for (const MemoryPrinter::Document& document : memory.printer.AllDocuments()) {
        EXPECT_THAT(document.pages, ElementsAre(Report(L"")));
    }
}

TEST_F(MainDialogPrintTest, ReportsATimeWithoutACalendar)
{
    memory.messages.Expect();
    m_clock.onNow = [] { return Seconds{-1}; };
    Run({Choose(PrintCommand),
         Await("wait for the report of the error",
               [this](const MainDialogPage&) { return memory.messages.Shown().size() == 1; }),
         Do("look", [](const MainDialogPage& page) { EXPECT_TRUE(page.IsOpen()); }), Press(IDCANCEL)});
    ASSERT_THAT(memory.messages.Shown(), SizeIs(1));
    EXPECT_THAT(memory.messages.Shown().front().text, HasSubstr(L"0x80070057"));
    EXPECT_THAT(memory.printer.AllAsked(), IsEmpty());
}

} // namespace
} // namespace sitekeeper
