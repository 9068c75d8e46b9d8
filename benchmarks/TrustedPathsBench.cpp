// The walk over AutoCAD's products beside a bare one with the same calls of the registry and nothing else, in turns on
// the same tree. Prints the medians, as Measure.h says. Makes a tree of its own in the machine's hive and therefore
// refuses to run where there is an AutoCAD.
//
// trusted_paths_bench [RUNS]
#include "autocad/TrustedPathKeys.h"
#include "Measure.h"
#include "win32/Handles.h"
#include "win32/Win32Registry.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace sitekeeper;
using namespace sitekeeper::bench;

constexpr const wchar_t* KeyAbove = L"Software\\Autodesk";
constexpr const wchar_t* TreeKey = L"Software\\Autodesk\\AutoCAD";
constexpr int Releases = 5;
constexpr std::size_t ValueRoom = 1024;

bool HasAutoCAD()
{
    UniqueRegistryKey key;
    return ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, TreeKey, 0, KEY_QUERY_VALUE, key.put()) == ERROR_SUCCESS;
}

/// So many products, the same number in each release.
class Tree
{
public:
    explicit Tree(int products)
    {
        for (int number = 0; number < products; ++number) {
            const std::wstring key = std::wstring(TreeKey) + L"\\R2" + std::to_wstring(number % Releases) +
                                     L".0\\ACAD-" + std::to_wstring(100'000 + number) +
                                     L":409\\Variables\\TRUSTEDPATHS";
            const std::wstring paths = L"C:\\Program Files\\Somewhere;D:\\Shared\\Drawings;";
            UniqueRegistryKey made;
            Require(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE,
                                      nullptr, made.put(), nullptr) == ERROR_SUCCESS &&
                        ::RegSetValueExW(made.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(paths.c_str()),
                                         static_cast<DWORD>((paths.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS,
                    "the tree cannot be made");
        }
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree()
    {
        ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, TreeKey);
        ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, KeyAbove); // stays where anything else lives in it
    }
};

/// The sub-keys of a key, one after the other, in a buffer that holds any name of the registry's.
template <typename Take>
void BareWalk(const std::wstring& path, Take take)
{
    UniqueRegistryKey key;
    DWORD count = 0;
    DWORD longest = 0;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS, key.put()) !=
            ERROR_SUCCESS ||
        ::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &count, &longest, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr) != ERROR_SUCCESS) {
        return;
    }
    std::array<wchar_t, 256> name{};
    for (DWORD index = 0; index < count; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (::RegEnumKeyExW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) ==
            ERROR_SUCCESS) {
            take(name.data());
        }
    }
}

/// How many products have a value.
std::size_t BareCount()
{
    std::size_t found = 0;
    std::array<wchar_t, ValueRoom> value{};
    std::wstring path;
    BareWalk(TreeKey, [&](const wchar_t* release) {
        const std::wstring releaseKey = std::wstring(TreeKey) + L"\\" + release;
        BareWalk(releaseKey, [&](const wchar_t* product) {
            path.assign(releaseKey).append(L"\\").append(product).append(L"\\Variables\\TRUSTEDPATHS");
            UniqueRegistryKey key;
            auto size = static_cast<DWORD>(sizeof value);
            if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_QUERY_VALUE, key.put()) == ERROR_SUCCESS &&
                ::RegQueryValueExW(key.get(), L"", nullptr, nullptr, reinterpret_cast<BYTE*>(value.data()), &size) ==
                    ERROR_SUCCESS) {
                ++found;
            }
        });
    });
    return found;
}

void Bench(int products, int runs)
{
    const Tree tree(products);
    const Win32Registry registry;
    std::vector<std::wstring> keys;
    std::vector<std::wstring> releases;
    std::vector<double> ourTimes;
    std::vector<double> bareTimes;
    for (int run = 0; run <= runs; ++run) {
        const Stopwatch ourWatch;
        FindAutoCADTrustedPathKeys(registry, keys, releases);
        const double our = ourWatch.Milliseconds();
        const Stopwatch bareWatch;
        const std::size_t found = BareCount();
        const double bare = bareWatch.Milliseconds();
        Require(found == static_cast<std::size_t>(products) && keys.size() == found, "a walk has lost products");
        if (run > 0) { // the first warms both up
            ourTimes.push_back(our);
            bareTimes.push_back(bare);
        }
    }
    PrintResult("find the products", products, "ms", Median(ourTimes), {"bare walk, same reads", Median(bareTimes)});
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    const int runs = count > 1 ? static_cast<int>(std::wcstol(arguments[1], nullptr, 10)) : 11;
    try {
        Require(!HasAutoCAD(), "this machine has an AutoCAD; the benchmark would mix with it");
        for (const int products : {10, 1'000, 10'000}) {
            Bench(products, runs);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "trusted_paths_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
