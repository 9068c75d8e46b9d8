// A Windows file system in memory, for tests: drives, shares, folders and files under backslashed paths, compared
// without regard to case.
#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"
#include "support/FileState.h"

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <variant>
#include <vector>

namespace sitekeeper {

class MemoryFileSystem final : public FileSystem
{
public:
    /// Begins with the empty drive C:, which is also the current folder.
    MemoryFileSystem();

    [[nodiscard]] bool Exists(const std::wstring& path) const override;
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override;
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override;
    bool MakeFolder(const std::wstring& path) override;
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override;
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override;
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path,
                                                           const std::wstring& model) override;
    bool MoveOver(const std::wstring& from, const std::wstring& to) override;
    bool MakeEmptyFile(const std::wstring& path) override;
    bool RemoveFile(const std::wstring& path) override;

    /// Plant a folder or a file of that content, with all folders above it.
    void AddFolder(const std::wstring& path);
    void AddFile(const std::wstring& path, const std::string& content = "");
    void Remove(const std::wstring& path);
    void SetCurrentFolder(const std::wstring& path) { m_currentFolder = Resolved(path); }

    /// From now on the file or folder cannot be made or written.
    void RefuseWriting(const std::wstring& path) { m_refused.insert(IdOf(path)); }
    /// From now on the file cannot be read.
    void RefuseReading(const std::wstring& path) { m_unreadable.insert(IdOf(path)); }
    /// From now on files can grow by `bytes` in all before the disk is full.
    void SetRoom(std::size_t bytes) { m_room = bytes; }

    /// When a file or folder, which is there, was last changed; nothing for a time that cannot be told. New ones have
    /// the beginning of 1970.
    void SetModified(const std::wstring& path, std::optional<Seconds> moment);

    /// The attributes and the access rights of a file, which is there. The rights are any text; new files have none.
    void SetAttributes(const std::wstring& path, FileAttributes attributes);
    [[nodiscard]] FileAttributes AttributesOf(const std::wstring& path) const;
    void SetRights(const std::wstring& path, const std::string& rights);
    [[nodiscard]] std::string RightsOf(const std::wstring& path) const;

    /// Another program has the file open until the result goes, which must be before the file system goes. Null where
    /// the file is missing or those who have it open already do not let it.
    [[nodiscard]] std::shared_ptr<void> Hold(const std::wstring& path, FileHolder holder);

    /// The name of a file or folder as it is spelled; empty when there is none.
    [[nodiscard]] std::wstring SpellingOf(const std::wstring& path) const;

    /// The shell's way to a file: makes it or replaces what it held. False when the folder above is missing, a folder
    /// of that path exists, or writing is refused; nothing changes then.
    bool WriteShortcut(const std::wstring& path, const ShortcutFile& shortcut);

    [[nodiscard]] bool IsFolder(const std::wstring& path) const;
    /// What the shortcut file says; nothing for a file that holds no shortcut.
    [[nodiscard]] std::optional<ShortcutFile> ReadShortcut(const std::wstring& path) const;
    /// The content of a file; nothing for anything else.
    [[nodiscard]] std::optional<std::string> ContentOf(const std::wstring& path) const;

    /// One line for each folder and each file with its content, sorted, for comparing before and after.
    [[nodiscard]] std::vector<std::wstring> Listing() const;

private:
    struct Folder
    {};
    struct Entry
    {
        std::wstring path;
        std::variant<Folder, std::string, ShortcutFile> content;
        FileAttributes attributes = FileAttributes::Archive;
        std::string rights{};
        std::optional<Seconds> modified = 0;
    };
    /// A file that is open: what is done with it, and what others may do meanwhile.
    struct Opening
    {
        std::wstring id;
        std::uint32_t use = 0;
        std::uint32_t sharing = 0;
    };
    class OpenFile;
    class Output;

    /// Whether everyone who has the file open lets it be used and shared like that, and is let.
    [[nodiscard]] bool CanOpen(const Opening& wanted) const;
    [[nodiscard]] bool CanBeRemoved(const std::wstring& path) const;
    [[nodiscard]] bool IsReadOnly(const std::wstring& path) const;

    /// The full path, of any length; empty for an empty path.
    [[nodiscard]] std::wstring Resolved(const std::wstring& path) const;
    /// What two spellings of one path have in common.
    [[nodiscard]] std::wstring IdOf(const std::wstring& path) const;
    [[nodiscard]] std::wstring FolderIdAbove(const std::wstring& path) const;
    [[nodiscard]] const Entry* Find(const std::wstring& path) const;
    [[nodiscard]] bool HasFolderAbove(const std::wstring& path) const;

    std::map<std::wstring, Entry> m_entries;
    std::list<Opening> m_openings;
    std::set<std::wstring> m_refused;
    std::set<std::wstring> m_unreadable;
    std::optional<std::size_t> m_room;
    std::wstring m_currentFolder;
};

} // namespace sitekeeper
