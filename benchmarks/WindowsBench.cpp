// Benchmarks of the shipped program: start-up, size and memory beside a bare dialog program of the same flags, and the
// renewal of all ten shortcuts through the real shell beside the bare calls for it. Prints the medians of runs that
// alternate, as Measure.h says.
//
// windows_bench PROGRAM BARE ARTWORK_KIB [RUNS]
#include "Measure.h"
#include "ProgramStart.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"
#include "win32/Handles.h"
#include "win32/Win32FileSystem.h"
#include "win32/Win32Shell.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <cstdio>
#include <cwchar>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

constexpr const char* Bare = "bare_dialog";

void BenchStart(const std::wstring& program, const std::wstring& bare, double artworkKib, int runs)
{
    std::vector<double> ourTimes;
    std::vector<double> bareTimes;
    std::vector<double> ourPeaks;
    std::vector<double> barePeaks;
    for (int run = 0; run < runs; ++run) {
        const StartResult ours = MeasureStart(program);
        const StartResult peer = MeasureStart(bare);
        ourTimes.push_back(ours.milliseconds);
        bareTimes.push_back(peer.milliseconds);
        ourPeaks.push_back(ours.peakKib);
        barePeaks.push_back(peer.peakKib);
    }
    PrintResult("start to main window, without the splash", 0, "ms", Median(ourTimes), {Bare, Median(bareTimes)});
    PrintResult("peak working set", 0, "KiB", Median(ourPeaks), {Bare, Median(barePeaks)});
    PrintResult("file, artwork aside", 0, "KiB", FileKib(program) - artworkKib, {Bare, FileKib(bare)});
}

/// The calls without which there is no such file, on texts formed beforehand.
void SaveBare(const std::wstring& path, const std::wstring& folder)
{
    ComPtr<IShellLinkW> link;
    Require(SUCCEEDED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                         reinterpret_cast<void**>(link.put()))),
            "the shell makes no shortcut");
    ComPtr<IPersistFile> file;
    Require(SUCCEEDED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.put()))),
            "the shell's shortcut is no file");
    const std::wstring program = folder + L"LedgerComposer64.exe";
    link->SetPath(program.c_str());
    link->SetArguments(L"");
    link->SetWorkingDirectory(folder.c_str());
    link->SetIconLocation(program.c_str(), 0);
    Require(SUCCEEDED(file->Save(path.c_str(), TRUE)), "a shortcut cannot be saved");
}

void BenchRenewal(int runs)
{
    wchar_t temporary[MAX_PATH]{};
    ::GetTempPathW(MAX_PATH, temporary);
    Win32FileSystem files;
    Win32Shell shell;
    Require(shell.EnterComponents(), "the component runtime cannot be entered");
    const std::wstring folders[] = {std::wstring(temporary) + L"SkBench\\Desktop\\",
                                    std::wstring(temporary) + L"SkBench\\Programs\\"};
    std::vector<std::wstring> paths;
    for (const std::wstring& folder : folders) {
        CreateFolderPath(files, folder);
        for (int row = 0; row < ShortcutCount(); ++row) {
            ShortcutFile old;
            old.target = L"C:\\Old\\x.exe";
            paths.push_back(ShortcutPathIn(folder, row));
            shell.SaveShortcut(paths.back(), old);
        }
    }
    std::vector<double> ourTimes;
    std::vector<double> bareTimes;
    for (int run = 0; run < runs; ++run) {
        const std::wstring suite = run % 2 == 0 ? L"C:\\Suite\\" : L"N:\\Suite\\";
        const Stopwatch ourWatch;
        for (const std::wstring& folder : folders) {
            RenewShortcuts(files, shell, folder, suite);
        }
        ourTimes.push_back(ourWatch.Milliseconds());
        const Stopwatch bareWatch;
        for (const std::wstring& path : paths) {
            SaveBare(path, suite + L"Applications\\");
        }
        bareTimes.push_back(bareWatch.Milliseconds());
    }
    shell.LeaveComponents();
    PrintResult("renew all ten shortcuts", 0, "ms", Median(ourTimes), {"bare calls of the shell", Median(bareTimes)});
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count < 4) {
        std::fputs("usage: windows_bench PROGRAM BARE ARTWORK_KIB [RUNS]\n", stderr);
        return 2;
    }
    const int runs = count > 4 ? static_cast<int>(std::wcstol(arguments[4], nullptr, 10)) : 11;
    try {
        BenchRenewal(runs * 5);
        BenchStart(arguments[1], arguments[2], std::wcstod(arguments[3], nullptr), runs);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "windows_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
