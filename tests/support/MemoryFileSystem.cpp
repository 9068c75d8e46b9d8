#include "support/MemoryFileSystem.h"

#include "support/MemoryPaths.h"
#include "support/Utf8CodePage.h"
#include "text/Paths.h"
#include "text/Text.h"

#include <algorithm>
#include <string_view>

namespace sitekeeper {
namespace {

/// MAX_PATH of Windows: the room for a path with its terminator.
constexpr std::size_t PathRoom = 260;

// What can be done with an open file, and be left to others.
constexpr std::uint32_t Reading = 1;
constexpr std::uint32_t Writing = 2;
constexpr std::uint32_t Removing = 4;

/// The attributes that a new file takes from its model.
constexpr FileAttributes KeptAttributes = FileAttributes::Hidden | FileAttributes::System | FileAttributes::Archive;

std::wstring Shown(const ShortcutFile& shortcut)
{
    return L" -> " + shortcut.target + L" | " + shortcut.arguments + L" | " + shortcut.workingFolder + L" | " +
           shortcut.iconFile + L" | " + std::to_wstring(shortcut.iconIndex);
}

} // namespace

MemoryFileSystem::MemoryFileSystem() : m_currentFolder(L"C:\\")
{
    AddFolder(L"C:\\");
}

bool MemoryFileSystem::Exists(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    // A name with a "\" behind it can only be a folder's.
    return entry != nullptr && (!path.ends_with(L'\\') || std::holds_alternative<Folder>(entry->content));
}

std::optional<std::wstring> MemoryFileSystem::FullPath(const std::wstring& path) const
{
    std::wstring full = Resolved(path);
    return full.empty() || full.size() >= PathRoom ? std::nullopt : std::optional(std::move(full));
}

void MemoryFileSystem::Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const
{
    const std::wstring full = ToLowerCase(Resolved(pattern));
    const std::wstring folder = WithoutTrailingBackslashes(GetFolderOfPath(full));
    for (const auto& [id, entry] : m_entries) {
        if (WithoutTrailingBackslashes(GetFolderOfPath(id)) == folder &&
            MatchesPattern(GetNameOfPath(id), GetNameOfPath(full))) {
            const std::wstring name = GetNameOfPath(entry.path);
            take({name, entry.modified});
        }
    }
}

void MemoryFileSystem::SetModified(const std::wstring& path, std::optional<Seconds> moment)
{
    m_entries.at(IdOf(path)).modified = moment;
}

bool MemoryFileSystem::MakeFolder(const std::wstring& path)
{
    if (path.empty() || Find(path) != nullptr || !HasFolderAbove(path) || m_refused.contains(IdOf(path))) {
        return false;
    }
    m_entries.insert_or_assign(IdOf(path), Entry{WithoutTrailingBackslashes(Resolved(path)), Folder{}});
    return true;
}

void MemoryFileSystem::AddFolder(const std::wstring& path)
{
    const std::wstring full = WithoutTrailingBackslashes(Resolved(path));
    for (std::size_t end = RootLength(full); end != std::wstring::npos; end = full.find(L'\\', end + 1)) {
        const std::wstring reached = full.substr(0, end);
        m_entries.try_emplace(IdOf(reached + L"\\"), Entry{reached, Folder{}});
        if (end == full.size()) {
            return;
        }
    }
    m_entries.try_emplace(IdOf(full), Entry{full, Folder{}});
}

void MemoryFileSystem::AddFile(const std::wstring& path, const std::string& content)
{
    AddFolder(GetFolderOfPath(Resolved(path)));
    m_entries.insert_or_assign(IdOf(path), Entry{Resolved(path), content});
}

void MemoryFileSystem::Remove(const std::wstring& path)
{
    m_entries.erase(IdOf(path));
}

bool MemoryFileSystem::WriteShortcut(const std::wstring& path, const ShortcutFile& shortcut)
{
    if (path.empty() || path.ends_with(L'\\') || IsFolder(path) || !HasFolderAbove(path) ||
        m_refused.contains(IdOf(path))) {
        return false;
    }
    const auto [place, isNew] = m_entries.try_emplace(IdOf(path), Entry{Resolved(path), shortcut});
    place->second.content = shortcut; // a file keeps the spelling in which it was made
    return true;
}

bool MemoryFileSystem::IsFolder(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    return entry != nullptr && std::holds_alternative<Folder>(entry->content);
}

std::optional<ShortcutFile> MemoryFileSystem::ReadShortcut(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    const auto* const shortcut = entry == nullptr ? nullptr : std::get_if<ShortcutFile>(&entry->content);
    return shortcut == nullptr ? std::nullopt : std::optional(*shortcut);
}

std::optional<std::string> MemoryFileSystem::ContentOf(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    const auto* const content = entry == nullptr ? nullptr : std::get_if<std::string>(&entry->content);
    return content == nullptr ? std::nullopt : std::optional(*content);
}

void MemoryFileSystem::SetAttributes(const std::wstring& path, FileAttributes attributes)
{
    m_entries.at(IdOf(path)).attributes = attributes;
}

FileAttributes MemoryFileSystem::AttributesOf(const std::wstring& path) const
{
    return m_entries.at(IdOf(path)).attributes;
}

void MemoryFileSystem::SetRights(const std::wstring& path, const std::string& rights)
{
    m_entries.at(IdOf(path)).rights = rights;
}

std::string MemoryFileSystem::RightsOf(const std::wstring& path) const
{
    return m_entries.at(IdOf(path)).rights;
}

std::wstring MemoryFileSystem::SpellingOf(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    return entry == nullptr ? L"" : GetNameOfPath(entry->path);
}

/// Keeps a file open.
class MemoryFileSystem::OpenFile
{
public:
    OpenFile(MemoryFileSystem& files, Opening opening)
        : m_files(files), m_place(files.m_openings.insert(files.m_openings.end(), std::move(opening)))
    {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { m_files.m_openings.erase(m_place); }

private:
    MemoryFileSystem& m_files;
    std::list<Opening>::iterator m_place;
};

bool MemoryFileSystem::CanOpen(const Opening& wanted) const
{
    return std::none_of(m_openings.begin(), m_openings.end(), [&](const Opening& other) {
        return other.id == wanted.id && ((wanted.use & ~other.sharing) != 0 || (other.use & ~wanted.sharing) != 0);
    });
}

std::shared_ptr<void> MemoryFileSystem::Hold(const std::wstring& path, FileHolder holder)
{
    Opening opening{IdOf(path), holder == FileHolder::TolerantWriter ? Writing : Reading, Reading};
    if (holder != FileHolder::StrictReader) {
        opening.sharing |= Writing;
    }
    if (holder == FileHolder::TolerantReader || holder == FileHolder::TolerantWriter) {
        opening.sharing |= Removing;
    }
    return ContentOf(path) && CanOpen(opening) ? std::make_shared<OpenFile>(*this, opening) : nullptr;
}

/// Writes into the entry of a file; when the test removes that file meanwhile, nowhere.
class MemoryFileSystem::Output final : public OutputFile
{
public:
    Output(MemoryFileSystem& files, const Opening& opening) : m_files(files), m_id(opening.id), m_open(files, opening)
    {}

    bool Write(std::string_view bytes) override
    {
        std::string* const content = Content();
        if (content == nullptr) {
            return false;
        }
        const std::size_t end = m_position + bytes.size();
        const std::size_t growth = end > content->size() ? end - content->size() : 0;
        const std::size_t room = m_files.m_room.value_or(growth);
        const std::string_view fitting = bytes.substr(0, bytes.size() - (growth - std::min(growth, room)));
        if (m_files.m_room) {
            *m_files.m_room -= std::min(growth, room);
        }
        content->replace(m_position, fitting.size(), fitting);
        m_position += fitting.size();
        return fitting.size() == bytes.size();
    }
    bool EndHere() override
    {
        std::string* const content = Content();
        if (content == nullptr) {
            return false;
        }
        if (m_files.m_room) {
            *m_files.m_room += content->size() - m_position;
        }
        content->resize(m_position);
        return true;
    }
    bool Flush() override { return Content() != nullptr; }

private:
    [[nodiscard]] std::string* Content()
    {
        const auto found = m_files.m_entries.find(m_id);
        return found == m_files.m_entries.end() ? nullptr : std::get_if<std::string>(&found->second.content);
    }

    MemoryFileSystem& m_files;
    std::wstring m_id;
    OpenFile m_open;
    std::size_t m_position = 0;
};

std::optional<std::string> MemoryFileSystem::ReadContent(const std::wstring& path) const
{
    const bool isRefused = m_unreadable.contains(IdOf(path)) || !CanOpen({IdOf(path), Reading, Reading | Removing});
    return isRefused ? std::nullopt : ContentOf(path);
}

std::unique_ptr<OutputFile> MemoryFileSystem::OpenForWriting(const std::wstring& path)
{
    const Opening opening{IdOf(path), Writing, Reading};
    if (!ContentOf(path) || m_refused.contains(opening.id) || IsReadOnly(path) || !CanOpen(opening)) {
        return nullptr;
    }
    return std::make_unique<Output>(*this, opening);
}

std::unique_ptr<OutputFile> MemoryFileSystem::MakeFileLike(const std::wstring& path, const std::wstring& model)
{
    const Opening opening{IdOf(path), Writing, 0};
    if (path.empty() || path.ends_with(L'\\') || IsFolder(path) || !HasFolderAbove(path) ||
        m_refused.contains(opening.id) || !CanOpen(opening)) {
        return nullptr;
    }
    Entry made{Resolved(path), std::string()};
    if (const Entry* const like = Find(model)) {
        made.attributes = like->attributes & KeptAttributes;
        made.rights = like->rights;
    }
    if (const Entry* const old = Find(path)) {
        made.path = old->path;
    }
    m_entries.insert_or_assign(opening.id, std::move(made));
    return std::make_unique<Output>(*this, opening);
}

bool MemoryFileSystem::MoveOver(const std::wstring& from, const std::wstring& to)
{
    if (!ContentOf(from) || IsFolder(to) || !HasFolderAbove(to) || m_refused.contains(IdOf(to)) ||
        m_refused.contains(IdOf(from)) || !CanBeRemoved(from) || !CanBeRemoved(to)) {
        return false;
    }
    Entry moved = *Find(from);
    const Entry* const old = Find(to);
    moved.path = old == nullptr ? Resolved(to) : old->path;
    m_entries.erase(IdOf(from));
    m_entries.insert_or_assign(IdOf(to), std::move(moved));
    return true;
}

bool MemoryFileSystem::MakeEmptyFile(const std::wstring& path)
{
    return !IsReadOnly(path) && MakeFileLike(path, L"") != nullptr;
}

bool MemoryFileSystem::RemoveFile(const std::wstring& path)
{
    return Find(path) != nullptr && !IsFolder(path) && !m_refused.contains(IdOf(path)) && !IsReadOnly(path) &&
           CanBeRemoved(path) && m_entries.erase(IdOf(path)) > 0;
}

bool MemoryFileSystem::IsReadOnly(const std::wstring& path) const
{
    const Entry* const entry = Find(path);
    return entry != nullptr && (entry->attributes & FileAttributes::ReadOnly) != FileAttributes::None;
}

bool MemoryFileSystem::CanBeRemoved(const std::wstring& path) const
{
    return CanOpen({IdOf(path), Removing, Reading | Writing | Removing});
}

std::vector<std::wstring> MemoryFileSystem::Listing() const
{
    std::vector<std::wstring> lines;
    for (const auto& [id, entry] : m_entries) {
        if (const auto* const content = std::get_if<std::string>(&entry.content)) {
            std::wstring text;
            Utf8CodePage().Decode(*content, text);
            lines.push_back(entry.path + L" = \"" + text + L"\"");
        } else if (const auto* const shortcut = std::get_if<ShortcutFile>(&entry.content)) {
            lines.push_back(entry.path + Shown(*shortcut));
        } else {
            lines.push_back(entry.path + L"\\");
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::wstring MemoryFileSystem::Resolved(const std::wstring& path) const
{
    return ResolvePath(path, m_currentFolder);
}

std::wstring MemoryFileSystem::IdOf(const std::wstring& path) const
{
    return ToLowerCase(WithoutTrailingBackslashes(Resolved(path)));
}

std::wstring MemoryFileSystem::FolderIdAbove(const std::wstring& path) const
{
    return WithoutTrailingBackslashes(GetFolderOfPath(IdOf(path)));
}

const MemoryFileSystem::Entry* MemoryFileSystem::Find(const std::wstring& path) const
{
    const auto found = path.empty() ? m_entries.end() : m_entries.find(IdOf(path));
    return found == m_entries.end() ? nullptr : &found->second;
}

bool MemoryFileSystem::HasFolderAbove(const std::wstring& path) const
{
    const auto found = m_entries.find(FolderIdAbove(path));
    return found != m_entries.end() && std::holds_alternative<Folder>(found->second.content);
}

} // namespace sitekeeper
