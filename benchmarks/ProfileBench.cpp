// The program's own reader and writer of sectioned text files beside the system's profile functions, on the same file.
// Prints the medians of runs that alternate, as Measure.h says.
//
// profile_bench [RUNS]
#include "access/IniFile.h"
#include "Measure.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32FileSystem.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cwchar>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

constexpr const wchar_t* OtherSection = L"General";
constexpr const wchar_t* EditedSection = L"Ledger Composer";

/// Per-key calls of the system that are timed; the others take as long.
constexpr int SampleSize = 20;

/// A file of `entries` entries in two sections, and what is done with it.
class Profile
{
public:
    Profile(std::wstring path, int entries) : m_path(std::move(path))
    {
        for (int number = 0; number < entries / 2; ++number) {
            m_names.push_back(L"User name " + std::to_wstring(100'000 + number));
        }
        for (int number = static_cast<int>(m_names.size()) - 1; number >= 0; --number) {
            m_otherNames.push_back(m_names[static_cast<std::size_t>(number)]);
        }
    }
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;
    ~Profile() { m_files.RemoveFile(m_path); }

    void Make()
    {
        CIniFile store(m_files, m_codePage, L"");
        store.Open(m_path);
        store.Clear();
        for (const wchar_t* const section : {OtherSection, EditedSection}) {
            store.SetSection(section);
            store.SetValues(m_names, m_names);
        }
        Require(store.Save(true) == CIniFile::Success, "the file cannot be made");
        Forget();
    }

    /// Lets the system read the file again at the next call, as it does in a program that has just started.
    void Forget() const { ::WritePrivateProfileStringW(nullptr, nullptr, nullptr, m_path.c_str()); }

    void FindOne() const
    {
        CIniFile store(m_files, m_codePage, L"");
        store.Open(m_path);
        store.SetSection(EditedSection);
        std::wstring value;
        store.GetValue(m_names.back(), value, L"");
        Require(value == m_names.back(), "the value is not found");
    }
    void FindOneBySystem() const { AskSystem(m_names.back()); }

    void FindAll() const
    {
        CIniFile store(m_files, m_codePage, L"");
        store.Open(m_path);
        store.SetSection(EditedSection);
        std::wstring value;
        for (const std::wstring& name : m_names) {
            store.GetValue(name, value, L"");
            Require(value == name, "the value is not found");
        }
    }
    /// A part of the names, spread over all of them; returns how many.
    [[nodiscard]] int FindSampleBySystem() const
    {
        const std::size_t step = std::max<std::size_t>(m_names.size() / SampleSize, 1);
        int count = 0;
        for (std::size_t place = 0; place < m_names.size(); place += step) {
            AskSystem(m_names[place]);
            ++count;
        }
        return count;
    }

    void ReplaceSection() const
    {
        CIniFile store(m_files, m_codePage, L"");
        store.Open(m_path);
        store.DeleteSection(EditedSection);
        store.SetSection(EditedSection);
        store.SetValues(m_otherNames, m_otherNames);
        Require(store.Save(true) == CIniFile::Success, "the file cannot be saved");
    }
    void ReplaceSectionBySystem() const
    {
        std::wstring lines;
        for (const std::wstring& name : m_otherNames) {
            lines += name;
            lines += L'=';
            lines += name;
            lines += L'\0';
        }
        Require(::WritePrivateProfileSectionW(EditedSection, lines.c_str(), m_path.c_str()) != FALSE,
                "the system cannot write the section");
    }
    /// Writes some of the names; returns how many.
    [[nodiscard]] int WriteSampleBySystem() const
    {
        const int count = std::min(SampleSize, static_cast<int>(m_otherNames.size()));
        for (int place = 0; place < count; ++place) {
            const std::wstring& name = m_otherNames[static_cast<std::size_t>(place)];
            const std::wstring value = name + std::to_wstring(++m_written);
            Require(::WritePrivateProfileStringW(EditedSection, name.c_str(), value.c_str(), m_path.c_str()) != FALSE,
                    "the system cannot write the value");
        }
        return count;
    }

    [[nodiscard]] int NamesInSection() const { return static_cast<int>(m_names.size()); }

private:
    void AskSystem(const std::wstring& name) const
    {
        std::array<wchar_t, 64> value{};
        ::GetPrivateProfileStringW(EditedSection, name.c_str(), L"", value.data(), static_cast<DWORD>(value.size()),
                                   m_path.c_str());
        Require(name == value.data(), "the system does not find the value");
    }

    std::wstring m_path;
    std::vector<std::wstring> m_names;
    std::vector<std::wstring> m_otherNames;
    mutable Win32FileSystem m_files;
    Win32CodePage m_codePage;
    mutable int m_written = 0;
};

/// The times of both ways, in turns, each on a file made anew. The system's way returns by how much its time is to be
/// multiplied.
template <typename Ours, typename Systems>
void Compare(const char* what, const char* peer, int entries, int runs, Profile& profile, Ours ours, Systems systems)
{
    std::vector<double> ourTimes;
    std::vector<double> systemTimes;
    for (int run = 0; run < runs; ++run) {
        profile.Make();
        const Stopwatch ourWatch;
        ours();
        ourTimes.push_back(ourWatch.Milliseconds());
        profile.Make();
        const Stopwatch systemWatch;
        const double factor = systems();
        systemTimes.push_back(systemWatch.Milliseconds() * factor);
    }
    PrintResult(what, entries, "ms", Median(ourTimes), {peer, Median(systemTimes)});
}

void Bench(const std::wstring& path, int entries, int runs)
{
    Profile profile(path, entries);
    const double names = profile.NamesInSection();
    Compare(
        "load, find one", "GetPrivateProfileString", entries, runs, profile, [&] { profile.FindOne(); },
        [&] {
            profile.FindOneBySystem();
            return 1.0;
        });
    Compare(
        "load, find each of a section", "GetPrivateProfileString for each", entries, runs, profile,
        [&] { profile.FindAll(); }, [&] { return names / profile.FindSampleBySystem(); });
    Compare(
        "load, replace a section, save", "WritePrivateProfileSection", entries, runs, profile,
        [&] { profile.ReplaceSection(); },
        [&] {
            profile.ReplaceSectionBySystem();
            return 1.0;
        });
    Compare(
        "the same, key by key", "WritePrivateProfileString for each", entries, runs, profile,
        [&] { profile.ReplaceSection(); }, [&] { return names / profile.WriteSampleBySystem(); });
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    const int runs = count > 1 ? static_cast<int>(std::wcstol(arguments[1], nullptr, 10)) : 11;
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetTempPathW(MAX_PATH, folder.data());
    try {
        for (const int entries : {100, 1'000, 10'000}) {
            Bench(folder.data() + std::wstring(L"ProfileBench.ini"), entries, runs);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "profile_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
