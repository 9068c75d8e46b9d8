// The access lists with each call of the platform failing in turn.
#include "access/AccessLists.h"
#include "support/StateChecks.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Names = std::vector<std::wstring>;

constexpr const wchar_t* File = L"N:\\Data\\UserDatafile.ini";
constexpr const char* Before = "[SiteKeeper]\nzoe = zoe\nbob = bob\n";

void Prepare(MemoryPlatform& memory)
{
    SettingsOn(memory.Ports()).WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
    memory.files.AddFile(File, Before);
    memory.accounts.AddServer(L"ZEUS", {L"adam", L"zoe"});
    memory.accounts.AddServer(L"", {L"carol"});
}

/// Runs `operation` on the lists, each call failing in turn, and lets `check` look at what became of the file.
int SweepLists(const std::function<void(const AccessLists&)>& operation,
               const std::function<void(const FaultedRun&, const std::wstring& file)>& check)
{
    return SweepFailures({Prepare,
                          [&operation](const Platform& ports) {
                              const InstallationSettings settings = SettingsOn(ports);
                              operation(AccessLists(ports, settings, L"C:\\Suite\\SiteKeeper64.exe"));
                          },
                          [&check](const FaultedRun& run) {
                              EXPECT_FALSE(run.raised);
                              const std::wstring line = std::wstring(L"file ") + File + L" = ";
                              std::wstring file;
                              std::size_t files = 0;
                              for (const std::wstring& each : run.after) {
                                  files += each.starts_with(L"file N:\\Data\\") && !each.ends_with(L'\\') ? 1U : 0U;
                                  file = each.starts_with(line) ? each.substr(line.size()) : file;
                              }
                              EXPECT_EQ(files, 1U); // no neighbour
                              check(run, file);
                          }});
}

const std::wstring Untouched = L"\"[SiteKeeper]\nzoe = zoe\nbob = bob\n\"";

/// A call without which nothing is written; each other one has a way around it.
bool IsNeededForWriting(const FaultedRun& run)
{
    return Is(run, L"read HK") || Is(run, L"open ") || Is(run, L"write to ") || Is(run, L"flush ") ||
           Is(run, L"encode ");
}

TEST(AccessListsSweep, WritesAListWholeOrNotAtAll)
{
    const int runs = SweepLists(
        [](const AccessLists& lists) {
            lists.WriteAccessList(AccessList::SheetWriter, {L"ren\u00E9", L"eve"});
        },
        [](const FaultedRun& run, const std::wstring& file) {
            const std::wstring written = L"[SheetWriter]\r\neve = eve\r\nren\u00E9 = ren\u00E9\r\n";
            if (IsNeededForWriting(run)) {
                EXPECT_EQ(file, Untouched);
            } else if (Is(run, L"read file ")) {
                EXPECT_EQ(file, L"\"" + written + L"\""); // what cannot be read counts as empty
            } else {
                EXPECT_EQ(file, L"\"" + written + L"\r\n[SiteKeeper]\r\nbob = bob\r\nzoe = zoe\r\n\"");
            }
        });
    EXPECT_GE(runs, 9); // registry, read, exists, open, make, write, flush, move, and the code page at least once
}

TEST(AccessListsSweep, RebuildsTheGeneralListFromWhatCanBeHad)
{
    Names names;
    const int runs = SweepLists(
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
    EXPECT_EQ(runs, 11); // registry, read, servers, two servers' users, exists, open, make, write, flush, move
}

TEST(AccessListsSweep, AdmitsEveryoneWhereTheListCannotBeRead)
{
    Admission named = Admission::Refused;
    Admission other = Admission::Refused;
    const int runs = SweepLists(
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
    EXPECT_EQ(runs, 4); // twice the registry and the file
    EXPECT_EQ(other, Admission::Refused);
}

} // namespace
} // namespace sitekeeper
