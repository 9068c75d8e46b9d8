// The rules of the trusted paths, with each of their calls of the registry failing in turn.
#include "autocad/TrustedPathKeys.h"
#include "autocad/TrustedPaths.h"
#include "support/AutoCADTree.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

const std::wstring FirstKey = PathsKey(L"R21.0", L"A");
const std::wstring SecondKey = PathsKey(L"R24.0", L"B");
const std::wstring ThirdKey = PathsKey(L"R24.0", L"C");

/// Three products; the first two hold their folder, the second behind the place where the search in the first stops.
void Prepare(MemoryPlatform& memory)
{
    memory.registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", L"S");
    AddProduct(memory.registry, L"R21.0", L"A", L"S\\Designer\\common\\R21");
    AddProduct(memory.registry, L"R24.0", L"B", L"C:\\A;C:\\B;C:\\C;C:\\D;C:\\E;S\\Designer\\common\\R24");
    AddProduct(memory.registry, L"R24.0", L"C", L"C:\\Z");
}

TEST(EnumRegistrySubKeysSweep, SkipsANameAndGivesTheLastStepsStatus)
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
    EXPECT_EQ(SweepFailures(sweep), 4); // the opening and three names
    EXPECT_EQ(names, (Texts{L"a", L"b", L"c"}));
    EXPECT_EQ(status, RegistryStatus::Success);
}

TEST(FindAutoCADTrustedPathKeysSweep, LosesNothingButWhatFailed)
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
    EXPECT_EQ(SweepFailures(sweep), 11);
    EXPECT_EQ(keys, (Texts{FirstKey, SecondKey, ThirdKey}));
}

/// What a run leaves in the three products, and whether it ended with the error.
struct Left
{
    std::wstring first;
    std::wstring second;
    std::wstring third;
    bool hasRaised = false;
};

TEST(AddTrustedPathsSweep, GoesOnWithWhatCouldBeRead)
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
    };
    Texts keys;
    Texts releases;
    const Sweep sweep{Prepare, [&](const Platform& ports) { AddTrustedPaths(ports.registry, keys, releases); },
                      [&](const FaultedRun& run) {
                          ASSERT_LE(run.number, static_cast<int>(std::size(rows)));
                          const Left& left = rows[run.number - 1];
                          MemoryPlatform expected;
                          Prepare(expected);
                          AddProduct(expected.registry, L"R21.0", L"A", left.first);
                          AddProduct(expected.registry, L"R24.0", L"B", left.second);
                          AddProduct(expected.registry, L"R24.0", L"C", left.third);
                          EXPECT_EQ(run.after, expected.CurrentState());
                          EXPECT_EQ(run.raised,
                                    left.hasRaised ? std::optional(ResultCode::InvalidArgument) : std::nullopt);
                      }};
    EXPECT_EQ(SweepFailures(sweep), static_cast<int>(std::size(rows)));
}

} // namespace
} // namespace sitekeeper
