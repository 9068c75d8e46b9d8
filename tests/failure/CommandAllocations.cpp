// What the main dialog's commands do, with each allocation failing in turn.
#include "AllocationFailures.h"
#include "app/ErrorReport.h"
#include "maindlg/PrintText.h"
#include "maindlg/SettingsReport.h"
#include "PausingPlatform.h"
#include "support/SuiteFixture.h"

#include <optional>

namespace sitekeeper {
namespace {

struct CommandWorld
{
    CommandWorld()
    {
        InstallShortcuts(platform.memory);
        platform.memory.messages.AnswerAll(Answer::Ok);
    }

    PausingPlatform platform;
    Platform ports = platform.Ports();
    InstallationSettings settings = platform.Settings();
    std::wstring text;
    std::optional<ApplyResult> result;
};

/// The component runtime is left, whatever happens.
int ApplyChanges()
{
    const TimeZoneScope zone(Utc);
    return SweepAllocations<CommandWorld>(
        [](CommandWorld& world) {
            world.result = ApplyInstallation(world.ports, world.settings, NewFolders, NewSchedule);
        },
        [](CommandWorld& world, Ending ending) {
            EXPECT_EQ(world.platform.memory.shell.ComponentDepth(), 0);
            EXPECT_EQ(world.result, ending == Ending::Done ? std::optional(ApplyResult::Applied) : std::nullopt);
        });
}

int ComposeTheReport()
{
    const TimeZoneScope zone(Utc);
    return SweepAllocations<CommandWorld>(
        [](CommandWorld& world) {
            const std::wstring stamp = PrintTimeStamp(world.ports.clock, world.ports.clock.Now());
            world.text = ComposeSettingsReport(L"a title of some length", stamp, NewFolders, L"a session");
        },
        [](CommandWorld& world, Ending ending) { EXPECT_EQ(world.text.empty(), ending == Ending::Raised); });
}

/// A document is ended or aborted, and not kept.
int PrintTwoPages()
{
    static const std::wstring text(5000, L'x');
    return SweepAllocations<CommandWorld>(
        [](CommandWorld& world) { PrintText(world.ports.printer, WindowId::None, L"Report", text); },
        [](CommandWorld& world, Ending) {
            EXPECT_EQ(world.platform.memory.printer.OpenDocuments(), 0);
            for (const MemoryPrinter::Document& document : world.platform.memory.printer.AllDocuments()) {
                EXPECT_NE(document.state, MemoryPrinter::DocumentState::Begun);
            }
        });
}

/// The one reporter raises nothing itself.
int SweepReport(const std::exception_ptr& error)
{
    return SweepAllocations<CommandWorld>(
        [&error](CommandWorld& world) { ReportError(world.ports.messages, WindowId::None, error); },
        [](CommandWorld&, Ending ending) { EXPECT_EQ(ending, Ending::Done); });
}

int ReportAnError()
{
    return SweepReport(std::make_exception_ptr(PlatformError(ResultCode::Fail, L"A sentence of some length.")));
}
int ReportThatThereIsNoMemory()
{
    return SweepReport(std::make_exception_ptr(std::bad_alloc()));
}

} // namespace

SweptOperations CommandAllocations()
{
    return {{"apply the changes", ApplyChanges},
            {"compose the report", ComposeTheReport},
            {"print two pages", PrintTwoPages},
            {"report an error", ReportAnError},
            {"report that there is no memory", ReportThatThereIsNoMemory}};
}

} // namespace sitekeeper
