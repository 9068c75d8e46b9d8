// Port: what the program asks of the file system.
#pragma once

#include "platform/Clock.h"
#include "platform/Port.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace sitekeeper {

/// A file that is open for writing, from its first byte on. Its end closes it; what was not flushed may then be lost
/// with the machine, not with the process.
class OutputFile : public Port
{
public:
    /// Writes `bytes` after those written before. False when not all of them were: a full disk, a lost share. How much
    /// was is then unknown.
    virtual bool Write(std::string_view bytes) = 0;

    /// Ends the file behind what was written. False when its length stays as it was.
    virtual bool EndHere() = 0;

    /// Brings all that was written to the disk itself. False when that is not certain.
    virtual bool Flush() = 0;
};

/// A file or folder that a search found.
struct FoundFile
{
    /// As its folder spells it. Stands only as long as the search looks at this file.
    std::wstring_view name;
    /// When its content was last changed; nothing when that cannot be told.
    std::optional<Seconds> modified;
};

class FileSystem : public Port
{
public:
    /// True when a file or folder of that path exists and its attributes can be asked for. An empty path does not.
    [[nodiscard]] virtual bool Exists(const std::wstring& path) const = 0;

    /// The full path of `path`: drive or share first, "." and ".." resolved, doubled backslashes folded; relative paths
    /// are taken from the current folder. The file need not exist.
    /// Nothing for an empty path and for a result of 260 characters (MAX_PATH, terminator included) or more.
    [[nodiscard]] virtual std::optional<std::wstring> FullPath(const std::wstring& path) const = 0;

    /// Hands on every file and folder whose name matches the last part of `pattern` ("*" for any characters, "?" for
    /// one; case does not matter), in no particular order; the folder itself and the one above do not count. A pattern
    /// without a folder searches the current one, a pattern that ends in a "\" finds nothing. Nothing when the folder
    /// cannot be searched; an error in the middle ends the search.
    virtual void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const = 0;

    /// Makes one folder; the folder above it must exist.
    /// False when it could not be made, also when something of that path exists already; nothing changes then.
    virtual bool MakeFolder(const std::wstring& path) = 0;

    /// All bytes of a file, read while nobody may write it. Nothing when it cannot be opened or read to its end; a
    /// file that others hold is asked for again for up to a tenth of a second.
    [[nodiscard]] virtual std::optional<std::string> ReadContent(const std::wstring& path) const = 0;

    /// Opens a file that exists, content untouched until it is written over; others may meanwhile read it, but not
    /// write it. Null when it may not be written: read-only by its attributes, a folder, held by others (asked for
    /// again for up to a tenth of a second), no rights.
    [[nodiscard]] virtual std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) = 0;

    /// Makes the file `made` and opens it for nobody else, emptying an earlier file of that path. It gets the
    /// attributes and the access rights of the file `model` where there is one. Null when it cannot be made like that,
    /// also when `model` is a link to another place; an earlier file of that path is then as it was, or gone.
    [[nodiscard]] virtual std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& made,
                                                                   const std::wstring& model) = 0;

    /// Puts the file `from` in the place of the file `to`, in one step that no interruption can halve; `to` need not
    /// exist. The file keeps the spelling in which `to` stood there. False when it was not done; both are then as they
    /// were. Files that others hold are asked for again for up to a tenth of a second. Whether readers who let `to` be
    /// removed are in the way is the system's choice.
    virtual bool MoveOver(const std::wstring& from, const std::wstring& to) = 0;

    /// Makes an empty file; one of that path is emptied, and keeps its spelling. False when it could not be: its folder
    /// is missing, a folder of that path exists, it may not be written or others hold it. What was there stays as it
    /// was then.
    virtual bool MakeEmptyFile(const std::wstring& path) = 0;

    /// Removes a file. False when it is still there or never was.
    virtual bool RemoveFile(const std::wstring& path) = 0;
};

} // namespace sitekeeper
