// Files and folders of the machine the tests run on.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace sitekeeper::e2e {

[[nodiscard]] bool Exists(const std::wstring& path);

/// The folder a path names, with every folder on the way to it.
void MakeFolders(const std::wstring& folder);

/// The file with exactly these bytes; its folder is made. These three throw when the system refuses.
void WriteWholeFile(const std::wstring& path, const std::string& bytes);
void CopyFileTo(const std::wstring& from, const std::wstring& to);
void RemoveFile(const std::wstring& path); // nothing happens when there is none

/// Dates a file's last change; seconds since 1970. Throws when the system refuses.
void SetModified(const std::wstring& path, long long moment);

/// Nothing when there is no such file; throws when it cannot be read. A file that a program moves there at this moment
/// can be read, although its mover has not let go of it.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::wstring& path);

/// A file that a stand-in wrote, in the system's own wide text; empty when there is none, otherwise as above.
[[nodiscard]] std::wstring ReadWideText(const std::wstring& path);

/// The folder and all below it; nothing happens when there is none.
void RemoveFolder(const std::wstring& folder);

/// Calls `visit` with the path of everything below a folder (not the folder itself).
enum class EntryKind
{
    File,
    Folder
};
void VisitTree(const std::wstring& folder, const std::function<void(const std::wstring&, EntryKind)>& visit);

} // namespace sitekeeper::e2e
