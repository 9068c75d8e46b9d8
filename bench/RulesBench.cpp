// The rules on the platform in memory: what of an apply is ours, without Windows.
#include "access/AccessLists.h"
#include "maindlg/ApplyInstallation.h"
#include "settings/InstallationSettings.h"
#include "shortcuts/ShellFolders.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"
#include "support/MemoryPlatform.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;

/// An installation whose ten shortcuts all exist.
void Install(MemoryPlatform& platform)
{
    constexpr const wchar_t* Folders = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    const Platform ports = platform.Ports();
    InstallationSettings settings = SettingsOn(ports);
    settings.WriteString(Hive::LocalMachine, Folders, L"Common Desktop", L"C:\\Users\\Public\\Desktop");
    settings.WriteString(Hive::LocalMachine, Folders, L"Common Programs", L"C:\\ProgramData\\Programs");
    for (int row = 0; row < ShortcutCount(); ++row) {
        platform.files.AddFile(GetDesktopShortcutPath(platform.registry, row));
        platform.files.AddFile(GetProgramsShortcutPath(platform.registry, row));
    }
}

void BM_ApplyInstallation(benchmark::State& state)
{
    MemoryPlatform platform;
    Install(platform);
    const Platform ports = platform.Ports();
    InstallationSettings settings = SettingsOn(ports);
    const InstallationFolders folders{L"C:\\Suite\\", L"N:\\Suite\\", L"N:\\Suite\\Datafiles\\"};
    for (auto _ : state) {
        benchmark::DoNotOptimize(ApplyInstallation(ports, settings, folders, {{2026, 12, 1, 0, 0, 0}, 7}));
    }
}
BENCHMARK(BM_ApplyInstallation);

void BM_CreateFolderPath(benchmark::State& state)
{
    MemoryPlatform platform;
    std::wstring path = L"C:";
    for (int depth = 0; depth < state.range(0); ++depth) {
        path += L"\\folder";
    }
    for (auto _ : state) {
        CreateFolderPath(platform.files, path + L"\\file.lnk");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_CreateFolderPath)->Arg(4)->Arg(16)->Arg(64);

/// The gate's test of a user, with so many names on Site Keeper's own list; 0 lets everyone in.
void BM_IsUserAllowed(benchmark::State& state)
{
    MemoryPlatform platform;
    platform.files.AddFolder(L"N:\\Data");
    const Platform ports = platform.Ports();
    InstallationSettings settings = SettingsOn(ports);
    settings.WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
    const AccessLists lists(ports, settings, L"C:\\SiteKeeper64.exe");
    std::vector<std::wstring> names;
    for (std::int64_t number = 0; number < state.range(0); ++number) {
        names.push_back(L"user" + std::to_wstring(1'000'000 + number));
    }
    lists.WriteAccessList(AccessList::SiteKeeper, names);
    for (auto _ : state) {
        benchmark::DoNotOptimize(lists.IsUserAllowed(L"nobody", AccessList::SiteKeeper));
    }
}
BENCHMARK(BM_IsUserAllowed)->Arg(0)->Arg(10)->Arg(1000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
