// ini_memory LIBRARY COUNT: prints by how many KiB the process's peak grows while that library loads a file. Without
// arguments: the names of the libraries, ours first.
#include "IniPeers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace {

/// The most that was ever in memory. What the system reports to a parent may be the parent's own peak from before the
/// program began; this is the program's alone.
long PeakKiB()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stol(line.substr(line.find_first_of("0123456789")));
        }
    }
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
    using namespace sitekeeper;
    const auto libraries = IniLibraries();
    if (count == 1) {
        for (const IniLibrary& library : libraries) {
            std::puts(library.name);
        }
        return 0;
    }
    const auto library = std::find_if(libraries.begin(), libraries.end(), [&](const IniLibrary& candidate) {
        return count == 3 && std::string_view(candidate.name) == arguments[1];
    });
    if (library == libraries.end()) {
        std::fputs("ini_memory [LIBRARY COUNT]\n", stderr);
        return 1;
    }
    const std::string bytes = ShuffledFile(std::strtoul(arguments[2], nullptr, 10));
    const long before = PeakKiB();
    const auto loaded = library->load(bytes);
    std::printf("%ld\n", PeakKiB() - before);
    return 0;
}
