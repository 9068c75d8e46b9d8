// What is done for AutoCAD, with each of its calls of the platform failing in turn.
#include "autocad/OemInstaller.h"
#include "autocad/TrustedPathKeys.h"
#include "autocad/TrustedPaths.h"
#include "PlatformFailures.h"
#include "support/AutoCADTree.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

const std::wstring FirstKey = PathsKey(L"R21.0", L"A");
const std::wstring SecondKey = PathsKey(L"R24.0", L"B");
const std::wstring ThirdKey = PathsKey(L"R24.0", L"C");

constexpr const wchar_t* Done = L"The ORIVEL LX file paths have been added to the AutoCAD Trusted Paths. ";

/// Three products; the first two hold their folder, the second behind the place where the search in the first stops.
void Prepare(MemoryPlatform& memory)
{
    memory.registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", L"S");
    AddProduct(memory.registry, L"R21.0", L"A", L"S\\Designer\\common\\R21");
    AddProduct(memory.registry, L"R24.0", L"B", L"C:\\A;C:\\B;C:\\C;C:\\D;C:\\E;S\\Designer\\common\\R24");
    AddProduct(memory.registry, L"R24.0", L"C", L"C:\\Z");
}

/// A name that cannot be read is skipped; the status is the last step's.
int EnumerateSubKeys()
{
    Texts names;
    RegistryStatus status{};
    const Sweep sweep{[](MemoryPlatform& memory) {
                          for (const wchar_t* const name : {L"K\\a", L"K\\b", L"K\\c"}) {
                              memory.registry.AddKey(Hive::LocalMachine, name);
                          }
                      },
                      [&](const Platform& ports) {
                          names = {L"from before"};
                          status = EnumRegistrySubKeys(ports.registry, L"K", names);
                      },
                      [&](const FaultedRun& run) {
                          const Texts left[] = {{}, {L"b", L"c"}, {L"a", L"c"}, {L"a", L"b"}};
                          ASSERT_LE(run.number, 4);
                          EXPECT_EQ(names, left[run.number - 1]);
                          const bool isLast = run.number == 1 || run.number == 4;
                          EXPECT_EQ(status, isLast ? InjectedStatus : RegistryStatus::Success);
                      }};
    const int points = SweepFailures(sweep); // the opening and three names
    EXPECT_EQ(names, (Texts{L"a", L"b", L"c"}));
    EXPECT_EQ(status, RegistryStatus::Success);
    return points;
}

/// Nothing is lost but what failed.
int FindProducts()
{
    Texts keys;
    Texts releases;
    const Sweep sweep{
        Prepare, [&](const Platform& ports) { FindAutoCADTrustedPathKeys(ports.registry, keys, releases); },
        [&](const FaultedRun& run) {
            const struct
            {
                const wchar_t* call;
                Texts keys;
                Texts releases;
            } rows[] = {
                {L"sub-keys of HKLM\\Software\\Autodesk\\AutoCAD", {}, {}},
                {L"sub-key 0 of HKLM\\Software\\Autodesk\\AutoCAD", {SecondKey, ThirdKey}, {L"R24", L"R24"}},
                {L"sub-key 1 of HKLM\\Software\\Autodesk\\AutoCAD", {FirstKey}, {L"R21"}},
                {L"sub-keys of HKLM\\Software\\Autodesk\\AutoCAD\\R21.0", {SecondKey, ThirdKey}, {L"R24", L"R24"}},
                {L"sub-key 0 of HKLM\\Software\\Autodesk\\AutoCAD\\R21.0", {SecondKey, ThirdKey}, {L"R24", L"R24"}},
                {L"read A", {SecondKey, ThirdKey}, {L"R24", L"R24"}},
                {L"sub-keys of HKLM\\Software\\Autodesk\\AutoCAD\\R24.0", {FirstKey}, {L"R21"}},
                {L"sub-key 0 of HKLM\\Software\\Autodesk\\AutoCAD\\R24.0", {FirstKey, ThirdKey}, {L"R21", L"R24"}},
                {L"sub-key 1 of HKLM\\Software\\Autodesk\\AutoCAD\\R24.0", {FirstKey, SecondKey}, {L"R21", L"R24"}},
                {L"read B", {FirstKey, ThirdKey}, {L"R21", L"R24"}},
                {L"read C", {FirstKey, SecondKey}, {L"R21", L"R24"}},
            };
            ASSERT_LE(run.number, static_cast<int>(std::size(rows)));
            const auto& row = rows[run.number - 1];
            EXPECT_EQ(keys, row.keys);
            EXPECT_EQ(releases, row.releases);
            EXPECT_EQ(run.after, run.before);
            EXPECT_FALSE(run.raised);
            const bool isRead = Is(run, L"read ");
            EXPECT_EQ(isRead, std::wstring(row.call).starts_with(L"read "));
            EXPECT_TRUE(isRead || run.failed == row.call) << row.call;
        }};
    const int points = SweepFailures(sweep);
    EXPECT_EQ(keys, (Texts{FirstKey, SecondKey, ThirdKey}));
    return points;
}

/// What a run leaves in the three products, and whether it ended with the error.
struct Left
{
    std::wstring first;
    std::wstring second;
    std::wstring third;
    bool hasRaised = false;
};

/// Goes on with what could be read; a search that cannot begin ends it.
int ExtendTheTrustedPaths()
{
    const std::wstring a = L"S\\Designer\\common\\R21";
    const std::wstring b = L"C:\\A;C:\\B;C:\\C;C:\\D;C:\\E;S\\Designer\\common\\R24";
    const std::wstring c = L"C:\\Z";
    const std::wstring cDone = c + L";" + FiveFolders(L"S", L"R24");
    // The calls in their order: the application path, the walk's eleven as above, then a read for each product and the
    // third one's write.
    const Left rows[] = {
        {a + L";" + FiveFolders(L"", L"R21"), b, c, true}, // no folder matches: the first product is written
        {a, b, c, false},                                  // no release
        {a, b, cDone, false},                              // the second release alone
        {a, b, c, false},                                  // the first release alone
        {a, b, cDone, false},                              // the first release's products
        {a, b, cDone, false},                              // the name of its one product
        {a, b, cDone, false},                              // that one's paths
        {a, b, c, false},                                  // the second release's products
        {a, b, cDone, false},                              // the name of the second product
        {a, b, c, false},                                  // the name of the third product
        {a, b, cDone, false},                              // the second product's paths
        {a, b, c, false},                                  // the third product's paths
        {FiveFolders(L"S", L"R21"), b, c, true},           // the paths that were there a moment ago count as empty
        {a, FiveFolders(L"S", L"R24"), c, true},           // likewise
        {a, b, FiveFolders(L"S", L"R24"), false},          // likewise
        {a, b, c, false},                                  // the write, at whose result nobody looks
        {a, b, cDone, false},                              // the message that all is done
    };
    Texts keys;
    Texts releases;
    const auto prepare = [](MemoryPlatform& memory) {
        Prepare(memory);
        memory.messages.AnswerAll(Answer::Ok);
    };
    const Sweep sweep{prepare,
                      [&](const Platform& ports) {
                          // As the command does, which tells of the end only where it comes.
                          AddTrustedPaths(ports.registry, keys, releases);
                          ports.messages.Show(WindowId::None, Done, L"Site Keeper", MessageStyle::Ok);
                      },
                      [&](const FaultedRun& run) {
                          ASSERT_LE(run.number, static_cast<int>(std::size(rows)));
                          const Left& left = rows[run.number - 1];
                          MemoryPlatform expected;
                          Prepare(expected);
                          AddProduct(expected.registry, L"R21.0", L"A", left.first);
                          AddProduct(expected.registry, L"R24.0", L"B", left.second);
                          AddProduct(expected.registry, L"R24.0", L"C", left.third);
                          if (!left.hasRaised && !Is(run, L"show ")) {
                              expected.messages.AnswerAll(Answer::Ok);
                              expected.messages.Show(WindowId::None, Done, L"Site Keeper", MessageStyle::Ok);
                          }
                          EXPECT_EQ(run.after, expected.CurrentState());
                          EXPECT_EQ(run.raised,
                                    left.hasRaised ? std::optional(ResultCode::InvalidArgument) : std::nullopt);
                      }};
    return SweepFailures(sweep);
}

int InstallTheOemEngine()
{
    const Sweep sweep{[](MemoryPlatform& memory) {
                          SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Program, L"C:\\Suite\\");
                          memory.folders.ExpectChoice(L"D:\\I");
                          memory.processes.AddProgram(L"D:\\I\\setup.exe");
                          memory.messages.AnswerAll(Answer::Ok);
                      },
                      [](const Platform& ports) {
                          if (const auto setup = ChooseOemSetup(SettingsOn(ports), ports.folders)) {
                              StartOemSetup(ports.processes, ports.messages, WindowId::None, L"SiteKeeper", *setup);
                          }
                      },
                      [](const FaultedRun& run) {
                          EXPECT_FALSE(run.raised);
                          const State added = Added(run.before, run.after);
                          if (Is(run, L"read ")) {
                              EXPECT_EQ(added, State{L"started D:\\I\\\\setup.exe : /t /qb /c AOEM: "
                                                     L"INSTALLDIR=\"\\Engine\""});
                          } else if (Is(run, L"choose ")) {
                              EXPECT_EQ(added, State{});
                          } else {
                              EXPECT_TRUE(Is(run, L"start "));
                              EXPECT_EQ(added, State{L"box SiteKeeper: Error creating process:\nD:\\I\\\\setup.exe"});
                          }
                          EXPECT_EQ(Removed(run.before, run.after), State{});
                      }};
    return SweepFailures(sweep);
}

int MissTheOemEngine()
{
    const Sweep sweep{
        [](MemoryPlatform& memory) { memory.messages.AnswerAll(Answer::Ok); },
        [](const Platform& ports) {
            StartOemSetup(ports.processes, ports.messages, WindowId::None, L"SiteKeeper", {L"D:\\setup.exe", L"/t"});
        },
        [](const FaultedRun& run) {
            EXPECT_FALSE(run.raised);
            const State told{L"box SiteKeeper: Error creating process:\nD:\\setup.exe"};
            EXPECT_EQ(run.after == run.before, Is(run, L"show "));
            EXPECT_EQ(Added(run.before, run.after), Is(run, L"show ") ? State{} : told);
        }};
    return SweepFailures(sweep);
}

} // namespace

SweptOperations AutoCADOperations()
{
    return {{"enumerate sub-keys", EnumerateSubKeys},
            {"find the AutoCAD products", FindProducts},
            {"add the trusted paths", ExtendTheTrustedPaths},
            {"install the OEM engine", InstallTheOemEngine},
            {"miss the OEM installer", MissTheOemEngine}};
}

} // namespace sitekeeper
