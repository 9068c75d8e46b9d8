// Printing, with each of its calls of the platform failing in turn.
#include "maindlg/PrintText.h"
#include "maindlg/SettingsReport.h"
#include "PlatformFailures.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>
#include <map>

namespace sitekeeper {
namespace {

/// What a document is like after the failing call; nothing where none was begun.
State DocumentLeft(const FaultedRun& run)
{
    if (Is(run, L"page height") || Is(run, L"begin page") || Is(run, L"end page")) {
        return {L"printed Report, aborted"};
    }
    return Is(run, L"measure ") || Is(run, L"draw ") ? State{L"printed Report, ended"} : State{};
}

int PrintThreePages()
{
    constexpr std::wstring_view Text = L"abcdefghijklmnopqrst";
    bool isPrinted = false;
    std::map<std::wstring, int> kinds; // of failing calls
    const Sweep sweep{
        [](MemoryPlatform& memory) { memory.printer.Load({.height = 25, .lineHeight = 10, .columns = 4}); },
        [&](const Platform& ports) { isPrinted = PrintText(ports.printer, WindowId::None, L"Report", Text); },
        [&](const FaultedRun& run) {
            const std::wstring kind = run.failed.substr(0, run.failed.find_first_of(L"0123456789"));
            ++kinds[kind];
            EXPECT_EQ(isPrinted, kind != L"choose a printer");
            EXPECT_FALSE(run.raised);
            EXPECT_EQ(Added(run.before, run.after), DocumentLeft(run));
        }};
    const int points = SweepFailures(sweep);
    EXPECT_TRUE(isPrinted);
    EXPECT_EQ(kinds[L"choose a printer"], 1);
    EXPECT_EQ(kinds[L"begin document Report"], 1);
    EXPECT_EQ(kinds[L"page height"], 1);
    EXPECT_EQ(kinds[L"begin page"], 3);
    EXPECT_EQ(kinds[L"draw "], 3);
    EXPECT_EQ(kinds[L"end page"], 3);
    EXPECT_GE(kinds[L"measure "], 3);
    EXPECT_EQ(kinds.size(), 7U);
    return points;
}

/// The report from the time stamp to the last page, as the command does it.
int PrintTheReport()
{
    const TimeZoneScope zone(Utc);
    const Sweep sweep{[](MemoryPlatform& memory) { memory.printer.Load({}); },
                      [](const Platform& ports) {
                          const std::wstring stamp = PrintTimeStamp(ports.clock, ports.clock.Now());
                          PrintText(ports.printer, WindowId::None, L"Report",
                                    ComposeSettingsReport(L" ", stamp, {L"C:\\", L"N:\\", L"D:\\"}, L""));
                      },
                      [](const FaultedRun& run) {
                          EXPECT_EQ(run.raised,
                                    Is(run, L"to local") ? std::optional(ResultCode::InvalidArgument) : std::nullopt);
                          // A date that cannot be laid out is left out of the report.
                          const State ended{L"printed Report, ended"};
                          EXPECT_EQ(Added(run.before, run.after), Is(run, L"format") ? ended : DocumentLeft(run));
                      }};
    return SweepFailures(sweep);
}

} // namespace

SweptOperations PrintOperations()
{
    return {{"print three pages", PrintThreePages}, {"print the report", PrintTheReport}};
}

} // namespace sitekeeper
