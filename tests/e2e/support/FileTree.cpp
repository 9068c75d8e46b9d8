#include "e2e/support/FileTree.h"

#include "e2e/support/Wide.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace sitekeeper::e2e {
namespace {

[[noreturn]] void Refuse(const char* what, const std::wstring& path)
{
    throw std::runtime_error(std::string(what) + " " + ToUtf8(path) + ": error " + std::to_string(::GetLastError()));
}

/// A file opened for one purpose, closed at the end.
class OpenFile
{
public:
    OpenFile(const std::wstring& path, DWORD access, DWORD disposition)
        : m_file(::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                               disposition, 0, nullptr))
    {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile()
    {
        if (IsOpen()) {
            ::CloseHandle(m_file);
        }
    }
    [[nodiscard]] bool IsOpen() const noexcept { return m_file != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE get() const noexcept { return m_file; }

private:
    HANDLE m_file;
};

} // namespace

bool Exists(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MakeFolders(const std::wstring& folder)
{
    for (std::size_t end = folder.find(L'\\', 3); end != std::wstring::npos; end = folder.find(L'\\', end + 1)) {
        ::CreateDirectoryW(folder.substr(0, end).c_str(), nullptr);
    }
    ::CreateDirectoryW(folder.c_str(), nullptr);
}

void WriteWholeFile(const std::wstring& path, const std::string& bytes)
{
    MakeFolders(path.substr(0, path.rfind(L'\\')));
    const OpenFile file(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    if (!file.IsOpen() ||
        ::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == FALSE) {
        Refuse("cannot write", path);
    }
}

void CopyFileTo(const std::wstring& from, const std::wstring& to)
{
    MakeFolders(to.substr(0, to.rfind(L'\\')));
    if (::CopyFileW(from.c_str(), to.c_str(), FALSE) == FALSE) {
        Refuse("cannot copy", from + L" to " + to);
    }
}

void RemoveFile(const std::wstring& path)
{
    if (Exists(path) && ::DeleteFileW(path.c_str()) == FALSE) {
        Refuse("cannot remove", path);
    }
}

void SetModified(const std::wstring& path, long long moment)
{
    constexpr long long EpochSeconds = 11'644'473'600; // from 1601 to 1970
    constexpr long long TicksInASecond = 10'000'000;
    const auto ticks = static_cast<unsigned long long>((moment + EpochSeconds) * TicksInASecond);
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
    const OpenFile file(path, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
    if (!file.IsOpen() || ::SetFileTime(file.get(), nullptr, nullptr, &time) == FALSE) {
        Refuse("cannot date", path);
    }
}

std::optional<std::string> ReadWholeFile(const std::wstring& path)
{
    const OpenFile file(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen()) {
        if (::GetLastError() != ERROR_FILE_NOT_FOUND && ::GetLastError() != ERROR_PATH_NOT_FOUND) {
            Refuse("cannot read", path);
        }
        return std::nullopt;
    }
    std::string content;
    std::array<char, 65536> piece{};
    DWORD read = 0;
    while (::ReadFile(file.get(), piece.data(), static_cast<DWORD>(piece.size()), &read, nullptr) != FALSE &&
           read > 0) {
        content.append(piece.data(), read);
    }
    return content;
}

std::wstring ReadWideText(const std::wstring& path)
{
    const std::string bytes = ReadWholeFile(path).value_or("");
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text;
}

void RemoveFolder(const std::wstring& folder)
{
    std::vector<std::wstring> folders = {folder};
    VisitTree(folder, [&](const std::wstring& path, EntryKind kind) {
        if (kind == EntryKind::Folder) {
            folders.push_back(path);
        } else {
            ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            ::DeleteFileW(path.c_str());
        }
    });
    std::reverse(folders.begin(), folders.end());
    for (const std::wstring& emptied : folders) {
        ::RemoveDirectoryW(emptied.c_str());
    }
}

void VisitTree(const std::wstring& folder, const std::function<void(const std::wstring&, EntryKind)>& visit)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    std::vector<std::wstring> folders;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") {
            continue;
        }
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        visit(folder + L"\\" + name, isFolder ? EntryKind::Folder : EntryKind::File);
        if (isFolder) {
            folders.push_back(folder + L"\\" + name);
        }
    } while (::FindNextFileW(search, &found) != FALSE);
    ::FindClose(search);
    for (const std::wstring& below : folders) {
        VisitTree(below, visit);
    }
}

} // namespace sitekeeper::e2e
