#include "support/MemoryPaths.h"

#include "text/Paths.h"
#include "text/Text.h"

#include <algorithm>
#include <vector>

namespace sitekeeper {
namespace {

bool StartsWithDrive(std::wstring_view path)
{
    return path.size() >= 2 && path[1] == L':' && path[0] != L'\\';
}

/// `path` as it would be written from the root on, given the current folder.
std::wstring Rooted(const std::wstring& path, const std::wstring& currentFolder)
{
    if (path.starts_with(L"\\\\")) {
        return path;
    }
    if (path.starts_with(L'\\')) {
        return currentFolder.substr(0, RootLength(currentFolder)) + path;
    }
    if (!StartsWithDrive(path)) {
        return WithBackslash(currentFolder) + path;
    }
    if (path.size() > 2 && path[2] == L'\\') {
        return path;
    }
    const bool isHere = EqualIgnoringCase(path.substr(0, 2), currentFolder.substr(0, 2));
    return WithBackslash(isHere ? currentFolder : path.substr(0, 2)) + path.substr(2);
}

/// The names of `rest` with "." and ".." carried out; ".." stops at the root.
std::vector<std::wstring> NamesOf(std::wstring_view rest)
{
    std::vector<std::wstring> names;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        const std::wstring_view name = rest.substr(0, end);
        if (name == L"..") {
            if (!names.empty()) {
                names.pop_back();
            }
        } else if (!name.empty() && name != L".") {
            names.emplace_back(name);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return names;
}

} // namespace

std::size_t RootLength(std::wstring_view path)
{
    if (StartsWithDrive(path)) {
        return 2;
    }
    const std::size_t server = path.find(L'\\', 2);
    return server == std::wstring_view::npos ? path.size() : std::min(path.find(L'\\', server + 1), path.size());
}

std::wstring ResolvePath(const std::wstring& path, const std::wstring& currentFolder)
{
    if (path.empty()) {
        return path;
    }
    const std::wstring rooted = Rooted(ReplaceAll(path, L"/", L"\\"), currentFolder);
    const std::size_t rootLength = RootLength(rooted);
    std::wstring full = rooted.substr(0, rootLength);
    for (const std::wstring& name : NamesOf(std::wstring_view(rooted).substr(rootLength))) {
        full += L"\\" + name;
    }
    const bool isRootAlone = full.size() == rootLength;
    if ((rooted.ends_with(L'\\') || (isRootAlone && StartsWithDrive(full))) && rooted.size() > rootLength) {
        full += L"\\";
    }
    return full;
}

bool MatchesPattern(std::wstring_view name, std::wstring_view pattern)
{
    if (pattern.empty()) {
        return name.empty();
    }
    if (pattern.front() == L'*') {
        return MatchesPattern(name, pattern.substr(1)) || (!name.empty() && MatchesPattern(name.substr(1), pattern));
    }
    return !name.empty() && (pattern.front() == L'?' || pattern.front() == name.front()) &&
           MatchesPattern(name.substr(1), pattern.substr(1));
}

} // namespace sitekeeper
