// The rules on the platform in memory, without Windows, each beside the bare work that it cannot do without: what they
// add to it is ours.
#include "access/AccessLists.h"
#include "maindlg/ApplyInstallation.h"
#include "settings/InstallationSettings.h"
#include "shortcuts/ShellFolders.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"
#include "support/SuiteFixture.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace sitekeeper;

constexpr CalendarTime NextReminder = {2026, 12, 1, 0, 0, 0};

/// An installation whose ten shortcuts all exist.
void Install(MemoryPlatform& platform)
{
    const Platform ports = platform.Ports();
    InstallationSettings settings = SettingsOn(ports);
    settings.WriteString(Hive::LocalMachine, ShellFoldersKey, L"Common Desktop", L"C:\\Users\\Public\\Desktop");
    settings.WriteString(Hive::LocalMachine, ShellFoldersKey, L"Common Programs", L"C:\\ProgramData\\Programs");
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
        benchmark::DoNotOptimize(ApplyInstallation(ports, settings, folders, {NextReminder, 7}));
    }
}
BENCHMARK(BM_ApplyInstallation)->Name("apply the installation/ours");

/// The same calls of the ports, with every text formed beforehand.
void BM_ApplyCalls(benchmark::State& state)
{
    MemoryPlatform platform;
    Install(platform);
    const Platform ports = platform.Ports();
    const std::wstring folders = ShellFoldersKey;
    const std::wstring suite = L"Software\\ORIVEL\\LX Plus\\2023";
    const std::wstring names[] = {L"LocalAppPath", L"NetworkAppPath", L"DatafilesPath"};
    const std::wstring places[] = {L"Common Desktop", L"Common Programs"};
    const std::wstring program = L"N:\\Suite\\Applications\\LedgerComposer64.exe";
    const ShortcutFile shortcut{program, L"", L"N:\\Suite\\Applications\\", program, 0};
    const std::vector<std::byte> bytes(40);
    std::vector<std::wstring> paths;
    for (int row = 0; row < ShortcutCount(); ++row) {
        paths.push_back(GetDesktopShortcutPath(platform.registry, row));
        paths.push_back(GetProgramsShortcutPath(platform.registry, row));
    }
    ports.shell.EnterComponents();
    for (auto _ : state) {
        for (const std::wstring& name : names) {
            ports.registry.WriteValue(Hive::LocalMachine, suite, name, ValueType::Text, bytes);
        }
        for (const std::wstring& place : places) {
            benchmark::DoNotOptimize(
                ports.registry.ReadValue(Hive::LocalMachine, folders, place, KeyAccess::QueryValue, 2048));
        }
        for (const std::wstring& path : paths) {
            benchmark::DoNotOptimize(ports.files.Exists(path));
            benchmark::DoNotOptimize(ports.files.FullPath(program));
            if (ports.shell.SaveShortcut(path, shortcut) != ResultCode::Ok) {
                state.SkipWithError("a shortcut was not saved");
            }
        }
        benchmark::DoNotOptimize(ports.clock.Format(L"%Y-%m-%d %H:%M:%S", NextReminder));
        ports.registry.WriteValue(Hive::CurrentUser, suite, L"CheckWebVersionDate", ValueType::Text, bytes);
        ports.registry.WriteValue(Hive::CurrentUser, suite, L"CheckWebVersionDays", ValueType::Number, bytes);
    }
    ports.shell.LeaveComponents();
}
BENCHMARK(BM_ApplyCalls)->Name("apply the installation/bare calls");

/// A path through so many folders.
std::wstring DeepPath(std::int64_t depth)
{
    std::wstring path = L"C:";
    for (std::int64_t folder = 0; folder < depth; ++folder) {
        path += L"\\folder";
    }
    return path + L"\\file.lnk";
}

void BM_CreateFolderPath(benchmark::State& state)
{
    MemoryPlatform platform;
    const std::wstring path = DeepPath(state.range(0));
    for (auto _ : state) {
        CreateFolderPath(platform.files, path);
    }
}
BENCHMARK(BM_CreateFolderPath)->Name("make so many folders/ours")->Arg(4)->Arg(16)->Arg(64);

/// Cut at each backslash, without regard to quotes.
void BM_MakeEachFolder(benchmark::State& state)
{
    MemoryPlatform platform;
    const std::wstring path = DeepPath(state.range(0));
    for (auto _ : state) {
        for (std::size_t end = path.find(L'\\', 3); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
            platform.files.MakeFolder(path.substr(0, end));
        }
    }
}
BENCHMARK(BM_MakeEachFolder)->Name("make so many folders/bare calls")->Arg(4)->Arg(16)->Arg(64);

/// Names as on a list of so many users.
std::vector<std::wstring> ListedNames(std::int64_t count)
{
    std::vector<std::wstring> names;
    for (std::int64_t number = 0; number < count; ++number) {
        names.push_back(L"user" + std::to_wstring(1'000'000 + number));
    }
    return names;
}

/// The gate's test of a user, with so many names on Site Keeper's own list; 0 lets everyone in.
void BM_IsUserAllowed(benchmark::State& state)
{
    MemoryPlatform platform;
    platform.files.AddFolder(L"N:\\Data");
    const Platform ports = platform.Ports();
    InstallationSettings settings = SettingsOn(ports);
    settings.WriteFolder(SuiteFolder::Datafiles, L"N:\\Data\\");
    const AccessLists lists(ports, settings, L"C:\\SiteKeeper64.exe");
    lists.WriteAccessList(AccessList::SiteKeeper, ListedNames(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(lists.IsUserAllowed(L"nobody", AccessList::SiteKeeper));
    }
}
BENCHMARK(BM_IsUserAllowed)->Name("let a user in/ours")->Arg(0)->Arg(10)->Arg(1000)->Arg(100'000);

/// A lower bound: the file's bytes walked over once, and the name looked for in each line. What the file means (the
/// section, a name that comes twice, a character outside ASCII, the case) is left out.
void BM_ScanTheList(benchmark::State& state)
{
    MemoryFileSystem files;
    std::string content = "[SiteKeeper]\r\n";
    for (const std::wstring& wide : ListedNames(state.range(0))) {
        const std::string name(wide.begin(), wide.end());
        content.append(name).append(" = ").append(name).append("\r\n");
    }
    files.AddFile(L"C:\\list.ini", content);
    for (auto _ : state) {
        const std::string bytes = files.ReadContent(L"C:\\list.ini").value_or("");
        std::size_t found = 0;
        for (std::size_t begin = 0; begin < bytes.size();) {
            const std::size_t end = bytes.find('\n', begin);
            const std::string_view line = std::string_view(bytes).substr(begin, end - begin);
            found += line.substr(0, line.find(" = ")) == "nobody" ? 1 : 0;
            begin = end + 1;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_ScanTheList)->Name("let a user in/bare scan")->Arg(0)->Arg(10)->Arg(1000)->Arg(100'000);

} // namespace
