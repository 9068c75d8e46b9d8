// Benchmarks of the shipped program: start-up, size and memory beside a bare dialog program of the same flags, and the
// renewal of all ten shortcuts through the real shell. Prints one line for each, medians of runs that alternate.
//
// windows_bench PROGRAM BARE ARTWORK_KIB [RUNS]
#include "Measure.h"
#include "ProgramStart.h"
#include "shortcuts/ShortcutCatalogue.h"
#include "shortcuts/ShortcutFiles.h"
#include "win32/Win32FileSystem.h"
#include "win32/Win32Shell.h"

#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

void PrintPair(const char* what, const char* unit, double ours, double bare)
{
    std::printf("%-34s %10.1f %10.1f %-4s %6.2f\n", what, ours, bare, unit, bare > 0 ? ours / bare : 0.0);
}

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
    std::printf("%-34s %10s %10s %-4s %6s\n", "", "program", "bare", "", "ratio");
    PrintPair("start to main window, no splash", "ms", Median(ourTimes), Median(bareTimes));
    PrintPair("peak working set", "KiB", Median(ourPeaks), Median(barePeaks));
    PrintPair("file without artwork", "KiB", FileKib(program) - artworkKib, FileKib(bare));
}

void BenchRenewal(int runs)
{
    wchar_t temporary[MAX_PATH]{};
    ::GetTempPathW(MAX_PATH, temporary);
    Win32FileSystem files;
    Win32Shell shell;
    const bool isEntered = shell.EnterComponents();
    const std::wstring folders[] = {std::wstring(temporary) + L"SkBench\\Desktop\\",
                                    std::wstring(temporary) + L"SkBench\\Programs\\"};
    for (const std::wstring& folder : folders) {
        CreateFolderPath(files, folder);
        for (int row = 0; row < ShortcutCount(); ++row) {
            ShortcutFile old;
            old.target = L"C:\\Old\\x.exe";
            shell.SaveShortcut(ShortcutPathIn(folder, row), old);
        }
    }
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const Stopwatch watch;
        for (const std::wstring& folder : folders) {
            RenewShortcuts(files, shell, folder, run % 2 == 0 ? L"C:\\Suite\\" : L"N:\\Suite\\");
        }
        times.push_back(watch.Milliseconds());
    }
    if (isEntered) {
        shell.LeaveComponents();
    }
    std::printf("%-34s %10.2f %10s ms\n", "renewal of all ten shortcuts", Median(times), "");
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
