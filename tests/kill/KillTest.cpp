// Whoever saves may be killed at any moment: the file is then whole, the old one or the new one.
#include "access/SafeSave.h"
#include "kill/StoreSaver.h"
#include "win32/Handles.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32FileSystem.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

constexpr int KillsOfEach = 500;
constexpr DWORD StartMilliseconds = 30'000;
/// Kills come within the first saves, however long this machine takes for one.
constexpr int SavesInLongestLife = 6;
constexpr std::chrono::microseconds LeastLongestLife{20'000};

using UniqueEvent = UniqueHandle<ProcessPolicy>; // closed as a process is

std::wstring ScratchFile(const std::wstring& name)
{
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetTempPathW(MAX_PATH, folder.data());
    return folder.data() + (L"Kill" + std::to_wstring(::GetCurrentProcessId()) + name);
}

struct Saved
{
    std::string content;
    std::chrono::microseconds time{};
};

/// The bytes of a large file of this content, as an undisturbed save leaves them, and how long that takes.
Saved SaveUndisturbed(Variant variant)
{
    Win32FileSystem files;
    const Win32CodePage codePage;
    const std::wstring path = ScratchFile(L"Whole.ini");
    CIniFile store(files, codePage, L"");
    store.Open(path);
    Fill(store, variant, EntriesOfLargeFile);
    const auto begin = std::chrono::steady_clock::now();
    const bool isSaved = store.Save(true) == CIniFile::Success;
    const auto time = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    std::string content = isSaved ? files.ReadContent(path).value_or("") : "";
    files.RemoveFile(path);
    return {std::move(content), time};
}

/// Lets a process live so long, to the microsecond: asleep until shortly before the end, then awake, so that the
/// processors are left to the savers.
void LetLive(HANDLE process, int microseconds)
{
    constexpr int Awake = 500;
    LARGE_INTEGER frequency{};
    LARGE_INTEGER now{};
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&now);
    const LONGLONG end = now.QuadPart + frequency.QuadPart * microseconds / 1'000'000;
    ::WaitForSingleObject(process, static_cast<DWORD>(std::max(microseconds - Awake, 0) / 1000));
    while (now.QuadPart < end) {
        ::SwitchToThread();
        ::QueryPerformanceCounter(&now);
    }
}

/// Starts savers of one file and kills them, and counts what they leave.
class Killer
{
public:
    Killer(std::wstring id, const std::array<std::string, 2>& contents, std::chrono::microseconds longestLife,
           unsigned seed)
        : m_id(std::move(id)), m_contents(contents), m_life(0, static_cast<int>(longestLife.count())), m_random(seed)
    {}

    void Run(int kills)
    {
        for (; m_kills < kills && m_failure.empty(); ++m_kills) {
            StartAndKill();
            Look();
        }
    }

    [[nodiscard]] const std::wstring& Path() const { return m_path; }
    /// Empty when all went well.
    [[nodiscard]] const std::string& Failure() const { return m_failure; }
    [[nodiscard]] int Kills() const { return m_kills; }
    /// How many left a neighbour: they came in the middle of a save.
    [[nodiscard]] int InSave() const { return m_inSave; }
    /// How often each content was found.
    [[nodiscard]] const std::array<int, 2>& Found() const { return m_found; }

private:
    void StartAndKill()
    {
        const UniqueEvent started(::CreateEventW(nullptr, TRUE, FALSE, StartedEventName(m_id).c_str()));
        std::wstring command = L"\"" SITEKEEPER_STORE_SAVER L"\" endless \"" + m_path + L"\" " + m_id;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION information{};
        const auto start = [&] {
            return ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                    &information) != FALSE;
        };
        if (!start() && !start()) { // Wine refuses one start in many hundred
            m_failure = "the saver cannot be started: error " + std::to_string(::GetLastError());
            return;
        }
        const UniqueProcess process(information.hProcess);
        const UniqueThread thread(information.hThread);
        const std::array<HANDLE, 2> either = {started.get(), process.get()};
        if (::WaitForMultipleObjects(2, either.data(), FALSE, StartMilliseconds) != WAIT_OBJECT_0) {
            m_failure = "the saver does not begin";
        }
        LetLive(process.get(), m_life(m_random));
        DWORD code = 0;
        if (::GetExitCodeProcess(process.get(), &code) != FALSE && code != STILL_ACTIVE) {
            m_failure = "the saver ended by itself with " + std::to_string(code);
        }
        ::TerminateProcess(process.get(), 1);
        ::WaitForSingleObject(process.get(), StartMilliseconds);
    }

    void Look()
    {
        m_inSave += m_files.Exists(NeighbourOf(m_path)) ? 1 : 0;
        if (!m_files.Exists(m_path) && m_found == std::array<int, 2>{}) {
            return; // killed before the very first save was done
        }
        const std::optional<std::string> content = m_files.ReadContent(m_path);
        const auto found = std::find(m_contents.begin(), m_contents.end(), content.value_or(""));
        if (found != m_contents.end()) {
            ++m_found[static_cast<std::size_t>(found - m_contents.begin())];
        } else if (m_failure.empty()) {
            m_failure = content ? "a file of " + std::to_string(content->size()) + " bytes" : "no file";
        }
    }

    std::wstring m_id;
    const std::array<std::string, 2>& m_contents;
    std::uniform_int_distribution<int> m_life; // microseconds
    std::mt19937 m_random;
    std::wstring m_path = ScratchFile(m_id + L".ini");
    Win32FileSystem m_files;
    std::string m_failure;
    int m_kills = 0;
    int m_inSave = 0;
    std::array<int, 2> m_found{};
};

TEST(KillTest, LeavesTheFileWholeAThousandTimes)
{
    const std::array<Saved, 2> saved = {SaveUndisturbed(Variant::First), SaveUndisturbed(Variant::Second)};
    const std::array<std::string, 2> contents = {saved[0].content, saved[1].content};
    for (const std::string& content : contents) {
        EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), EntriesOfLargeFile + 1);
        EXPECT_GT(content.size(), 150'000U);
    }
    ASSERT_NE(contents[0], contents[1]);
    constexpr unsigned Seed = 20261121;
    const auto longestLife = std::max(SavesInLongestLife * std::max(saved[0].time, saved[1].time), LeastLongestLife);
    std::cout << "seed " << Seed << ", lives of at most " << longestLife.count() << " microseconds\n";
    Killer one(L"One", contents, longestLife, Seed);
    Killer two(L"Two", contents, longestLife, Seed + 1);
    std::thread beside([&two] { two.Run(KillsOfEach); });
    one.Run(KillsOfEach);
    beside.join();
    Win32FileSystem files;
    for (const Killer* const killer : {&one, &two}) {
        std::cout << killer->Kills() << " kills, " << killer->InSave() << " of them in a save; " << killer->Found()[0]
                  << " and " << killer->Found()[1] << " times the one and the other content\n";
        EXPECT_EQ(killer->Failure(), "");
        EXPECT_EQ(killer->Kills(), KillsOfEach);
        // Otherwise the kills would have come too early or too late to prove anything.
        EXPECT_GE(killer->InSave(), KillsOfEach / 20);
        EXPECT_GE(killer->Found()[0], KillsOfEach / 20);
        EXPECT_GE(killer->Found()[1], KillsOfEach / 20);
        EXPECT_TRUE(SaveContent(files, killer->Path(), "[ordinary]"));
        EXPECT_EQ(files.ReadContent(killer->Path()), "[ordinary]");
        EXPECT_FALSE(files.Exists(NeighbourOf(killer->Path())));
        files.RemoveFile(killer->Path());
    }
}

} // namespace
} // namespace sitekeeper
