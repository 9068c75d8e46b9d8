#include "win32/Win32FileSystem.h"

#include "text/Paths.h"
#include "win32/Handles.h"
#include "win32/Win32OutputFile.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace sitekeeper {
namespace {

/// Whole seconds since 1970, rounded down.
Seconds SecondsOf(const FILETIME& time)
{
    constexpr std::int64_t TicksInASecond = 10'000'000;
    constexpr std::int64_t EpochTicks = 116'444'736'000'000'000; // from 1601 to 1970
    const auto ticks = static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32U) | time.dwLowDateTime);
    const std::int64_t since = ticks - EpochTicks;
    return since / TicksInASecond - (since % TicksInASecond < 0 ? 1 : 0);
}

/// Whether a search found "." or "..".
bool IsFolderItselfOrAbove(const wchar_t* name)
{
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

/// `path` with the file's name as it stands in its folder; `path` itself where there is no such file.
std::wstring AsSpelled(const std::wstring& path)
{
    WIN32_FIND_DATAW found{};
    const UniqueFileSearch search(::FindFirstFileW(path.c_str(), &found));
    return search ? GetFolderOfPath(path) + found.cFileName : path;
}

/// What is left of an open file. False when it cannot be read to its end.
bool ReadRest(HANDLE file, std::string& content)
{
    constexpr std::size_t Smallest = 4096;
    LARGE_INTEGER size{};
    ::GetFileSizeEx(file, &size);
    content.resize(static_cast<std::size_t>(size.QuadPart) + 1); // one more, to meet the end at once
    std::size_t length = 0;
    for (;;) {
        if (length == content.size()) {
            content.resize(length + length / 2 + Smallest);
        }
        const auto room = static_cast<DWORD>(std::min<std::size_t>(content.size() - length, 0x4000'0000));
        DWORD count = 0;
        if (::ReadFile(file, content.data() + length, room, &count, nullptr) == FALSE) {
            return false;
        }
        if (count == 0) {
            content.resize(length);
            return true;
        }
        length += count;
    }
}

UniqueFile OpenExisting(const std::wstring& path, DWORD access, DWORD sharing)
{
    UniqueFile file;
    Retried([&] {
        file.reset(
            ::CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        return static_cast<bool>(file);
    });
    return file;
}

} // namespace

bool Win32FileSystem::Exists(const std::wstring& path) const
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::wstring> Win32FileSystem::FullPath(const std::wstring& path) const
{
    std::array<wchar_t, MAX_PATH> buffer{};
    const DWORD length = ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    // For a buffer that is too small the call gives the room it needs, terminator included.
    if (length == 0 || length >= buffer.size()) {
        return std::nullopt;
    }
    return std::wstring(buffer.data(), length);
}

void Win32FileSystem::Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const
{
    // The walk itself tells the times; asking for each file by its name would cost several times as much.
    WIN32_FIND_DATAW found{};
    const UniqueFileSearch search(::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                                     nullptr, FIND_FIRST_EX_LARGE_FETCH));
    if (!search) {
        return;
    }
    do {
        if (!IsFolderItselfOrAbove(found.cFileName)) {
            take({found.cFileName, SecondsOf(found.ftLastWriteTime)});
        }
    } while (::FindNextFileW(search.get(), &found) != FALSE);
}

bool Win32FileSystem::MakeFolder(const std::wstring& path)
{
    return ::CreateDirectoryW(path.c_str(), nullptr) != FALSE;
}

std::optional<std::string> Win32FileSystem::ReadContent(const std::wstring& path) const
{
    // Who puts a new file in this one's place does not write it, and is let.
    const UniqueFile file = OpenExisting(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE);
    std::string content;
    return file && ReadRest(file.get(), content) ? std::optional(std::move(content)) : std::nullopt;
}

std::unique_ptr<OutputFile> Win32FileSystem::OpenForWriting(const std::wstring& path)
{
    // On shares of other systems the attribute alone need not keep a writer out.
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return nullptr;
    }
    UniqueFile file = OpenExisting(path, GENERIC_WRITE, FILE_SHARE_READ);
    return file ? std::make_unique<Win32OutputFile>(std::move(file)) : nullptr;
}

std::unique_ptr<OutputFile> Win32FileSystem::MakeFileLike(const std::wstring& path, const std::wstring& model)
{
    UniqueFile file = MakeLike(path, model);
    return file ? std::make_unique<Win32OutputFile>(std::move(file)) : nullptr;
}

bool Win32FileSystem::MoveOver(const std::wstring& from, const std::wstring& to)
{
    const std::wstring target = AsSpelled(to);
    const auto attempt = [&] {
        return ::MoveFileExW(from.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
    };
    // A target that others hold is refused like one without rights.
    return Retried(attempt, ERROR_ACCESS_DENIED);
}

bool Win32FileSystem::MakeEmptyFile(const std::wstring& path)
{
    const UniqueFile file(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(file);
}

bool Win32FileSystem::RemoveFile(const std::wstring& path)
{
    return ::DeleteFileW(path.c_str()) != FALSE;
}

} // namespace sitekeeper
