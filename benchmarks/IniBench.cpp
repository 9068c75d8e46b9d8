// The store beside general libraries for such files: load; load and find one entry; load, replace one section and save
// sorted. All from and to memory, each with the copies that its interface asks for, its own end counted too.
#include "IniPeers.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <sstream>

namespace {

using namespace sitekeeper;

constexpr std::size_t SmallestCount = 100;
constexpr std::size_t LargestCount = 1'000'000;
constexpr const char* Replaced = "SheetWriter";

/// New names for a fifth of the entries: those of the first section, which lists everybody.
NameList NewNames(std::size_t count)
{
    NameList names;
    for (std::size_t number = 0; number < count / SectionNames().size(); ++number) {
        names.narrow.push_back(AccountName(number));
        names.wide.emplace_back(names.narrow.back().begin(), names.narrow.back().end());
    }
    return names;
}

void MeasureLoad(benchmark::State& state, const IniLibrary& library)
{
    const std::string bytes = ShuffledFile(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(library.load(bytes).get());
    }
}

void MeasureFind(benchmark::State& state, const IniLibrary& library)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string bytes = ShuffledFile(count);
    const std::string name = AccountName(count / 2);
    const std::string section = SectionNames()[SectionNames().size() / 2];
    for (auto _ : state) {
        if (!library.load(bytes)->Holds(section, name)) {
            state.SkipWithError("the entry was not found");
        }
    }
}

void MeasureReplace(benchmark::State& state, const IniLibrary& library)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string bytes = ShuffledFile(count);
    const NameList names = NewNames(count);
    for (auto _ : state) {
        const auto loaded = library.load(bytes);
        loaded->Replace(Replaced, names);
        loaded->SaveSorted();
    }
}

/// What a saved file says, whatever blanks and line ends the library writes.
std::string Meaning(const std::string& saved)
{
    std::string meaning;
    std::istringstream lines(saved);
    for (std::string line; std::getline(lines, line);) {
        const bool isHeader = line.starts_with('[');
        std::erase_if(line,
                      [isHeader](char character) { return character == '\r' || (character == ' ' && !isHeader); });
        meaning += line.empty() ? line : line + '\n';
    }
    return meaning;
}

/// The times compare only as long as all do the same work.
bool AllAgree()
{
    constexpr std::size_t count = 1000;
    std::string expected;
    for (const IniLibrary& library : IniLibraries()) {
        const auto loaded = library.load(ShuffledFile(count));
        loaded->Replace(Replaced, NewNames(count));
        loaded->SaveSorted();
        const std::string meaning = Meaning(loaded->Saved());
        if (expected.empty()) {
            expected = meaning;
        }
        if (meaning != expected ||
            static_cast<std::size_t>(std::ranges::count(meaning, '\n')) != count + SectionNames().size()) {
            std::fprintf(stderr, "%s does not write what the store writes\n", library.name);
            return false;
        }
    }
    return true;
}

void Register()
{
    constexpr struct
    {
        const char* name;
        void (*measure)(benchmark::State& state, const IniLibrary& library);
    } Tasks[] = {{"load", &MeasureLoad}, {"find", &MeasureFind}, {"replace", &MeasureReplace}};
    for (const auto& task : Tasks) {
        for (const IniLibrary& library : IniLibraries()) {
            benchmark::RegisterBenchmark(
                (std::string(task.name) + '/' + library.name).c_str(),
                [measure = task.measure, &library](benchmark::State& state) { measure(state, library); })
                ->RangeMultiplier(10)
                ->Range(SmallestCount, LargestCount)
                ->Unit(benchmark::kMicrosecond);
        }
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (!AllAgree()) {
        return 1;
    }
    Register();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
