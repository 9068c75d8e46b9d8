// The update reminder on the real system: the newest of many files beside a bare walk over them, a page from the web
// session beside a copy of its bytes in one and in pieces, and the program's start with the reminder not due beside its
// start without it. Prints the medians of runs that alternate, as Measure.h says.
//
// reminder_bench PROGRAM RUNS [FOLDER...]
//
// Each FOLDER holds as many "*.exe" as are to be measured. They are made outside: Wine looks through the folder for
// each file that it makes.
#include "Measure.h"
#include "ProgramStart.h"
#include "settings/InstallationSettings.h"
#include "update/PublishedUpdate.h"
#include "win32/Win32Clock.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32Environment.h"
#include "win32/Win32FileSystem.h"
#include "win32/Win32Registry.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

struct Way
{
    const char* name;
    std::function<void()> go;
};

/// All in turn, so that the machine's moods meet all of them. Ours comes first.
void Compare(const char* what, double count, int runs, const std::vector<Way>& ways)
{
    std::vector<std::vector<double>> times(ways.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t way = 0; way < ways.size(); ++way) {
            const Stopwatch watch;
            ways[way].go();
            times[way].push_back(watch.Milliseconds());
        }
    }
    for (std::size_t way = 1; way < ways.size(); ++way) {
        PrintResult(what, count, "ms", Median(times.front()), {ways[way].name, Median(times[way])});
    }
}

void BenchScan(const std::wstring& folder, int runs)
{
    const std::wstring pattern = folder + L"\\*.exe";
    const Win32FileSystem files;
    Seconds newest = 0;
    int count = 0;
    const auto bareWalk = [&] {
        WIN32_FIND_DATAW data{};
        FILETIME last{};
        count = 0;
        const HANDLE search = ::FindFirstFileW(pattern.c_str(), &data);
        do {
            last = ::CompareFileTime(&data.ftLastWriteTime, &last) > 0 ? data.ftLastWriteTime : last;
            ++count;
        } while (::FindNextFileW(search, &data) != FALSE);
        ::FindClose(search);
    };
    bareWalk(); // counts, and brings the folder into memory
    const auto ourWalk = [&] {
        files.Search(pattern,
                     [&newest](const FoundFile& file) { newest = std::max(newest, file.modified.value_or(newest)); });
    };
    ourWalk(); // the first one of a process takes longer
    Compare("newest of so many files", count, runs, {{"ours", ourWalk}, {"bare FindFirstFile walk", bareWalk}});
    Require(newest != 0, "the walk did not find the files");
}

/// As large as the program asks for.
constexpr std::size_t PieceSize = 50;

/// Hands a page on as the real session does, without a server.
class PageInMemory final : public WebSession
{
public:
    explicit PageInMemory(std::string page) : m_page(std::move(page)) {}

    void ReadPage(const std::wstring& /*address*/, std::size_t pieceSize, const TakePiece& take) override
    {
        for (std::string_view rest = m_page; !rest.empty() && take(rest.substr(0, pieceSize));) {
            rest.remove_prefix(std::min(pieceSize, rest.size()));
        }
    }
    [[nodiscard]] const std::string& Page() const { return m_page; }

private:
    std::string m_page;
};

void BenchPage(std::size_t size, int runs)
{
    std::string content;
    while (content.size() < size) {
        content += "<p>Some line of the page, Letters and all: Lorem LX_2023.</p>\n";
    }
    content.resize(size);
    PageInMemory web(std::move(content));
    const Win32CodePage codePage;
    const Win32Clock clock;
    std::size_t copied = 0;
    const auto search = [&] { static_cast<void>(PublishedDate(ReadPageText(web, codePage, L""), 0, clock, L"")); };
    const auto collect = [&] {
        std::string pieces;
        web.ReadPage(L"", PieceSize, [&pieces](std::string_view piece) {
            pieces += piece;
            return true;
        });
        copied += static_cast<std::size_t>(pieces.back());
    };
    const auto copy = [&] {
        const std::string whole = web.Page();
        copied += static_cast<std::size_t>(whole.back());
    };
    Compare("page of so many bytes, collected and searched", static_cast<double>(size), runs,
            {{"ours", search}, {"copy", copy}, {"pieces into a string", collect}});
    Require(copied != 0, "nothing was copied");
}

/// The paths as the reminder compares them: the same, or not.
void BenchStart(const std::wstring& program, int runs)
{
    Win32Registry registry;
    const Win32Environment environment;
    const Win32Clock clock;
    InstallationSettings settings(registry, environment, clock);
    const std::wstring key = InstallationSettings::UpdateReminderKey();
    constexpr Seconds FarAway = 3'900'000'000;
    settings.WriteUpdateDate(key, FarAway);
    settings.WriteFolder(SuiteFolder::Program, L"C:\\Suite\\");
    std::vector<double> notDue;
    std::vector<double> without;
    for (int run = 0; run < runs; ++run) {
        settings.WriteFolder(SuiteFolder::Application, L"C:\\Suite\\");
        notDue.push_back(MeasureStart(program).milliseconds);
        settings.WriteFolder(SuiteFolder::Application, L"N:\\Suite\\");
        without.push_back(MeasureStart(program).milliseconds);
    }
    PrintResult("start, the reminder not due", 0, "ms", Median(notDue), {"start without it", Median(without)});
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count < 3) {
        std::fputs("usage: reminder_bench PROGRAM RUNS [FOLDER...]\n", stderr);
        return 2;
    }
    const int runs = static_cast<int>(std::wcstol(arguments[2], nullptr, 10));
    try {
        for (int index = 3; index < count; ++index) {
            BenchScan(arguments[index], runs);
        }
        constexpr std::size_t KiB = 1024;
        for (const std::size_t size : {KiB, KiB * KiB, 16 * KiB * KiB}) {
            BenchPage(size, runs);
        }
        BenchStart(arguments[1], runs);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "reminder_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
