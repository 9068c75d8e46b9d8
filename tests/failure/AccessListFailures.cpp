// The access lists with each call of the platform failing in turn.
#include "access/AccessLists.h"
#include "PlatformFailures.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Names = std::vector<std::wstring>;

constexpr const wchar_t* ListFile = L"N:\\Data\\UserDatafile.ini";
constexpr const char* Before = "[SiteKeeper]\nzoe = zoe\nbob = bob\n";

void PrepareLists(MemoryPlatform& memory)
{
    SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
    memory.files.AddFile(ListFile, Before);
    memory.accounts.AddServer(L"ZEUS", {L"adam", L"zoe"});
    memory.accounts.AddServer(L"", {L"carol"});
}

const std::wstring Untouched = L"\"[SiteKeeper]\nzoe = zoe\nbob = bob\n\"";

/// What stands in the file, which has no neighbour.
std::wstring FileIn(const State& state)
{
    const std::wstring line = std::wstring(L"file ") + ListFile + L" = ";
    std::wstring file;
    std::size_t files = 0;
    for (const std::wstring& each : state) {
        files += each.starts_with(L"file N:\\Data\\") && !each.ends_with(L'\\') ? 1U : 0U;
        file = each.starts_with(line) ? each.substr(line.size()) : file;
    }
    EXPECT_EQ(files, 1U);
    return file;
}

/// Runs `operation` on the lists, each call failing in turn, and lets `check` look at what became of the file. An
/// operation that an error ends leaves the file as it was.
int SweepLists(const std::function<void(const AccessLists&)>& operation,
               const std::function<void(const FaultedRun&, const std::wstring& file)>& check)
{
    return SweepFailures({PrepareLists,
                          [&operation](const Platform& ports) {
                              const InstallationSettings settings = SettingsOn(ports);
                              operation(AccessLists(ports, settings, L"C:\\Suite\\SiteKeeper64.exe"));
                          },
                          [&check](const FaultedRun& run) {
                              EXPECT_FALSE(run.raised);
                              check(run, FileIn(run.after));
                          },
                          [](const FaultedRun& run) { EXPECT_EQ(FileIn(run.after), Untouched); }});
}

/// A call without which nothing is written; each other one has a way around it.
bool IsNeededForWriting(const FaultedRun& run)
{
    return Is(run, L"read HK") || Is(run, L"open ") || Is(run, L"write to ") || Is(run, L"flush ") ||
           Is(run, L"encode ");
}

/// A list is written whole or not at all.
int WriteAList()
{
    return SweepLists(
        [](const AccessLists& lists) {
            lists.WriteAccessList(AccessList::SheetWriter, {L"ren\u00E9", L"eve"});
        },
        [](const FaultedRun& run, const std::wstring& file) {
            // Written over a file that cannot be read, the one list would be all that is left.
            const bool isUntouched = IsNeededForWriting(run) || Is(run, L"read file ");
            EXPECT_EQ(file, isUntouched ? Untouched
                                        : L"\"[SheetWriter]\r\neve = eve\r\nren\u00E9 = ren\u00E9\r\n\r\n"
                                          L"[SiteKeeper]\r\nbob = bob\r\nzoe = zoe\r\n\"");
        });
}

int EmptyAList()
{
    return SweepLists([](const AccessLists& lists) { lists.WriteAccessList(AccessList::SiteKeeper, {}); },
                      [](const FaultedRun& run, const std::wstring& file) {
                          EXPECT_EQ(file, IsNeededForWriting(run) || Is(run, L"read file ") ? Untouched : L"\"\"");
                      });
}

/// The general list is read as it stands.
int ReadTheGeneralList()
{
    Names names;
    return SweepLists(
        [&names](const AccessLists& lists) {
            names = {L"from before"};
            lists.ReadAccessList(AccessList::General, names, Rebuild::No);
        },
        [&names](const FaultedRun& run, const std::wstring& file) {
            EXPECT_EQ(names, Names{});
            EXPECT_EQ(file, Untouched);
            EXPECT_EQ(run.after, run.before);
        });
}

int ReadAToolsList()
{
    Names names;
    const int points = SweepLists(
        [&names](const AccessLists& lists) {
            names = {L"from before"};
            lists.ReadAccessList(AccessList::SiteKeeper, names, Rebuild::Yes);
        },
        [&names](const FaultedRun& run, const std::wstring&) {
            EXPECT_EQ(names, Names{});
            EXPECT_EQ(run.after, run.before);
        });
    EXPECT_EQ(names, (Names{L"zoe", L"bob"}));
    return points;
}

/// The general list is made of what can be had.
int RebuildTheGeneralList()
{
    Names names;
    return SweepLists(
        [&names](const AccessLists& lists) {
            names = {L"from before"};
            lists.ReadAccessList(AccessList::General, names, Rebuild::Yes);
        },
        [&names](const FaultedRun& run, const std::wstring& file) {
            if (Is(run, L"read HK")) {
                EXPECT_EQ(names, Names{});
                EXPECT_EQ(file, Untouched);
                return;
            }
            Names expected{L"1", L"adam", L"zoe", L"carol"};
            if (run.failed == L"servers" || run.failed == L"users of ZEUS") {
                expected = {L"1", L"carol"};
            } else if (run.failed == L"users of ") {
                expected = {L"1", L"adam", L"zoe"};
            }
            EXPECT_EQ(names, expected);
            EXPECT_EQ(file == Untouched, IsNeededForWriting(run));
            EXPECT_EQ(file.find(L"bob = bob") == std::wstring::npos, Is(run, L"read file "));
            EXPECT_EQ(file.find(L"carol = carol") == std::wstring::npos,
                      IsNeededForWriting(run) || run.failed == L"users of ");
        });
}

/// Everyone is admitted where the list cannot be read.
int AdmitUsers()
{
    Admission named = Admission::Refused;
    Admission other = Admission::Refused;
    const int points = SweepLists(
        [&](const AccessLists& lists) {
            named = lists.IsUserAllowed(L"Bob", AccessList::SiteKeeper);
            other = lists.IsUserAllowed(L"alice", AccessList::SiteKeeper);
        },
        [&](const FaultedRun& run, const std::wstring& file) {
            EXPECT_EQ(named, Admission::Granted);
            EXPECT_EQ(other, run.number > 2 ? Admission::Granted : Admission::Refused);
            EXPECT_EQ(file, Untouched);
            EXPECT_EQ(run.after, run.before);
        });
    EXPECT_EQ(other, Admission::Refused);
    return points; // twice the registry and the file
}

} // namespace

SweptOperations AccessListOperations()
{
    return {{"read a tool's list", ReadAToolsList},
            {"read the general list", ReadTheGeneralList},
            {"rebuild the general list", RebuildTheGeneralList},
            {"write a list", WriteAList},
            {"empty a list", EmptyAList},
            {"admit two users", AdmitUsers}};
}

} // namespace sitekeeper
