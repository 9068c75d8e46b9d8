// The update reminder: the newest of many files beside a bare walk and beside `find`, and a page beside a copy of its
// bytes in one and in the same pieces.
#include "settings/InstallationSettings.h"
#include "support/FoldersOnly.h"
#include "support/MemoryPlatform.h"
#include "update/PublishedUpdate.h"
#include "update/UpdateCheck.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace {

using namespace sitekeeper;
namespace fs = std::filesystem;

constexpr const wchar_t* Address = L"https://updates.example/software-updates/";

/// A folder of the machine that runs this, with so many program files.
class ProgramFolder
{
public:
    explicit ProgramFolder(std::int64_t count)
        : m_path(fs::temp_directory_path() / ("sitekeeper-bench-" + std::to_string(count)))
    {
        fs::create_directories(m_path);
        for (std::int64_t number = 0; number < count; ++number) {
            std::ofstream(m_path / ("program" + std::to_string(number) + ".exe")).put('x');
        }
    }
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;
    ~ProgramFolder()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    [[nodiscard]] const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

/// The folder with so many files, made once: that takes longer than any measurement.
const ProgramFolder& FolderOf(std::int64_t count)
{
    static std::map<std::int64_t, ProgramFolder> folders;
    return folders.try_emplace(count, count).first->second;
}

/// That folder behind the port: one pass, and a status call for each file, which this system's walk does not spare.
class FolderFiles final : public FoldersOnly
{
public:
    explicit FolderFiles(const fs::path& folder) : m_folder(folder.string()) {}

    [[nodiscard]] bool Exists(const std::wstring& /*path*/) const override { return false; }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override { return path; }
    bool MakeFolder(const std::wstring& /*path*/) override { return false; }
    void Search(const std::wstring& /*pattern*/, const std::function<void(const FoundFile&)>& take) const override
    {
        const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(m_folder.c_str()), ::closedir);
        while (const dirent* const entry = ::readdir(folder.get())) {
            const std::string name = entry->d_name;
            struct stat status = {};
            if (name.ends_with(".exe") && ::fstatat(::dirfd(folder.get()), entry->d_name, &status, 0) == 0) {
                take({{}, status.st_mtim.tv_sec}); // nobody asks for the name
            }
        }
    }

private:
    std::string m_folder;
};

void BM_NewestFile(benchmark::State& state)
{
    const ProgramFolder& folder = FolderOf(state.range(0));
    MemoryPlatform memory;
    FolderFiles files(folder.Path());
    const Platform base = memory.Ports();
    const Platform ports{base.registry,    files,          base.shell,    base.folders, base.messages, base.modules,
                         base.environment, base.accounts,  base.clock,    base.help,    base.codePage, base.clipboard,
                         base.web,         base.processes, base.versions, base.printer};
    InstallationSettings settings = SettingsOn(ports);
    const UpdateCheck check(ports, settings, Address);
    for (auto _ : state) {
        Seconds newest = 0;
        check.NewestFileTime(newest, L"*.exe");
        benchmark::DoNotOptimize(newest);
    }
}

void BM_NewestFileBare(benchmark::State& state)
{
    const std::string path = FolderOf(state.range(0)).Path().string();
    for (auto _ : state) {
        const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
        Seconds newest = 0;
        while (const dirent* const entry = ::readdir(folder.get())) {
            struct stat status = {};
            if (std::string_view(entry->d_name).ends_with(".exe") &&
                ::fstatat(::dirfd(folder.get()), entry->d_name, &status, 0) == 0) {
                newest = std::max<Seconds>(newest, status.st_mtim.tv_sec);
            }
        }
        benchmark::DoNotOptimize(newest);
    }
}

void BM_NewestFileByFind(benchmark::State& state)
{
    const ProgramFolder& folder = FolderOf(state.range(0));
    const std::string command =
        "find '" + folder.Path().string() + "' -maxdepth 1 -name '*.exe' -printf '%T@\\n' > /dev/null";
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::system(command.c_str()));
    }
}

/// A page without the key, which must be searched to its end.
std::string PageOf(std::int64_t size)
{
    std::string page;
    while (page.size() < static_cast<std::size_t>(size)) {
        page += "<p>Some line of the page, Letters and all: Lorem LX_2023.</p>\n";
    }
    page.resize(static_cast<std::size_t>(size));
    return page;
}

void BM_Page(benchmark::State& state)
{
    MemoryPlatform memory;
    const Platform ports = memory.Ports();
    memory.web.Publish(Address, PageOf(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            PublishedDate(ReadPageText(ports.web, ports.codePage, Address), 0, ports.clock, Address));
    }
}

/// The pieces go into a text as they come; nothing is looked at.
void BM_PiecesOfThePage(benchmark::State& state)
{
    constexpr std::size_t PieceSize = 50;
    MemoryWebSession web;
    web.Publish(Address, PageOf(state.range(0)));
    for (auto _ : state) {
        std::string pieces;
        web.ReadPage(Address, PieceSize, [&pieces](std::string_view piece) {
            pieces += piece;
            return true;
        });
        benchmark::DoNotOptimize(pieces.data());
    }
}

void BM_CopyOfThePage(benchmark::State& state)
{
    const std::string page = PageOf(state.range(0));
    for (auto _ : state) {
        std::string copy = page;
        benchmark::DoNotOptimize(copy.data());
    }
}

constexpr std::int64_t KiB = 1024;

void Folders(benchmark::internal::Benchmark* bench)
{
    bench->Arg(10)->Arg(1000)->Arg(100'000)->UseRealTime();
}
BENCHMARK(BM_NewestFile)->Name("newest of so many files/ours")->Apply(Folders);
BENCHMARK(BM_NewestFileBare)->Name("newest of so many files/bare walk")->Apply(Folders);
BENCHMARK(BM_NewestFileByFind)->Name("newest of so many files/find")->Apply(Folders);

void Pages(benchmark::internal::Benchmark* bench)
{
    bench->Arg(KiB)->Arg(KiB * KiB)->Arg(16 * KiB * KiB);
}
BENCHMARK(BM_Page)->Name("page of so many bytes, collected and searched/ours")->Apply(Pages);
BENCHMARK(BM_PiecesOfThePage)->Name("page of so many bytes, collected and searched/pieces into a string")->Apply(Pages);
BENCHMARK(BM_CopyOfThePage)->Name("page of so many bytes, collected and searched/copy")->Apply(Pages);

} // namespace
